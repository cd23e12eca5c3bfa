// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "screens/main/frmSplash.h"
#include "screens/station/frmStationMain.h"
#include "screens/widgets/NoticeLine.h"
#include "support/DesktopTestPlatform.h"
#include "support/OrdinaryUser.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

constexpr const char* kIni = R"(c:\windows\tarvell.ini)";
constexpr const char* kNoStation = "Station directory does not set.";
constexpr const char* kNoCalibration = "Calibration data directory does not set.";

std::string IniOf(const std::string& calibrationDir, const std::string& stationDir) {
  return Lines({";", ";  Tar vell    Ini file", ";", "[Tarvell]", "SysRevision=A.02.61", "",
                "[Calfactors]", "Dir=" + calibrationDir, "", "[Stations]", "Dir=" + stationDir});
}

OSVersionRecord VersionRecord(int family, int major, int minor, int build) {
  OSVersionRecord record;
  record.family = family;
  record.major = major;
  record.minor = minor;
  record.build = build;
  return record;
}

/// A system whose version a test tells, and which counts how often the INI file is written.
class MainMenuPlatform : public DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override {
    record = version;
    return tellsVersion;
  }
  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    iniWrites += to.filename() == "tarvell.ini" ? 1 : 0;
    return DesktopTestPlatform::Replace(from, to);
  }

  bool tellsVersion = true;
  OSVersionRecord version = VersionRecord(1, 4, 10, 2222);
  int iniWrites = 0;
};

class MainMenu : public testing::Test {
 protected:
  MainMenu() : platform_(tree_.ProgramFolder()) {
    gStationDir.clear();
    gCalibrationDir.clear();
    gOSPlatform.clear();
  }

  /// Starts the program with both folders in place, or without.
  void Start(bool withFolders = true) {
    if (withFolders) {
      tree_.MakeFolders(R"(c:\calfactors)");
      tree_.MakeFolders(R"(c:\stations)");
    }
    menu_.Form_Load(0);
    ASSERT_TRUE(menu_.isVisible());
  }

