// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_SLIPREPORT_H
#define TARVELL_CORE_CURVES_SLIPREPORT_H

#include <span>
#include <string>
#include <vector>

#include "core/caldata/Cell.h"
#include "core/curves/PageRows.h"
#include "core/curves/Slips.h"

namespace tarvell {

/// What was found on a page of a data set.
struct PageSlips {
  PageTable table;
  std::string name;  ///< of the page of a set, "" where the data have only one page
  const Slips& slips;
};

/// What to report of all pages while `page` is shown with the cell `current`: the notices, how many
/// values are marked and on which pages, and why the current cell is marked, or else another one,
/// on the shown page if possible. "" if there is nothing.
[[nodiscard]] std::string SlipReport(std::span<const PageSlips> pages, std::int16_t page,
                                     Cell current);

/// Everything that was found on a page, a sentence each: "RT521A: 1 kHz, Capacitance: ...".
[[nodiscard]] std::vector<std::string> SlipSentences(const PageSlips& found);

}  // namespace tarvell

#endif
