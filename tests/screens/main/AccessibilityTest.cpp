// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include <algorithm>
#include <map>

#include "core/caldata/DataSetDrafts.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/session/Tarvell_MainModule.h"
#include "exchange/Export.h"
#include "exchange/ReadCertificate.h"
#include "screens/caldata/CalEditor.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/caldata/ImportPreview.h"
#include "screens/caldata/PastePreview.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/caldata/frmDeleted.h"
#include "screens/caldata/frmHistory.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/main/frmMain.h"
#include "screens/main/frmSplash.h"
#include "screens/overview/UpdatePreview.h"
#include "screens/overview/frmOverview.h"
#include "screens/station/frmStationGetInstr.h"
#include "screens/station/frmStationMain.h"
#include "screens/station/frmStationModelList.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Look = std::function<void(QWidget& screen)>;

/// One screen of the program.
struct Screen {
  const char* name;
  const char* chapter;  ///< the heading that F1 opens
  void (*show)(const Look& look);
};

/// Shows a modal screen, calls `look` and closes it.
template <typename Form>
void LookWithin(const std::function<void()>& showModally, const Look& look) {
  User user;
  user.At<Form>([&](Form& form) {
    look(form);
    form.close();
  });
  showModally();
}

template <typename Form>
void LookAtMenu(const Look& look) {
  Form form(nullptr);
  LookWithin<Form>([&] { form.ShowModally(); }, look);
}

template <typename Form>
void LookAtEditor(const std::string& model, const Look& look) {
  Form form(nullptr);
  LookWithin<Form>([&] { form.SetupDat(CalEditor::kNewData, model); }, look);
}

template <typename Form>
void LookAtPrompt(const Look& look) {
  Form form(nullptr);
  form.SetCaption("Select calibration point and calibration frequency");
  LookWithin<Form>([&] { form.exec(); }, look);
}

constexpr const char* kDataSet = R"(c:\calfactors\PX12A\SN12345)";

