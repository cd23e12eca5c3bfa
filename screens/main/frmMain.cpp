// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/main/frmMain.h"

#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QIcon>
#include <QMenuBar>
#include <QWindow>

#include <cstdint>
#include <string>
#include <string_view>

#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "core/session/CommonStringModule.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/Version.h"
#include "core/session/mOSVersion.h"
#include "core/text/Text.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmSplash.h"
#include "screens/overview/frmOverview.h"
#include "screens/station/frmStationMain.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/FolderPicker.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/OneLineValidator.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

constexpr std::int16_t kVersionLabelLevel = 3;
constexpr std::int16_t kMinVisibleLevel = 2;
constexpr int kMaxExposureTime = 200;  // ms

// The setting of the last choice, and its values.
constexpr const char* kLastChoice = "last/choice";
constexpr const char* kStations = "stations";
constexpr const char* kCalibration = "calibration";

/// Runs pending window events until the window system shows `window`, or until kMaxExposureTime has
/// passed.
void RunPendingEvents(const QWidget& window) {
  QElapsedTimer timer;
  timer.start();
  do {
    QApplication::processEvents();
  } while (!window.windowHandle()->isExposed() && timer.elapsed() < kMaxExposureTime);
  QApplication::processEvents();
}

/// The text of an error for the end of the program, after which the user cannot try again.
std::string WithoutTryAgain(std::string text) {
  static constexpr std::string_view kTryAgain = ", then try again.";
  if (text.ends_with(kTryAgain)) {
    text.replace(text.size() - kTryAgain.size(), kTryAgain.size(),
                 ", then enter the directories again at the next start.");
  }
  return text;
}

/// The icon, with its own drawing for 16 pixels: the large one would be blurred in that size.
QIcon ProgramIcon() {
  constexpr QSize kSmall(16, 16);
  QIcon icon(":/images/tarvell.svg");
  icon.addPixmap(QIcon(":/images/tarvell-16.svg").pixmap(kSmall, 1));
  return icon;
}

void ShowSplash(double seconds) {
  frmSplash splash;
  splash.show();
  RunPendingEvents(splash);
  WaitSeconds(seconds);
  QApplication::processEvents();
}

}  // namespace

frmMain::frmMain() : QDialog(nullptr, Qt::Window), ui_(std::make_unique<Ui::frmMain>()) {
  QApplication::setWindowIcon(ProgramIcon());
  QGuiApplication::setDesktopFileName("tarvell");
  ui_->setupUi(this);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  for (QLineEdit* box : {ui_->txtCalibrationDir, ui_->txtStationDir}) {
    box->setValidator(new OneLineValidator(box));  // the box owns it
    // A text is checked when it is complete, not while it is typed.
    connect(box, &QLineEdit::textChanged, this, [this, box] { Notice(box, {}); });
    connect(box, &QLineEdit::editingFinished, this, [this, box] { CheckDirectory(box); });
    connect(box, &QLineEdit::inputRejected, this, [this, box] {
      Notice(box, tr("The text was left as it was: a directory cannot hold a line end."));
    });
  }
  SetUpMenu();
  connect(ui_->btnBrowseCalibrationDir, &QPushButton::clicked, this,
          &frmMain::btnBrowseCalibrationDir_Click);
  connect(ui_->btnBrowseStationDir, &QPushButton::clicked, this,
          &frmMain::btnBrowseStationDir_Click);
  connect(ui_->btnStart, &QPushButton::clicked, this, &frmMain::btnStart_Click);
  connect(ui_->btnExit, &QPushButton::clicked, this, &frmMain::btnExit_Click);
}

frmMain::~frmMain() {
  // Destroying the focused box emits editingFinished, although nothing was entered.
  ui_->txtCalibrationDir->disconnect(this);
  ui_->txtStationDir->disconnect(this);
}