  void FillStation(const QString& text) { Fill(menu_, "txtStationDir", text); }
  void FillCalibration(const QString& text) { Fill(menu_, "txtCalibrationDir", text); }
  void PressStart() { Click(menu_, "btnStart"); }

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

// ---- The screen.

TEST_F(MainMenu, IsKnownToTheDesktopByItsEntryAndByThePictureOfTheSplash) {
  Start();
  EXPECT_EQ(QGuiApplication::desktopFileName(), "tarvell");
  frmSplash splash;
  const QImage picture = Find<QLabel>(splash, "Picture1").pixmap().toImage();
  ASSERT_FALSE(picture.isNull());
  EXPECT_EQ(menu_.windowIcon().pixmap(picture.size()).toImage(), picture);
}

TEST_F(MainMenu, ShowsItsCaptions) {
  EXPECT_EQ(menu_.windowTitle(), "Calibration Factor Data Editor");
  Start();
  EXPECT_EQ(menu_.windowTitle(), "Morrand Tarvell - A.02.61");
  const std::vector<std::pair<const char*, const char*>> labels = {
      {"Label1", "Main Menu"},
      {"Label2", "Input the name of the directory below."},
      {"Label5", "Calibration data directory"},
      {"Label4", "station data directory"}};
  for (const auto& [name, caption] : labels) {
    EXPECT_EQ(Find<QLabel>(menu_, name).text(), caption) << name;
  }
  const std::vector<std::pair<const char*, const char*>> buttons = {
      {"Option2", "Calibration Data"},
      {"Option1", "Station Data"},
      {"btnBrowseCalibrationDir", "Browse"},
      {"btnBrowseStationDir", "Browse"},
      {"btnStart", "Start"},
      {"btnExit", "Exit"}};
  for (const auto& [name, caption] : buttons) {
    const auto& button = Find<QAbstractButton>(menu_, name);
    EXPECT_EQ(button.text(), caption) << name;
    EXPECT_TRUE(button.isVisible() && button.isEnabled()) << name;
  }
  EXPECT_EQ(Find<QAction>(menu_, "mnuExit").text(), "Exit");
}

TEST_F(MainMenu, NoOptionIsSelectedAtFirstAndOneAtMostLater) {
  Start();
  const auto& calibration = Find<QRadioButton>(menu_, "Option2");
  const auto& station = Find<QRadioButton>(menu_, "Option1");
  EXPECT_FALSE(calibration.isChecked());
  EXPECT_FALSE(station.isChecked());
  Click(menu_, "Option2");
  EXPECT_TRUE(calibration.isChecked());
  EXPECT_FALSE(station.isChecked());
  Click(menu_, "Option1");
  EXPECT_FALSE(calibration.isChecked());
  EXPECT_TRUE(station.isChecked());
}

TEST_F(MainMenu, TellsTheVersionOfTheSystem) {
  Start();
  const auto& label = Find<QLabel>(menu_, "lblVersionString");
  EXPECT_EQ(label.text(), "now worked on 4.10.2222(95)");
  EXPECT_TRUE(label.isVisible());
}

TEST_F(MainMenu, TellsTheVersionOfTheOtherFamily) {
  platform_.version = VersionRecord(2, 5, 0, 2195);
  Start();
  EXPECT_EQ(Find<QLabel>(menu_, "lblVersionString").text(), "now worked on 5.0.2195(NT)");
}

TEST_F(MainMenu, TellsThatTheSystemDoesNotTellItsVersion) {
  platform_.tellsVersion = false;
  Start();
  EXPECT_EQ(Find<QLabel>(menu_, "lblVersionString").text(), "now worked on FAIL()");
  EXPECT_TRUE(Find<QLabel>(menu_, "lblVersionString").isVisible());
}

TEST_F(MainMenu, TheKeyboardGoesThroughTheControlsInReadingOrder) {
  Start();
  FillCalibration("x");
  for (const char* next :
       {"btnBrowseCalibrationDir", "txtStationDir", "btnBrowseStationDir", "btnStart", "btnExit"}) {
    Press(Qt::Key_Tab);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
  }
}

// ---- The two directories.

TEST_F(MainMenu, AFirstStartGivesTheDefaults) {
  Start(false);
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\calfactors)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(c:\stations)");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
  EXPECT_EQ(gStationDir, R"(c:\stations)");
  EXPECT_FALSE(tree_.Exists(kIni));
  EXPECT_FALSE(tree_.Exists(R"(c:\calfactors)"));
}

TEST_F(MainMenu, AFurtherStartGivesWhatTheIniFileHolds) {
  tree_.Write(kIni, IniOf(R"(d:\data\cal)", R"(e:\st)"));
  Start(false);
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(d:\data\cal)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(e:\st)");
  EXPECT_EQ(gCalibrationDir, R"(d:\data\cal)");
  EXPECT_EQ(gStationDir, R"(e:\st)");
}

TEST_F(MainMenu, BrowsePicksADirectory) {
  tree_.MakeFolders(R"(c:\picked\cal)");
  tree_.MakeFolders(R"(c:\picked\st)");
  Start();
  questions_.ExpectFolderPicker("Browse for calibration data directory.",
                                QString::fromStdString(tree_.Native(R"(c:\picked\cal)")));
  Click(menu_, "btnBrowseCalibrationDir");
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\picked\cal)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(c:\stations)");
  questions_.ExpectFolderPicker("Browse for station data directory.",
                                QString::fromStdString(tree_.Native(R"(c:\picked\st)")));
  Click(menu_, "btnBrowseStationDir");
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\picked\cal)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(c:\picked\st)");
  // What was picked is not in use before Start.
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
  EXPECT_EQ(gStationDir, R"(c:\stations)");
}

