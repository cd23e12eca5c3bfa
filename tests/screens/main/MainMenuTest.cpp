// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "screens/main/frmSplash.h"
#include "screens/overview/frmOverview.h"
#include "screens/station/frmStationMain.h"
#include "screens/widgets/NoticeLine.h"
#include "support/DesktopTestPlatform.h"
#include "support/ScreenFaults.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

constexpr const char* kIni = R"(c:\windows\tarvell.ini)";
constexpr const char* kNoStation = "Station directory does not set.";

std::string IniOf(const std::string& calibrationDir, const std::string& stationDir) {
  return Lines({";", ";  Tar vell    Ini file", ";", "[Tarvell]", "SysRevision=A.02.61", "",
                "[Calfactors]", "Dir=" + calibrationDir, "", "[Stations]", "Dir=" + stationDir});
}

/// A system with a given version.
class MainMenuPlatform : public DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override {
    record = OSVersionRecord();
    record.family = 1;
    record.major = 4;
    record.minor = 10;
    record.build = 2222;
    return hasVersion;
  }
  bool hasVersion = true;
};

class MainMenu : public testing::Test {
 protected:
  MainMenu() : platform_(tree_.ProgramFolder()) {
    gStationDir.clear();
    gCalibrationDir.clear();
    gOSPlatform.clear();
    tree_.MakeFolders(R"(c:\calfactors)");
    tree_.MakeFolders(R"(c:\stations)");
  }

  void Start() {
    menu_.Form_Load(0);
    ASSERT_TRUE(menu_.isVisible());
  }
  /// Types both directories and presses Start; Start then uses these roots.
  void PressStart(const QString& stationDir, const QString& calibrationDir,
                  const std::string& stationRoot, const std::string& calibrationRoot) {
    Fill(menu_, "txtStationDir", stationDir);
    Fill(menu_, "txtCalibrationDir", calibrationDir);
    // Without this a screen that opens by mistake would wait for the user.
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [] {
      if (auto* screen = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        ADD_FAILURE() << "this screen must not open: " << screen->windowTitle().toStdString();
        screen->done(QDialog::Rejected);
      }
    });
    closer.start(100);
    Click(menu_, "btnStart");
    EXPECT_EQ(gStationDir, stationRoot);
    EXPECT_EQ(gCalibrationDir, calibrationRoot);
    EXPECT_EQ(TextOf(menu_, "txtStationDir"), stationDir.toStdString());
    EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), calibrationDir.toStdString());
  }

  void ExpectStationQuestion(QMessageBox::StandardButton answer) {
    ExpectQuestion("Input station folder does not exist.", answer);
  }
  void ExpectCalibrationQuestion(QMessageBox::StandardButton answer) {
    ExpectQuestion("Select calibration data folder is not exist.", answer);
  }
  void ExpectCannotMake() {
    questions_.Expect({.text = "Cannot make folder!", .icon = QMessageBox::Critical},
                      QMessageBox::Ok);
  }

  TestTree tree_;
  MainMenuPlatform platform_;
  User user_;
  ScriptedQuestions questions_;
  frmMain menu_;

 private:
  void ExpectQuestion(const QString& firstLine, QMessageBox::StandardButton answer) {
    questions_.Expect(
        {.text = firstLine + "\r\nIf you want to create new folder, then press Ok button.",
         .icon = QMessageBox::Information,
         .buttons = QMessageBox::Ok | QMessageBox::Cancel,
         .defaultButton = QMessageBox::Cancel},
        answer);
  }
};

// ---- The splash screen.

