// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/WrittenNumber.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tarvell {

namespace {

constexpr std::size_t kGroup = 3;
constexpr std::string_view kMinusSign = "\u2212";

// The thin and narrow ones, and those that do not break, are what programs put between digits.
constexpr std::array<std::string_view, 9> kBlanks = {
    " ", "\t", "\n", "\r", "\u00A0", "\u2007", "\u2009", "\u202F", "\uFEFF"};
constexpr std::array<std::string_view, 7> kGroupSigns = {" ",      "\u00A0", "\u2007", "\u2009",
                                                         "\u202F", "'",      "\u2019"};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Removes the digits at the beginning of `rest` and returns them.
std::string_view TakeDigits(std::string_view& rest) {
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsDigit);
  const std::string_view digits = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(digits.size());
  return digits;
}

/// The sign between groups with which `rest` begins, "" for none.
std::string_view GroupSignOf(std::string_view rest, DecimalSign sign) {
  const std::string_view other = sign == DecimalSign::Point ? "," : ".";
  if (rest.starts_with(other)) {
    return other;
  }
  const auto found = std::ranges::find_if(
      kGroupSigns, [&](std::string_view candidate) { return rest.starts_with(candidate); });
  return found == kGroupSigns.end() ? std::string_view() : *found;
}

/// Appends the groups after the first digits. False when they are not all of three digits.
bool TakeGroups(std::string& number, std::string_view& rest, std::string_view groupSign) {
  while (rest.starts_with(groupSign)) {
    rest.remove_prefix(groupSign.size());
    const std::string_view group = TakeDigits(rest);
    if (group.size() != kGroup) {
      return false;
    }
    number += group;
  }
  return true;
}

}  // namespace

std::string_view WithoutBlanks(std::string_view text) {
  for (bool removed = true; removed;) {
    removed = false;
    for (const std::string_view blank : kBlanks) {
      if (text.starts_with(blank)) {
        text.remove_prefix(blank.size());
        removed = true;
      } else if (text.ends_with(blank)) {
        text.remove_suffix(blank.size());
        removed = true;
      }
    }
  }
  return text;
}

std::optional<std::string> PlainNumber(std::string_view text, DecimalSign sign) {
  std::string_view rest = WithoutBlanks(text);
  std::string number;
  if (rest.starts_with(kMinusSign)) {
    number = "-";
    rest.remove_prefix(kMinusSign.size());
  } else if (rest.starts_with('-') || rest.starts_with('+')) {
    number = rest.starts_with('-') ? "-" : "";
    rest.remove_prefix(1);
  }
  const std::string_view first = TakeDigits(rest);
  number += first.empty() ? "0" : first;
  const std::string_view groupSign = GroupSignOf(rest, sign);
  const bool isGrouped = !groupSign.empty();
  if (isGrouped && (first.empty() || first.size() > kGroup || first.front() == '0' ||
                    !TakeGroups(number, rest, groupSign))) {
    return std::nullopt;
  }
  bool hasDigits = !first.empty();
  if (rest.starts_with(sign == DecimalSign::Point ? '.' : ',')) {
    rest.remove_prefix(1);
    const std::string_view decimals = TakeDigits(rest);
    if (decimals.empty()) {
      return std::nullopt;
    }
    number += '.';
    number += decimals;
    hasDigits = true;
  }
  if (hasDigits && !isGrouped && (rest.starts_with('E') || rest.starts_with('e'))) {
    rest.remove_prefix(1);
    number += 'E';
    if (rest.starts_with('-') || rest.starts_with('+')) {
      number += rest.front();
      rest.remove_prefix(1);
    }
    const std::string_view exponent = TakeDigits(rest);
    hasDigits = !exponent.empty();
    number += exponent;
  }
  if (!hasDigits || !rest.empty()) {
    return std::nullopt;
  }
  return number;
}

}  // namespace tarvell