TEST_F(MainMenu, BrowseStartsAtTheDirectoryInTheBox) {
  Start();
  questions_.ExpectFolderPicker("Browse for calibration data directory.", "");
  Click(menu_, "btnBrowseCalibrationDir");
  FillStation(R"(c:\nowhere)");
  questions_.ExpectFolderPicker("Browse for station data directory.", "");
  Click(menu_, "btnBrowseStationDir");
  ASSERT_EQ(questions_.initialDirs.size(), 2U);
  EXPECT_EQ(std::filesystem::path(questions_.initialDirs.at(0).toStdString()),
            tree_.Native(R"(c:\calfactors)"));
  EXPECT_TRUE(std::filesystem::equivalent(questions_.initialDirs.at(1).toStdString(),
                                          tree_.Native("c:\\")));
}

TEST_F(MainMenu, ACancelledBrowseLeavesTheText) {
  Start();
  FillCalibration(" kept 1 ");
  FillStation(" kept 2 ");
  questions_.ExpectFolderPicker("Browse for calibration data directory.", "");
  Click(menu_, "btnBrowseCalibrationDir");
  questions_.ExpectFolderPicker("Browse for station data directory.", "");
  Click(menu_, "btnBrowseStationDir");
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), " kept 1 ");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), " kept 2 ");
}

// ---- Start.

TEST_F(MainMenu, ADirectoryWithACommaIsReportedWhenItIsEnteredAndNothingWaits) {
  Start();
  const auto& notices = Find<NoticeLine>(menu_, "notices");
  const auto& box = Find<QLineEdit>(menu_, "txtStationDir");
  const std::string said =
      "The station data directory holds a comma. The next start reads \"c:\\sta\" in its place. "
      "Choose one without a comma.";
  Fill(menu_, "txtStationDir", R"(c:\sta,b)");
  EXPECT_EQ(notices.text(), "") << "before the box is left";
  Press(Qt::Key_Tab);
  EXPECT_EQ(notices.text().toStdString(), said);
  EXPECT_EQ(MarkOf(&box).toStdString(), said);
  Fill(menu_, "txtStationDir", R"(c:\stations)");
  EXPECT_EQ(notices.text(), "");
  EXPECT_EQ(MarkOf(&box), "");

  tree_.MakeFolders(R"(c:\cal,b)");
  Fill(menu_, "txtCalibrationDir", R"(c:\cal,b)");
  Press(Qt::Key_Return);
  EXPECT_TRUE(notices.text().contains("\"c:\\cal\" in its place")) << notices.text().toStdString();
  EXPECT_EQ(gCalibrationDir, R"(c:\cal,b)");

  Fill(menu_, "txtCalibrationDir", R"(c:\calfactors)");
  questions_.ExpectFolderPicker("Browse for calibration data directory.", "/new/cal,b");
  Click(menu_, "btnBrowseCalibrationDir");
  EXPECT_TRUE(notices.text().contains("\"/new/cal\" in its place")) << notices.text().toStdString();
}

TEST_F(MainMenu, ADirectoryWithACommaIsReportedAlsoWhenTheProgramEndsBeforeTheBoxIsLeft) {
  Start();
  Fill(menu_, "txtStationDir", R"(c:\sta,b)");
  questions_.ExpectNotice(
      "The station data directory holds a comma. The next start reads \"c:\\sta\" in its place. "
      "Choose one without a comma.");
  menu_.close();
}

TEST_F(MainMenu, ADirectoryHoldsNoLineEndButOneAfterAPastedTextIsDropped) {
  Start();
  QGuiApplication::clipboard()->setText("c:\\cal\r\n");
  Fill(menu_, "txtCalibrationDir", "");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\cal)");
  QGuiApplication::clipboard()->setText("a\nb");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\cal)");
  EXPECT_TRUE(Find<NoticeLine>(menu_, "notices").text().contains("cannot hold a line end"));
}

TEST_F(MainMenu, WithoutAStationDirectoryNothingElseIsLookedAt) {
  Start();
  for (const char* calibration : {R"(c:\calfactors)", R"(c:\missing)", ""}) {
    // Blanks alone name no directory either.
    for (const char* station : {"", "  "}) {
      FillStation(station);
      FillCalibration(calibration);
      questions_.ExpectNotice(kNoStation);
      PressStart();
    }
  }
  EXPECT_EQ(gStationDir, R"(c:\stations)");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
  EXPECT_FALSE(tree_.Exists(R"(c:\missing)"));
}

