// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_TABLEOF_H
#define TARVELL_TESTS_SUPPORT_TABLEOF_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"

namespace tarvell::test {

/// A table of a page: its captions and its rows.
[[nodiscard]] inline std::unique_ptr<MemoryGrid> TableOf(
    const std::vector<std::vector<std::string>>& rows) {
  auto grid = std::make_unique<MemoryGrid>(static_cast<std::int16_t>(rows.front().size()));
  grid->SetRows(rows);
  return grid;
}

/// A table of a power sensor: a frequency and a factor in each row.
[[nodiscard]] inline std::unique_ptr<MemoryGrid> SensorTable(
    std::vector<std::vector<std::string>> rows, const std::string& unit = "GHz") {
  rows.insert(rows.begin(), {"Frequency  [" + unit + "]", "Calibration factor[%]"});
  return TableOf(rows);
}

}  // namespace tarvell::test

#endif
