// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/TableLayout.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "core/paper/WrappedText.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr double kPadding = 4;     // at both sides of a text
constexpr double kRowSpacing = 3;  // of a row, besides its lines
constexpr double kThinRule = 0.25;
constexpr double kThickRule = 0.75;
constexpr double kMarkGap = 2;

constexpr std::string_view kCutOff = "...";

}  // namespace

std::vector<double> SharedWidths(std::span<const double> wanted, double available) {
  std::vector<std::size_t> order(wanted.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t column) { return wanted[column]; });
  std::vector<double> widths(wanted.size());
  std::size_t left = wanted.size();
  for (const std::size_t column : order) {
    widths[column] = std::min(wanted[column], available / static_cast<double>(left));
    available -= widths[column];
    --left;
  }
  return widths;
}

TableLayout::TableLayout(const PaperTable& table, double width, const PaperFonts& fonts)
    : table_(table), fonts_(fonts), markWidths_(table.columns.size()) {
  FindWidths(width);
}

double TableLayout::WidestLine(std::string_view text, PaperFont font) const {
  double width = 0;
  text = FirstCharacters(text, kShownCharacters);
  while (!text.empty()) {
    width = std::max(width, fonts_.WidthOf(TakeLine(text), font));
  }
  return width;
}

void TableLayout::FindWidths(double width) {
  std::vector<double> wanted;
  for (const PaperColumn& column : table_.columns) {
    wanted.push_back(WidestLine(column.caption, PaperFont::Strong));
  }
  for (const std::vector<PaperCell>& row : table_.rows) {
    for (std::size_t column = 0; column < std::min(row.size(), wanted.size()); ++column) {
      const PaperCell& cell = row[column];
      wanted[column] = std::max(wanted[column], WidestLine(cell.text, PaperFont::Text));
      if (!cell.mark.empty()) {
        markWidths_[column] =
            std::max(markWidths_[column], kMarkGap + fonts_.WidthOf(cell.mark, PaperFont::Strong));
      }
    }
  }
  for (std::size_t column = 0; column < wanted.size(); ++column) {
    wanted[column] += 2 * kPadding + markWidths_[column];
  }
  widths_ = SharedWidths(wanted, width);
}

double TableLayout::TextWidth(std::size_t column) const {
  return widths_[column] - 2 * kPadding - markWidths_[column];
}

WrappedRow TableLayout::Wrapped(std::vector<std::string> texts, PaperFont font,
                                double limit) const {
  const double line = fonts_.LineHeight(font);
  const auto most = static_cast<std::size_t>(std::max((limit - kRowSpacing) / line, 1.0));
  WrappedRow row;
  std::size_t highest = 1;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    std::vector<std::string> lines =
        column < texts.size() ? WrappedText(texts[column], TextWidth(column), font, fonts_)
                              : std::vector<std::string>();
    if (lines.size() > most) {
      lines.resize(most);
      lines.back() = kCutOff;
    }
    highest = std::max(highest, lines.size());
    row.cells.push_back(std::move(lines));
  }
  row.height = static_cast<double>(highest) * line + kRowSpacing;
  return row;
}

WrappedRow TableLayout::Captions(double limit) const {
  std::vector<std::string> texts;
  for (const PaperColumn& column : table_.columns) {
    texts.push_back(column.caption);
  }
  return Wrapped(std::move(texts), PaperFont::Strong, limit);
}

WrappedRow TableLayout::Row(std::size_t row, double limit) const {
  std::vector<std::string> texts;
  for (const PaperCell& cell : table_.rows[row]) {
    texts.push_back(cell.text);
  }
  return Wrapped(std::move(texts), PaperFont::Text, limit);
}

void TableLayout::Place(const WrappedRow& wrapped, PaperFont font, double y,
                        PaperSheet& sheet) const {
  double x = 0;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    double top = y + kRowSpacing / 2;
    for (const std::string& line : wrapped.cells[column]) {
      double left = x + kPadding;
      if (table_.columns[column].isNumber) {
        left += TextWidth(column) - fonts_.WidthOf(line, font);
      }
      if (!line.empty()) {
        sheet.texts.push_back({left, top, line, font});
      }
      top += fonts_.LineHeight(font);
    }
    x += widths_[column];
  }
}

void TableLayout::PlaceCaptions(const WrappedRow& captions, double y, PaperSheet& sheet) const {
  Place(captions, PaperFont::Strong, y, sheet);
  const double width = std::reduce(widths_.begin(), widths_.end());
  sheet.rules.push_back({0, y + captions.height, width, kThickRule});
}

void TableLayout::PlaceRow(const WrappedRow& wrapped, std::size_t row, double y,
                           PaperSheet& sheet) const {
  Place(wrapped, PaperFont::Text, y, sheet);
  double x = 0;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    x += widths_[column];
    const std::vector<PaperCell>& cells = table_.rows[row];
    if (column < cells.size() && !cells[column].mark.empty()) {
      sheet.texts.push_back({x - kPadding - markWidths_[column] + kMarkGap, y + kRowSpacing / 2,
                             cells[column].mark, PaperFont::Strong});
    }
  }
  sheet.rules.push_back({0, y + wrapped.height, x, kThinRule});
}

}  // namespace tarvell
