// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CALSCREENS_FRMCALDATAINPUT_H
#define TARVELL_CALSCREENS_FRMCALDATAINPUT_H

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "caldata/CalPoints.h"
#include "caldata/Models.h"

namespace tarvell {

class CellEditor;

namespace Ui {
class frmCalDataInput;
}

/// Edits the data of an instrument with a single table: the power sensors and the step
/// attenuators.
class frmCalDataInput final : public QDialog {
  Q_OBJECT

 public:
  explicit frmCalDataInput(QWidget* parent);
  frmCalDataInput(const frmCalDataInput&) = delete;
  frmCalDataInput& operator=(const frmCalDataInput&) = delete;
  ~frmCalDataInput() override;

  /// Index that stands for new data.
  static constexpr std::int16_t kNewData = 999;

  /// Shows the data set of row `index` of `gCalFiles`, or new data, and returns when the screen
  /// is closed. Throws an Index error for a row that does not exist, and the error of a load that
  /// fails; the screen is not shown then.
  void SetupDat(std::int16_t index, const std::string& modelCode);

 private:
  void btnAddPoint_Click();
  void btnDeletePoint_Click();
  void btnOk_Click();
  void btnCancel_Click();

  /// A new point's row and its place.
  struct NewPoint {
    std::string row;
    PointPosition position;
  };

  [[nodiscard]] bool IsSensor() const { return model_->family == ModelFamily::PowerSensor; }
  void ShowCaption();
  void AddPoint();
  /// Ask for the new point; nothing when none was given.
  [[nodiscard]] std::optional<NewPoint> AskSensorPoint();
  [[nodiscard]] std::optional<NewPoint> AskAttenuatorPoint();
  void DeletePoint();
  /// Saves the data set; false when the serial number is missing, which is told.
  [[nodiscard]] bool Save();

  std::unique_ptr<Ui::frmCalDataInput> ui_;
  CellEditor* cellEditor_;
  const Model* model_ = nullptr;
  std::unique_ptr<cifCaldata> data_;
};

}  // namespace tarvell

#endif