TEST(Splash, ShowsNameRevisionAndPictureAndCannotBeClosed) {
  frmSplash splash;
  splash.show();
  EXPECT_EQ(splash.windowTitle(), "Morrand Tarvell - A.02.61");
  EXPECT_EQ(Find<QLabel>(splash, "Label1").text(), "Tar Vell");
  EXPECT_EQ(Find<QLabel>(splash, "lblRevision").text(), "Rev.A.02.61");
  EXPECT_TRUE(Find<QLabel>(splash, "Label2").text().contains("the Tarvell authors"));
  EXPECT_FALSE(Find<QLabel>(splash, "Picture1").pixmap().isNull());
  for (const QLabel* label : splash.findChildren<QLabel*>()) {
    EXPECT_TRUE(label->isVisible()) << label->objectName().toStdString();
  }
  ASSERT_TRUE(QTest::qWaitForWindowActive(&splash));
  EXPECT_FALSE(splash.close());
  QTest::keyClick(&splash, Qt::Key_Escape);
  QTest::keyClick(&splash, Qt::Key_Return);
  EXPECT_TRUE(splash.isVisible());
}

TEST_F(MainMenu, IsShownAfterTheSplashScreenWhichStaysForTheGivenTime) {
  const auto splashes = [] {
    return std::ranges::count_if(QApplication::topLevelWidgets(), [](QWidget* window) {
      return dynamic_cast<frmSplash*>(window) != nullptr && window->isVisible();
    });
  };
  int looks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    ++looks;
    EXPECT_EQ(splashes(), 1);
    EXPECT_FALSE(menu_.isVisible());
  });
  for (const int milliseconds : {300, 1000}) {
    timer.start(20);
    QElapsedTimer clock;
    clock.start();
    milliseconds == 1000 ? menu_.Form_Load() : menu_.Form_Load(0.3);
    timer.stop();
    EXPECT_GE(clock.elapsed(), milliseconds - 20);
    EXPECT_LT(clock.elapsed(), milliseconds + 3000);
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(menu_.isVisible());
    EXPECT_EQ(splashes(), 0);
  }
}

// ---- The screen.

TEST_F(MainMenu, ShowsItsCaptionsAndTheVersionOfTheSystem) {
  EXPECT_EQ(menu_.windowTitle(), "Calibration Factor Data Editor");
  Start();
  EXPECT_EQ(menu_.windowTitle(), "Morrand Tarvell - A.02.61");
  using Captions = std::vector<std::pair<const char*, const char*>>;
  for (const auto& [name, caption] : Captions{{"Label1", "Main Menu"},
                                              {"Label2", "Input the name of the directory below."},
                                              {"Label5", "Calibration data directory"},
                                              {"Label4", "station data directory"},
                                              {"lblVersionString", "now worked on 4.10.2222(95)"},
                                              {"Option2", "Calibration Data"},
                                              {"Option1", "Station Data"},
                                              {"btnBrowseCalibrationDir", "Browse"},
                                              {"btnBrowseStationDir", "Browse"},
                                              {"btnStart", "Start"},
                                              {"btnExit", "Exit"}}) {
    const auto& control = Find<QWidget>(menu_, name);
    EXPECT_EQ(PlainCaption(control.property("text").toString()), caption) << name;
    EXPECT_TRUE(control.isVisible() && control.isEnabled()) << name;
    EXPECT_FALSE(control.property("checked").toBool()) << name;
  }
  EXPECT_EQ(PlainCaption(Find<QAction>(menu_, "mnuExit").text()), "Exit");
  Click(menu_, "Option2");
  Click(menu_, "Option1");
  EXPECT_FALSE(Find<QRadioButton>(menu_, "Option2").isChecked());
  platform_.hasVersion = false;
  gOSPlatform.clear();
  Start();
  EXPECT_EQ(Find<QLabel>(menu_, "lblVersionString").text(), "now worked on FAIL()");
  EXPECT_EQ(QGuiApplication::desktopFileName(), "tarvell");
  frmSplash splash;
  const QImage picture = Find<QLabel>(splash, "Picture1").pixmap().toImage();
  ASSERT_FALSE(picture.isNull());
  EXPECT_EQ(menu_.windowIcon().pixmap(picture.size()).toImage(), picture);
  const QSize small(16, 16);
  EXPECT_EQ(menu_.windowIcon().pixmap(small, 1).toImage(),
            QIcon(":/images/tarvell-16.svg").pixmap(small, 1).toImage());
}