const std::vector<Screen> kScreens = {
    {"frmMain", "First start",
     [](const Look& look) {
       frmMain form;
       form.Form_Load(0);
       look(form);
     }},
    {"frmSplash", nullptr,
     [](const Look& look) {
       frmSplash form;
       form.show();
       look(form);
     }},
    {"frmCalibrationMain", "Calibration data", &LookAtMenu<frmCalibrationMain>},
    {"frmCalDataInputOfASensor", "Sensors and attenuators",
     [](const Look& look) { LookAtEditor<frmCalDataInput>("PX12A", look); }},
    {"frmCalDataInputWithADraft", "Sensors and attenuators",
     [](const Look& look) {
       const std::int64_t now = QDateTime::currentSecsSinceEpoch();
       DataSetDrafts("PX12A", "", now).Write({.header = {.serialNumber = "1"}}, now);
       LookAtEditor<frmCalDataInput>("PX12A", look);
     }},
    {"frmCalDataInputWithAnEarlierCalibrationAndADraft", "Sensors and attenuators",
     [](const Look& look) {
       const std::int64_t now = QDateTime::currentSecsSinceEpoch();
       DataSetDrafts("PX12A", kDataSet, now, DraftKind::NewCalibration)
           .Write({.header = {.comment = "typed"}}, now);
       gCalFiles[0].FilePath = kDataSet;
       frmCalDataInput form(nullptr);
       LookWithin<frmCalDataInput>(
           [&] { form.SetupDat(0, "PX12A", CalEditor::Begin::NewCalibration); }, look);
     }},
    {"frmCalDataInputOfAnAttenuator", "Sensors and attenuators",
     [](const Look& look) { LookAtEditor<frmCalDataInput>("PX60H", look); }},
    {"frmCalDataTabInputOfCapacitors", "Capacitor and resistor sets",
     [](const Look& look) { LookAtEditor<frmCalDataTabInput>("RT520C", look); }},
    {"frmCalDataTabInputOfResistors", "Capacitor and resistor sets",
     [](const Look& look) { LookAtEditor<frmCalDataTabInput>("RT730A", look); }},
    {"PastePreview", "A table from a certificate",
     [](const Look& look) {
       const PastedTable table = {
           .rows = {{PastedRow::Change::Updated, {"50.00", "100.0"}, {"50.00", "99.9"}},
                    {PastedRow::Change::Missing, {"1000.00", "97.0"}, {"1000.00", "97.0"}},
                    {PastedRow::Change::Added, {}, {"2000.00", "96.0"}}},
           .frequencyUnit = "MHz"};
       PastePreview form(table, {"Frequency  [MHz]", "Calibration factor[%]"}, nullptr);
       LookWithin<PastePreview>([&] { form.exec(); }, look);
     }},
    {"ImportPreview", "Importing a certificate",
     [](const Look& look) {
       const Model& model = *FindModel("RT520C");
       const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
       const EditorState now = StateOf(model, *data);
       const std::string bytes =
           "Serial number;A1\nStandard, serial;B1\nCalibration date;3/5/2026\n\n"
           "RT525A\nf [Hz];C [nF];Unc. [ppm];D [1]\n1,000;10.01;50;0.001\n";
       const EarlierChoice earlier(nullptr);
       const ImportTarget target = {.model = model, .data = *data, .now = now};
       ImportPreview form(target, earlier, bytes, ReadCertificate(bytes), "c.csv", nullptr);
       LookWithin<ImportPreview>([&] { form.exec(); }, look);
     }},
    {"frmHistory", "History",
     [](const Look& look) {
       SaveWithHistory(kDataSet, Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "!End"}));
       frmHistory form({.path = kDataSet, .model = FindModel("PX12A")}, nullptr);
       LookWithin<frmHistory>([&] { form.exec(); }, look);
     }},
    {"frmDeleted", "History",
     [](const Look& look) {
       SaveWithHistory(kDataSet, Lines({"#MODEL_NO : PX12A", "!End"}));
       DeleteWithHistory(R"(c:\calfactors\PX12A)", "SN12345");
       frmDeleted form({.root = R"(c:\calfactors)", .folderName = "Model", .subject = {}}, nullptr);
       LookWithin<frmDeleted>([&] { form.exec(); }, look);
     }},
    {"frmOverview", "The overview",
     [](const Look& look) {
       frmOverview form(nullptr);
       LookWithin<frmOverview>(
           [&] { form.ShowModally(); },
           [&](QWidget& overview) {
             const auto& progress = Find<QProgressBar>(overview, "prgSurvey");
             EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.isVisible(); }));
             look(overview);
           });
     }},
    {"UpdatePreview", nullptr,
     [](const Look& look) {
       UpdatePreview form({{.file = R"(c:\stations\ST1\PX12A)", .before = "COMMENT old"},
                           {.file = R"(c:\stations\ST2\PX12A)", .problem = "It is gone."}},
                          true, nullptr);
       LookWithin<UpdatePreview>([&] { form.exec(); }, look);
     }},
    {"frmInput", "Handbook for operators", &LookAtPrompt<frmInput>},
    {"frmInputPX60H", "Handbook for operators", &LookAtPrompt<frmInputPX60H>},
    {"frmStationMain", "Stations", &LookAtMenu<frmStationMain>},
    {"frmStationModelList", "Instruments of a station",
     [](const Look& look) {
       frmStationModelList form(nullptr);
       form.StationName = "ST1";
       LookWithin<frmStationModelList>([&] { form.ShowModally(); }, look);
     }},
    {"frmStationGetInstr", "Instruments of a station",
     [](const Look& look) {
       frmStationGetInstr form(nullptr);
       LookWithin<frmStationGetInstr>([&] { form.ShowModally({"PX12A"}); }, look);
     }},
};

QAccessibleInterface& AccessibleOf(QWidget& control) {
  return *QAccessible::queryAccessibleInterface(&control);
}

