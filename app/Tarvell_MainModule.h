// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_APP_TARVELL_MAINMODULE_H
#define TARVELL_APP_TARVELL_MAINMODULE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/mTypeDef.h"

namespace tarvell {

inline constexpr std::string_view kApplicationTitle = "Morrand Tarvell";

/// Rows of `gCalFiles`, and of every table of a data file.
inline constexpr std::size_t kTableRows = 51;

// The state of the program: one user, one screen at a time.

inline std::string gStationDir;              ///< station data root, no trailing separator
inline std::string gCalibrationDir;          ///< calibration data root, no trailing separator
inline std::int16_t gVersionLabelLevel = 0;  ///< the version label shows from 2 on
inline std::array<CalFileInfo, kTableRows> gCalFiles;  ///< see ReadCalFileHeaders
inline std::string gOSPlatform;
inline std::string gOSVersion;
inline std::string gOSName;
inline std::string DialogResult;  ///< how the attenuator point dialog was closed: "OK", "CANCEL"

/// "A." and the two numbers of the version, two digits each: "A.02.61".
[[nodiscard]] std::string RevisionText(int major, int minor);

/// "JAN" to "DEC" give 1 to 12, any other text (lower case included) 0.
[[nodiscard]] std::int16_t MonthToNumber(std::string_view name);

/// 1 to 12 give "JAN" to "DEC", any other number "".
[[nodiscard]] std::string NumberToMonth(std::int16_t n);

/// A date as data files write it, YYYYMMDD, taken apart by position: year from the first four
/// characters, month from the fifth and sixth, day from the last two. Texts of another length
/// give defined but wrong values. Throws a Type error for a number outside 16 bits.
struct FileDate {
  std::int16_t year = 0;
  std::int16_t month = 0;
  std::int16_t day = 0;

  [[nodiscard]] static FileDate From(std::string_view text);
};

/// Lists the entries of `root` whose names hold no dot, in the platform's order: the name in
/// upper case, or "*" for an entry that holds nothing; then one spare empty slot. An entry that
/// cannot be looked into counts as filled: choosing it says why. A root without
/// entries, or none at all, gives "*" and an empty slot. Throws an Index error after the first 256
/// entries, which are in `names` then, and the platform's error when `root` may not be searched.
/// Always true.
bool ListModelFolders(const std::string& root, std::vector<std::string>& names);

/// Of what ListModelFolders gave, the names that a list shows.
[[nodiscard]] std::vector<std::string> ModelsWithData(std::vector<std::string> names);

/// Reads the header of every data file (a name without a dot that begins with "SN", "Sn" or
/// "sn") in `modelFolder` into `gCalFiles`, in the platform's order, and calls `rowRead` after
/// each. Returns the number of rows filled, -1 when `modelFolder` is ""; further rows keep what
/// they held.
///
/// An entry that cannot be read takes no row, and the reading goes on with the next one. At its end
/// one error names every such entry with its reason (of very many the first, and how many more
/// there are); it has the kind of the first. A data file that finds all rows filled ends the
/// reading with an Index error, which names them as well. All rows read are filled and reported by
/// then.
std::int16_t ReadCalFileHeaders(
    const std::string& modelFolder,
    const std::function<void(const CalFileInfo& row)>& rowRead = nullptr);

/// Reads the header of the data file at `path` (path text of the program) alone; nothing when the
/// file is none.
[[nodiscard]] std::optional<CalFileInfo> ReadCalFileHeader(const std::string& path);

/// Row of the first of `gCalFiles` with exactly this serial number, kTableRows when there is none.
[[nodiscard]] std::int16_t FindCalFile(std::string_view serialNumber);

/// As many words as are ever taken from a line.
inline constexpr std::size_t kMostWords = 30;

/// Splits `line` into its words, separated by runs of blanks and control blanks (NUL, TAB, CR,
/// LF, backspace, form feed, vertical tab), at most kMostWords. All of `words` but the last is
/// emptied first. Returns the number of words; throws an Index error when `words` has no place for
/// one.
std::int16_t SplitWords(std::string_view line, std::span<std::string> words);

}  // namespace tarvell

#endif
