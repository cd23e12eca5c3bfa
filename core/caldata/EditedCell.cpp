// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/EditedCell.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "core/numbers/Numbers.h"

namespace tarvell {

namespace {

constexpr const char* kNoChoice = "*";

EditedCell Formatted(const cifCaldata& data, std::int16_t page, Cell cell,
                     const std::string& text) {
  EditedCell edited;
  edited.text =
      data.GetCalibrationDataFormat(page, cell.column, cell.row.number, text, edited.unit);
  return edited;
}

}  // namespace

EditedCell EditedCellOf(const cifCaldata& data, std::int16_t page, Cell cell,
                        const std::string& text) {
  const std::string_view number = TooLargeNumber(text);
  if (number.empty()) {
    return Formatted(data, page, cell, text);
  }
  // Neither the unit nor whether the cell can be edited depends on the number.
  std::string other = text;
  other.replace(static_cast<std::size_t>(number.data() - text.data()), number.size(), "0");
  EditedCell edited = Formatted(data, page, cell, other);
  if (!edited.text.empty()) {
    edited.text = number;
  }
  return edited;
}

std::vector<std::string> UnitsOf(const cifCaldata& data, std::int16_t page, std::int16_t column) {
  std::vector<std::string> units;
  data.GetCalibrationUnit(page, column, units);
  if (units.size() == 1 && units.front() == kNoChoice) {
    units.clear();
  }
  return units;
}

std::string ChosenUnit(const std::vector<std::string>& units, const std::string& unit) {
  if (units.empty()) {
    return {};
  }
  return std::find(units.begin(), units.end(), unit) != units.end() ? unit : units.front();
}

}  // namespace tarvell
