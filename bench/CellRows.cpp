// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Ratios.h"
#include "Workplace.h"
#include "core/caldata/MemoryGrid.h"
#include "core/files/ItemReader.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"

/// The formats of cells, and work that grows.
namespace tarvell::bench {

namespace {

constexpr std::size_t kCells = 10000;

struct Cell {
  std::int16_t page = 0;
  std::int16_t column = 0;
  std::int16_t row = 0;
  std::string text;
};

/// The cells of a data set that hold numbers, repeated until there are 10,000.
std::vector<Cell> NumberCells(const cifCaldata& data) {
  std::vector<Cell> cells;
  while (cells.size() < kCells) {
    for (std::int16_t page = 0; page < data.GetCalPageCount(); ++page) {
      MemoryGrid grid(kGridColumns);
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

/// What the editor does with a cell that is opened and stored.
void Format(const cifCaldata& data, const std::vector<Cell>& cells) {
  for (const Cell& cell : cells) {
    std::string unit;
    const std::string edited =
        data.GetCalibrationDataFormat(cell.page, cell.column, cell.row, cell.text, unit);
    Use(data.SetCalibrationDataFormat(cell.page, cell.column, cell.row, edited, unit));
  }
}

void Convert(const std::vector<Cell>& cells) {
  std::array<char, 64> edited{};
  std::array<char, 64> stored{};
  for (const Cell& cell : cells) {
    std::snprintf(edited.data(), edited.size(), "%.15g", std::strtod(cell.text.c_str(), nullptr));
    std::snprintf(stored.data(), stored.size(), "%.5f", std::strtod(edited.data(), nullptr));
    Use(stored);
  }
}

/// Lists the folders of a root; of many, the first 256.
void ListModels(const std::string& root) {
  std::vector<std::string> names;
  try {
    ListModelFolders(root, names);
  } catch (const Error&) {
    // Too many folders are reported after the listing.
  }
  Use(names);
}

void ReadItems(const std::string& path) {
  ItemReader reader(path);
  while (!reader.AtEnd()) {
    Use(reader.ReadItem());
  }
}

}  // namespace

void AddCellRows() {
  for (const std::string_view code : kFamilies) {
    const std::shared_ptr<cifCaldata> data = LargestData(*FindModel(code));
    const std::vector<Cell> cells = NumberCells(*data);
    AddRow({.name = "format 10,000 cells of " + std::string(code),
            .goal = 1.0,
            .program = Timed([=] { Format(*data, cells); }),
            .limit = Timed([=] { Convert(cells); })});
  }
}

void AddGrowthRows() {
  for (const long size : {10, 100, 1000, 10000}) {
    const std::string folder = "c:\\grown\\" + std::to_string(size) + "\\";
    const std::string station = folder + "station";
    const std::string stations = folder + "stations";
    const std::string others = folder + "PX12A";
    const std::string root = folder + "root";
    std::string rows;
    for (long i = 0; i < size; ++i) {
      const std::string name = "/M" + std::to_string(i);
      WriteFile(Native(station) + name, "");
      WriteFile(Native(stations) + name + "/INDEX", "");
      WriteFile(Native(root) + name + "/SN1", "");
      WriteFile(Native(others) + name, "");
      rows += "* 50.00 100.0\r\n";
    }
    WriteFile(Native(others) + "/SN12345", HeaderBytes(12345));
    WriteFile(Native(folder) + "/rows", rows);
    AddGrowth("instruments listed", size, [=] { Use(ListInstruments(station)); });
    AddGrowth("stations listed", size, [=] { Use(ListStations(stations)); });
    AddGrowth("station index written", size,
              [=, names = ListStations(stations)] { WriteStationIndex(stations, names); });
    AddGrowth("model folders listed", size, [=] { ListModels(root); });
    AddGrowth("headers read in a folder of other files", size,
              [=] { Use(ReadCalFileHeaders(others)); });
    AddGrowth("rows of a file read", size, [=] { ReadItems(folder + "rows"); });
  }
}

}  // namespace tarvell::bench
