// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvInstruments.h"

#include <map>
#include <string_view>
#include <utility>

namespace tarvell {

namespace {

/// Whether the column holds 1, 2, 3 ...
bool CountsRows(const std::vector<DelimitedLine>& lines, const TablePlace& place) {
  std::size_t number = 0;
  for (const std::size_t row : place.rows) {
    if (lines[row].Cell(*place.serialColumn) != std::to_string(++number)) {
      return false;
    }
  }
  return number > 1;
}

}  // namespace

std::vector<InstrumentRows> RowsByInstrument(const std::vector<DelimitedLine>& lines,
                                             const TablePlace& place) {
  std::vector<InstrumentRows> instruments;
  if (!place.serialColumn || CountsRows(lines, place)) {
    return instruments;
  }
  std::map<std::string_view, std::size_t> known;
  std::string_view serial;
  std::string_view model;
  for (const std::size_t row : place.rows) {
    const std::string_view written = lines[row].Cell(*place.serialColumn);
    serial = written.empty() ? serial : written;
    if (place.modelColumn && !lines[row].Cell(*place.modelColumn).empty()) {
      model = lines[row].Cell(*place.modelColumn);
    }
    const auto [found, isNew] = known.try_emplace(serial, instruments.size());
    if (isNew) {
      instruments.push_back({std::string(serial), std::string(model), {}});
    }
    instruments[found->second].rows.push_back(row);
  }
  return instruments;
}

}  // namespace tarvell
