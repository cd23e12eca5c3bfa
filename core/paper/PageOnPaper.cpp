// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/PageOnPaper.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "core/caldata/CalDataGrid.h"
#include "core/curves/CellNumber.h"
#include "core/curves/Change.h"
#include "core/curves/Slips.h"

namespace tarvell {

namespace {

/// Puts the parts of a page together.
class PageParts {
 public:
  explicit PageParts(const PageOnPaper& page)
      : page_(page),
        table_(page.table),
        values_(ValueColumnsOf(table_)),
        slips_(FindSlips({.table = table_,
                          .origins = page.page.origins,
                          .earlier = page.earlier,
                          .limit = page.limit})) {
    // A table may use fewer columns than its grid has; only those have captions.
    while (columns_ < table_.grid.ColumnCount() &&
           !table_.grid.TextOf({kCaptionRow, columns_}).empty()) {
      ++columns_;
    }
    if (page.earlier != nullptr) {
      change_ = ChangeOf(table_, *page.earlier);
    }
  }

  std::vector<PaperPart> Parts() && {
    const bool hasChange = page_.earlier != nullptr;
    const bool isBeside = values_.size() == 1;
    PaperTable table = WithColumns(page_.caption, columns_);
    ForEachRow(table, columns_, [&](Cell cell) { return MarksAt(cell); });
    if (hasChange && isBeside) {
      AddChange(table, values_.front().column, "Earlier");
    }
    parts_.emplace_back(std::move(table));
    if (hasChange && values_.size() > 1) {
      AddChangeTable();
    }
    AddText(PointsOfOneOnly(change_));
    AddText(slips_.notice);
    AddReasons();
    return std::move(parts_);
  }

 private:
  [[nodiscard]] PaperTable WithColumns(const std::string& caption, std::int16_t count) const {
    PaperTable table = {.caption = caption};
    for (std::int16_t column = 0; column < count; ++column) {
      table.columns.push_back({CaptionOf(column), IsNumber(column)});
    }
    return table;
  }

  /// Appends the first `count` columns of every row.
  template <typename MarkOf>
  void ForEachRow(PaperTable& table, std::int16_t count, const MarkOf& markOf) const {
    for (GridRow row = kFirstDataRow; row < EndOf(table_.grid); ++row) {
      std::vector<PaperCell>& cells = table.rows.emplace_back();
      for (std::int16_t column = 0; column < count; ++column) {
        const Cell cell = {row, column};
        cells.push_back({table_.grid.TextOf(cell), markOf(cell)});
      }
    }
  }

  /// With the unit; the uncertainties of two columns have different names.
  [[nodiscard]] std::string CaptionOf(std::int16_t column) const {
    const std::string caption = table_.grid.TextOf({kCaptionRow, column});
    const CaptionParts parts = PartsOfCaption(caption);
    const std::string unit = parts.unit.empty() ? "" : " [" + std::string(parts.unit) + "]";
    const auto value = std::ranges::find(values_, column, &ValueColumn::column);
    return (value != values_.end() && value->isUncertainty ? value->name
                                                           : std::string(parts.name)) +
           unit;
  }

  /// The names of members are texts.
  [[nodiscard]] bool IsNumber(std::int16_t column) const {
    const Axis axis = AxisOf(table_);
    return column > 0 || table_.model.family == ModelFamily::StepAttenuator ||
           (axis.column == 0 && !axis.unit.empty());
  }

  [[nodiscard]] std::string MarksAt(Cell cell) const {
    std::string marks;
    const auto origin = page_.page.origins.find(cell);
    if (origin != page_.page.origins.end()) {
      marks += origin->second == Origin::Template  ? kDefaultSign
               : origin->second == Origin::Earlier ? kEarlierSign
                                                   : std::string_view();
    }
    marks += slips_.marks.contains(cell) ? kSlipSign : std::string_view();
    marks += page_.page.notes.contains(cell) ? kReadBackSign : std::string_view();
    return marks;
  }

  /// Appends the earlier values of a column, and what has become of them.
  void AddChange(PaperTable& table, std::int16_t column, const std::string& caption) const {
    table.columns.push_back({caption, true});
    table.columns.push_back({"Change", true});
    GridRow row = kFirstDataRow;
    for (std::vector<PaperCell>& cells : table.rows) {
      const auto found = change_.cells.find({row, column});
      const CellChange change = found == change_.cells.end() ? CellChange() : found->second;
      cells.push_back({change.earlier});
      cells.push_back({change.difference});
      ++row;
    }
  }

  void AddChangeTable() {
    const std::int16_t keys = values_.front().column;
    PaperTable table =
        WithColumns(page_.caption + (page_.caption.empty() ? "Changes" : ", changes") + " since " +
                        page_.earlierName,
                    keys);
    ForEachRow(table, keys, [](Cell /*cell*/) { return std::string(); });
    for (const ValueColumn& value : values_) {
      AddChange(table, value.column, "Earlier " + value.name);
    }
    parts_.emplace_back(std::move(table));
  }

  void AddText(std::string text) {
    if (!text.empty()) {
      parts_.emplace_back(PaperParagraph{std::move(text)});
    }
  }

  /// Why cells are marked, a line for each.
  void AddReasons() {
    std::string reasons;
    const auto add = [&](std::string_view sign, Cell cell, const std::string& why) {
      reasons +=
          (reasons.empty() ? "" : "\n") + std::string(sign) + " " + CellName(cell) + ": " + why;
    };
    for (const auto& [cell, why] : slips_.marks) {
      add(kSlipSign, cell, why);
    }
    for (const auto& [cell, why] : page_.page.notes) {
      add(kReadBackSign, cell, why);
    }
    AddText(std::move(reasons));
  }

  [[nodiscard]] std::string CellName(Cell cell) const {
    const std::string point = PointName(table_, cell.row);
    const auto value = std::ranges::find(values_, cell.column, &ValueColumn::column);
    const std::string name = value != values_.end() ? value->name : CaptionOf(cell.column);
    return point.empty() ? name : point + ", " + name;
  }

  const PageOnPaper& page_;
  const PageTable& table_;
  std::vector<ValueColumn> values_;
  Slips slips_;
  PageChange change_;
  std::int16_t columns_ = 0;
  std::vector<PaperPart> parts_;
};

bool HoldsMark(const PaperTable& table, std::string_view sign) {
  return std::ranges::any_of(table.rows, [sign](const std::vector<PaperCell>& row) {
    return std::ranges::any_of(
        row, [sign](const PaperCell& cell) { return cell.mark.find(sign) != std::string::npos; });
  });
}

}  // namespace

std::vector<PaperPart> PartsOfPage(const PageOnPaper& page) {
  return PageParts(page).Parts();
}

std::string LegendOf(const std::vector<PaperPart>& parts) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kMeanings = {
      {{kDefaultSign, "default of the program, which nobody has entered"},
       {kEarlierSign, "taken over from an earlier calibration, not entered"},
       {kSlipSign, "may be a slip of typing"},
       {kReadBackSign, "see the note"}}};
  std::string legend;
  for (const auto& [sign, meaning] : kMeanings) {
    const bool isUsed = std::ranges::any_of(parts, [sign = sign](const PaperPart& part) {
      const auto* table = std::get_if<PaperTable>(&part);
      return table != nullptr && HoldsMark(*table, sign);
    });
    if (isUsed) {
      legend += (legend.empty() ? "" : ";  ") + std::string(sign) + "  " + std::string(meaning);
    }
  }
  return legend;
}

}  // namespace tarvell
