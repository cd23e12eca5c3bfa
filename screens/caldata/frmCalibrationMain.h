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
#include "screens/caldata/DataSetEditors.h"

namespace tarvell {

class ListHead;

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

  /// Reads both lists again and selects what was selected.
  void RefreshLists();

 signals:
  /// The user wants to see the overview, by the menu or F6.
  void OverviewWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LstInstrment_Click();
  /// Lists the data sets of the selected model, and outlines the one that was chosen or saved last,
  /// if it is one of them.
  void ListWithRememberedData();
  void GoToRememberedData();
  void btnAdd_Click();
  void btnEdit_Click();
  void btnMore_Click();
  void btnDelete_Click();
  void btnReturn_Click();
  void mnuAddEntry_Click(const Model& model);

  void SetUpAddMenu();
  void SetUpMoreMenu();
  void RefreshModelList();
  /// Lists the data sets that match the filter, see ListDataSets.
  void RefreshSerialList(bool isTyping = false);
  void ShowEditCaption();
  /// The selected model and serial number; false, after a message, when one is missing.
  [[nodiscard]] bool GetSelection(std::string& model, std::string& serial);
  void AddData(const Model& model);
  /// Updates an entry in the list of serial numbers, and its place, from its file.
  void ShowSavedData(QListWidgetItem* entry, const std::string& path);
  void EditData();
  /// Opens the selected data set to enter a new calibration, or as a copy.
  void BeginWithData(CalEditor::Begin begin);
  /// Opens the editor for the selected data set; the list shows what was saved.
  void OpenSelected(const Model& model, CalEditor::Begin begin);
  /// Shows what the file of the selected data set has held.
  void ShowHistory();
  /// Lists the deleted data sets, and those that are put back.
  void ShowDeleted();
  void DeleteData();

  std::unique_ptr<Ui::frmCalibrationMain> ui_;
  QMenu* mnuAdd_;
  QMenu* mnuMore_;
  ListHead* modelHead_;
  ListHead* serialHead_;
  DataSetEditors editors_;
};

}  // namespace tarvell

#endif
