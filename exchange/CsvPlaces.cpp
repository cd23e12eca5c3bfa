// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvPlaces.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "exchange/CaptionUnit.h"
#include "exchange/CsvLines.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// More columns with header fields than any table has.
constexpr std::size_t kHeaderColumns = 8;

class PlaceFinder {
 public:
  explicit PlaceFinder(const std::vector<DelimitedLine>& lines) : lines_(lines) {}

  std::vector<TablePlace> Run() {
    std::size_t done = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (IsBlank(lines_[i])) {
        continue;
      }
      TablePlace place;
      place.captions = CaptionsAbove({done, i});
      place.head = {done, place.captions.IsEmpty() ? i : place.captions.begin};
      if (!place.captions.IsEmpty()) {
        FindNames(place.captions, place);
      } else if (!places_.empty()) {
        // Those captions may be long, and many lines may follow them.
        place.serialColumn = places_.back().serialColumn;
        place.modelColumn = places_.back().modelColumn;
        place.headerColumns = places_.back().headerColumns;
      }
      if (!IsFirstRow(i, place)) {
        continue;
      }
      place.rows = RowsFrom(i, place);
      if (place.captions.IsEmpty()) {
        Inherit(place);
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

  /// Finds the columns that say which instrument a row is about.
  void FindNames(LineRange captions, TablePlace& place) const {
    const DelimitedLine& line = lines_[captions.begin];
    for (std::size_t column = 0; column < line.Width(); ++column) {
      const std::string caption = Folded(line.Cell(column));
      if (!place.serialColumn && NamesSerialNumber(caption)) {
        place.serialColumn = column;
      } else if (!place.modelColumn && HasWord(caption, kMemberWords)) {
        place.modelColumn = column;
      } else if (place.headerColumns.size() < kHeaderColumns && IsHeaderField(line.Cell(column))) {
        place.headerColumns.push_back(column);
      }
    }
    if (!place.serialColumn) {
      place.modelColumn.reset();
    }
  }

  /// Whether a caption names a field of the header that can be the same in all rows.
  [[nodiscard]] static bool IsHeaderField(std::string_view caption) {
    const std::optional<KeyField> field = KeyFieldOf(caption);
    return (field == KeyField::CalDate || field == KeyField::DueDate ||
            field == KeyField::CalibrationNumber) &&
           UnitOfCaption(caption).empty();
  }

  /// The first column that can have values.
  [[nodiscard]] static std::size_t FirstOf(const TablePlace& place) {
    std::size_t first = 0;
    while (place.IsAboutRows(first)) {
      ++first;
    }
    return first;
  }

  [[nodiscard]] bool IsFirstRow(std::size_t index, const TablePlace& place) const {
    // A point right below the captions may lack its value.
    const bool isPoint = index == place.captions.end && NumberIn(lines_[index].Cell(0)) &&
                         index + 1 < lines_.size() && IsDataLine(lines_[index + 1]);
    return isPoint || IsDataLine(lines_[index]) || IsInstrumentRow(lines_[index], place);
  }

  /// Whether a line has a number after the serial number and the model of an instrument. The cells
  /// of those may be empty, and mean the instrument above.
  [[nodiscard]] static bool IsInstrumentRow(const DelimitedLine& line, const TablePlace& place) {
    const bool hasNames = place.serialColumn || !place.headerColumns.empty();
    if (!hasNames || !NumberIn(line.Cell(FirstOf(place)))) {
      return false;
    }
    const std::string_view serial =
        place.serialColumn ? line.Cell(*place.serialColumn) : std::string_view();
    return serial.empty() || serial.find_first_of("0123456789") != std::string_view::npos;
  }

  /// Whether a line right below a row is another row of its table, without some of its cells.
  [[nodiscard]] static bool IsRowWithGaps(const DelimitedLine& row, const DelimitedLine& line,
                                          std::size_t width) {
    std::size_t numbers = 0;
    std::size_t texts = 0;
    for (std::size_t column = 0; column < line.Width(); ++column) {
      const bool isNumber = NumberIn(line.Cell(column)).has_value();
      numbers += isNumber ? 1 : 0;
      texts += isNumber || line.Cell(column).empty() ? 0 : 1;
    }
    if (numbers == 0 || line.Width() > width) {
      return false;
    }
    return line.Cell(0).empty() ? texts == 0 : AreAlike(row, line, 0) && !KeyFieldOf(line.Cell(0));
  }

  /// Whether a line right between two rows is one whose point cannot be read: a spreadsheet may
  /// have made a date of it. Without it, the table would end there.
  [[nodiscard]] bool IsBetweenRows(const DelimitedLine& row, std::size_t index,
                                   std::size_t width) const {
    const DelimitedLine& line = lines_[index];
    const auto hasNumber = [&] {
      for (std::size_t column = 1; column < line.Width(); ++column) {
        if (NumberIn(line.Cell(column))) {
          return true;
        }
      }
      return false;
    };
    return index + 1 < lines_.size() && line.Width() <= width && IsDataLine(lines_[index + 1]) &&
           AreAlike(row, lines_[index + 1], 0) && !KeyFieldOf(line.Cell(0)) && hasNumber();
  }

  /// The lines of the table that begins with this one.
  [[nodiscard]] std::vector<std::size_t> RowsFrom(std::size_t first,
                                                  const TablePlace& place) const {
    std::size_t width = 0;
    for (std::size_t i = place.captions.begin; i < place.captions.end; ++i) {
      width = std::max(width, lines_[i].Width());
    }
    const std::size_t point = FirstOf(place);
    std::vector<std::size_t> rows;
    std::size_t blanks = 0;
    for (std::size_t i = first; i < lines_.size(); ++i) {
      const DelimitedLine& line = lines_[i];
      if (IsBlank(line)) {
        ++blanks;
        continue;
      }
      const bool isRow = i == first || IsDataLine(line) || IsInstrumentRow(line, place);
      const bool goesOn = blanks > 0 ? isRow && GoesOn(lines_[first], line, width, point)
                                     : isRow || IsRowWithGaps(lines_[first], line, width) ||
                                           IsBetweenRows(lines_[first], i, width);
      if (!goesOn) {
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
                                   std::size_t width, std::size_t point) {
    return AreAlike(first, line, point) && line.Width() <= width &&
           line.Cell(point) != first.Cell(point);
  }

  /// Whether both rows begin with a number, or both with a name.
  [[nodiscard]] static bool AreAlike(const DelimitedLine& one, const DelimitedLine& other,
                                     std::size_t point) {
    return NumberIn(one.Cell(point)).has_value() == NumberIn(other.Cell(point)).has_value();
  }

  /// Gives a table without captions the columns of the one above it, if it can be in them.
  void Inherit(TablePlace& place) const {
    if (Follows(place)) {
      place.captions = places_.back().captions;
    } else {
      place.serialColumn.reset();
      place.modelColumn.reset();
      place.headerColumns.clear();
    }
  }

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
    return AreAlike(lines_[above.front()], lines_[place.rows.front()], FirstOf(place)) &&
           widest(place.rows) <= widest(above);
  }

  const std::vector<DelimitedLine>& lines_;
  std::vector<TablePlace> places_;
};

}  // namespace

bool TablePlace::IsAboutRows(std::size_t column) const {
  return column == serialColumn || column == modelColumn ||
         std::ranges::find(headerColumns, column) != headerColumns.end();
}

std::vector<TablePlace> TablePlaces(const std::vector<DelimitedLine>& lines) {
  return PlaceFinder(lines).Run();
}

}  // namespace tarvell
