// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "RatioReporter.h"
#include "Workplace.h"
#include "core/caldata/MemoryGrid.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 41;
constexpr std::size_t kCells = 10000;

struct Cell {
  std::int16_t page = 0;
  std::int16_t column = 0;
  std::int16_t row = 0;
  std::string text;
};

/// The cells of a data set that hold numbers, over and over.
std::vector<Cell> NumberCells(const cifCaldata& data) {
  std::vector<Cell> cells;
  while (cells.size() < kCells) {
    for (std::int16_t page = 0; page < data.GetCalPageCount(); ++page) {
      MemoryGrid grid(kMostColumns);
      data.GetCalData(page, grid);
      for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
        for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
          std::string unit;
          std::string text = grid.CellText(row, column);
          if (!data.GetCalibrationDataFormat(page, column, row, text, unit).empty()) {
            cells.push_back({page, column, row, std::move(text)});
          }
        }
      }
    }
  }
  cells.resize(kCells);
  return cells;
}

/// What the editor does with a cell that is opened and committed.
void Format(benchmark::State& state, const cifCaldata& data, const std::vector<Cell>& cells) {
  Measure(state, [&] {
    for (const Cell& cell : cells) {
      std::string unit;
      const std::string edited =
          data.GetCalibrationDataFormat(cell.page, cell.column, cell.row, cell.text, unit);
      Use(data.SetCalibrationDataFormat(cell.page, cell.column, cell.row, edited, unit));
    }
  });
}

void Convert(benchmark::State& state, const std::vector<Cell>& cells) {
  std::array<char, 64> edited{};
  std::array<char, 64> stored{};
  Measure(state, [&] {
    for (const Cell& cell : cells) {
      std::snprintf(edited.data(), edited.size(), "%.15g", std::strtod(cell.text.c_str(), nullptr));
      std::snprintf(stored.data(), stored.size(), "%.5f", std::strtod(edited.data(), nullptr));
      Use(stored);
    }
  });
}

}  // namespace

void AddCellRows() {
  for (const std::string_view code : kFamilies) {
    const std::shared_ptr<cifCaldata> data = LargestData(*FindModel(code));
    const auto cells = std::make_shared<std::vector<Cell>>(NumberCells(*data));
    AddRow(
        "format 10,000 cells of " + std::string(code), 1.0, kRepetitions,
        [=](benchmark::State& state) { Format(state, *data, *cells); },
        [=](benchmark::State& state) { Convert(state, *cells); });
  }
}

}  // namespace tarvell::bench
