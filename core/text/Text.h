// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_TEXT_H
#define TARVELL_CORE_TEXT_TEXT_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// Text is UTF-8; lengths and widths count characters, not bytes. A blank is only the space
/// character. Only the letters A to Z have a case.
namespace tarvell {

/// What separates items and words in files.
[[nodiscard]] constexpr bool IsBlankOrTab(char c) {
  return c == ' ' || c == '\t';
}

[[nodiscard]] std::string_view TrimLeft(std::string_view text);
[[nodiscard]] std::string_view TrimRight(std::string_view text);
[[nodiscard]] std::string_view Trim(std::string_view text);

/// `s` up to its first NUL character, without trailing blanks.
[[nodiscard]] std::string_view StripNull(std::string_view s);

[[nodiscard]] std::string ToUpper(std::string_view text);
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// Whether `text` holds `part`, in any case.
[[nodiscard]] bool ContainsIgnoringCase(std::string_view text, std::string_view part);

/// Number of characters in `text`.
[[nodiscard]] std::size_t CharacterCount(std::string_view text);

/// The first or last `count` characters of `text`, or all of it when it is shorter.
[[nodiscard]] std::string_view FirstCharacters(std::string_view text, std::size_t count);
[[nodiscard]] std::string_view LastCharacters(std::string_view text, std::size_t count);

/// `text` without its first or last `count` characters, "" when it is shorter.
[[nodiscard]] std::string_view WithoutFirst(std::string_view text, std::size_t count);
[[nodiscard]] std::string_view WithoutLast(std::string_view text, std::size_t count);

/// Appends `text`, padded with blanks on the left to `width` characters; a longer text is
/// appended whole.
void AppendRight(std::string& target, std::string_view text, std::size_t width);

/// Removes the first line from `rest` and returns it without its end: CR LF, a lone CR or LF, or
/// the end of the text.
[[nodiscard]] std::string_view TakeLine(std::string_view& rest);

/// `text` as a message shows it: "(none)" if it is empty.
[[nodiscard]] std::string TextOrNone(std::string_view text);

/// A value as a message shows it: in quotes, with blanks for control characters, and only the first
/// 40 characters of a longer one.
[[nodiscard]] std::string Quoted(std::string_view value);

/// `text` with every `from` replaced by `to`.
[[nodiscard]] std::string Replaced(std::string_view text, char from, char to);

/// "1 GHz", "1 GHz and 2 GHz", "1 GHz, 2 GHz and 3 GHz".
[[nodiscard]] std::string Listed(std::span<const std::string> names);

}  // namespace tarvell

#endif
