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
/// and for its marks: the newest with another calibration date, until the user chooses another one.
/// Hidden where none exists.
class EarlierChoice final : public QWidget {
  Q_OBJECT

 public:
  explicit EarlierChoice(QWidget* parent);

  /// Offers the calibrations of the file at `path`, a path of the program, to compare these data
  /// with; none if it is "".
  void Begin(const Model& model, const cifCaldata& compared, const std::string& path);
  /// Forgets them.
  void End();
  /// The data are now dated `date`. Chooses the earlier calibration for it, unless the user has
  /// chosen one.
  void SetDate(const FileDate& date);

  /// Why the history cannot be read; "" if it can. Without it, only the file itself is offered.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// The calibration that data with this header are compared with; nullptr if none exists, or if it
  /// cannot be read.
  [[nodiscard]] std::unique_ptr<cifCaldata> DataFor(const DraftHeader& header) const;

  /// "5 MAR 2001"; "" if nothing is chosen or it cannot be read.
  [[nodiscard]] QString Name() const;
  /// Fills `grid` with a page of the chosen calibration. False if it has no such page.
  [[nodiscard]] bool Fill(std::int16_t page, MemoryGrid& grid) const;

 signals:
  /// Another one has been chosen, by the user or by the date.
  void Changed();

 private:
  /// Chooses the newest with another date.
  void ChooseFor(const FileDate& date);
  void Load();
  /// The row of the newest calibration with another date, -1 for none.
  [[nodiscard]] int RowFor(const FileDate& date) const;

  QComboBox* cmbEarlier_;
  const Model* model_ = nullptr;
  std::vector<Calibration> calibrations_;
  std::unique_ptr<cifCaldata> chosen_;
  std::string problem_;
  bool isChosenByUser_ = false;
};

}  // namespace tarvell

#endif
