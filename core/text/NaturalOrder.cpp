// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/NaturalOrder.h"

#include <algorithm>

namespace tarvell {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

unsigned char Folded(char c) {
  return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

/// Removes the digits at the beginning of `text`, and returns them without leading zeros.
std::string_view TakeNumber(std::string_view& text) {
  const auto end = std::ranges::find_if_not(text, &IsDigit);
  std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
  text.remove_prefix(digits.size());
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

}  // namespace

std::weak_ordering NaturalOrder(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    std::weak_ordering order = std::weak_ordering::equivalent;
    if (IsDigit(a.front()) && IsDigit(b.front())) {
      const std::string_view first = TakeNumber(a);
      const std::string_view second = TakeNumber(b);
      order = first.size() != second.size() ? first.size() <=> second.size() : first <=> second;
    } else {
      order = Folded(a.front()) <=> Folded(b.front());
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
    if (order != 0) {
      return order;
    }
  }
  return a.size() <=> b.size();
}

}  // namespace tarvell
