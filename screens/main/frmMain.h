// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_MAIN_FRMMAIN_H
#define TARVELL_SCREENS_MAIN_FRMMAIN_H

#include <QDialog>
#include <QLineEdit>
#include <QString>

#include <memory>
#include <string>

namespace tarvell {

class frmCalibrationMain;
class frmStationMain;

namespace Ui {
class frmMain;
}

/// The main menu, the program's first and last screen.
class frmMain final : public QDialog {
  Q_OBJECT

 public:
  frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;
  ~frmMain() override;

  /// Starts the program: shows the splash screen for `splashSeconds`, reads the INI file and
  /// shows this screen.
  void Form_Load(double splashSeconds = 1.0);

  /// Escape does not end the program.
  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void btnBrowseCalibrationDir_Click();
  void btnBrowseStationDir_Click();
  void btnStart_Click();
  void btnExit_Click();
  void mnuHandbook_Click();
  void mnuAbout_Click();
  void mnuOverview_Click();
  void Form_Unload();

  void SetUpMenu();
  void Browse(QLineEdit* box, const QString& title);
  /// Reports a directory that the next start will read differently.
  void CheckDirectory(QLineEdit* box);
  /// The notice about the directory in a box, "" if none exists.
  [[nodiscard]] QString DirectoryNotice(const QLineEdit* box) const;
  /// Shows the notice `text` about a box and marks the box; "" removes both.
  void Notice(QLineEdit* box, const QString& text);
  void Start();
  /// Makes what is typed in both boxes the data roots. Returns false after a message when one
  /// cannot be used.
  [[nodiscard]] bool TakeRoots();
  /// Shows the overview in front of `screen`. Returns whether files may have been changed there.
  bool ShowOverview(QWidget* screen);
  frmCalibrationMain& CalibrationMain();
  frmStationMain& StationMain();
  /// The messages about a data root.
  struct RootTexts {
    QString missing;   ///< when none is given
    QString question;  ///< when its folder does not exist
  };
  /// Stores the folder in `box` as the data root `root`. Returns false after a message when no
  /// folder is given, it does not exist or it cannot be made.
  [[nodiscard]] bool TakeRoot(const QLineEdit* box, const RootTexts& texts, std::string& root);
  /// If the folder does not exist, asks whether to make it. Returns false when the user declines,
  /// or after an error message when the folder cannot be made.
  [[nodiscard]] bool EnsureFolder(const std::string& folder, const QString& question);

  std::unique_ptr<Ui::frmMain> ui_;
  // Made on first use.
  std::unique_ptr<frmCalibrationMain> calibrationMain_;
  std::unique_ptr<frmStationMain> stationMain_;
};

}  // namespace tarvell

#endif
