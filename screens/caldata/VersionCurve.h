// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_VERSIONCURVE_H
#define TARVELL_SCREENS_CALDATA_VERSIONCURVE_H

#include <QDialog>
#include <QMenu>
#include <QObject>
#include <QTableWidget>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"

namespace tarvell {

class CurveSplitter;

/// The curve of the version that the history shows, and dashed below it that of the earlier one
/// when two are compared. It follows the current cell of their table, and leads to its cells.
class VersionCurve final : public QObject {
  Q_OBJECT

 public:
  /// Puts the curve beside `table`. The entry that folds it away goes into `menu`.
  VersionCurve(QDialog* screen, QTableWidget* table, QMenu* menu);

  /// A page of a version as the table shows it.
  struct Page {
    const Model* model = nullptr;  ///< nullptr where there is nothing to draw
    std::int16_t page = 0;
    TableRowList rows;  ///< the captions first
    bool isCompared = false;
    TableRowList earlierRows;  ///< of the earlier version, none if it has no curve
    std::string earlierName;   ///< its date
    std::size_t keys = 1;      ///< columns that the table shows once when two are compared
    /// The row of `rows` that each row of the table shows; the caption row for none.
    std::vector<GridRow> inTable;
  };
  void Show(Page page);

 private:
  /// The cell of the page that the current cell of the table shows.
  [[nodiscard]] Cell Current() const;
  void Draw();
  void GoTo(Cell cell, bool takesKeyboard);

  QTableWidget* table_;
  CurveSplitter* curve_;
  Page page_;
  int shownPages_ = 0;  ///< another page is shown whole, whatever was zoomed
};

}  // namespace tarvell

#endif
