// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_DATASETPAPER_H
#define TARVELL_CORE_PAPER_DATASETPAPER_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/caldata/Draft.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/curves/Curves.h"
#include "core/curves/SlipLimits.h"
#include "core/paper/FileOnPaper.h"
#include "core/paper/PaperDocument.h"

/// A data set as it is printed, for the second person who checks it.
namespace tarvell {

/// What is printed of a data set.
struct DataSetOnPaper {
  const Model& model;
  const cifCaldata& data;    ///< for the names and captions of the pages
  const EditorState& state;  ///< its header and pages
  bool isCalDateDefault = false;
  bool isDueDateDefault = false;
  /// The calibration that the values are compared with, "5 MAR 2001"; "" for none.
  std::string earlierName = {};
  /// Fills a grid with a page of that calibration. False if it has no such page.
  std::function<bool(std::int16_t page, MemoryGrid& grid)> fillEarlier = {};
  SlipLimit limit = {};
  FileOnPaper file = {};
};

/// The curves of a picture: those of one column of values in one unit.
struct CurvesOnPaper {
  std::vector<Curve> now = {};
  std::vector<Curve> earlier = {};
  std::string earlierName = {};
};

struct DataSetPaper {
  PaperDocument document;
  std::vector<CurvesOnPaper> pictures;  ///< by the numbers of the document's pictures
};

/// Header, file, and each page with its table, the changes, the marks and why they are there, and
/// its curves, with lines for the signature at the end.
[[nodiscard]] DataSetPaper PaperOf(const DataSetOnPaper& set);

/// The first thousand lines of a file that the program cannot read as a data set.
[[nodiscard]] PaperDocument PaperOfText(const std::string& model, const Calibration& version,
                                        const ReadableData& readable, const FileOnPaper& file);

}  // namespace tarvell

#endif
