// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_PAGEONPAPER_H
#define TARVELL_CORE_PAPER_PAGEONPAPER_H

#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Draft.h"
#include "core/curves/PageRows.h"
#include "core/curves/SlipLimits.h"
#include "core/paper/PaperDocument.h"

/// The table of a page as it is printed.
namespace tarvell {

// The signs beside values, which a legend explains.
inline constexpr std::string_view kSlipSign = "?";
inline constexpr std::string_view kDefaultSign = "*";
inline constexpr std::string_view kEarlierSign = "=";
inline constexpr std::string_view kReadBackSign = "!";

struct PageOnPaper {
  PageTable table;
  const DraftPage& page;     ///< where the cells come from, and their notes
  const PageTable* earlier;  ///< nullptr for none
  std::string earlierName;
  SlipLimit limit;
  std::string caption;
};

/// The table with its marks and changes. Where it has one column of values, the changes are beside
/// it, otherwise in a second table. Then the points that only one calibration has, and why values
/// are marked.
[[nodiscard]] std::vector<PaperPart> PartsOfPage(const PageOnPaper& page);

/// Explains the signs that are in these parts, "" if none is.
[[nodiscard]] std::string LegendOf(const std::vector<PaperPart>& parts);

}  // namespace tarvell

#endif
