// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvPlaces.h"

#include <algorithm>
#include <utility>

#include "exchange/CsvLines.h"

namespace tarvell {

namespace {

class PlaceFinder {
 public:
  explicit PlaceFinder(const std::vector<DelimitedLine>& lines) : lines_(lines) {}

  std::vector<TablePlace> Run() {
    std::size_t done = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (!IsDataLine(lines_[i])) {
        continue;
      }
      TablePlace place;
      place.captions = CaptionsAbove({done, i});
      place.head = {done, place.captions.IsEmpty() ? i : place.captions.begin};
      place.rows = RowsFrom(i, place.captions);
      if (place.captions.IsEmpty() && Follows(place)) {
        place.captions = places_.back().captions;
      }
      i = place.rows.back();
      done = i + 1;
      places_.push_back(std::move(place));
    }
    return std::move(places_);
  }

 private:
  /// The captions at the end of these lines. Blank lines may follow them.
  [[nodiscard]] LineRange CaptionsAbove(LineRange lines) const {
    std::size_t end = lines.end;
    while (end > lines.begin && IsBlank(lines_[end - 1])) {
      --end;
    }
    const auto isCaption = [&](std::size_t above) {
      return end >= lines.begin + above && IsCaptionLine(lines_[end - above]);
    };
    if (!isCaption(1)) {
      return {};
    }
    return {end - (HasOnlyUnits(lines_[end - 1]) && isCaption(2) ? 2 : 1), end};
  }

  /// The lines of the table that begins with this one.
  [[nodiscard]] std::vector<std::size_t> RowsFrom(std::size_t first, LineRange captions) const {
    std::size_t width = 0;
    for (std::size_t i = captions.begin; i < captions.end; ++i) {
      width = std::max(width, lines_[i].Width());
    }
    std::vector<std::size_t> rows;
    std::size_t blanks = 0;
    for (std::size_t i = first; i < lines_.size(); ++i) {
      const DelimitedLine& line = lines_[i];
      if (IsBlank(line)) {
        ++blanks;
        continue;
      }
      if (!IsDataLine(line) || (blanks > 0 && !GoesOn(lines_[first], line, width))) {
        break;
      }
      width = std::max(width, line.Width());
      rows.push_back(i);
      blanks = 0;
    }
    return rows;
  }

  /// Whether a line after a blank one is a row of the table that begins with `first`. A table that
  /// begins again is another one, such as that of the next member of a set.
  [[nodiscard]] static bool GoesOn(const DelimitedLine& first, const DelimitedLine& line,
                                   std::size_t width) {
    return AreAlike(first, line) && line.Width() <= width && line.Cell(0) != first.Cell(0);
  }

  /// Whether both rows begin with a number, or both with a name.
  [[nodiscard]] static bool AreAlike(const DelimitedLine& one, const DelimitedLine& other) {
    return NumberIn(one.Cell(0)).has_value() == NumberIn(other.Cell(0)).has_value();
  }

  /// Whether a table without captions can be in the columns of the one above it.
  [[nodiscard]] bool Follows(const TablePlace& place) const {
    if (places_.empty() || places_.back().captions.IsEmpty()) {
      return false;
    }
    const std::vector<std::size_t>& above = places_.back().rows;
    const auto widest = [&](const std::vector<std::size_t>& rows) {
      std::size_t width = 0;
      for (const std::size_t row : rows) {
        width = std::max(width, lines_[row].Width());
      }
      return width;
    };
    for (std::size_t i = place.head.begin; i < place.head.end; ++i) {
      if (lines_[i].Width() > 1) {
        return false;
      }
    }
    return AreAlike(lines_[above.front()], lines_[place.rows.front()]) &&
           widest(place.rows) <= widest(above);
  }

  const std::vector<DelimitedLine>& lines_;
  std::vector<TablePlace> places_;
};

}  // namespace

std::vector<TablePlace> TablePlaces(const std::vector<DelimitedLine>& lines) {
  return PlaceFinder(lines).Run();
}

}  // namespace tarvell