/// The name of a control for a screen reader.
std::string AccessibleName(QWidget& control) {
  QAccessibleInterface& accessible = AccessibleOf(control);
  if (qobject_cast<QComboBox*>(&control) == nullptr) {
    return accessible.text(QAccessible::Name).trimmed().toStdString();
  }
  // On this system the toolkit gives a drop-down list its value as the name; its label names it.
  const auto labels = accessible.relations(QAccessible::Label);
  return labels.isEmpty() ? control.accessibleName().toStdString()
                          : labels.first().first->text(QAccessible::Name).toStdString();
}

std::string AccessibleDescription(QWidget& control) {
  // The toolkit does not report the description of a tab strip.
  return qobject_cast<QTabBar*>(&control) != nullptr
             ? control.accessibleDescription().toStdString()
             : AccessibleOf(control).text(QAccessible::Description).toStdString();
}

std::string Describe(const QWidget& control) {
  return std::string(control.metaObject()->className()) + " " + control.objectName().toStdString();
}

std::vector<QWidget*> Shown(const QWidget& screen) {
  std::vector<QWidget*> shown;
  for (QWidget* control : screen.findChildren<QWidget*>()) {
    if (control->isVisible() && control->window() == &screen) {
      shown.push_back(control);
    }
  }
  return shown;
}

/// The controls that can have the focus, without the parts of a control that pass it on.
std::vector<QWidget*> Focusable(const QWidget& screen) {
  std::vector<QWidget*> focusable = Shown(screen);
  std::erase_if(focusable, [](const QWidget* control) {
    return control->focusPolicy() == Qt::NoFocus || control->focusProxy() != nullptr;
  });
  return focusable;
}

std::vector<QWidget*> ReachedByTab(const QWidget& screen) {
  std::vector<QWidget*> reached = Focusable(screen);
  std::erase_if(reached, [](const QWidget* control) {
    return !control->isEnabled() || (control->focusPolicy() & Qt::TabFocus) == 0;
  });
  return reached;
}

/// The controls that this key gives the focus one after another, from `first` until it is reached
/// again.
std::vector<QWidget*> Walk(QWidget& first, Qt::Key key, std::size_t most) {
  first.setFocus();
  std::vector<QWidget*> walk;
  do {
    walk.push_back(QApplication::focusWidget());
    Press(key);
  } while (QApplication::focusWidget() != &first && walk.size() <= most);
  return walk;
}

bool EndsTheScreen(const QWidget& control) {
  const auto* button = qobject_cast<const QPushButton*>(&control);
  const QString caption = button == nullptr ? QString() : PlainCaption(button->text()).toLower();
  return caption == "ok" || caption == "cancel" || caption == "close" || caption == "exit";
}

/// Whether a button is for the whole screen: one that ends it, or the menu before those.
bool IsForTheWholeScreen(const QWidget& control) {
  return EndsTheScreen(control) || control.objectName() == "btnFile";
}

/// The controls that a key with Alt reaches.
std::vector<std::pair<QString, QWidget*>> AltKeysOf(const QWidget& screen) {
  std::vector<std::pair<QString, QWidget*>> keys;
  const auto add = [&](const QKeySequence& key, QWidget* control) {
    if (key.toString().startsWith("Alt+")) {
      keys.emplace_back(key.toString(), control);
    }
  };
  for (QWidget* control : Shown(screen)) {
    if (const auto* button = qobject_cast<QAbstractButton*>(control)) {
      add(button->shortcut(), control);
    } else if (const auto* label = qobject_cast<QLabel*>(control); label && label->buddy()) {
      add(QKeySequence::mnemonic(label->text()), label->buddy());
    } else if (const auto* bar = qobject_cast<QMenuBar*>(control)) {
      for (const QAction* entry : bar->actions()) {
        add(QKeySequence::mnemonic(entry->text()), control);
      }
    }
    for (const auto* shortcut : control->findChildren<QShortcut*>(Qt::FindDirectChildrenOnly)) {
      add(shortcut->key(), control);
    }
  }
  return keys;
}

/// The day of a date has the key of the date; Tab goes on to these.
bool IsRestOfADate(const QWidget& control) {
  return control.accessibleName().startsWith("Month of") ||
         control.accessibleName().startsWith("Year of");
}

