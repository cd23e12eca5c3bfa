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

/// The beginnings of the names of months, folded, in English, German, French, Spanish and Italian.
/// A longer beginning comes before a shorter one that it begins with.
constexpr std::array<std::pair<std::string_view, std::int16_t>, 35> kMonths = {
    {{"jan", 1},  {"ene", 1},  {"gen", 1},  {"feb", 2},  {"fév", 2},  {"fev", 2},  {"mar", 3},
     {"mär", 3},  {"mrz", 3},  {"apr", 4},  {"avr", 4},  {"abr", 4},  {"may", 5},  {"mai", 5},
     {"mag", 5},  {"juin", 6}, {"jun", 6},  {"giu", 6},  {"juil", 7}, {"jul", 7},  {"lug", 7},
     {"aug", 8},  {"aoû", 8},  {"ago", 8},  {"sep", 9},  {"set", 9},  {"oct", 10}, {"okt", 10},
     {"ott", 10}, {"nov", 11}, {"dec", 12}, {"dez", 12}, {"déc", 12}, {"dic", 12}, {"maerz", 3}}};

/// The beginnings of the names of days in those languages, and the German names of two letters.
constexpr std::array<std::string_view, 27> kDays = {"mon", "tue", "wed", "thu", "fri", "sat", "sun",
                                                    "die", "mit", "don", "fre", "sam", "son", "lun",
                                                    "mar", "mer", "jeu", "ven", "dim", "mié", "mie",
                                                    "jue", "vie", "sáb", "sab", "dom", "gio"};
constexpr std::array<std::string_view, 7> kShortDays = {"mo", "di", "mi", "do", "fr", "sa", "so"};

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

/// The number of a day, which may be written as "5th" or "1er".
std::optional<std::int16_t> Day(std::string_view part) {
  constexpr std::array<std::string_view, 6> kEnds = {"st", "nd", "rd", "th", "er", "\u00BA"};
  for (const std::string_view end : kEnds) {
    if (part.size() > end.size() && part.ends_with(end)) {
      return Number(part.substr(0, part.size() - end.size()), 2);
    }
  }
  return Number(part, 2);
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

std::optional<FileDate> OfName(std::vector<std::string_view> parts) {
  std::erase_if(
      parts, [](std::string_view part) { return part == "of" || part == "de" || part == "del"; });
  if (parts.size() != 3 || parts[2].size() != kYearDigits) {
    return std::nullopt;
  }
  const bool isNameFirst = !IsDigit(parts[0].front());
  return Existing(Number(parts[2], kYearDigits), MonthNamed(parts[isNameFirst ? 0 : 1]),
                  Day(parts[isNameFirst ? 1 : 0]));
}

/// What is after the name of a day, "" if the text does not begin with one.
std::string_view AfterDay(std::string_view text) {
  const std::size_t end = std::min(text.find_first_of(" ,."), text.size());
  const std::string word = Folded(text.substr(0, end));
  const bool isDay =
      std::ranges::find(kShortDays, word) != kShortDays.end() ||
      std::ranges::any_of(kDays, [&](std::string_view day) { return word.starts_with(day); });
  const std::size_t rest = std::min(text.find_first_not_of(" ,.", end), text.size());
  return isDay ? text.substr(rest) : std::string_view();
}

/// The date that the text is without the name of its day.
std::optional<FileDate> PlainDate(std::string_view text, DateOrder slashOrder) {
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
    return OfNumbers(PartsOf(text, "-"), slashOrder == DateOrder::MonthFirst);
  }
  return OfName(PartsOf(text, " .,-/\t"));
}

}  // namespace

std::optional<FileDate> DateFrom(std::string_view text, DateOrder slashOrder) {
  text = WithoutBlanks(text);
  const std::optional<FileDate> date = PlainDate(text, slashOrder);
  // "mar" is a month and a day.
  return date ? date : PlainDate(AfterDay(text), slashOrder);
}

bool HasShortYear(std::string_view text) {
  text = WithoutBlanks(text);
  const std::size_t last = text.find_last_not_of("0123456789") + 1;
  const std::size_t first = text.find_first_not_of("0123456789");
  const auto isDate = [](const std::string& full) {
    return DateFrom(full, DateOrder::DayFirst) || DateFrom(full, DateOrder::MonthFirst);
  };
  return (text.size() - last == 2 &&
          isDate(std::string(text.substr(0, last)) + "20" + std::string(text.substr(last)))) ||
         (first == 2 && isDate("20" + std::string(text)));
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
