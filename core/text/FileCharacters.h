// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_FILECHARACTERS_H
#define TARVELL_CORE_TEXT_FILECHARACTERS_H

#include <string>
#include <string_view>

/// The characters of data files: Windows-1252. Its five unassigned bytes (81, 8D, 8F, 90 and 9D
/// hexadecimal) stand for the characters of the same number, so that every byte survives reading
/// and writing.
namespace tarvell {

[[nodiscard]] bool IsFileCharacter(char32_t character);

/// Whether a file can hold every character of this UTF-8 text.
[[nodiscard]] bool IsFileText(std::string_view text);

/// The first character of a UTF-8 text that a file cannot hold, or the bytes there that are not
/// UTF-8; "" when a file can hold the whole text.
[[nodiscard]] std::string_view FirstForeignCharacter(std::string_view text);

/// Appends bytes of a file as UTF-8.
void AppendDecoded(std::string& target, std::string_view bytes);

/// Bytes of a file as UTF-8.
[[nodiscard]] std::string DecodeFileText(std::string_view bytes);

[[nodiscard]] bool IsUtf8(std::string_view text);

/// The name of a file or folder, or a text with such names, as UTF-8. Whatever is not UTF-8 comes
/// from an older system and has the characters of the files.
[[nodiscard]] std::string NameText(std::string_view name);

/// UTF-8 text as bytes of a file. Throws a Character error that names the first character that a
/// file cannot hold, or the bytes there that are not UTF-8.
[[nodiscard]] std::string EncodeFileText(std::string_view text);

}  // namespace tarvell

#endif
