// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include <algorithm>
#include <cmath>

#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr FileDate kToday = {2024, 3, 5};

QAccessibleInterface& AccessibleEntry(QListWidget& list, int row) {
  return *QAccessible::queryAccessibleInterface(&list)->child(row);
}

/// What a screen reader says for an entry.
std::string SpokenText(QListWidget& list, int row) {
  return AccessibleEntry(list, row).text(QAccessible::Name).toStdString();
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

// ---- The colours.

TEST(DueColours, CanBeReadOnEveryBackground) {
  std::vector<QColor> backgrounds = {Qt::red, Qt::yellow, Qt::blue, Qt::green};
  for (int grey = 0; grey <= 255; ++grey) {
    backgrounds.emplace_back(grey, grey, grey);
  }
  for (const QColor& background : backgrounds) {
    for (const DueState state : {DueState::PastDue, DueState::DueSoon}) {
      const QColor colour = DueColour(state, WithBackground(background));
      EXPECT_GE(ContrastOf(colour, background), 4.5) << background.name().toStdString();
    }
  }
}

// ---- A list.

/// The list of a model whose files have these serial numbers and due dates.
class SerialList : public StationStage {
 protected:
  SerialList() {
    WriteCalFile("PX12A", "SN1", {.serial = "past", .dueDate = "20240304"});
    WriteCalFile("PX12A", "SN2", {.serial = "today", .dueDate = "20240305"});
    WriteCalFile("PX12A", "SN3",
                 {.serial = "later", .dueDate = "20240405", .comment = "<b>U < 1 %</b>"});
    WriteCalFile("PX12A", "SN4", {.serial = "wrong", .dueDate = "20240231"});
    SetUpSerialList(&list_);
    FillSerialList(&list_, "PX12A", kToday);
  }

  QListWidgetItem& Entry(const QString& serial) {
    return *list_.findItems(serial, Qt::MatchExactly).at(0);
  }

  QListWidget list_;
};

TEST_F(SerialList, AnEntryShowsItsHeaderAsATooltip) {
  const auto tooltip = [&](const char* serial) {
    return QTextDocumentFragment::fromHtml(Entry(serial).toolTip()).toPlainText();
  };
  const QString past =
      "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 4 MAR 2024, past due\n"
      "Comment: factory";
  EXPECT_EQ(tooltip("past"), past);
  const int row = list_.row(&Entry("past"));
  EXPECT_EQ(AccessibleEntry(list_, row).text(QAccessible::Description), past);
  EXPECT_TRUE(tooltip("later").endsWith("Comment: <b>U < 1 %</b>"));
  FillSerialList(&list_, "", kToday);
  EXPECT_EQ(list_.count(), 0);
}

TEST_F(SerialList, AnEntryThatIsDueIsMarkedByColourIconAndForAScreenReader) {
  for (const QColor& background : {QColor(20, 20, 20), QColor(Qt::white)}) {
    list_.setPalette(WithBackground(background));  // the colours follow the palette
    const QColor past = Entry("past").foreground().color();
    EXPECT_EQ(past.green(), past.blue());
    EXPECT_GT(past.red(), 2 * past.green()) << "red";
    EXPECT_GE(ContrastOf(past, background), 4.5);
    const QColor soon = Entry("today").foreground().color();
    EXPECT_TRUE(soon.red() > soon.green() && soon.green() > soon.blue()) << "amber";
    EXPECT_FALSE(Entry("later").data(Qt::ForegroundRole).isValid());
  }
  const auto icon = [&](const char* serial) { return Entry(serial).icon().pixmap(16).toImage(); };
  EXPECT_FALSE(icon("past").isNull() || icon("today").isNull());
  EXPECT_NE(icon("past"), icon("today"));
  EXPECT_TRUE(Entry("later").icon().isNull());
  const auto spoken = [&](const char* serial) {
    return SpokenText(list_, list_.row(&Entry(serial)));
  };
  EXPECT_EQ(spoken("past"), "past, past due");
  EXPECT_EQ(spoken("today"), "today, due within 30 days");
  EXPECT_EQ(spoken("wrong"), "wrong, past due");
  EXPECT_EQ(spoken("later"), "later");
  ShowCalFile(&Entry("past"), CalFileInfo(), kToday);  // without a date
  EXPECT_FALSE(Entry("past").data(Qt::ForegroundRole).isValid());
  EXPECT_TRUE(Entry("past").icon().isNull());
  EXPECT_EQ(spoken("past"), "past");
}

TEST_F(SerialList, AtTheMenuMarksWhatIsDueToday) {
  for (const auto& [serial, days] : {std::pair("1", -10), std::pair("2", 10), std::pair("3", 50)}) {
    const QString due = QDate::currentDate().addDays(days).toString("yyyyMMdd");
    WriteCalFile("PX13A", std::string("SN") + serial,
                 {.model = "PX13A", .serial = serial, .dueDate = due.toStdString()});
  }
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
    ClickEntry(at, "LstInstrment", "PX13A");
    auto& list = Find<QListWidget>(at, "lstSerialNumber");
    SortNames(&list, ListOrder::Name);
    EXPECT_EQ((Texts{SpokenText(list, 0), SpokenText(list, 1), SpokenText(list, 2)}),
              (Texts{"1, past due", "2, due within 30 days", "3"}));
    Click(at, "btnReturn");
  });
  menu.ShowModally();
}

}  // namespace
}  // namespace tarvell
