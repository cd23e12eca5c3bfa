// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/WrittenDate.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/dates/Calendar.h"
#include "core/numbers/Numbers.h"
#include "core/numbers/WrittenNumber.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

constexpr std::size_t kYearDigits = 4;
constexpr std::size_t kDateDigits = 8;

/// The beginnings of the names of months, folded, in English, German, French and Spanish. A longer
/// beginning comes before a shorter one that it begins with.
constexpr std::array<std::pair<std::string_view, std::int16_t>, 29> kMonths = {
    {{"jan", 1},  {"ene", 1},  {"feb", 2},  {"fév", 2},  {"fev", 2},  {"mar", 3},
     {"mär", 3},  {"mrz", 3},  {"apr", 4},  {"avr", 4},  {"abr", 4},  {"may", 5},
     {"mai", 5},  {"juin", 6}, {"jun", 6},  {"juil", 7}, {"jul", 7},  {"aug", 8},
     {"aoû", 8},  {"ago", 8},  {"sep", 9},  {"oct", 10}, {"okt", 10}, {"nov", 11},
     {"dec", 12}, {"dez", 12}, {"déc", 12}, {"dic", 12}, {"maerz", 3}}};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The parts between blanks, commas and these separators.
std::vector<std::string_view> PartsOf(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> parts;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
    if (text.empty()) {
      return parts;
    }
    parts.push_back(text.substr(0, text.find_first_of(separators)));
    text.remove_prefix(parts.back().size());
  }
}

std::optional<std::int16_t> Number(std::string_view part, std::size_t longest) {
  if (part.empty() || part.size() > longest || !std::ranges::all_of(part, IsDigit)) {
    return std::nullopt;
  }
  return NumericInt16(part);
}

std::optional<std::int16_t> MonthNamed(std::string_view part) {
  const std::string folded = Folded(part);
  const auto* found = std::ranges::find_if(
      kMonths, [&](const auto& month) { return folded.starts_with(month.first); });
  return found == kMonths.end() ? std::nullopt : std::optional(found->second);
}

std::optional<FileDate> Existing(std::optional<std::int16_t> year,
                                 std::optional<std::int16_t> month,
                                 std::optional<std::int16_t> day) {
  constexpr std::int16_t kFirstYear = 1000;
  if (!year || !month || !day || *year < kFirstYear || !IsValidDate(*year, *month, *day)) {
    return std::nullopt;
  }
  return FileDate{*year, *month, *day};
}

std::optional<FileDate> OfNumbers(const std::vector<std::string_view>& parts, bool isMonthFirst) {
  if (parts.size() != 3) {
    return std::nullopt;
  }
  if (parts[0].size() == kYearDigits) {
    return Existing(Number(parts[0], kYearDigits), Number(parts[1], 2), Number(parts[2], 2));
  }
  return parts[2].size() != kYearDigits
             ? std::nullopt
             : Existing(Number(parts[2], kYearDigits), Number(parts[isMonthFirst ? 0 : 1], 2),
                        Number(parts[isMonthFirst ? 1 : 0], 2));
}

std::optional<FileDate> OfName(const std::vector<std::string_view>& parts) {
  if (parts.size() != 3 || parts[2].size() != kYearDigits) {
    return std::nullopt;
  }
  const bool isNameFirst = !IsDigit(parts[0].front());
  return Existing(Number(parts[2], kYearDigits), MonthNamed(parts[isNameFirst ? 0 : 1]),
                  Number(parts[isNameFirst ? 1 : 0], 2));
}

}  // namespace

std::optional<FileDate> DateFrom(std::string_view text, DateOrder slashOrder) {
  text = WithoutBlanks(text);
  if (text.size() == kDateDigits && std::ranges::all_of(text, IsDigit)) {
    return OfNumbers({text.substr(0, 4), text.substr(4, 2), text.substr(6)}, false);
  }
  // "2026-03-05T10:00:00Z", or a time zone only: "2026-03-05+01:00"
  constexpr std::string_view kAfterDate = "T Z+-";
  if (text.size() > kDateDigits + 2 && text[4] == '-' &&
      kAfterDate.find(text[10]) != std::string_view::npos) {
    text = text.substr(0, kDateDigits + 2);
  }
  if (std::ranges::all_of(text, [](char c) { return IsDigit(c) || c == '/'; })) {
    return OfNumbers(PartsOf(text, "/"), slashOrder == DateOrder::MonthFirst);
  }
  if (std::ranges::all_of(text, [](char c) { return IsDigit(c) || c == '.' || c == ' '; })) {
    return OfNumbers(PartsOf(text, ". "), false);
  }
  if (std::ranges::all_of(text, [](char c) { return IsDigit(c) || c == '-'; })) {
    return OfNumbers(PartsOf(text, "-"), false);
  }
  return OfName(PartsOf(text, " .,-/\t"));
}

std::optional<FileDate> ExportedDate(std::string_view text) {
  constexpr std::string_view kForm = "0000-00-00";
  const auto hasForm = [](char form, char c) { return form == '-' ? c == '-' : IsDigit(c); };
  if (text.empty()) {
    return FileDate();
  }
  if (!std::ranges::equal(kForm, text, hasForm)) {
    return std::nullopt;
  }
  return FileDate{NumericInt16(text.substr(0, 4)), NumericInt16(text.substr(5, 2)),
                  NumericInt16(text.substr(8))};
}

}  // namespace tarvell
