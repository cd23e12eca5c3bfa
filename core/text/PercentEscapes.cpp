// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/PercentEscapes.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace tarvell {

namespace {

constexpr char kEscape = '%';
constexpr int kHex = 16;

}  // namespace

std::string PercentEscaped(std::string_view text,
                           const std::function<bool(unsigned char byte)>& isKept) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c != kEscape && isKept(byte)) {
      escaped += c;
    } else {
      escaped += kEscape;
      escaped += kDigits[byte / kHex];
      escaped += kDigits[byte % kHex];
    }
  }
  return escaped;
}

std::optional<std::string> WithoutPercentEscapes(std::string_view escaped) {
  std::string text;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] != kEscape) {
      text += escaped[i];
      continue;
    }
    const std::string_view digits = escaped.substr(i + 1, 2);
    const char* const end = digits.data() + digits.size();
    unsigned byte = 0;
    const auto [rest, code] = std::from_chars(digits.data(), end, byte, kHex);
    if (code != std::errc() || digits.size() != 2 || rest != end) {
      return std::nullopt;
    }
    text += static_cast<char>(byte);
    i += 2;
  }
  return text;
}

}  // namespace tarvell
