// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CaptionUnit.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/numbers/WrittenNumber.h"
#include "core/text/Text.h"
#include "exchange/Units.h"

namespace tarvell {

namespace {

/// The text in the last brackets that holds a unit, "" for none. "(1)" after another unit is the
/// number of a footnote.
std::string_view InBrackets(std::string_view caption) {
  std::string_view one;
  while (true) {
    const std::size_t end = caption.find_last_of(")]");
    const std::size_t begin = caption.substr(0, end).find_last_of("([");
    if (end == std::string_view::npos || begin == std::string_view::npos) {
      return one;
    }
    const std::string_view inside = WithoutBlanks(caption.substr(begin + 1, end - begin - 1));
    if (inside == "1" && caption[begin] == '(') {
      one = inside;
    } else if (UnitFrom(inside)) {
      return inside;
    }
    caption = caption.substr(0, begin);
  }
}

/// The last word of a caption, and whether "/" or "in" before it says that it is a unit.
struct LastWord {
  std::string_view word;
  bool isMarked = false;
};

LastWord LastWordOf(std::string_view caption) {
  constexpr std::string_view kEnds = " /,\t\n";
  const std::string_view trimmed = WithoutBlanks(caption);
  const std::size_t before = trimmed.find_last_of(kEnds);
  if (before == std::string_view::npos) {
    return {trimmed};
  }
  const std::string_view rest = WithoutBlanks(trimmed.substr(0, before + 1));
  return {trimmed.substr(before + 1), rest.ends_with('/') || rest.ends_with(" in")};
}

/// Whether a text ends as a unit does, as in "xHz", or names one that no table of the program has.
bool LooksLikeUnit(std::string_view text) {
  constexpr std::array<std::string_view, 4> kEnds = {"hz", "db", "ohm", "\u03A9"};
  constexpr std::array<std::string_view, 9> kOthers = {"cps", "kc",  "mc",  "mho",   "np",
                                                       "ppb", "mmf", "dbc", "\u2030"};
  return text.find(' ') == std::string_view::npos &&
         (text.find('/') != std::string_view::npos ||
          std::ranges::any_of(kEnds,
                              [&](std::string_view end) {
                                return text.size() > end.size() &&
                                       EqualsIgnoringCase(text.substr(text.size() - end.size()),
                                                          end);
                              }) ||
          std::ranges::any_of(
              kOthers, [&](std::string_view other) { return EqualsIgnoringCase(text, other); }));
}

/// The power of ten in a caption, from its "10" on: "10^-6", or "10-6", whose small digits a
/// spreadsheet has made large, after a sign of multiplication or a bracket; "" for none.
std::string_view PowerOfTen(std::string_view caption) {
  constexpr std::array<std::string_view, 14> kRaised = {
      "^",      "**",     "\u207B", "\u2070", "\u00B9", "\u00B2", "\u00B3",
      "\u2074", "\u2075", "\u2076", "\u2077", "\u2078", "\u2079", "\u207A"};
  constexpr std::array<std::string_view, 6> kTimes = {"\u00D7", "x", "*", "\u00B7", "[", "("};
  constexpr std::array<std::string_view, 2> kMinus = {"-", "\u2212"};
  const auto any = [](const auto& signs, const auto& fits) {
    return std::ranges::any_of(signs, fits);
  };
  for (std::size_t at = caption.find("10"); at != std::string_view::npos;
       at = caption.find("10", at + 1)) {
    const std::string_view before = WithoutBlanks(caption.substr(0, at));
    const std::string_view after = caption.substr(at + 2);
    const auto begins = [&](std::string_view sign) { return after.starts_with(sign); };
    const bool isAlone = before.empty() || before.back() < '0' || before.back() > '9';
    const bool isTimes = any(kTimes, [&](std::string_view sign) { return before.ends_with(sign); });
    if (isAlone && (any(kRaised, begins) || (isTimes && any(kMinus, begins)))) {
      return caption.substr(at, caption.substr(at).find_first_of(")] "));
    }
  }
  return {};
}

/// The power of ten in a caption that is written as a number: "1E-6" in "D (1E-6)"; "" for none.
std::string_view NumberPowerOfTen(std::string_view caption) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  for (std::size_t at = caption.find('1'); at != std::string_view::npos;
       at = caption.find('1', at + 1)) {
    std::string_view rest = caption.substr(at + 1);
    const char before = at == 0 ? ' ' : caption[at - 1];
    const bool isAlone = !isDigit(before) && (!isLetter(before) || before == 'x');
    if (!isAlone || (!rest.starts_with('e') && !rest.starts_with('E'))) {
      continue;
    }
    rest.remove_prefix(1);
    rest.remove_prefix(rest.starts_with('-') || rest.starts_with('+') ? 1 : 0);
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits > 0) {
      return caption.substr(at, caption.size() - at - rest.size() + digits);
    }
  }
  return {};
}

/// "k=2" is not a unit.
bool IsEquation(std::string_view text) {
  return text.find('=') != std::string_view::npos;
}

/// What the last brackets of this kind hold, "" without any.
std::string_view Inside(std::string_view caption, char open, char close) {
  const std::size_t end = caption.find_last_of(close);
  const std::size_t begin = caption.substr(0, end).find_last_of(open);
  return end == std::string_view::npos || begin == std::string_view::npos
             ? std::string_view()
             : WithoutBlanks(caption.substr(begin + 1, end - begin - 1));
}

}  // namespace

std::string UnitOfCaption(std::string_view caption) {
  if (!PowerOfTen(caption).empty() || !NumberPowerOfTen(caption).empty()) {
    return {};
  }
  if (const std::string_view inside = InBrackets(caption); !inside.empty()) {
    return std::string(inside);
  }
  // "Channel A" ends with a name, "Capacitance / F" and "C in F" with a unit.
  const auto [word, isMarked] = LastWordOf(caption);
  return (word.size() > 1 || word == "%" || isMarked) && word != "1" && UnitFrom(word)
             ? std::string(word)
             : std::string();
}

std::string UnknownUnitOf(std::string_view caption) {
  constexpr std::size_t kLongestUnit = 6;
  for (const std::string_view power : {PowerOfTen(caption), NumberPowerOfTen(caption)}) {
    if (!power.empty()) {
      return std::string(power);
    }
  }
  if (!UnitOfCaption(caption).empty()) {
    return {};
  }
  if (const std::string_view square = Inside(caption, '[', ']');
      !square.empty() && !IsEquation(square)) {
    return std::string(square);
  }
  if (const std::string_view round = Inside(caption, '(', ')'); LooksLikeUnit(round)) {
    return std::string(round);
  }
  const auto [word, isMarked] = LastWordOf(caption);
  const bool isUnit = isMarked && !word.empty() && word.size() <= kLongestUnit &&
                      word.find_first_of(")]") == std::string_view::npos && !IsEquation(word);
  return isUnit ? std::string(word) : std::string();
}

}  // namespace tarvell