TEST_F(MainMenu, ARefusedStationFolderChangesNothing) {
  Start();
  Click(menu_, "Option2");
  FillStation(R"(c:\other)");
  FillCalibration("");
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_FALSE(tree_.Exists(R"(c:\other)"));
  EXPECT_EQ(gStationDir, R"(c:\stations)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(c:\other)");
}

TEST_F(MainMenu, AnAgreedStationFolderIsMadeBeforeTheCalibrationTextIsLookedAt) {
  Start();
  FillStation(R"(c:\other)");
  FillCalibration("");
  ExpectStationQuestion(QMessageBox::Ok);
  questions_.ExpectNotice(kNoCalibration);
  PressStart();
  EXPECT_TRUE(tree_.Exists(R"(c:\other)"));
  EXPECT_EQ(gStationDir, R"(c:\other)");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
}

TEST_F(MainMenu, WithoutACalibrationDirectoryTheStationIsStoredAllTheSame) {
  tree_.MakeFolders(R"(c:\other)");
  Start();
  Click(menu_, "Option1");
  FillStation(R"(c:\other)");
  for (const char* calibration : {"", " "}) {
    FillCalibration(calibration);
    questions_.ExpectNotice(kNoCalibration);
    PressStart();
  }
  EXPECT_EQ(gStationDir, R"(c:\other)");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
}

TEST_F(MainMenu, ARefusedCalibrationFolderOpensNothing) {
  Start();
  Click(menu_, "Option2");
  FillCalibration(R"(c:\other)");
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_FALSE(tree_.Exists(R"(c:\other)"));
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
}

TEST_F(MainMenu, BothFoldersAreMadeTheStationsFirst) {
  Start(false);
  ExpectStationQuestion(QMessageBox::Ok);
  ExpectCalibrationQuestion(QMessageBox::Ok);
  PressStart();
  EXPECT_TRUE(std::filesystem::is_directory(tree_.Native(R"(c:\stations)")));
  EXPECT_TRUE(std::filesystem::is_directory(tree_.Native(R"(c:\calfactors)")));
  // From now on there is nothing to ask.
  PressStart();
}

TEST_F(MainMenu, BothFoldersAreCheckedWhicheverScreenIsChosen) {
  Start(false);
  Click(menu_, "Option2");
  ExpectStationQuestion(QMessageBox::Ok);
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  PressStart();
  Click(menu_, "Option1");
  ExpectCalibrationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_EQ(tree_.Names("c:\\"), (Texts{"stations"}));
}

TEST_F(MainMenu, TheFolderTestIsUntrimmedAndWhatIsStoredIsTrimmed) {
  tree_.MakeFolders(R"(c:\st )");
  tree_.MakeFolders(R"(c:\cal )");
  Start();
  FillStation(R"(c:\st )");
  FillCalibration(R"(c:\cal )");
  PressStart();
  EXPECT_EQ(gStationDir, R"(c:\st)");
  EXPECT_EQ(gCalibrationDir, R"(c:\cal)");
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), R"(c:\st )");
  EXPECT_EQ(TextOf(menu_, "txtCalibrationDir"), R"(c:\cal )");
  FillStation(R"(c:\stations )");
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_EQ(gStationDir, R"(c:\st)");
}

TEST_F(MainMenu, AStationFolderWithoutAParentCannotBeMade) {
  Start();
  Click(menu_, "Option2");
  FillStation(R"(c:\no\where)");
  ExpectStationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart();
  EXPECT_FALSE(tree_.Exists(R"(c:\no)"));
  EXPECT_EQ(gStationDir, R"(c:\stations)");
  EXPECT_TRUE(menu_.isVisible());
}