TEST_F(MainMenu, HelpShowsTheHandbookAndAboutTheVersion) {
  Start();
  Click(menu_, "Option1");
  questions_.Expect({.text = "Morrand Tarvell\nVersion A.02.61", .title = "About Tarvell"},
                    QMessageBox::Ok);
  Press(Qt::Key_H, Qt::AltModifier);
  Press(Qt::Key_A);
  ASSERT_EQ(questions_.details.size(), 1);
  EXPECT_TRUE(
      questions_.details.front().contains("GNU General Public License, version 3 or later"));
  EXPECT_TRUE(questions_.details.front().contains(qVersion()));
  // The handbook beside the program is missing here.
  questions_.ExpectError({"The handbook is not installed. Have the program installed again."});
  Press(Qt::Key_H, Qt::AltModifier);
  Press(Qt::Key_H);
}

// ---- The two directories.

TEST_F(MainMenu, BrowsePicksADirectoryStartingAtTheOneInTheBox) {
  tree_.MakeFolders(R"(c:\picked\cal)");
  tree_.MakeFolders(R"(c:\picked\st)");
  Start();
  Fill(menu_, "txtStationDir", R"(c:\nowhere)");
  for (const auto& [title, button, box, shown, picked] :
       {std::array{"Browse for calibration data directory.", "btnBrowseCalibrationDir",
                   "txtCalibrationDir", R"(c:\calfactors)", R"(c:\picked\cal)"},
        std::array{"Browse for station data directory.", "btnBrowseStationDir", "txtStationDir",
                   R"(c:\nowhere)", R"(c:\picked\st)"}}) {
    questions_.ExpectFolderPicker(title, "");
    Click(menu_, button);
    EXPECT_EQ(TextOf(menu_, box), shown) << "cancelled";
    questions_.ExpectFolderPicker(title, QString::fromStdString(tree_.Native(picked).string()));
    Click(menu_, button);
    EXPECT_EQ(TextOf(menu_, box), picked);
  }
  ASSERT_EQ(questions_.initialDirs.size(), 4U);
  EXPECT_EQ(questions_.initialDirs.at(0).toStdString(),
            tree_.Native(R"(c:\calfactors)").generic_string());
  EXPECT_EQ(std::filesystem::path(questions_.initialDirs.at(2).toStdString()),
            tree_.Root() / "drives" / "c");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)") << "used only after Start";
  EXPECT_EQ(gStationDir, R"(c:\stations)");
}

TEST_F(MainMenu, ADirectoryTakesNoLineEndAndACommaIsReportedWhenItIsEntered) {
  Start();
  QGuiApplication::clipboard()->setText("c:\\cal\r\n");
  Fill(menu_, "txtCalibrationDir", "");
  Press(Qt::Key_V, Qt::ControlModifier);
  QGuiApplication::clipboard()->setText("a\nb");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\cal)");
  const auto& notices = Find<NoticeLine>(menu_, "notices");
  const auto& box = Find<QLineEdit>(menu_, "txtStationDir");
  const QString notice =
      "The station data directory holds a comma. The next start reads \"c:\\sta\" in its place. "
      "Choose one without a comma.";
  EXPECT_TRUE(notices.text().contains("cannot hold a line end"));
  Fill(menu_, "txtCalibrationDir", "c");
  Fill(menu_, "txtStationDir", R"(c:\sta,b)");
  EXPECT_EQ(notices.text(), "") << "before the box is left";
  Press(Qt::Key_Tab);
  EXPECT_EQ(notices.text(), notice);
  EXPECT_EQ(MarkOf(&box), notice);
  Fill(menu_, "txtStationDir", R"(c:\stations)");
  EXPECT_EQ(notices.text(), "");
  EXPECT_EQ(MarkOf(&box), "");
  questions_.ExpectFolderPicker("Browse for calibration data directory.", "/new/cal,b");
  Click(menu_, "btnBrowseCalibrationDir");
  EXPECT_TRUE(notices.text().contains("\"/new/cal\" in its place")) << notices.text().toStdString();
  // At the end a message shows the notice of a box that was not left; the other was reported.
  Fill(menu_, "txtStationDir", R"(c:\sta,b)");
  questions_.ExpectNotice(notice);
  menu_.close();
}

