// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CHANGETABLE_H
#define TARVELL_SCREENS_CALDATA_CHANGETABLE_H

#include <QStandardItemModel>
#include <QTableView>

#include <cstdint>

#include "core/curves/Change.h"

namespace tarvell {

class CalGrid;

/// The earlier values of a column and their changes, beside the rows of the table. It scrolls with
/// the table. Nothing of it is ever stored.
class ChangeTable final : public QTableView {
  Q_OBJECT

 public:
  /// `grid` must live longer than this table.
  ChangeTable(CalGrid* grid, QWidget* parent);

  /// Shows the changes of one column; rows without an earlier value are empty.
  void Show(const PageChange& change, std::int16_t column);

 private:
  void FollowScrolling();
  void FitWidth();

  CalGrid* grid_;
  QStandardItemModel* model_;
};

}  // namespace tarvell

#endif
