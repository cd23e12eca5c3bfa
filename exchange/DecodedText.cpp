// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DecodedText.h"

#include <algorithm>
#include <cstddef>

#include "core/text/FileCharacters.h"

namespace tarvell {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void Append(std::string& text, char32_t character) {
  const auto continued = [&](unsigned shift) {
    text += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0U | (character >> 6U));
    continued(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0U | (character >> 12U));
    continued(6);
    continued(0);
  } else {
    text += static_cast<char>(0xF0U | (character >> 18U));
    continued(12);
    continued(6);
    continued(0);
  }
}

/// Half a surrogate pair becomes the replacement character.
std::string FromUtf16(std::string_view bytes, bool isBigEndian) {
  const auto unitAt = [&](std::size_t index) {
    const auto first = static_cast<unsigned char>(bytes[2 * index]);
    const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
    return static_cast<char32_t>(isBigEndian ? (first << 8U) | second : (second << 8U) | first);
  };
  const auto isHigh = [](char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
  const auto isLow = [](char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
  std::string text;
  const std::size_t units = bytes.size() / 2;
  for (std::size_t i = 0; i < units; ++i) {
    const char32_t unit = unitAt(i);
    if (isHigh(unit) && i + 1 < units && isLow(unitAt(i + 1))) {
      Append(text, 0x10000 + ((unit - 0xD800) << 10U) + (unitAt(++i) - 0xDC00));
    } else {
      Append(text, isHigh(unit) || isLow(unit) ? kReplacement : unit);
    }
  }
  return text;
}

/// Whether every second byte of the beginning is NUL, as in Western text in UTF-16.
bool HasNulAt(std::string_view bytes, std::size_t first) {
  constexpr std::size_t kBeginning = 16;
  const std::size_t end = std::min(bytes.size(), kBeginning);
  for (std::size_t i = 0; i < end; ++i) {
    if ((bytes[i] == '\0') != (i % 2 == first)) {
      return false;
    }
  }
  return end >= 4;
}

}  // namespace

DecodedText Decoded(std::string_view bytes) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  constexpr std::string_view kLittleMark = "\xFF\xFE";
  constexpr std::string_view kBigMark = "\xFE\xFF";
  if (bytes.starts_with(kLittleMark) || bytes.starts_with(kBigMark)) {
    return {FromUtf16(bytes.substr(2), bytes.starts_with(kBigMark)), "UTF-16"};
  }
  if (HasNulAt(bytes, 0) || HasNulAt(bytes, 1)) {
    return {FromUtf16(bytes, HasNulAt(bytes, 0)), "UTF-16"};
  }
  if (bytes.starts_with(kUtf8Mark)) {
    bytes.remove_prefix(kUtf8Mark.size());
  }
  return IsUtf8(bytes) ? DecodedText{std::string(bytes), "UTF-8"}
                       : DecodedText{DecodeFileText(bytes), "Windows-1252"};
}

}  // namespace tarvell
