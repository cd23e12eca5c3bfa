// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_HEADERLINES_H
#define TARVELL_CORE_CALDATA_HEADERLINES_H

#include <array>
#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/dates/FileDate.h"

/// The header of a data file: its six lines, and the three lines of the old style.
namespace tarvell {

/// The header lines, in the order of the file.
enum class HeaderField { ModelNumber, SerialNumber, CalDate, CalNumber, DueDate, Comment };
inline constexpr std::size_t kHeaderLines = 6;
using HeaderFieldSet = std::bitset<kHeaderLines>;

/// The field of a keyword in any case; nothing for a keyword that the header does not have.
[[nodiscard]] std::optional<HeaderField> HeaderFieldOf(std::string_view keyword);

[[nodiscard]] std::string_view KeywordOf(HeaderField field);

/// The line that a file has for a value.
[[nodiscard]] std::string HeaderLine(HeaderField field, std::string_view value);

/// Whether an item begins with one of the characters of header, data and comment lines.
[[nodiscard]] bool BeginsLine(std::string_view item);

/// The words that a header or data line is split into; those that it lacks are "".
inline constexpr std::size_t kLineWords = 21;
using LineWords = std::array<std::string, kLineWords>;

/// A line's words: its colons count as blanks, and its first character is left out. Throws an Index
/// error when there are more than kLineWords.
[[nodiscard]] LineWords WordsOf(std::string_view item);

/// What is read back of a value on a header line: its first word. A colon counts as a blank, and a
/// comma ends the line.
[[nodiscard]] std::string HeaderValueRead(std::string_view value);

/// What a list shows of a header line: everything after its first colon, without blanks around it.
[[nodiscard]] std::string_view ListedHeaderValue(std::string_view item);

/// Throws a Character error for a value that a header line cannot hold: more words before its first
/// comma than a line may have, or a text after a comma that a reader would take for the next line.
/// The message calls the value `field`.
void CheckHeaderValue(const std::string& field, std::string_view value);

/// The same for a name, which must not hold a comma at all: the lists of data sets take the text
/// after it for the next line.
void CheckHeaderName(const std::string& field, std::string_view name);

/// The model that a model line names, without the maker's prefix, which may be in any case.
[[nodiscard]] std::string ModelOnLine(const LineWords& words);

/// Whether a file with this first item, and these header lines, is in the old style.
[[nodiscard]] bool IsOldStyle(std::string_view firstItem, const HeaderFieldSet& headerLines);

/// The first line of a file in the old style: the maker and the model, and perhaps the option.
struct OldStyleModel {
  std::string model;
  bool hasOption = false;
};
[[nodiscard]] OldStyleModel OldStyleModelOf(std::string_view item);

/// The date in the third line of a file in the old style, DDMMMYYYY, which is split by position.
/// Throws a Type error for a number outside 16 bits.
[[nodiscard]] FileDate OldStyleDateOf(std::string_view item);

/// The due date of a file in the old style. Throws a Type error for a year outside 16 bits.
[[nodiscard]] FileDate OneYearAfter(const FileDate& date);

/// A model number of a list as the station screens show it: without the three characters of the
/// maker's prefix and its blank, and without the option.
[[nodiscard]] std::string StationModelOf(std::string_view listedModel);

}  // namespace tarvell

#endif
