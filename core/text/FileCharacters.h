// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_FILECHARACTERS_H
#define TARVELL_CORE_TEXT_FILECHARACTERS_H

#include <string>
#include <string_view>

/// The characters that data files can hold: bytes 0 to 255 as Windows-1252, its five unassigned
/// bytes (81, 8D, 8F, 90, 9D hexadecimal) standing for the characters of the same number, so
/// that every byte of a file comes back as it was.
namespace tarvell {

[[nodiscard]] bool IsFileCharacter(char32_t character);

/// Whether a file can hold every character of this UTF-8 text.
[[nodiscard]] bool IsFileText(std::string_view text);

/// The first character of a UTF-8 text that a file cannot hold (the bytes there that are no UTF-8
/// included), "" when it can hold all of them.
[[nodiscard]] std::string_view FirstForeignCharacter(std::string_view text);

/// Appends the characters that the bytes of a file stand for, in UTF-8.
void AppendDecoded(std::string& target, std::string_view bytes);

/// The bytes of a file's text in UTF-8.
[[nodiscard]] std::string DecodeFileText(std::string_view bytes);

[[nodiscard]] bool IsUtf8(std::string_view text);

/// UTF-8 text as the bytes of a file. Throws a Character error that names the first character
/// that a file cannot hold (text that is no UTF-8 included).
[[nodiscard]] std::string EncodeFileText(std::string_view text);

}  // namespace tarvell

#endif
