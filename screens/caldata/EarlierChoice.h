// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_EARLIERCHOICE_H
#define TARVELL_SCREENS_CALDATA_EARLIERCHOICE_H

#include <QComboBox>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/EditorState.h"
#include "core/caldata/MemoryGrid.h"

namespace tarvell {

/// The earlier calibration that the data of an editor are compared with, in its table, on its curve
/// and for its marks: at first the newest with another calibration date; the user may choose
/// another one. Hidden where none exists.
class EarlierChoice final : public QWidget {
  Q_OBJECT

 public:
  explicit EarlierChoice(QWidget* parent);

  /// Offers the calibrations of the file at `path`, a path of the program, to compare these data
  /// with; none if it is "".
  void Begin(const Model& model, const cifCaldata& compared, const std::string& path);
  /// Forgets them.
  void End();

  /// The header of the data is now this one. Unless the user has chosen a calibration, the data are
  /// compared with the newest that has another date.
  void HeaderChanged(const DraftHeader& header);
  /// The calibration that data with this header are compared with; nullptr if there is none, or it
  /// cannot be read.
  [[nodiscard]] std::unique_ptr<cifCaldata> DataFor(const DraftHeader& header) const;

  /// "5 MAR 2001"; "" if nothing is chosen or it cannot be read.
  [[nodiscard]] QString Name() const;
  /// Fills `grid` with a page of the chosen calibration. False if it has no such page.
  [[nodiscard]] bool Fill(std::int16_t page, MemoryGrid& grid) const;

 signals:
  /// The user has chosen another one.
  void Changed();

 private:
  void Load();
  /// The row of the newest calibration with another date, -1 for none.
  [[nodiscard]] int RowFor(const FileDate& date) const;
  void ShowRow(int row);

  QComboBox* cmbEarlier_;
  const Model* model_ = nullptr;
  std::vector<Calibration> calibrations_;
  bool isChosen_ = false;  ///< by the user
  std::unique_ptr<cifCaldata> chosen_;
};

}  // namespace tarvell

#endif
