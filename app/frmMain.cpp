// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/frmMain.h"

#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QIcon>
#include <QMenuBar>
#include <QWindow>

#include "app/Profiles.h"
#include "app/Tarvell_MainModule.h"
#include "app/Version.h"
#include "app/frmSplash.h"
#include "app/mOSVersion.h"
#include "calscreens/frmCalibrationMain.h"
#include "common/CommonStringModule.h"
#include "common/FileIOCommonModule.h"
#include "common/FolderPicker.h"
#include "common/Guard.h"
#include "common/QtText.h"
#include "common/Questions.h"
#include "common/Text.h"
#include "station/frmStationMain.h"

namespace tarvell {

namespace {

constexpr std::int16_t kVersionLabelLevel = 3;
constexpr std::int16_t kLeastVisibleLevel = 2;
constexpr int kLongestExposure = 200;  // ms

/// Lets pending window events run, until the window system has put `window` on the screen.
void RunPendingEvents(const QWidget& window) {
  QElapsedTimer timer;
  timer.start();
  do {
    QApplication::processEvents();
  } while (!window.windowHandle()->isExposed() && timer.elapsed() < kLongestExposure);
  QApplication::processEvents();
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
  QApplication::setWindowIcon(QIcon(":/images/tarvell.svg"));
  QGuiApplication::setDesktopFileName("tarvell");
  ui_->setupUi(this);
  SetUpMenu();
  connect(ui_->btnBrowseCalibrationDir, &QPushButton::clicked, this,
          &frmMain::btnBrowseCalibrationDir_Click);
  connect(ui_->btnBrowseStationDir, &QPushButton::clicked, this,
          &frmMain::btnBrowseStationDir_Click);
  connect(ui_->btnStart, &QPushButton::clicked, this, &frmMain::btnStart_Click);
  connect(ui_->btnExit, &QPushButton::clicked, this, &frmMain::btnExit_Click);
}

frmMain::~frmMain() = default;

void frmMain::SetUpMenu() {
  auto* menuBar = new QMenuBar(this);  // the layout takes it
  QAction* mnuExit = menuBar->addAction("Exit");
  mnuExit->setObjectName("mnuExit");
  mnuExit->setShortcut(Qt::CTRL | Qt::Key_Q);
  connect(mnuExit, &QAction::triggered, this, &frmMain::btnExit_Click);
  layout()->setMenuBar(menuBar);
}

void frmMain::Form_Load(double splashSeconds) {
  hide();
  gVersionLabelLevel = kVersionLabelLevel;
  ShowSplash(splashSeconds);
  setWindowTitle(ToQt(kApplicationTitle) + " - " +
                 ToQt(RevisionText(kMajorVersion, kMinorVersion)));
  GetOSVersion();
  ui_->lblVersionString->setVisible(gVersionLabelLevel >= kLeastVisibleLevel);
  ui_->lblVersionString->setText("now worked on " + ToQt(gOSVersion) + "(" + ToQt(gOSPlatform) +
                                 ")");
  ReadProfile(gCalibrationDir, gStationDir);
  ui_->txtCalibrationDir->setText(ToQt(gCalibrationDir));
  ui_->txtStationDir->setText(ToQt(gStationDir));
  show();
}

void frmMain::btnBrowseCalibrationDir_Click() {
  Guarded(this, [this] {
    const QString picked = BrowseForFolder(this, ui_->txtCalibrationDir->text(),
                                           "Browse for calibration data directory.");
    if (!picked.isEmpty()) {
      ui_->txtCalibrationDir->setText(picked);
    }
  });
}

void frmMain::btnBrowseStationDir_Click() {
  Guarded(this, [this] {
    const QString picked =
        BrowseForFolder(this, ui_->txtStationDir->text(), "Browse for station data directory.");
    if (!picked.isEmpty()) {
      ui_->txtStationDir->setText(picked);
    }
  });
}

void frmMain::btnStart_Click() {
  bool folderAgreed = false;
  Guarded(
      this, [&] { Start(folderAgreed); },
      [&](const Error& error) {
        if (!folderAgreed) {
          ShowError(this, error);
          return;
        }
        CurrentQuestions().Ask(this, {.text = "Cannot make folder!",
                                      .icon = QMessageBox::Critical,
                                      .detail = ToQt(error.what())});
      });
}

void frmMain::Start(bool& folderAgreed) {
  const QString stationDir = ui_->txtStationDir->text();
  // Blanks alone would be the current folder, and the root of the disk in front of a name.
  if (Trim(FromQt(stationDir)).empty()) {
    Tell(this, "Station directory does not set.");
    return;
  }
  if (!EnsureFolder(stationDir,
                    "Input station folder does not exist.\r\n"
                    "If you want to create new folder, then press Ok button.",
                    folderAgreed)) {
    return;
  }
  gStationDir = Trim(FromQt(stationDir));

  const QString calibrationDir = ui_->txtCalibrationDir->text();
  if (Trim(FromQt(calibrationDir)).empty()) {
    Tell(this, "Calibration data directory does not set.");
    return;
  }
  if (!EnsureFolder(calibrationDir,
                    "Select calibration data folder is not exist.\r\n"
                    "If you want to create new folder, then press Ok button.",
                    folderAgreed)) {
    return;
  }
  gCalibrationDir = Trim(FromQt(calibrationDir));

  if (ui_->Option1->isChecked()) {
    if (!stationMain_) {
      stationMain_ = std::make_unique<frmStationMain>(this);
    }
    stationMain_->ShowModally();
  }
  if (ui_->Option2->isChecked()) {
    if (!calibrationMain_) {
      calibrationMain_ = std::make_unique<frmCalibrationMain>(this);
    }
    calibrationMain_->ShowModally();
  }
}

bool frmMain::EnsureFolder(const QString& path, const QString& question, bool& agreed) {
  const std::string folder = FromQt(path);
  if (FolderExists(folder)) {
    return true;
  }
  const auto answer =
      CurrentQuestions().Ask(this, {.text = question,
                                    .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                                    .defaultButton = QMessageBox::Cancel});
  if (answer != QMessageBox::Ok) {
    return false;
  }
  agreed = true;
  MakeFolder(folder);
  return true;
}

void frmMain::btnExit_Click() {
  close();
}

void frmMain::closeEvent(QCloseEvent* event) {
  Form_Unload();
  event->accept();
}

void frmMain::Form_Unload() {
  gCalibrationDir = FromQt(ui_->txtCalibrationDir->text());
  gStationDir = FromQt(ui_->txtStationDir->text());
  Guarded(this, [] { WriteProfile(gCalibrationDir, gStationDir); });
}

}  // namespace tarvell
