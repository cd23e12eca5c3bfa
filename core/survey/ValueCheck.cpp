// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ValueCheck.h"

#include <cstdint>
#include <string>

#include "core/caldata/MemoryGrid.h"
#include "core/curves/PageRows.h"
#include "core/curves/Slips.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kColumns = 6;  // of the widest table
const CellOrigins kEveryValueIsOfTheFile;

std::string TextOf(const PageTable& table, Cell cell, const std::string& mark) {
  return PointName(table, cell.row) + ", value " + Quoted(table.grid.TextOf(cell)) + ": " + mark;
}

/// What the editor says about a page.
Slips SlipsOf(const PageTable& table, const cifCaldata* earlier, const SlipLimit& limit) {
  const SlipInput input = {.table = table, .origins = kEveryValueIsOfTheFile, .limit = limit};
  if (earlier == nullptr || table.page >= earlier->GetCalPageCount()) {
    return FindSlips(input);
  }
  MemoryGrid before(kColumns);
  earlier->GetCalData(table.page, before);
  const PageTable earlierTable{table.model, table.page, before};
  return FindSlips({.table = table,
                    .origins = kEveryValueIsOfTheFile,
                    .earlier = &earlierTable,
                    .limit = limit});
}

}  // namespace

void CheckValues(const Model& model, const cifCaldata& data, const cifCaldata* earlier,
                 const SlipLimits& limits, SurveyRow& row) {
  const SlipLimit limit = limits.Of(model);
  std::string text;
  std::string notice;
  std::size_t count = 0;
  for (std::int16_t page = 0; page < data.GetCalPageCount(); ++page) {
    MemoryGrid grid(kColumns);
    data.GetCalData(page, grid);
    const PageTable table{model, page, grid};
    const Slips slips = SlipsOf(table, earlier, limit);
    if (text.empty() && !slips.marks.empty()) {
      text = TextOf(table, slips.marks.begin()->first, slips.marks.begin()->second) + " ";
    }
    if (notice.empty() && !slips.notice.empty()) {
      notice = slips.notice + " ";
    }
    count += slips.marks.size();
  }
  if (count > 1) {
    text += "Doubtful values in all: " + std::to_string(count) + ". ";
  }
  if (!text.empty() || !notice.empty()) {
    row.Add(FindingKind::DoubtfulValue, text + notice + "Compare the values with the certificate.");
  }
}

}  // namespace tarvell
