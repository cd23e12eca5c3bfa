// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMCALDATAINPUT_H
#define TARVELL_SCREENS_CALDATA_FRMCALDATAINPUT_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/CalPoints.h"
#include "screens/caldata/CalEditor.h"

namespace tarvell {

namespace Ui {
class frmCalDataInput;
}

/// Edits the data of an instrument with a single table: the power sensors and the step
/// attenuators.
class frmCalDataInput final : public CalEditor {
  Q_OBJECT

 public:
  explicit frmCalDataInput(QWidget* parent);
  frmCalDataInput(const frmCalDataInput&) = delete;
  frmCalDataInput& operator=(const frmCalDataInput&) = delete;
  ~frmCalDataInput() override;

 private:
  void btnAddPoint_Click();
  void btnDeletePoint_Click();
  void btnOk_Click();
  void btnCancel_Click();

  /// A new point's row and its place.
  struct NewPoint {
    std::vector<std::string> row;
    PointPosition position;
    std::string notice;  ///< what to report when it is added
  };

  [[nodiscard]] bool TakesTemplateSerial() const override { return true; }
  void ShowTables() override;
  void StoreTables() override;
  [[nodiscard]] QString WhyFixed() const override;

  [[nodiscard]] bool IsSensor() const;
  void AddPoint();
  /// Ask for the new point; nothing when none was given.
  [[nodiscard]] std::optional<NewPoint> AskSensorPoint();
  [[nodiscard]] std::optional<NewPoint> AskAttenuatorPoint();
  void DeletePoint();

  std::unique_ptr<Ui::frmCalDataInput> ui_;
};

}  // namespace tarvell

#endif
