// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALFILELIST_H
#define TARVELL_CORE_CALDATA_CALFILELIST_H

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/mTypeDef.h"

/// The lists of the models that have data, and of the headers of a model's data files.
namespace tarvell {

/// Lists the entries of `root` whose names have no dot, in the platform's order: the name in upper
/// case, or "*" for an empty entry; then one spare empty slot. An entry that cannot be read counts
/// as filled: choosing it reports the reason. A root without entries, or that does not exist, gives
/// "*" and an empty slot. Throws an Index error after the first 256 entries, which are in `names`
/// then, and the platform's error when `root` may not be searched. Always returns true.
bool ListModelFolders(const std::string& root, std::vector<std::string>& names);

/// Those of the names from ListModelFolders that a list shows.
[[nodiscard]] std::vector<std::string> ModelsWithData(std::vector<std::string> names);

/// Whether the serial number, the calibration number or the comment holds the text `filter`, in any
/// case and without the blanks around it.
[[nodiscard]] bool MatchesFilter(const CalFileInfo& row, std::string_view filter);

/// Reads the header of every data file (a name without a dot that begins with "SN", "Sn" or
/// "sn") in `modelFolder`, in the platform's order, at most `rows.size()` of them. Calls `rowRead`
/// after each row that it fills, and returns how many it filled.
///
/// An entry that cannot be read takes no row, and the reading goes on. At its end one error names
/// all such entries with their reasons (if there are very many, only the first ones and the number
/// of the others); it has the kind of the first. A data file for which no row is left ends the
/// reading with an Index error that names those entries, too. Every row that was read is filled by
/// then.
///
/// With a `filter`, only data files that match it take a row, so that each of more files than rows
/// can be read. Of the entries that cannot be read, the error names those whose names match.
std::size_t ReadHeadersIn(const std::string& modelFolder, std::span<CalFileInfo> rows,
                          const std::function<void(const CalFileInfo& row)>& rowRead,
                          std::string_view filter = {});

/// Reads the header of one data file, at the path `path` of the program; nothing when the file is
/// not a data file.
[[nodiscard]] std::optional<CalFileInfo> ReadCalFileHeader(const std::string& path);

/// The same; nothing also when the file cannot be read.
[[nodiscard]] std::optional<CalFileInfo> ReadableCalFileHeader(const std::string& path);

/// Whether the file at `path` is not a data file, or cannot be read, although the one at `earlier`
/// is a data file.
[[nodiscard]] bool IsDamagedDataFile(const std::string& path, const std::string& earlier);

/// The same for the content of a file; errors name it as `path`.
[[nodiscard]] std::optional<CalFileInfo> CalFileHeaderIn(std::string_view bytes,
                                                         const std::string& path);

}  // namespace tarvell

#endif