TEST_F(MainMenu, ACalibrationFolderWithoutAParentCannotBeMade) {
  Start();
  Click(menu_, "Option2");
  FillCalibration(R"(c:\no\where)");
  ExpectCalibrationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart();
  EXPECT_FALSE(tree_.Exists(R"(c:\no)"));
  EXPECT_EQ(gStationDir, R"(c:\stations)");
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
}

TEST_F(MainMenu, AShareIsNotMadeAsAFolderButReachedByOne) {
  Start();
  Click(menu_, "Option1");
  FillStation(R"(\\server\share)");
  questions_.ExpectError({"mounted", "enter that folder here", R"(\\server\share)"});
  PressStart();
  FillStation(R"(c:\stations)");
  FillCalibration("//no-such-server/share");
  questions_.ExpectError({"mounted", "//no-such-server/share"});
  PressStart();
  EXPECT_EQ(gCalibrationDir, R"(c:\calfactors)");
}

TEST_F(MainMenu, ADirectoryWithoutItsBeginningIsShownAsWhatItMeansBeforeItIsMade) {
  Start();
  FillStation("no such folder");
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_EQ(
      questions_.details.back().toStdString(),
      "It would be the folder\n" + (std::filesystem::current_path() / "no such folder").string());
  FillStation(R"(c:\other)");
  ExpectStationQuestion(QMessageBox::Cancel);
  PressStart();
  EXPECT_EQ(questions_.details.back(), "");
}

TEST_F(MainMenu, AFileIsNoFolderAndNoneCanBeMadeInItsPlace) {
  tree_.Write(R"(c:\file)", "x");
  Start();
  FillStation(R"(c:\file)");
  ExpectStationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart();
  EXPECT_EQ(tree_.Read(R"(c:\file)"), "x");
}

TEST_F(MainMenu, AFolderThatMayNotBeMadeIsTold) {
  const OrdinaryUser user(tree_.Root());
  tree_.MakeFolders(R"(c:\locked)");
  const LockedFolder locked(tree_.Native(R"(c:\locked)"));
  Start();
  FillCalibration(R"(c:\locked\cal)");
  ExpectCalibrationQuestion(QMessageBox::Ok);
  ExpectCannotMake();
  PressStart();
  EXPECT_EQ(tree_.Names(R"(c:\locked)"), Texts{});
}

TEST_F(MainMenu, WithoutAnOptionNothingOpensAndBothAreStored) {
  tree_.MakeFolders(R"(c:\st)");
  tree_.MakeFolders(R"(c:\cal)");
  Start();
  FillStation(R"(c:\st)");
  FillCalibration(R"(c:\cal)");
  PressStart();
  EXPECT_EQ(gStationDir, R"(c:\st)");
  EXPECT_EQ(gCalibrationDir, R"(c:\cal)");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_FALSE(tree_.Exists(kIni)) << "the INI file is written at the end only";
}

TEST_F(MainMenu, CalibrationDataOpensItsMenuAndComesBack) {
  Start();
  Click(menu_, "Option2");
  for (int i = 0; i < 2; ++i) {
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
      EXPECT_TRUE(screen.isModal());
      EXPECT_TRUE(menu_.isVisible());
      Click(screen, "btnReturn");
    });
    PressStart();
    EXPECT_TRUE(menu_.isVisible());
  }
}

TEST_F(MainMenu, StationDataOpenTheirListAndComeBack) {
  Start();
  Click(menu_, "Option1");
  for (int i = 0; i < 2; ++i) {
    user_.At<frmStationMain>([&](frmStationMain& screen) {
      EXPECT_TRUE(screen.isModal());
      EXPECT_TRUE(menu_.isVisible());
      Click(screen, "btnReturn");
    });
    PressStart();
    EXPECT_TRUE(menu_.isVisible());
  }
}

TEST_F(MainMenu, EnterPressesStart) {
  Start();
  for (const char* box : {"txtStationDir", "txtCalibrationDir"}) {
    FillStation("");
    Find<QLineEdit>(menu_, box).setFocus();
    questions_.ExpectNotice(kNoStation);
    Press(Qt::Key_Return);
  }
  Click(menu_, "Option2");
  questions_.ExpectNotice(kNoStation);
  Press(Qt::Key_Enter);
}

