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
  void Form_Unload();

  void SetUpMenu();
  void Browse(QLineEdit* box, const QString& title);
  /// Reports a directory that the next start will not read back.
  void CheckDirectory(QLineEdit* box);
  /// What is to be known about the directory in a box, "" when nothing is.
  [[nodiscard]] QString DirectoryNotice(const QLineEdit* box) const;
  /// Reports `text` about a box and marks it; "" takes that back.
  void Notice(QLineEdit* box, const QString& text);
  void Start();
  /// What the user is told about a data root.
  struct RootTexts {
    QString missing;   ///< when none is given
    QString question;  ///< when its folder does not exist
  };
  /// Takes the folder in `box` as the data root `root`; false when there is none, which is told or
  /// was the user's answer.
  [[nodiscard]] bool TakeRoot(const QLineEdit* box, const RootTexts& texts, std::string& root);
  /// Offers to make the folder when it does not exist; false when the user does not want it, or it
  /// cannot be made, which is told.
  [[nodiscard]] bool EnsureFolder(const std::string& folder, const QString& question);

  std::unique_ptr<Ui::frmMain> ui_;
  // Made on first use.
  std::unique_ptr<frmCalibrationMain> calibrationMain_;
  std::unique_ptr<frmStationMain> stationMain_;
};

}  // namespace tarvell

#endif
