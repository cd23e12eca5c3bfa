// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/DataSetPaper.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/dates/DueDate.h"
#include "core/paper/PageOnPaper.h"

namespace tarvell {

namespace {

constexpr double kPictureHeight = 200;

/// A file of more lines is not a data set of this program.
constexpr std::size_t kPrintedLines = 1000;

std::string TitleOf(std::string_view model, const std::string& serial) {
  return "Calibration data of " + std::string(model) + (serial.empty() ? "" : " " + serial);
}

PaperBlanks SignatureLines() {
  return {{"Checked by (name)", "Date", "Signature"}};
}

void AddFile(const FileOnPaper& file, PaperFields& fields) {
  fields.insert(fields.end(), file.fields.begin(), file.fields.end());
  fields.push_back({"Printed", PrintedNow()});
}

/// Puts a data set on paper.
class DataSetParts {
 public:
  explicit DataSetParts(const DataSetOnPaper& set) : set_(set) {}

  DataSetPaper Paper() && {
    PaperDocument& document = paper_.document;
    document.title = TitleOf(set_.model.code, set_.state.header.serialNumber);
    document.foot = set_.file.foot;
    document.parts.emplace_back(Header());
    for (const std::int16_t page : ShownPages(set_.state)) {
      AddPage(page);
    }
    document.parts.emplace_back(SignatureLines());
    return std::move(paper_);
  }

 private:
  [[nodiscard]] PaperFields Header() const {
    const DraftHeader& header = set_.state.header;
    const auto date = [](const std::string& day, const std::string& month, const std::string& year,
                         bool isDefault) {
      return day + " " + month + " " + year + (isDefault ? " (not entered yet)" : "");
    };
    PaperFields fields = {
        {"Model", std::string(set_.model.code)},
        {"Serial number", header.serialNumber},
        {"Calibration number", header.calibrationNumber},
        {"Calibrated", date(header.calDay, header.calMonth, header.calYear, set_.isCalDateDefault)},
        {"Due", date(header.dueDay, header.dueMonth, header.dueYear, set_.isDueDateDefault)},
        {"Comment", header.comment}};
    if (set_.state.option) {
      fields.push_back({"Option 001", *set_.state.option ? "yes" : "no"});
    }
    fields.push_back({"Compared with", set_.earlierName.empty()
                                           ? "no earlier calibration"
                                           : "the calibration of " + set_.earlierName});
    AddFile(set_.file, fields);
    return fields;
  }

  void AddPage(std::int16_t number) {
    const DraftPage& page = set_.state.pages.at(static_cast<std::size_t>(number));
    MemoryGrid grid(kTableColumns);
    FillPage(set_.data, number, page, grid);
    const PageTable table = {set_.model, number, grid};
    MemoryGrid earlierGrid(kTableColumns);
    std::optional<PageTable> earlier;
    if (!set_.earlierName.empty() && set_.fillEarlier(number, earlierGrid)) {
      earlier.emplace(PageTable{set_.model, number, earlierGrid});
    }
    std::vector<PaperPart> parts = PartsOfPage({.table = table,
                                                .page = page,
                                                .earlier = earlier ? &*earlier : nullptr,
                                                .earlierName = set_.earlierName,
                                                .limit = set_.limit,
                                                .caption = CaptionOf(number, page)});
    if (std::string legend = LegendOf(parts); !legend.empty()) {
      parts.emplace_back(PaperParagraph{std::move(legend)});
    }
    std::ranges::move(parts, std::back_inserter(paper_.document.parts));
    AddCurves(table, earlier);
  }

  [[nodiscard]] std::string CaptionOf(std::int16_t number, const DraftPage& page) const {
    const std::string name = set_.data.GetCalPageName(number);
    if (name.empty()) {
      return {};
    }
    return name + (page.serialNumber.empty() ? "" : ", serial number " + page.serialNumber);
  }

  /// A picture for each column of values and each unit in it.
  void AddCurves(const PageTable& table, const std::optional<PageTable>& earlierTable) {
    std::vector<Curve> curves = CurvesOf(set_.model, table.page, table.grid);
    // A single point is no curve.
    std::erase_if(
        curves, [](const Curve& curve) { return curve.isUncertainty || curve.points.size() < 2; });
    const std::vector<Curve> earlier =
        earlierTable ? CurvesOf(set_.model, table.page, earlierTable->grid) : std::vector<Curve>();
    while (!curves.empty()) {
      const Curve first = curves.front();
      const auto isBeside = [&first](const Curve& curve) {
        return curve.column == first.column && curve.yUnit == first.yUnit;
      };
      CurvesOnPaper picture = {.earlierName = "earlier: " + set_.earlierName};
      std::ranges::copy_if(curves, std::back_inserter(picture.now), isBeside);
      std::ranges::copy_if(earlier, std::back_inserter(picture.earlier), isBeside);
      std::erase_if(curves, isBeside);
      const std::string page = set_.data.GetCalPageName(table.page);
      paper_.document.parts.emplace_back(
          PaperPicture{.caption = (page.empty() ? "" : page + ": ") + first.yName,
                       .number = paper_.pictures.size(),
                       .height = kPictureHeight});
      paper_.pictures.push_back(std::move(picture));
    }
  }

  const DataSetOnPaper& set_;
  DataSetPaper paper_;
};

}  // namespace

DataSetPaper PaperOf(const DataSetOnPaper& set) {
  return DataSetParts(set).Paper();
}

PaperDocument PaperOfText(const std::string& model, const Calibration& version,
                          const ReadableData& readable, const FileOnPaper& file) {
  const CalFileInfo& header = version.header;
  PaperDocument document = {.title = TitleOf(model, header.SerialNumber), .foot = file.foot};
  PaperFields fields = {{"Model", model},
                        {"Serial number", header.SerialNumber},
                        {"Calibration number", header.CalibrationNumber},
                        {"Calibrated", DateText(version.Calibrated())},
                        {"Due", DateText(version.Due())},
                        {"Comment", header.Comment}};
  AddFile(file, fields);
  document.parts.emplace_back(std::move(fields));
  if (!readable.notice.empty()) {
    document.parts.emplace_back(PaperParagraph{.text = readable.notice, .isStrong = true});
  }
  for (const ReadablePage& page : readable.pages) {
    PaperTable table = {.caption = page.name};
    for (const std::string& caption : page.rows.front()) {
      table.columns.push_back({caption});
    }
    const std::size_t end = std::min(page.rows.size(), kPrintedLines + 1);
    for (std::size_t row = 1; row < end; ++row) {
      std::vector<PaperCell>& cells = table.rows.emplace_back();
      for (const std::string& text : page.rows[row]) {
        cells.push_back({text});
      }
    }
    document.parts.emplace_back(std::move(table));
    if (end < page.rows.size()) {
      document.parts.emplace_back(PaperParagraph{"... and " +
                                                 std::to_string(page.rows.size() - end) +
                                                 " more lines, which are not printed."});
    }
  }
  document.parts.emplace_back(SignatureLines());
  return document;
}

}  // namespace tarvell
