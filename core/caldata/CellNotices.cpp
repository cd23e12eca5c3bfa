// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CellNotices.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/caldata/HeaderLines.h"
#include "core/caldata/Uncertainty.h"
#include "core/dates/Calendar.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kDigits = "0123456789";
/// From this number on, not every digit before the point is kept.
constexpr double kTooManyDigits = 1E15;
// A file has eight digits for a date.
constexpr std::int16_t kFirstFourDigitYear = 1000;
constexpr std::int16_t kLastFourDigitYear = 9999;
/// Tolerance for the rounding errors of binary fractions.
constexpr double kSlack = 1 + 1E-9;

/// Half a unit of the last decimal.
double RoundingOf(std::string_view number) {
  const std::size_t point = number.find('.');
  const std::size_t decimals = point == std::string_view::npos ? 0 : number.size() - point - 1;
  return 0.5 * std::pow(10.0, -static_cast<double>(decimals));
}

/// What was typed, without the cell's unit. A spreadsheet appends a line end.
std::string_view TypedNumber(std::string_view typed, const CellParts& cell) {
  while (!typed.empty() && (typed.back() == '\n' || typed.back() == '\r')) {
    typed.remove_suffix(1);
  }
  return WithoutUnit(typed, {cell.before, cell.after});
}

/// Whether a value in per cent and one in ppm are the same.
bool AreEqualUncertainties(std::string_view percent, std::string_view ppm) {
  return percent.ends_with(kPercent) && ppm.ends_with(kPpm) &&
         PpmOfPercent(NumericValue(PartsOfCell(percent).number)) ==
             RoundedTo15Digits(NumericValue(PartsOfCell(ppm).number));
}

/// The number in a date's box, if it can be saved.
std::optional<std::int16_t> BoxNumber(std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number || !(std::abs(*number) < std::numeric_limits<std::int16_t>::max())) {
    return std::nullopt;
  }
  return ToInt16(*number);
}

}  // namespace

CellParts PartsOfCell(std::string_view text) {
  const std::size_t last = text.find_last_of(kDigits);
  if (last == std::string_view::npos) {
    return {text, {}, {}};
  }
  std::size_t first = text.find_first_of(kDigits);
  for (const char sign : {'.', '-'}) {
    if (first > 0 && text[first - 1] == sign) {
      --first;
    }
  }
  return {text.substr(0, first), text.substr(first, last + 1 - first), text.substr(last + 1)};
}

std::string_view WithoutUnit(std::string_view value, const CellAffixes& affixes) {
  const std::string_view before = Trim(affixes.before);
  const std::string_view after = Trim(affixes.after);
  value = Trim(value);
  if (value.starts_with(before)) {
    value.remove_prefix(before.size());
  }
  if (value.ends_with(after)) {
    value.remove_suffix(after.size());
  }
  return Trim(value);
}

bool HoldsZero(std::string_view text) {
  return PartsOfCell(text).number.find_first_of("123456789") == std::string_view::npos;
}

std::string StoredDifferently(std::string_view typed, std::string_view stored) {
  const CellParts cell = PartsOfCell(stored);
  const std::string holds = "the cell holds " + Quoted(stored) + ".";
  const std::string_view text = TypedNumber(typed, cell);
  if (text.empty()) {
    return "No number was typed; " + holds;
  }
  const std::optional<double> number = ParseNumber(text);
  if (!number) {
    return Quoted(typed) + " is not a number; " + holds +
           " Type digits with a point for the decimals.";
  }
  if (cell.number.empty()) {
    return "This row has no place for the number " + Quoted(typed) + "; " + holds;
  }
  if (*number != 0 && HoldsZero(stored)) {
    return Quoted(typed) + " is too small for the decimals of this cell; " + holds;
  }
  if (std::abs(*number) >= kTooManyDigits) {
    return Quoted(typed) + " is larger than any calibration value; " + holds;
  }
  const double difference = std::abs(*number - NumericValue(cell.number));
  return difference > RoundingOf(cell.number) * kSlack ? Quoted(typed) + " was typed; " + holds
                                                       : std::string();
}

std::string PointTakenDifferently(std::string_view typed, std::string_view added) {
  if (Trim(typed).empty() || ParseNumber(Trim(typed))) {
    return {};
  }
  return Quoted(typed) + " is not a number; " +
         (added.empty() ? "no point was added." : Quoted(added) + " was added.") +
         " Type digits with a point for the decimals.";
}

std::string ReadDifferently(std::string_view shown, std::string_view readBack) {
  if (Trim(shown) == Trim(readBack)) {
    return {};
  }
  return "The cell shows " + Quoted(shown) + ", and will be read back as " + Quoted(readBack) +
         (AreEqualUncertainties(shown, readBack) ? ", the same value." : ".");
}

std::string HeaderReadDifferently(std::string_view field, std::string_view value) {
  const std::string read = HeaderValueRead(value);
  if (read == value) {
    return {};
  }
  return std::string(field) + ": only " + Quoted(read) +
         " will be read back when the file is opened again.";
}

std::string NameReadDifferently(std::string_view field, std::string_view name) {
  return name.find(',') == std::string_view::npos
             ? HeaderReadDifferently(field, name)
             : std::string(field) +
                   ": the data file cannot keep a comma here. Remove it before OK.";
}

std::string MissingDay(std::string_view field, std::string_view day, std::string_view month,
                       std::string_view year) {
  const std::optional<std::int16_t> dayNumber = BoxNumber(day);
  const std::optional<std::int16_t> yearNumber = BoxNumber(year);
  if (!dayNumber || !yearNumber) {
    return {};
  }
  if (*yearNumber < kFirstFourDigitYear || *yearNumber > kLastFourDigitYear) {
    return std::string(field) + ": the year " + std::string(Trim(year)) +
           " does not have four digits. Another date will be read back from the file.";
  }
  if (IsValidDate(*yearNumber, MonthToNumber(month), *dayNumber)) {
    return {};
  }
  return std::string(field) + ": the day " + std::string(Trim(day)) + " " +
         std::string(month.empty() ? "(no month)" : month) + " " + std::string(Trim(year)) +
         " does not exist. It is saved unchanged.";
}

}  // namespace tarvell
