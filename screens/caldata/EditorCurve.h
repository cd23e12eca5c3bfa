// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_EDITORCURVE_H
#define TARVELL_SCREENS_CALDATA_EDITORCURVE_H

#include <QHBoxLayout>
#include <QMenu>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/dates/FileDate.h"

namespace tarvell {

class CalGrid;
class CellEditor;
class ChangeTable;
class CurveSplitter;
class EarlierChoice;
class NoticeLine;

/// The curve beside the table of an editor, and the changes since the earlier calibration, where
/// one exists. Both follow what is typed at once.
class EditorCurve final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    QWidget* screen;
    CalGrid* grid;
    const CellEditor* cells;
    QMenu* menu;
    NoticeLine* notices;
    std::function<std::int16_t()> page;  ///< the page that the table shows
  };
  explicit EditorCurve(const Editor& editor);

  /// Begins to show the data of a data set. Call it when the table is filled.
  ///
  /// The earlier calibrations are those of the file at `path`; none if it is "".
  void Begin(const Model& model, const cifCaldata& data, const std::string& path);
  void End();
  /// The data are now dated `date`.
  void SetDate(const FileDate& date);

  /// The calibration that the data are compared with.
  [[nodiscard]] const EarlierChoice& Earlier() const { return *earlier_; }

 private:
  void Watch();
  void ChangedSoon();
  /// Shows the columns of the earlier calibration where there is one.
  void ShowChanges();
  void ShowAll();
  void ShowCurves(const MemoryGrid& now, const MemoryGrid* earlier);
  void ShowChange(const MemoryGrid& now, const MemoryGrid* earlier);
  /// The table with what is in an open cell.
  [[nodiscard]] std::vector<std::vector<std::string>> RowsNow() const;
  void GoTo(Cell cell) const;

  Editor editor_;
  const Model* model_ = nullptr;
  CurveSplitter* curve_;
  QHBoxLayout* tables_;
  ChangeTable* changes_ = nullptr;  ///< made when it is first needed
  EarlierChoice* earlier_;
  std::int16_t column_ = 1;  ///< whose changes are shown
  int opened_ = 0;           ///< how many data sets were; each is shown whole at first
  QTimer soon_;
};

}  // namespace tarvell

#endif
