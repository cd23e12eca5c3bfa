// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMCALIBRATIONMAIN_H
#define TARVELL_SCREENS_CALDATA_FRMCALIBRATIONMAIN_H

#include <QDialog>
#include <QListWidgetItem>
#include <QMenu>

#include <cstdint>
#include <memory>
#include <string>

#include "core/caldata/Models.h"

namespace tarvell {

class CalEditor;
class frmCalDataInput;
class frmCalDataTabInput;

namespace Ui {
class frmCalibrationMain;
}

/// Lists the model folders of the calibration data root and the data sets of the chosen model.
/// Adds, edits and deletes data sets.
class frmCalibrationMain final : public QDialog {
  Q_OBJECT

 public:
  explicit frmCalibrationMain(QWidget* parent);
  frmCalibrationMain(const frmCalibrationMain&) = delete;
  frmCalibrationMain& operator=(const frmCalibrationMain&) = delete;
  ~frmCalibrationMain() override;

  /// Reads the lists, shows the screen with nothing selected, and returns when it is closed.
  void ShowModally();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LstInstrment_Click();
  void btnAdd_Click();
  void btnEdit_Click();
  void btnDelete_Click();
  void btnReturn_Click();
  void mnuAddEntry_Click(const Model& model);

  void SetUpAddMenu();
  void RefreshModelList();
  void RefreshSerialList();
  void ShowEditCaption();
  /// The selected model and serial number; false, after a message, when one is missing.
  [[nodiscard]] bool GetSelection(std::string& model, std::string& serial);
  void AddData(const Model& model);
  /// Lets the user choose a finished file and copies it into the folder of the test kit.
  void CopyFileOfTestKit(const std::string& code, const std::string& folder);
  /// The editor for the data of a model, created when it is first used.
  [[nodiscard]] CalEditor& EditorOf(const Model& model);
  /// Returns whether the data were saved.
  bool OpenEditor(std::int16_t index, const Model& model);
  /// Updates an entry in the list of serial numbers from its file.
  static void ShowSavedData(QListWidgetItem* entry, const std::string& path);
  void EditData();
  void DeleteData();

  std::unique_ptr<Ui::frmCalibrationMain> ui_;
  QMenu* mnuAdd_;
  // Created when they are first used.
  std::unique_ptr<frmCalDataInput> calDataInput_;
  std::unique_ptr<frmCalDataTabInput> calDataTabInput_;
};

}  // namespace tarvell

#endif
