// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/JudgedPage.h"

#include <cstddef>
#include <optional>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/curves/PageRows.h"
#include "core/curves/SlipReport.h"

namespace tarvell {

JudgedPage JudgePage(const StateToJudge& set, std::int16_t page) {
  const DraftPage& shown = set.state.pages.at(static_cast<std::size_t>(page));
  MemoryGrid grid(kTableColumns);
  FillPage(set.data, page, shown, grid);
  const PageTable table = {set.model, page, grid};
  MemoryGrid before(kTableColumns);
  std::optional<PageTable> earlier;
  if (set.earlier != nullptr && page < set.earlier->GetCalPageCount()) {
    set.earlier->GetCalData(page, before);
    earlier.emplace(PageTable{set.model, page, before});
  }
  JudgedPage judged;
  judged.slips = FindSlips({.table = table,
                            .origins = shown.origins,
                            .earlier = earlier ? &*earlier : nullptr,
                            .limit = set.limit});
  judged.sentences = SlipSentences({table, set.data.GetCalPageName(page), judged.slips});
  return judged;
}

}  // namespace tarvell
