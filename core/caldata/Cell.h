// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CELL_H
#define TARVELL_CORE_CALDATA_CELL_H

#include <compare>
#include <cstddef>
#include <cstdint>

/// Places in tables. Rows of a grid are counted with the caption row, rows of a table without it.
/// Each way has a type of its own.
namespace tarvell {

/// The place of a data row in a table: 0 is the first data row.
struct TableIndex {
  std::size_t value = 0;

  constexpr auto operator<=>(const TableIndex&) const = default;
};

/// A row of a grid: 0 holds the captions, 1 is the first data row.
struct GridRow {
  std::int16_t number = 0;

  constexpr auto operator<=>(const GridRow&) const = default;
  constexpr GridRow& operator++() {
    ++number;
    return *this;
  }
  friend constexpr GridRow operator+(GridRow row, int rows) {
    return {static_cast<std::int16_t>(row.number + rows)};
  }
};

inline constexpr GridRow kCaptionRow = {0};
inline constexpr GridRow kFirstDataRow = {1};

[[nodiscard]] constexpr GridRow RowOf(TableIndex index) {
  return {static_cast<std::int16_t>(index.value + 1)};
}

/// `row` must be a data row.
[[nodiscard]] constexpr TableIndex IndexOf(GridRow row) {
  return {static_cast<std::size_t>(row.number - 1)};
}

/// A cell of a grid; columns count from 0.
struct Cell {
  GridRow row;
  std::int16_t column = 0;

  constexpr auto operator<=>(const Cell&) const = default;
};

}  // namespace tarvell

#endif