QRect PlaceOf(const QWidget& control) {
  return {control.mapToGlobal(QPoint(0, 0)), control.size()};
}

std::vector<std::string> NamesOf(const std::vector<QWidget*>& controls) {
  std::vector<std::string> names;
  names.reserve(controls.size());
  for (const QWidget* control : controls) {
    names.push_back(Describe(*control));
  }
  return names;
}

class Accessibility : public testing::TestWithParam<Screen> {
 protected:
  Accessibility() : platform_(tree_.ProgramFolder()), font_(QApplication::font()) {
    for (const char* model : {"PX12A", "PX60H", "RT520C", "RT730A"}) {
      tree_.InstallTemplate(model);
    }
    tree_.InstallHandbook(TARVELL_HANDBOOK_FOLDER);
    tree_.Write(kDataSet,
                Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                       "#CAL_NO   : C-0042", "#DUE_DATE : 20020305", "#COMMENT  : ", "!End"}));
    tree_.Write(R"(c:\stations\ST1\PX12A)", Lines({"MODEL NUMBER PX12A", "CAL DATA "}));
    gCalibrationDir = R"(c:\calfactors)";
    gStationDir = R"(c:\stations)";
    gCalFiles = {};
  }
  void TearDown() override { QApplication::setFont(font_); }

  /// Shows the screen and calls `look` when it is active.
  static void At(const Look& look) {
    bool looked = false;
    GetParam().show([&](QWidget& screen) {
      screen.activateWindow();
      ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
      looked = true;
      look(screen);
    });
    EXPECT_TRUE(looked);
  }

  /// What the widest text of a column takes.
  static int ValueWidth(const QTableView& table, int column) {
    int width = 0;
    for (int row = 0; row < table.model()->rowCount(); ++row) {
      const QString text = table.model()->index(row, column).data().toString();
      width = std::max(width, table.fontMetrics().horizontalAdvance(text));
    }
    return width;
  }

  /// A strip that is too long scrolls; its titles are not shortened.
  static void ExpectTitlesFit(const QTabBar& strip) {
    EXPECT_EQ(strip.elideMode(), Qt::ElideNone);
    for (int tab = 0; tab < strip.count(); ++tab) {
      const QString title = strip.tabText(tab).replace("&&", "&");
      EXPECT_GE(strip.tabRect(tab).width(), strip.fontMetrics().horizontalAdvance(title))
          << title.toStdString();
    }
    EXPECT_GE(strip.height(), strip.sizeHint().height());
  }

  /// In a table that is typed into, values come first where there is no room for all captions.
  static void ExpectCaptionsFit(const QTableView& table) {
    const QHeaderView& header = *table.horizontalHeader();
    int captions = 0;
    for (int column = 0; column < header.count(); ++column) {
      captions += header.sectionSizeHint(column);
    }
    const bool haveRoom =
        qobject_cast<const CalGrid*>(&table) == nullptr || captions <= table.viewport()->width();
    for (int column = 0; column < header.count(); ++column) {
      EXPECT_GE(header.sectionSize(column),
                haveRoom ? header.sectionSizeHint(column) : ValueWidth(table, column))
          << column;
    }
  }

  /// No text of this control is cut off.
  static void ExpectFits(const QWidget& control) {
    if (const auto* strip = qobject_cast<const QTabBar*>(&control)) {
      ExpectTitlesFit(*strip);
      return;
    }
    if (const auto* table = qobject_cast<const QTableView*>(&control)) {
      ExpectCaptionsFit(*table);
      return;
    }
    if (const auto* list = qobject_cast<const QListWidget*>(&control)) {
      EXPECT_LE(list->sizeHintForColumn(0), list->viewport()->width()) << Describe(control);
      return;
    }
    const auto* label = qobject_cast<const QLabel*>(&control);
    const bool isCaption = (label != nullptr && !label->text().isEmpty()) ||
                           qobject_cast<const QPushButton*>(&control) != nullptr ||
                           qobject_cast<const QCheckBox*>(&control) != nullptr ||
                           qobject_cast<const QRadioButton*>(&control) != nullptr ||
                           qobject_cast<const QComboBox*>(&control) != nullptr;
    if (!isCaption) {
      return;
    }
    QSize wanted = control.sizeHint();
    if (label != nullptr && label->wordWrap()) {
      wanted = {0, label->heightForWidth(label->width())};
    }
    EXPECT_GE(control.width(), wanted.width()) << Describe(control);
    EXPECT_GE(control.height(), wanted.height()) << Describe(control);
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  QFont font_;
};

