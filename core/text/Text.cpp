// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/Text.h"

#include <algorithm>

namespace tarvell {

namespace {

char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool StartsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// Byte offset after the first `count` characters.
std::size_t OffsetAfter(std::string_view text, std::size_t count) {
  std::size_t offset = 0;
  while (offset < text.size()) {
    if (StartsCharacter(text[offset])) {
      if (count == 0) {
        break;
      }
      --count;
    }
    ++offset;
  }
  return offset;
}

/// Byte offset at which the last `count` characters begin.
std::size_t OffsetOfLast(std::string_view text, std::size_t count) {
  std::size_t offset = text.size();
  while (offset > 0 && count > 0) {
    --offset;
    if (StartsCharacter(text[offset])) {
      --count;
    }
  }
  return offset;
}

}  // namespace

std::string_view TrimLeft(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

std::string_view TrimRight(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text) {
  return TrimLeft(TrimRight(text));
}

std::string_view StripNull(std::string_view s) {
  return TrimRight(s.substr(0, s.find('\0')));
}

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperCase);
  return upper;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperCase(x) == UpperCase(y); });
}

bool ContainsIgnoringCase(std::string_view text, std::string_view part) {
  const auto isSame = [](char x, char y) { return UpperCase(x) == UpperCase(y); };
  return part.empty() ||
         std::search(text.begin(), text.end(), part.begin(), part.end(), isSame) != text.end();
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  return text.substr(0, OffsetAfter(text, count));
}

std::string_view LastCharacters(std::string_view text, std::size_t count) {
  return text.substr(OffsetOfLast(text, count));
}

std::string_view WithoutFirst(std::string_view text, std::size_t count) {
  return text.substr(OffsetAfter(text, count));
}

std::string_view WithoutLast(std::string_view text, std::size_t count) {
  return text.substr(0, OffsetOfLast(text, count));
}

void AppendRight(std::string& target, std::string_view text, std::size_t width) {
  const std::size_t length = CharacterCount(text);
  if (length < width) {
    target.append(width - length, ' ');
  }
  target += text;
}

std::string_view TakeLine(std::string_view& rest) {
  // A search for several characters, find_first_of, calls a function for each character of the
  // line.
  const auto* end = std::ranges::find_if(rest, [](char c) { return c == '\r' || c == '\n'; });
  const std::string_view line = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(line.size());
  rest.remove_prefix(rest.starts_with("\r\n") ? 2 : std::min<std::size_t>(rest.size(), 1));
  return line;
}

std::string TextOrNone(std::string_view text) {
  return text.empty() ? "(none)" : std::string(text);
}

std::string Quoted(std::string_view value) {
  static constexpr std::size_t kShownCharacters = 40;
  static constexpr char kBlank = ' ';
  std::string shown(FirstCharacters(value, kShownCharacters));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < kBlank; },
      kBlank);
  return "\"" + shown + (shown.size() < value.size() ? "..." : "") + "\"";
}

std::string Replaced(std::string_view text, char from, char to) {
  std::string result(text);
  std::replace(result.begin(), result.end(), from, to);
  return result;
}

std::string Listed(std::span<const std::string> names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  }
  return text;
}

}  // namespace tarvell