// ---- The end.

TEST_F(MainMenu, EscapeDoesNotEndTheProgram) {
  Start();
  FillStation("typed");
  Press(Qt::Key_Escape);
  EXPECT_TRUE(menu_.isVisible());
  EXPECT_EQ(TextOf(menu_, "txtStationDir"), "typed");
  EXPECT_EQ(platform_.iniWrites, 0);
}

class MainMenuEnd : public MainMenu {
 protected:
  /// Ends the program by `leave` with blanks around both directories, neither of which exists.
  template <typename Leave>
  void ExpectWrittenOnce(const Leave& leave) {
    Start(false);
    FillCalibration(R"(  c:\my cal )");
    FillStation(R"(c:\my st  )");
    EXPECT_EQ(platform_.iniWrites, 0);
    leave();
    EXPECT_FALSE(menu_.isVisible());
    EXPECT_EQ(platform_.iniWrites, 1);
    EXPECT_EQ(tree_.Read(kIni), IniOf(R"(  c:\my cal )", R"(c:\my st  )"));
    EXPECT_EQ(gCalibrationDir, R"(  c:\my cal )");
    EXPECT_EQ(gStationDir, R"(c:\my st  )");
    EXPECT_EQ(tree_.Names("c:\\"), Texts{"windows"});
  }
};

TEST_F(MainMenuEnd, ByTheExitButtonWritesTheIniFileOnce) {
  ExpectWrittenOnce([&] { Click(menu_, "btnExit"); });
}

TEST_F(MainMenuEnd, ByTheExitEntryWritesTheIniFileOnce) {
  ExpectWrittenOnce([&] {
    auto& bar = *menu_.findChild<QMenuBar*>();
    QTest::mouseClick(&bar, Qt::LeftButton, {},
                      bar.actionGeometry(&Find<QAction>(menu_, "mnuExit")).center());
  });
}

TEST_F(MainMenuEnd, ByClosingTheWindowWritesTheIniFileOnce) {
  ExpectWrittenOnce([&] { menu_.close(); });
}

TEST_F(MainMenuEnd, ReplacesTheIniFileOfTheLastTime) {
  tree_.Write(kIni, IniOf(R"(c:\a\very\long\directory\of\the\last\time)", R"(c:\stations)"));
  Start(false);
  FillCalibration(R"(c:\b)");
  Click(menu_, "btnExit");
  EXPECT_EQ(tree_.Read(kIni), IniOf(R"(c:\b)", R"(c:\stations)"));
  EXPECT_EQ(tree_.Names(R"(c:\windows)"), Texts{"tarvell.ini"});
}

TEST_F(MainMenuEnd, EveryCharacterComesBackAtTheNextStart) {
  Start(false);
  Find<QLineEdit>(menu_, "txtCalibrationDir").setText("c:\\gr\u00f6\u00dfe \u6e2c\u5b9a");
  FillStation("c:\\x");
  Click(menu_, "btnExit");
  EXPECT_EQ(tree_.Read(kIni), IniOf("c:\\gr\u00f6\u00dfe \u6e2c\u5b9a", "c:\\x"));
  frmMain next;
  next.Form_Load(0);
  EXPECT_EQ(TextOf(next, "txtCalibrationDir"), "c:\\gr\u00f6\u00dfe \u6e2c\u5b9a");
  EXPECT_EQ(TextOf(next, "txtStationDir"), "c:\\x");
}

TEST_F(MainMenuEnd, WithoutTheRightToWriteTheIniFileSaysSoOnceAndEnds) {
  tree_.MakeFolders(R"(c:\windows)");
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(R"(c:\windows)"));
  Start();
  questions_.ExpectError({"The two directories are not remembered", "permission", kIni});
  Click(menu_, "btnExit");
  EXPECT_FALSE(menu_.isVisible());
  EXPECT_EQ(tree_.Names(R"(c:\windows)"), Texts{});
}

}  // namespace
}  // namespace tarvell