// ---- Start.

TEST_F(MainMenu, StartChecksTheStationDirectoryFirst) {
  Start();
  PressStart(R"(c:\stations)", R"(c:\calfactors)", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "without an option no screen opens";
  Click(menu_, "Option2");
  for (const char* station : {"", "  "}) {
    questions_.ExpectNotice(kNoStation);
    PressStart(station, R"(c:\missing)", R"(c:\stations)", R"(c:\calfactors)");
  }
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart(R"(c:\other)", "", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_EQ(tree_.Names("c:\\"), (Texts{"calfactors", "stations"}));
  // The station root is stored although the calibration directory is missing.
  ExpectStationQuestion(QMessageBox::Ok);
  questions_.ExpectNotice("Calibration data directory does not set.");
  PressStart(R"(c:\other)", "  ", R"(c:\other)", R"(c:\calfactors)");
  EXPECT_TRUE(std::filesystem::is_directory(tree_.Native(R"(c:\other)")));
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  PressStart(R"(c:\stations)", R"(c:\missing)", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_FALSE(tree_.Exists(R"(c:\missing)"));
  // The folder is looked for as it is typed, and stored without the blanks around it.
  tree_.MakeFolders(R"(c:\st )");
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  PressStart(R"(c:\st )", R"(c:\calfactors )", R"(c:\st)", R"(c:\calfactors)");
}

TEST_F(MainMenu, AFolderThatCannotBeMadeOpensNoScreen) {
  tree_.Write(R"(c:\file)", "x");
  Start();
  Click(menu_, "Option2");
  ExpectStationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart(R"(c:\no\where)", R"(c:\calfactors)", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_NE(questions_.details.back(), "");
  ExpectCalibrationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart(R"(c:\stations)", R"(c:\file)", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_EQ(tree_.Names("c:\\"), (Texts{"calfactors", "file", "stations"}));
  questions_.ExpectError({"mounted", "enter that folder here", R"(\\server\share)"});
  PressStart(R"(c:\stations)", R"(\\server\share)", R"(c:\stations)", R"(c:\calfactors)");
  // A relative directory is shown with the whole path that it means.
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart("no such folder", "", R"(c:\stations)", R"(c:\calfactors)");
  EXPECT_EQ(
      questions_.details.back().toStdString(),
      "It would be the folder\n" + (std::filesystem::current_path() / "no such folder").string());
}

TEST_F(MainMenu, EachOptionOpensItsScreenAndComesBack) {
  Start();
  const auto leave = [&](auto& screen) {
    EXPECT_TRUE(screen.isModal() && menu_.isVisible());
    Click(screen, "btnReturn");
  };
  for (int i = 0; i < 2; ++i) {
    Click(menu_, "Option2");
    user_.At<frmCalibrationMain>(leave);
    Click(menu_, "btnStart");
    Click(menu_, "Option1");
    user_.At<frmStationMain>(leave);
    Click(menu_, "btnStart");
    EXPECT_TRUE(menu_.isVisible());
  }
  EXPECT_FALSE(tree_.Exists(kIni));
}

TEST_F(MainMenu, F6OpensTheOverviewFromEveryMenu) {
  Start();
  Fill(menu_, "txtStationDir", R"(c:\stations)");
  Fill(menu_, "txtCalibrationDir", R"(c:\missing)");
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  Press(Qt::Key_F6);
  Fill(menu_, "txtCalibrationDir", R"(c:\calfactors)");
  int times = 0;
  const auto atOverview = [&](frmOverview& overview) {
    EXPECT_TRUE(overview.isModal());
    ++times;
    Press(Qt::Key_Escape);
    EXPECT_FALSE(overview.isVisible());
  };
  user_.At<frmOverview>(atOverview);
  Press(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
  Click(menu_, "Option2");
  user_.At<frmOverview>(atOverview);
  Press(Qt::Key_F6);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    user_.At<frmOverview>(atOverview);
    Press(Qt::Key_F6);
    Click(screen, "btnReturn");
  });
  Click(menu_, "btnStart");
  Click(menu_, "Option1");
  user_.At<frmStationMain>([&](frmStationMain& screen) {
    user_.At<frmOverview>(atOverview);
    Press(Qt::Key_F6);
    user_.At<frmOverview>(atOverview);
    Click(screen, "btnOverview");
    Click(screen, "btnReturn");
  });
  Click(menu_, "btnStart");
  EXPECT_EQ(times, 5);
}

TEST_F(MainMenu, EnterPressesStartAndEscapeDoesNotEndTheProgram) {
  Start();
  for (const char* box : {"txtStationDir", "txtCalibrationDir"}) {
    Fill(menu_, "txtStationDir", "");
    Find<QLineEdit>(menu_, box).setFocus();
    questions_.ExpectNotice(kNoStation);
    Press(Qt::Key_Return);
  }
  Click(menu_, "Option2");
  questions_.ExpectNotice(kNoStation);
  Press(Qt::Key_Enter);
  Press(Qt::Key_Escape);
  EXPECT_TRUE(menu_.isVisible());
  EXPECT_FALSE(tree_.Exists(kIni));
}

// ---- The end.

TEST_F(MainMenu, EveryWayOutWritesTheIniFileExactlyAsTyped) {
  const std::vector<std::function<void()>> ways = {
      [&] { Click(menu_, "btnExit"); },
      [&] {
        auto& bar = *menu_.findChild<QMenuBar*>();
        QTest::mouseClick(&bar, Qt::LeftButton, {},
                          bar.actionGeometry(&Find<QAction>(menu_, "mnuExit")).center());
      },
      [&] { menu_.close(); }};
  for (const auto& leave : ways) {
    tree_.Write(kIni, IniOf(R"(c:\a\very\long\directory\of\the\last\time)", R"(d:\st)"));
    Start();
    EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(d:\st)");
    EXPECT_EQ(gStationDir, R"(d:\st)");
    Find<QLineEdit>(menu_, "txtCalibrationDir").setText("  c:\\gr\u00f6\u00dfe \u6e2c\u5b9a ");
    Fill(menu_, "txtStationDir", R"(c:\my st  )");
    leave();
    EXPECT_FALSE(menu_.isVisible());
    EXPECT_EQ(tree_.Read(kIni), IniOf("  c:\\gr\u00f6\u00dfe \u6e2c\u5b9a ", R"(c:\my st  )"));
    EXPECT_EQ(gCalibrationDir, "  c:\\gr\u00f6\u00dfe \u6e2c\u5b9a ");
    EXPECT_EQ(gStationDir, R"(c:\my st  )");
    EXPECT_EQ(tree_.Names("c:\\"), (Texts{"calfactors", "stations", "windows"}));
  }
}

TEST_F(MainMenu, ExitReportsThatTheDirectoriesAreNotRememberedAndEnds) {
  tree_.Write(kIni, IniOf("c:\\old", "c:\\stations"));
  FaultPlatform platform;
  const auto exit = [&](const std::string& shownFirst) {
    Start();
    EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), shownFirst);
    Fill(menu_, "txtCalibrationDir", "c:\\typed");
    Click(menu_, "btnExit");
    EXPECT_FALSE(menu_.isVisible());
  };
  PressUnderEachFault(
      platform,
      [&](const ScreenFault& fault) {
        // The program ends, so the message does not say "try again".
        const std::string reason = fault.reason.substr(0, fault.reason.find(", then try again."));
        questions_.ExpectError(
            {"The two directories are not remembered for the next start. Cannot save the file: " +
                 reason,
             "then enter the directories again at the next start.", kIni});
        exit("c:\\old");
        EXPECT_EQ(tree_.Read(kIni),
                  IniOf(fault.isReplaced ? "c:\\typed" : "c:\\old", "c:\\stations"));
      },
      [&] { exit("c:\\typed"); });
}

}  // namespace
}  // namespace tarvell