TEST_P(Accessibility, EachControlHasItsOwnNameAndADescription) {
  At([](QWidget& screen) {
    std::map<std::string, std::string> names;
    for (QWidget* control : Focusable(screen)) {
      const std::string name = AccessibleName(*control);
      EXPECT_FALSE(name.empty()) << Describe(*control) << " has no name";
      const auto [other, isNew] = names.emplace(name, Describe(*control));
      EXPECT_TRUE(isNew) << Describe(*control) << " and " << other->second << " are both " << name;
      if (!EndsTheScreen(*control)) {
        const std::string description = AccessibleDescription(*control);
        EXPECT_TRUE(description.ends_with(".")) << Describe(*control) << ": " << description;
        EXPECT_NE(description, name) << Describe(*control);
      }
    }
  });
}

TEST_P(Accessibility, TabGoesThroughEveryControlInReadingOrderAndBack) {
  At([](QWidget& screen) {
    const std::vector<QWidget*> expected = ReachedByTab(screen);
    if (expected.empty()) {
      EXPECT_STREQ(GetParam().name, "frmSplash") << "no control can be reached";
      return;
    }
    QWidget* first = screen.nextInFocusChain();
    while (std::find(expected.begin(), expected.end(), first) == expected.end()) {
      first = first->nextInFocusChain();
    }
    std::vector<QWidget*> walk = Walk(*first, Qt::Key_Tab, expected.size());
    EXPECT_TRUE(std::is_permutation(walk.begin(), walk.end(), expected.begin(), expected.end()))
        << testing::PrintToString(NamesOf(walk)) << "\ninstead of\n"
        << testing::PrintToString(NamesOf(expected));
    for (std::size_t i = 1; i < walk.size(); ++i) {
      const QRect before = PlaceOf(*walk[i - 1]);
      const QRect next = PlaceOf(*walk[i]);
      // The buttons for the whole screen come last, wherever they are.
      // From a table, a Tab too many leads to the menu and not to OK.
      const bool isInOrder = next.top() > before.bottom() || next.left() > before.right() ||
                             walk[i - 1]->objectName() == "btnFile";
      const bool ends = IsForTheWholeScreen(*walk[i]);
      const bool endedBefore = IsForTheWholeScreen(*walk[i - 1]);
      EXPECT_TRUE((isInOrder || (ends && !endedBefore)) && (ends || !endedBefore))
          << Describe(*walk[i]) << " comes after " << Describe(*walk[i - 1]) << " in "
          << testing::PrintToString(NamesOf(walk));
    }
    std::vector<QWidget*> back = Walk(*first, Qt::Key_Backtab, expected.size());
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(NamesOf(back), NamesOf(walk));
  });
}

TEST_P(Accessibility, EnterAndEscapeEndAScreenWithACancelButton) {
  At([](QWidget& screen) {
    const auto buttons = screen.findChildren<QPushButton*>();
    const auto isCancel = [](const QPushButton* button) {
      return PlainCaption(button->text()) == "Cancel";
    };
    const auto isOk = [](const QPushButton* button) {
      return PlainCaption(button->text()).toLower() == "ok";
    };
    const auto isDefault = [](const QPushButton* button) { return button->isDefault(); };
    // In an editor Enter goes on from field to field.
    const bool isEditor = dynamic_cast<CalEditor*>(&screen) != nullptr;
    EXPECT_FALSE(isEditor && std::ranges::any_of(buttons, isDefault));
    if (!isEditor && std::ranges::any_of(buttons, isOk)) {
      EXPECT_TRUE(std::ranges::all_of(buttons, [&](const QPushButton* button) {
        return isOk(button) == button->isDefault();
      })) << "OK is not the default button";
    }
    if (std::ranges::any_of(buttons, isCancel)) {
      Press(Qt::Key_Escape);
      EXPECT_FALSE(screen.isVisible()) << "Escape does not cancel";
    }
  });
}

