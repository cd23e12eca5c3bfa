// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ValueCheck.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/MemoryGrid.h"
#include "core/curves/PageRows.h"
#include "core/curves/Slips.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kColumns = 6;  // of the widest table
const CellOrigins kEveryValueIsOfTheFile;

/// The data set of the calibration before the one on `date`; nullptr if none is known.
std::unique_ptr<cifCaldata> EarlierData(const Model& model, const SurveyRow& row) {
  const std::vector<Calibration> calibrations = CalibrationsOf(row.path);
  const Calibration* earlier = EarlierCalibration(calibrations, row.calibrated);
  return earlier == nullptr ? nullptr : LoadCalibration(model, *earlier);
}

std::string TextOf(const PageTable& table, Cell cell, const std::string& mark) {
  return PointName(table, cell.row) + ", value " + Quoted(table.grid.TextOf(cell)) + ": " + mark;
}

}  // namespace

void CheckValues(const Model& model, const cifCaldata& data, const SlipLimits& limits,
                 SurveyRow& row) {
  const SlipLimit limit = limits.Of(model);
  std::unique_ptr<cifCaldata> earlier;
  bool isEarlierKnown = false;
  std::string first;
  std::size_t count = 0;
  for (std::int16_t page = 0; page < data.GetCalPageCount(); ++page) {
    MemoryGrid grid(kColumns);
    data.GetCalData(page, grid);
    const PageTable table{model, page, grid};
    Slips slips = FindSlips({.table = table, .origins = kEveryValueIsOfTheFile, .limit = limit});
    if (slips.marks.empty()) {
      continue;
    }
    if (!isEarlierKnown) {
      earlier = EarlierData(model, row);
      isEarlierKnown = true;
    }
    if (earlier && page < earlier->GetCalPageCount()) {
      MemoryGrid before(kColumns);
      earlier->GetCalData(page, before);
      const PageTable earlierTable{model, page, before};
      slips = FindSlips({.table = table,
                         .origins = kEveryValueIsOfTheFile,
                         .earlier = &earlierTable,
                         .limit = limit});
    }
    count += slips.marks.size();
    if (first.empty() && !slips.marks.empty()) {
      first = TextOf(table, slips.marks.begin()->first, slips.marks.begin()->second);
    }
  }
  if (count > 0) {
    row.Add(FindingKind::DoubtfulValue,
            first +
                (count == 1 ? std::string()
                            : " Doubtful values in all: " + std::to_string(count) + ".") +
                " Compare the values with the certificate.");
  }
}

}  // namespace tarvell
