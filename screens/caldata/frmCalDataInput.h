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

/// Edits the data of an instrument with one table: a power sensor or a step attenuator.
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
    std::string notice;  ///< to report when the point is added
  };

  [[nodiscard]] bool TakesTemplateSerial() const override { return true; }
  void ShowTables() override;
  void StoreTables() override;
  [[nodiscard]] QString WhyFixed() const override;
  [[nodiscard]] QList<QAction*> PointActions() const override { return {addPoint_, deletePoints_}; }

  [[nodiscard]] bool IsSensor() const;
  /// A point as the questions name it.
  [[nodiscard]] std::string PointName(const CalDataGrid& grid, GridRow row) const;
  [[nodiscard]] std::string TextOf(const NewPoint& point) const;
  void AddPoint();
  /// Ask the user for a point; nothing when no point was given.
  [[nodiscard]] std::optional<NewPoint> AskSensorPoint();
  [[nodiscard]] std::optional<NewPoint> AskAttenuatorPoint();
  /// Deletes the selected points after a question.
  void DeletePoints();

  QAction* addPoint_;
  QAction* deletePoints_;
  std::unique_ptr<Ui::frmCalDataInput> ui_;
};

}  // namespace tarvell

#endif
