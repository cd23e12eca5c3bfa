// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CLIPBOARDTABLE_H
#define TARVELL_CORE_CALDATA_CLIPBOARDTABLE_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/PasteRefusals.h"
#include "core/numbers/WrittenNumber.h"

/// A table of points as people and spreadsheets write it: lines, captions and units.
namespace tarvell {

/// The columns of a table of points: frequency and factor of a power sensor, or setting, frequency
/// and value of a step attenuator.
struct PointColumns {
  std::string_view frequencyUnit;  ///< "MHz" or "GHz" for a power sensor, "" for an attenuator

  [[nodiscard]] bool IsSensor() const { return !frequencyUnit.empty(); }
  [[nodiscard]] std::size_t Count() const { return IsSensor() ? 2 : 3; }
};

/// Whether a text has several columns. Otherwise it is a block of values, which have one column in
/// a table of points.
[[nodiscard]] bool IsPointTable(std::string_view text);

/// A number that can be read with either decimal sign: "12.400" is 12.4 or 12400.
struct TwoReadings {
  std::string written;
  DecimalSign sign = DecimalSign::Point;  ///< the sign in it
  std::string ifDecimals;                 ///< the number if that is the decimal sign
  std::string ifThousands;                ///< the number if it separates thousands
};

/// The first number of a table of points that can be read in two ways, if no other number of the
/// table shows which one is meant.
[[nodiscard]] std::optional<TwoReadings> ReadTwoWays(std::string_view text,
                                                     const PointColumns& columns);

/// A cell without the "(Ref.)" at its end: a certificate may mark the reference point, as the data
/// file does.
[[nodiscard]] std::string_view WithoutReferenceMark(std::string_view cell);

enum class Quantity { Frequency, Percent, Decibel, Other };

struct TableUnit {
  std::string_view name;
  Quantity quantity;
  double scale = 1;  ///< in Hz
};

/// The unit of this name, in any case; nullptr for none.
[[nodiscard]] const TableUnit* FindUnit(std::string_view name);

/// The names of the units of a quantity, for a message.
[[nodiscard]] std::string UnitNames(Quantity quantity);

/// A line that is not blank, without the blank cells at its end. Lines count from 1, as in the
/// spreadsheet's selection.
struct ClipboardLine {
  std::size_t number = 0;
  std::vector<std::string> cells;
};

/// A number with the unit after it.
struct NumberWithUnit {
  std::string_view number;
  const TableUnit* unit = nullptr;  ///< nullptr for none
};
[[nodiscard]] NumberWithUnit SplitNumber(std::string_view cell);

/// The clipboard's table: its points, and the units that its captions name. Its columns are
/// separated by TAB or, in a text without any, by semicolons.
class ClipboardTable {
 public:
  ClipboardTable(std::string_view text, const PointColumns& columns);

  /// Throws an error that names the right columns when no line has as many as a point.
  void CheckColumns() const;

  /// The lines of points.
  [[nodiscard]] const std::vector<ClipboardLine>& Lines() const { return lines_; }

  [[nodiscard]] Quantity QuantityOf(std::size_t column) const;
  [[nodiscard]] std::size_t FrequencyColumn() const { return columns_.Count() - 2; }

  /// The unit that the captions name for a column, nullptr for none.
  const TableUnit* CaptionUnit(std::size_t column, PasteRefusals& refusals) const;

  /// How many numbers cannot be read with this decimal sign.
  [[nodiscard]] std::size_t CountUnread(DecimalSign sign) const;

  /// The first number that can be read in two ways, if no other number shows which one is meant.
  [[nodiscard]] std::optional<TwoReadings> ReadTwoWays() const;

 private:
  void ForEachNumber(const std::function<void(std::string_view number)>& act) const;
  [[nodiscard]] std::optional<TwoReadings> FirstOfTwoReadings() const;

  PointColumns columns_;
  std::vector<ClipboardLine> captions_;
  std::vector<ClipboardLine> lines_;
};

}  // namespace tarvell

#endif
