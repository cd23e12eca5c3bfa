// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QAccessible>
#include <QDate>
#include <QTextDocumentFragment>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "screens/station/StationFixture.h"
#include "screens/widgets/SerialList.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr FileDate kToday = {2024, 3, 5};

/// What a hover over the entry shows.
std::string HoverOf(const QListWidgetItem& entry) {
  return QTextDocumentFragment::fromHtml(entry.toolTip()).toPlainText().toStdString();
}

QAccessibleInterface& AccessibleEntry(QListWidget& list, int row) {
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&list);
  if (accessible == nullptr || accessible->child(row) == nullptr) {
    ADD_FAILURE() << "no accessible entry " << row;
    std::abort();
  }
  return *accessible->child(row);
}

/// What a screen reader says of an entry.
std::string SaidOf(QListWidget& list, int row) {
  return AccessibleEntry(list, row).text(QAccessible::Name).toStdString();
}

QImage IconOf(const QListWidgetItem& entry) {
  return entry.icon().pixmap(16).toImage();
}

/// Contrast of two colours as the accessibility guidelines define it (WCAG 2.1).
double ContrastOf(const QColor& a, const QColor& b) {
  const auto luminance = [](const QColor& colour) {
    const auto linear = [](double part) {
      return part > 0.04045 ? std::pow((part + 0.055) / 1.055, 2.4) : part / 12.92;
    };
    return 0.2126 * linear(colour.red() / 255.0) + 0.7152 * linear(colour.green() / 255.0) +
           0.0722 * linear(colour.blue() / 255.0);
  };
  const double first = luminance(a) + 0.05;
  const double second = luminance(b) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

QPalette WithBackground(const QColor& background) {
  QPalette palette;
  palette.setColor(QPalette::Base, background);
  return palette;
}

bool IsReddish(const QColor& colour) {
  return colour.red() > 2 * colour.green() && colour.green() == colour.blue();
}

bool IsAmber(const QColor& colour) {
  return colour.red() > colour.green() && colour.green() > colour.blue();
}

// ---- The colours.

TEST(DueColours, CanBeReadOnEveryGrey) {
  for (int grey = 0; grey <= 255; ++grey) {
    const QColor background(grey, grey, grey);
    for (const DueState state : {DueState::PastDue, DueState::DueSoon}) {
      const QColor colour = DueColour(state, WithBackground(background));
      EXPECT_GE(ContrastOf(colour, background), 4.5) << grey << " " << colour.name().toStdString();
    }
  }
}

TEST(DueColours, CanBeReadOnColouredBackgrounds) {
  for (const QColor& background :
       {QColor(Qt::red), QColor(Qt::yellow), QColor(Qt::blue), QColor(Qt::green),
        QColor(255, 165, 0), QColor(253, 246, 227), QColor(0, 43, 54), QColor(120, 60, 60)}) {
    for (const DueState state : {DueState::PastDue, DueState::DueSoon}) {
      const QColor colour = DueColour(state, WithBackground(background));
      EXPECT_GE(ContrastOf(colour, background), 4.5) << background.name().toStdString();
    }
  }
}

TEST(DueColours, AreRedAndAmberOnLightAndOnDark) {
  for (const QColor& background : {QColor(Qt::white), QColor(42, 42, 42), QColor(Qt::black)}) {
    const QPalette palette = WithBackground(background);
    EXPECT_TRUE(IsReddish(DueColour(DueState::PastDue, palette)))
        << background.name().toStdString();
    EXPECT_TRUE(IsAmber(DueColour(DueState::DueSoon, palette))) << background.name().toStdString();
  }
}

// ---- A list.

/// Serial list of a model whose files have these serial numbers and due dates.
class SerialList : public StationStage {
 protected:
  SerialList() {
    WriteCalFile("PX12A", "SN1", {.serial = "past", .dueDate = "20240304"});
    WriteCalFile("PX12A", "SN2", {.serial = "today", .dueDate = "20240305"});
    WriteCalFile("PX12A", "SN3", {.serial = "soon", .dueDate = "20240404"});
    WriteCalFile("PX12A", "SN4", {.serial = "later", .dueDate = "20240405"});
    WriteCalFile("PX12A", "SN5", {.serial = "never", .dueDate = ""});
    WriteCalFile("PX12A", "SN6", {.serial = "wrong", .dueDate = "20240231"});
    SetUpSerialList(&list_);
    FillSerialList(&list_, "PX12A", kToday);
  }

  QListWidgetItem& Entry(const QString& serial) {
    const QList<QListWidgetItem*> found = list_.findItems(serial, Qt::MatchExactly);
    if (found.size() != 1) {
      ADD_FAILURE() << found.size() << " entries read " << serial.toStdString();
      std::abort();
    }
    return *found.first();
  }

  QListWidget list_;
};

TEST_F(SerialList, TheEntriesReadTheSerialNumbersInTheOrderOfTheFiles) {
  Texts expected;
  for (const std::string& name : NamesInOrder(R"(c:\calfactors\PX12A)")) {
    static const std::vector<std::pair<std::string, std::string>> kSerials = {
        {"SN1", "past"},  {"SN2", "today"}, {"SN3", "soon"},
        {"SN4", "later"}, {"SN5", "never"}, {"SN6", "wrong"}};
    for (const auto& [file, serial] : kSerials) {
      if (file == name) {
        expected.push_back(serial);
      }
    }
  }
  ASSERT_EQ(expected.size(), 6U);
  Texts texts;
  for (int row = 0; row < list_.count(); ++row) {
    texts.push_back(list_.item(row)->text().toStdString());
  }
  EXPECT_EQ(texts, expected);
}

TEST_F(SerialList, EachEntryTellsItsHeaderOnHover) {
  EXPECT_EQ(HoverOf(Entry("past")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 4 MAR 2024, past due\n"
            "Comment: factory");
  EXPECT_EQ(HoverOf(Entry("soon")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\n"
            "Due: 4 APR 2024, due within 30 days\nComment: factory");
  EXPECT_EQ(HoverOf(Entry("later")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 APR 2024\n"
            "Comment: factory");
  EXPECT_EQ(HoverOf(Entry("never")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: (none)\nComment: factory");
  EXPECT_EQ(HoverOf(Entry("wrong")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\n"
            "Due: 31 FEB 2024 (no such day), past due\nComment: factory");
}

TEST_F(SerialList, TheHoverShowsACommentAsItIsTyped) {
  WriteCalFile("PX13A", "SN1",
               {.model = "PX13A", .serial = "1", .comment = "<b>U < 1 %</b> & <img src='x'>"});
  FillSerialList(&list_, "PX13A", {2001, 3, 5});
  EXPECT_EQ(HoverOf(Entry("1")),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 MAR 2002\n"
            "Comment: <b>U < 1 %</b> & <img src='x'>");
}

TEST_F(SerialList, PastDueAndDueSoonDifferInColourAndIcon) {
  EXPECT_TRUE(IsReddish(Entry("past").foreground().color()));
  for (const char* soon : {"today", "soon"}) {
    EXPECT_TRUE(IsAmber(Entry(soon).foreground().color())) << soon;
    ASSERT_FALSE(Entry(soon).icon().isNull()) << soon;
  }
  ASSERT_FALSE(Entry("past").icon().isNull());
  EXPECT_NE(IconOf(Entry("past")), IconOf(Entry("soon")));
  EXPECT_EQ(IconOf(Entry("today")), IconOf(Entry("soon")));
}

TEST_F(SerialList, EntriesThatNeedNoAttentionAreNotMarked) {
  for (const char* serial : {"later", "never"}) {
    EXPECT_FALSE(Entry(serial).data(Qt::ForegroundRole).isValid()) << serial;
    EXPECT_TRUE(Entry(serial).icon().isNull()) << serial;
    EXPECT_EQ(SaidOf(list_, list_.row(&Entry(serial))), serial);
  }
}

TEST_F(SerialList, AScreenReaderSaysTheMarkAndTheHeader) {
  const int past = list_.row(&Entry("past"));
  EXPECT_EQ(SaidOf(list_, past), "past, past due");
  EXPECT_EQ(SaidOf(list_, list_.row(&Entry("today"))), "today, due within 30 days");
  EXPECT_EQ(AccessibleEntry(list_, past).text(QAccessible::Description).toStdString(),
            "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 4 MAR 2024, past due\n"
            "Comment: factory");
}

TEST_F(SerialList, TheColoursFollowALightAndADarkScreen) {
  for (const QColor& background : {QColor(20, 20, 20), QColor(Qt::white)}) {
    list_.setPalette(WithBackground(background));
    const QColor past = Entry("past").foreground().color();
    const QColor soon = Entry("soon").foreground().color();
    EXPECT_TRUE(IsReddish(past)) << past.name().toStdString();
    EXPECT_TRUE(IsAmber(soon)) << soon.name().toStdString();
    EXPECT_GE(ContrastOf(past, background), 4.5);
    EXPECT_GE(ContrastOf(soon, background), 4.5);
    EXPECT_FALSE(Entry("later").data(Qt::ForegroundRole).isValid());
  }
}

TEST_F(SerialList, AMarkMakesAnEntryHardlyTaller) {
  list_.show();
  const int marked = list_.visualItemRect(&Entry("past")).height();
  const int plain = list_.visualItemRect(&Entry("later")).height();
  EXPECT_GE(marked, plain);
  // The styles frame an icon by some pixels.
  EXPECT_LE(marked, plain + 4);
}

TEST_F(SerialList, AnEntryThatIsNoLongerPastDueLosesItsMark) {
  CalFileInfo row;
  row.DueYear = 2025;
  row.DueMonth = 1;
  row.DueDay = 1;
  ShowCalFile(&Entry("past"), row, kToday);
  EXPECT_FALSE(Entry("past").data(Qt::ForegroundRole).isValid());
  EXPECT_TRUE(Entry("past").icon().isNull());
  EXPECT_EQ(SaidOf(list_, list_.row(&Entry("past"))), "past");
}

TEST_F(SerialList, WithoutAModelItIsEmpty) {
  FillSerialList(&list_, "", kToday);
  EXPECT_EQ(list_.count(), 0);
}

// ---- At the screens.

std::string InDays(int days) {
  return QDate::currentDate().addDays(days).toString("yyyyMMdd").toStdString();
}

/// Text and what a screen reader says, of each entry, by the text.
std::vector<std::pair<std::string, std::string>> Said(QWidget& screen) {
  auto& list = Find<QListWidget>(screen, "lstSerialNumber");
  std::vector<std::pair<std::string, std::string>> said;
  for (int row = 0; row < list.count(); ++row) {
    said.emplace_back(list.item(row)->text().toStdString(), SaidOf(list, row));
  }
  std::sort(said.begin(), said.end());
  return said;
}

const std::vector<std::pair<std::string, std::string>> kSaid = {
    {"1", "1, past due"}, {"2", "2, due within 30 days"}, {"3", "3"}};

TEST_F(SerialList, ThePickerMarksWhatIsDueToday) {
  WriteCalFile("PX13A", "SN1", {.model = "PX13A", .serial = "1", .dueDate = InDays(-10)});
  WriteCalFile("PX13A", "SN2", {.model = "PX13A", .serial = "2", .dueDate = InDays(10)});
  WriteCalFile("PX13A", "SN3", {.model = "PX13A", .serial = "3", .dueDate = InDays(50)});
  frmStationGetInstr picker(nullptr);
  user_.At<frmStationGetInstr>([](frmStationGetInstr& at) {
    ClickEntry(at, "LstInstrment", "PX13A");
    EXPECT_EQ(Said(at), kSaid);
    Click(at, "btnCancel");
  });
  picker.ShowModally({"PX13A"});
}

class SerialListOfTheMenu : public SensorStage {
 protected:
  void WriteData(const std::string& serial, const std::string& dueDate) {
    const SensorFile file{.serial = serial, .dueDate = dueDate, .rows = {{"50.00", "100.0"}}};
    tree_.Write(R"(c:\calfactors\PX12A\SN)" + serial, file.Bytes());
  }
};

TEST_F(SerialListOfTheMenu, MarksWhatIsDueToday) {
  WriteData("1", InDays(-10));
  WriteData("2", InDays(10));
  WriteData("3", InDays(50));
  AtMenu([](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Said(menu), kSaid);
  });
  RunMenu();
}

TEST_F(SerialListOfTheMenu, TellsTheSavedCommentAndDueDateAfterAnEdit) {
  WriteData("1", "20020305");
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    const auto& list = Find<QListWidget>(menu, "lstSerialNumber");
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      Fill(editor, "txtComment", "again");
      Fill(editor, "txtDueYear", "9999");
      Click(editor, "btnOk");
    });
    DoubleClickEntry(menu, "lstSerialNumber", "1");
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(HoverOf(*list.item(0)),
              "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 MAR 9999\n"
              "Comment: again");
    EXPECT_TRUE(list.item(0)->icon().isNull());
    EXPECT_TRUE(list.item(0)->isSelected());
  });
  RunMenu();
}

TEST_F(SerialListOfTheMenu, KeepsItsMarksAfterACancelledEdit) {
  WriteData("1", "20020305");
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      // A file that is gone is not read again, and not told.
      std::filesystem::remove(tree_.Native(R"(c:\calfactors\PX12A\SN1)"));
      Press(Qt::Key_Escape);
      EXPECT_FALSE(editor.isVisible());
    });
    DoubleClickEntry(menu, "lstSerialNumber", "1");
    EXPECT_EQ(SaidOf(Find<QListWidget>(menu, "lstSerialNumber"), 0), "1, past due");
  });
  RunMenu();
}

}  // namespace
}  // namespace tarvell