void frmMain::SetUpMenu() {
  auto* menuBar = new QMenuBar(this);  // the layout takes it
  QAction* mnuExit = menuBar->addAction("&Exit");
  mnuExit->setObjectName("mnuExit");
  mnuExit->setShortcut(Qt::CTRL | Qt::Key_Q);
  connect(mnuExit, &QAction::triggered, this, &frmMain::btnExit_Click);
  QAction* mnuOverview = menuBar->addAction(tr("O&verview"));
  mnuOverview->setObjectName("mnuOverview");
  mnuOverview->setShortcut(Qt::Key_F6);
  connect(mnuOverview, &QAction::triggered, this, &frmMain::mnuOverview_Click);
  QMenu* mnuHelp = menuBar->addMenu("&Help");
  mnuHelp->setObjectName("mnuHelp");
  QAction* mnuHandbook = mnuHelp->addAction(tr("&Handbook"));
  mnuHandbook->setObjectName("mnuHandbook");
  mnuHandbook->setShortcut(QKeySequence::HelpContents);
  connect(mnuHandbook, &QAction::triggered, this, &frmMain::mnuHandbook_Click);
  QAction* mnuAbout = mnuHelp->addAction(tr("&About Tarvell"));
  mnuAbout->setObjectName("mnuAbout");
  connect(mnuAbout, &QAction::triggered, this, &frmMain::mnuAbout_Click);
  layout()->setMenuBar(menuBar);
}

void frmMain::mnuHandbook_Click() {
  Guarded(this, [this] { ShowHandbook(this, chapter::kFirstStart); });
}

void frmMain::mnuAbout_Click() {
  CurrentQuestions().Ask(
      this, {.text = ToQt(kApplicationTitle) + "\n" +
                     tr("Version %1").arg(ToQt(RevisionText(kMajorVersion, kMinorVersion))),
             .title = tr("About Tarvell"),
             .icon = QMessageBox::Information,
             .detail = tr("Copyright the Tarvell authors. Free software under the GNU General "
                          "Public License, version 3 or later, without any warranty.\n"
                          "Made with the toolkit Qt; this is Qt %1.")
                           .arg(qVersion())});
}

void frmMain::Form_Load(double splashSeconds) {
  hide();
  gVersionLabelLevel = kVersionLabelLevel;
  ShowSplash(splashSeconds);
  setWindowTitle(ToQt(kApplicationTitle) + " - " +
                 ToQt(RevisionText(kMajorVersion, kMinorVersion)));
  GetOSVersion();
  ui_->lblVersionString->setVisible(gVersionLabelLevel >= kMinVisibleLevel);
  ui_->lblVersionString->setText("now worked on " + ToQt(gOSVersion) + "(" + ToQt(gOSPlatform) +
                                 ")");
  ReadProfile(gCalibrationDir, gStationDir);
  ui_->txtCalibrationDir->setText(ToQt(gCalibrationDir));
  ui_->txtStationDir->setText(ToQt(gStationDir));
  const QString choice = RememberedText(kLastChoice);
  if (choice == kStations || choice == kCalibration) {
    (choice == kStations ? ui_->Option1 : ui_->Option2)->setChecked(true);
  }
  show();
}

void frmMain::btnBrowseCalibrationDir_Click() {
  Browse(ui_->txtCalibrationDir, "Browse for calibration data directory.");
}

void frmMain::btnBrowseStationDir_Click() {
  Browse(ui_->txtStationDir, "Browse for station data directory.");
}

void frmMain::Browse(QLineEdit* box, const QString& title) {
  Guarded(this, [&] {
    const QString picked = BrowseForFolder(this, box->text(), title);
    if (!picked.isEmpty()) {
      box->setText(picked);
      CheckDirectory(box);
    }
  });
}

QString frmMain::DirectoryNotice(const QLineEdit* box) const {
  const std::string directory = FromQt(box->text());
  return ToQt(box == ui_->txtCalibrationDir ? CalibrationDirNotice(directory)
                                            : StationDirNotice(directory));
}

void frmMain::CheckDirectory(QLineEdit* box) {
  Notice(box, DirectoryNotice(box));
}

void frmMain::Notice(QLineEdit* box, const QString& text) {
  ui_->notices->Report(box->objectName(), text);
  MarkBox(box, text);
}

void frmMain::btnStart_Click() {
  Guarded(this, [this] { Start(); });
}

bool frmMain::TakeRoots() {
  return TakeRoot(ui_->txtStationDir,
                  {.missing = "Station directory does not set.",
                   .question = "Input station folder does not exist.\r\n"
                               "If you want to create new folder, then press Ok button."},
                  gStationDir) &&
         TakeRoot(ui_->txtCalibrationDir,
                  {.missing = "Calibration data directory does not set.",
                   .question = "Select calibration data folder is not exist.\r\n"
                               "If you want to create new folder, then press Ok button."},
                  gCalibrationDir);
}