TEST_P(Accessibility, AnAltKeyThatTheScreenLacksTypesNothing) {
  At([](QWidget& screen) {
    for (auto* box : screen.findChildren<QLineEdit*>()) {
      const QString text = box->text();
      box->setFocus();
      box->selectAll();
      QKeyEvent key(QEvent::KeyPress, Qt::Key_7, Qt::AltModifier, "7");
      QApplication::sendEvent(box, &key);
      EXPECT_EQ(box->text(), text) << Describe(*box);
    }
    for (auto* box : screen.findChildren<QComboBox*>()) {
      const int chosen = box->currentIndex();
      for (int index = 0; index < box->count(); ++index) {
        const QString letter = box->itemText(index).left(1);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_7, Qt::AltModifier, letter);
        QApplication::sendEvent(box, &key);
        EXPECT_EQ(box->currentIndex(), chosen) << Describe(*box);
      }
    }
  });
}

TEST_P(Accessibility, TheWheelChangesNoChoiceWithoutTheKeyboard) {
  At([](QWidget& screen) {
    for (auto* box : screen.findChildren<QComboBox*>()) {
      const int chosen = box->currentIndex();
      box->clearFocus();
      for (const int turn : {120, -120}) {
        QWheelEvent wheel(QPointF(1, 1), box->mapToGlobal(QPointF(1, 1)), {}, {0, turn},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        EXPECT_EQ(box->currentIndex(), chosen) << Describe(*box);
      }
    }
  });
}

// No button does its work here; only which one is clicked counts.
TEST_P(Accessibility, EnterPressesTheFocusedButton) {
  At([](QWidget& screen) {
    std::vector<QPushButton*> clicked;
    auto buttons = screen.findChildren<QPushButton*>();
    buttons.removeIf([](const QPushButton* button) { return !button->isVisible(); });
    for (QPushButton* button : buttons) {
      QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
      QObject::connect(button, &QPushButton::clicked, [&, button] { clicked.push_back(button); });
      button->setEnabled(true);
    }
    for (QPushButton* pressed : buttons) {
      for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        pressed->setFocus();
        Press(enter);
        QKeyEvent held(QEvent::KeyPress, enter, Qt::NoModifier, {}, true);
        QApplication::sendEvent(pressed, &held);  // presses it once only
        EXPECT_EQ(clicked, std::vector<QPushButton*>{pressed}) << Describe(*pressed);
        EXPECT_TRUE(screen.isVisible());
        clicked.clear();
      }
    }
    for (QPushButton* button : buttons) {
      QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
    }
  });
}

// No button does its work here; only which one is pressed counts.
TEST_P(Accessibility, AnAltKeyOfItsOwnReachesEachControl) {
  At([](QWidget& screen) {
    QObject* pressed = nullptr;
    for (auto* button : screen.findChildren<QAbstractButton*>()) {
      QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
      // At once: a moment later another key may have closed the screen.
      QObject::connect(button, &QAbstractButton::clicked, [&, button] { pressed = button; });
    }
    std::map<QString, QWidget*> keys;
    for (const auto& [key, control] : AltKeysOf(screen)) {
      const auto [other, isNew] = keys.emplace(key, control);
      EXPECT_TRUE(isNew) << key.toStdString() << " is the key of " << Describe(*control)
                         << " and of " << Describe(*other->second);
      if (!isNew || !control->isEnabled() || qobject_cast<QMenuBar*>(control) != nullptr) {
        continue;
      }
      pressed = nullptr;
      Press(static_cast<Qt::Key>(key.back().unicode()), Qt::AltModifier);
      QObject* reached =
          qobject_cast<QAbstractButton*>(control) ? pressed : QApplication::focusWidget();
      EXPECT_EQ(reached, control) << key.toStdString();
    }
    for (QWidget* control : Focusable(screen)) {
      EXPECT_TRUE(IsRestOfADate(*control) ||
                  std::ranges::any_of(keys, [&](const auto& key) { return key.second == control; }))
          << Describe(*control) << " has no key";
    }
    for (auto* button : screen.findChildren<QAbstractButton*>()) {
      QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
    }
  });
}

