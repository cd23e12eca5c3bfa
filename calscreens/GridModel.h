// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CALSCREENS_GRIDMODEL_H
#define TARVELL_CALSCREENS_GRIDMODEL_H

#include <QAbstractTableModel>

#include <cstdint>
#include <functional>
#include <string_view>

#include "caldata/MemoryGrid.h"

namespace tarvell {

/// A MemoryGrid as a table view shows it: row 0 as the captions, the data rows below. Rows and
/// columns here are the grid's own, row 1 being the first data row; a QModelIndex counts data
/// rows from 0.
class GridModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit GridModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

  [[nodiscard]] const MemoryGrid& Grid() const { return grid_; }

  /// Lets `fill` change the whole grid.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);
  void SetCellText(std::int16_t row, std::int16_t column, std::string_view text);
  void InsertRow(std::int16_t position, std::string_view text);
  void RemoveRow(std::int16_t row);

  /// Columns before this one cannot be edited, and are shown so.
  void SetFirstEditableColumn(int column) { firstEditableColumn_ = column; }
  [[nodiscard]] int FirstEditableColumn() const { return firstEditableColumn_; }
  /// A column without a caption holds nothing, so that it cannot be edited either.
  [[nodiscard]] bool IsEditable(int column) const;

 private:
  MemoryGrid grid_;
  int firstEditableColumn_ = 1;
};

}  // namespace tarvell

#endif