void frmMain::mnuOverview_Click() {
  Guarded(this, [this] {
    if (TakeRoots()) {
      ShowOverview(this);
    }
  });
}

bool frmMain::ShowOverview(QWidget* screen) {
  frmOverview overview(screen);
  overview.ShowModally();
  return overview.HasChangedFiles();
}

frmCalibrationMain& frmMain::CalibrationMain() {
  if (!calibrationMain_) {
    calibrationMain_ = std::make_unique<frmCalibrationMain>(this);
    connect(calibrationMain_.get(), &frmCalibrationMain::OverviewWanted, this, [this] {
      Guarded(calibrationMain_.get(), [this] {
        if (ShowOverview(calibrationMain_.get())) {
          calibrationMain_->RefreshLists();
        }
      });
    });
  }
  return *calibrationMain_;
}

frmStationMain& frmMain::StationMain() {
  if (!stationMain_) {
    stationMain_ = std::make_unique<frmStationMain>(this);
    connect(stationMain_.get(), &frmStationMain::OverviewWanted, this,
            [this] { Guarded(stationMain_.get(), [this] { ShowOverview(stationMain_.get()); }); });
  }
  return *stationMain_;
}

void frmMain::Start() {
  if (!TakeRoots()) {
    return;
  }
  if (ui_->Option1->isChecked() || ui_->Option2->isChecked()) {
    Remember(kLastChoice, QString(ui_->Option1->isChecked() ? kStations : kCalibration));
  }
  if (ui_->Option1->isChecked()) {
    StationMain().ShowModally();
  }
  if (ui_->Option2->isChecked()) {
    CalibrationMain().ShowModally();
  }
}

bool frmMain::TakeRoot(const QLineEdit* box, const RootTexts& texts, std::string& root) {
  const std::string folder = FromQt(box->text());
  // A text of blanks would mean the current folder or, with a name after it, the root of the disk.
  if (Trim(folder).empty()) {
    Tell(this, texts.missing);
    return false;
  }
  if (!EnsureFolder(folder, texts.question)) {
    return false;
  }
  root = Trim(folder);
  return true;
}

bool frmMain::EnsureFolder(const std::string& folder, const QString& question) {
  CheckNamesNoShare(folder);
  if (FolderExists(folder)) {
    return true;
  }
  const auto answer = CurrentQuestions().Ask(
      this, {.text = question,
             .buttons = QMessageBox::Ok | QMessageBox::Cancel,
             .defaultButton = QMessageBox::Cancel,
             .detail = IsRelative(folder) ? "It would be the folder\n" + ToQt(FullPathText(folder))
                                          : QString()});
  return answer == QMessageBox::Ok &&
         Guarded(
             this, [&] { MakeFolder(folder); },
             [this](const Error& error) {
               CurrentQuestions().Ask(this, {.text = "Cannot make folder!",
                                             .icon = QMessageBox::Critical,
                                             .detail = ToQt(error.what())});
             });
}

void frmMain::btnExit_Click() {
  close();
}

void frmMain::closeEvent(QCloseEvent* event) {
  Form_Unload();
  event->accept();
}

void frmMain::Form_Unload() {
  // The text of a box that still has the focus has not been checked.
  for (QLineEdit* box : {ui_->txtCalibrationDir, ui_->txtStationDir}) {
    const QString notice = DirectoryNotice(box);
    if (!notice.isEmpty() && ui_->notices->About(box->objectName()) != notice) {
      Notice(box, notice);
      Tell(this, notice);
    }
  }
  gCalibrationDir = FromQt(ui_->txtCalibrationDir->text());
  gStationDir = FromQt(ui_->txtStationDir->text());
  Guarded(
      this,
      [this] {
        const std::string notice = WriteProfile(gCalibrationDir, gStationDir);
        if (!notice.empty()) {
          Tell(this, ToQt(notice));
        }
      },
      [this](const Error& error) {
        ShowError(this, Error(error.Kind(),
                              "The two directories are not remembered for the next start. " +
                                  WithoutTryAgain(error.Text()),
                              error.Path(), error.Line()));
      });
}

}  // namespace tarvell
