// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/FileCharacters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "core/platform/Error.h"

namespace tarvell {

namespace {

constexpr unsigned kFirstSpecial = 0x80;
constexpr unsigned kFirstLatin1 = 0xA0;
constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// Bytes 80 to 9F. Every other byte stands for the character of its number.
constexpr std::array<char32_t, kFirstLatin1 - kFirstSpecial> kSpecial = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98
};

char32_t CharacterOf(unsigned byte) {
  return byte >= kFirstSpecial && byte < kFirstLatin1 ? kSpecial.at(byte - kFirstSpecial) : byte;
}

/// The byte that stands for `character`, or -1.
int ByteOf(char32_t character) {
  if (character < kFirstSpecial || (character >= kFirstLatin1 && character <= 0xFF)) {
    return static_cast<int>(character);
  }
  const auto* found = std::find(kSpecial.begin(), kSpecial.end(), character);
  return found == kSpecial.end() ? -1
                                 : static_cast<int>(kFirstSpecial + (found - kSpecial.begin()));
}

/// Reads the UTF-8 character at `position` and moves `position` past it. Gives kNoCharacter for
/// bytes that are not UTF-8.
char32_t NextCharacter(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position++]);
  if (lead < 0x80) {
    return lead;
  }
  int trailing = 0;
  char32_t character = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    trailing = 1;
    character = lead & 0x1FU;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    trailing = 2;
    character = lead & 0x0FU;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    trailing = 3;
    character = lead & 0x07U;
  } else {
    return kNoCharacter;
  }
  for (int i = 0; i < trailing; ++i) {
    if (position >= text.size() || (static_cast<unsigned char>(text[position]) & 0xC0U) != 0x80U) {
      return kNoCharacter;
    }
    character = (character << 6U) | (static_cast<unsigned char>(text[position++]) & 0x3FU);
  }
  // UTF-8 forbids more bytes than a character needs, halves of a pair of UTF-16, and what is not in
  // Unicode.
  const bool tooLong =
      (trailing == 2 && character < 0x800) || (trailing == 3 && character < 0x10000);
  const bool isHalf = character >= 0xD800 && character <= 0xDFFF;
  return tooLong || isHalf || character > 0x10FFFF ? kNoCharacter : character;
}

/// Number of ASCII bytes at the beginning of a text.
std::size_t AsciiLength(std::string_view text) {
  // Most texts are ASCII only: eight bytes are compared at a time.
  constexpr std::uint64_t kSpecialBits = 0x8080808080808080U;
  std::size_t length = 0;
  for (std::uint64_t eight = 0; text.size() - length >= sizeof(eight); length += sizeof(eight)) {
    std::memcpy(&eight, text.data() + length, sizeof(eight));
    if ((eight & kSpecialBits) != 0) {
      break;
    }
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < kFirstSpecial) {
    ++length;
  }
  return length;
}

/// Appends a character above ASCII, in UTF-8.
void AppendCharacter(std::string& target, char32_t character) {
  if (character < 0x800) {
    target += static_cast<char>(0xC0U | (character >> 6U));
  } else {
    target += static_cast<char>(0xE0U | (character >> 12U));
    target += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
  }
  target += static_cast<char>(0x80U | (character & 0x3FU));
}

}  // namespace

bool IsFileCharacter(char32_t character) {
  return ByteOf(character) >= 0;
}

bool IsFileText(std::string_view text) {
  return FirstForeignCharacter(text).empty();
}

std::string_view FirstForeignCharacter(std::string_view text) {
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t start = position;
    if (!IsFileCharacter(NextCharacter(text, position))) {
      return text.substr(start, position - start);
    }
  }
  return {};
}

void AppendDecoded(std::string& target, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t ascii = AsciiLength(bytes);
    target += bytes.substr(0, ascii);
    bytes.remove_prefix(ascii);
    if (!bytes.empty()) {
      AppendCharacter(target, CharacterOf(static_cast<unsigned char>(bytes.front())));
      bytes.remove_prefix(1);
    }
  }
}

std::string DecodeFileText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  AppendDecoded(text, bytes);
  return text;
}

bool IsUtf8(std::string_view text) {
  std::size_t position = 0;
  while (position < text.size()) {
    if (NextCharacter(text, position) == kNoCharacter) {
      return false;
    }
  }
  return true;
}

std::string NameText(std::string_view name) {
  return IsUtf8(name) ? std::string(name) : DecodeFileText(name);
}

std::string EncodeFileText(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  std::size_t position = AsciiLength(text);
  bytes += text.substr(0, position);
  while (position < text.size()) {
    const std::size_t start = position;
    const int byte = ByteOf(NextCharacter(text, position));
    if (byte < 0) {
      throw Error(ErrorKind::Character,
                  "The character \"" + std::string(text.substr(start, position - start)) +
                      "\" cannot be stored in a data file. Replace it by another one.");
    }
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

}  // namespace tarvell
