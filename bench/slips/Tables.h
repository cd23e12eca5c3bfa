// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_SLIPS_TABLES_H
#define TARVELL_BENCH_SLIPS_TABLES_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bench/slips/Chance.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"

/// Realistic tables in which slips are made.
namespace tarvell::bench {

enum class Source { Template, Example, Curve };

/// A page of two calibrations of one instrument.
struct CalTable {
  const Model* model = nullptr;
  std::shared_ptr<cifCaldata> data;  ///< knows the formats of the cells
  std::int16_t page = 0;
  Source source = Source::Template;
  std::unique_ptr<MemoryGrid> earlier;
  std::unique_ptr<MemoryGrid> now;
};

/// A page that the tables begin with.
struct Basis {
  const Model* model;
  std::shared_ptr<cifCaldata> data;
  std::int16_t page;
  Source source;
};

/// Every page of every template and example that can be edited.
[[nodiscard]] std::vector<Basis> EveryBasis();

/// A table from one of the bases; half of those of sensors and attenuators follow a smooth curve
/// with ripple.
[[nodiscard]] CalTable RandomTable(const std::vector<Basis>& bases, Chance& chance);

/// The text of a cell after `typed` was typed into it.
[[nodiscard]] std::string Stored(const CalTable& table, Cell cell, const std::string& typed);

}  // namespace tarvell::bench

#endif
