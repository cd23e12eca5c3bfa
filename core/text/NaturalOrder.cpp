// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/NaturalOrder.h"

#include <algorithm>
#include <cstddef>

namespace tarvell {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

char Folded(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Appends a number: a longer one is the larger one. One digit says that it is a number, since
/// every digit has the same place among the other characters.
void AppendNumber(std::string& key, std::string_view digits) {
  constexpr std::size_t kByteLimit = 0xFF;
  key += '0';
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  key.append(digits.size() / kByteLimit, static_cast<char>(kByteLimit));
  key += static_cast<char>(digits.size() % kByteLimit);
  key += digits;
}

}  // namespace

std::string NaturalKey(std::string_view text) {
  std::string key;
  while (!text.empty()) {
    const auto end = std::ranges::find_if_not(text, &IsDigit);
    const auto digits = static_cast<std::size_t>(end - text.begin());
    if (digits == 0) {
      key += Folded(text.front());
      text.remove_prefix(1);
    } else {
      AppendNumber(key, text.substr(0, digits));
      text.remove_prefix(digits);
    }
  }
  return key;
}

}  // namespace tarvell