TEST_P(Accessibility, F1OpensTheHandbookAtTheChapterOfTheScreen) {
  if (GetParam().chapter == nullptr) {
    return;
  }
  At([](QWidget& screen) {
    Press(Qt::Key_F1);
    auto* handbook = screen.findChild<HandbookWindow*>();
    ASSERT_NE(handbook, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(handbook));
    Settle();
    auto& pages = Find<QTextBrowser>(*handbook, "pages");
    // Below the gap above the heading.
    const QTextCursor top = pages.cursorForPosition({20, pages.fontMetrics().height()});
    EXPECT_EQ(top.block().text().toStdString(), GetParam().chapter);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(handbook->isVisible());
    EXPECT_TRUE(screen.isVisible());
    screen.activateWindow();
  });
}

TEST_P(Accessibility, AScreenReaderNamesEveryButtonListAndColumn) {
  At([](QWidget& screen) {
    for (QWidget* control : Shown(screen)) {
      QAccessibleInterface& accessible = AccessibleOf(*control);
      if (qobject_cast<QAbstractButton*>(control) != nullptr) {
        EXPECT_NE(accessible.text(QAccessible::Name), "") << Describe(*control);
      } else if (qobject_cast<QComboBox*>(control) != nullptr) {
        const auto labels = accessible.relations(QAccessible::Label);
        ASSERT_FALSE(labels.isEmpty()) << Describe(*control);
        EXPECT_NE(labels.first().first->text(QAccessible::Name), "") << Describe(*control);
      } else if (const auto* table = qobject_cast<QTableView*>(control)) {
        int captions = 0;
        for (int child = 0; child < accessible.childCount(); ++child) {
          QAccessibleInterface& part = *accessible.child(child);
          if (part.role() == QAccessible::ColumnHeader) {
            EXPECT_NE(part.text(QAccessible::Name), "") << child;
            ++captions;
          }
        }
        EXPECT_EQ(captions, table->model()->columnCount());
      }
    }
  });
}

TEST_P(Accessibility, NoTextIsCutOffInAnySize) {
  for (const int points : {font_.pointSize(), 16}) {
    QFont font = font_;
    font.setPointSize(points);
    QApplication::setFont(font);
    At([](QWidget& screen) {
      Settle();
      for (QWidget* control : Shown(screen)) {
        ExpectFits(*control);
      }
    });
  }
}

TEST_P(Accessibility, EverythingCanBeUsedOnTheDisplay) {
  At([](QWidget& screen) {
    Settle();
    // Without a window frame of the usual size.
    const QSize room = screen.screen()->availableSize() - QSize(16, 48);
    EXPECT_LE(screen.width(), room.width());
    EXPECT_LE(screen.height(), room.height());
    for (const QPushButton* button : screen.findChildren<QPushButton*>()) {
      if (button->isVisible()) {
        EXPECT_EQ(button->visibleRegion().boundingRect(), button->rect()) << Describe(*button);
      }
    }
    for (QWidget* control : ReachedByTab(screen)) {
      control->setFocus(Qt::TabFocusReason);
      Settle();
      const QRect seen = control->visibleRegion().boundingRect();
      if (qobject_cast<QAbstractItemView*>(control) != nullptr) {
        EXPECT_GE(seen.height(), 4 * control->fontMetrics().height()) << Describe(*control);
      } else {
        EXPECT_EQ(seen, control->rect()) << Describe(*control);
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Screens, Accessibility, testing::ValuesIn(kScreens),
                         [](const testing::TestParamInfo<Screen>& tested) {
                           return std::string(tested.param.name);
                         });

}  // namespace
}  // namespace tarvell
