// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMCALIBRATIONMAIN_H
#define TARVELL_SCREENS_CALDATA_FRMCALIBRATIONMAIN_H

#include <QDialog>
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

/// Lists the model folders of the calibration data root and the data sets in the chosen one; adds,
/// edits and deletes them.
class frmCalibrationMain final : public QDialog {
  Q_OBJECT

 public:
  explicit frmCalibrationMain(QWidget* parent);
  frmCalibrationMain(const frmCalibrationMain&) = delete;
  frmCalibrationMain& operator=(const frmCalibrationMain&) = delete;
  ~frmCalibrationMain() override;

  /// Shows the screen with its lists read afresh and nothing selected, until it is closed.
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
  /// The chosen model and serial number; false when one is missing, which is told.
  [[nodiscard]] bool GetSelection(std::string& model, std::string& serial);
  void AddData(const Model& model);
  /// Lets the user choose a finished file and copies it into the kit's folder.
  void TakeInTestKitFile(const std::string& code, const std::string& folder);
  /// The editor of a model's data, made on first use.
  [[nodiscard]] CalEditor& EditorOf(const Model& model);
  /// Returns whether the data were saved.
  bool OpenEditor(std::int16_t index, const Model& model);
  /// Marks the entry of a row of `gCalFiles` by what its file holds now.
  void ShowSavedData(std::int16_t index);
  void EditData();
  void DeleteData();

  std::unique_ptr<Ui::frmCalibrationMain> ui_;
  QMenu* mnuAdd_;
  // Made on first use.
  std::unique_ptr<frmCalDataInput> calDataInput_;
  std::unique_ptr<frmCalDataTabInput> calDataTabInput_;
};

}  // namespace tarvell

#endif
