// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALFILELIST_H
#define TARVELL_CORE_CALDATA_CALFILELIST_H

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/caldata/mTypeDef.h"

/// The lists of the models that have data, and of the headers of a model's data files.
namespace tarvell {

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
/// "sn") in `modelFolder`, in the platform's order, at most `rows.size()` of them. Calls `rowRead`
/// after each row that it fills, and returns how many it filled.
///
/// An entry that cannot be read takes no row, and the reading goes on with the next one. At its end
/// one error names every such entry with its reason (of very many the first, and how many more
/// there are); it has the kind of the first. A data file that finds all rows filled ends the
/// reading with an Index error, which names them as well. All rows read are filled and reported by
/// then.
std::size_t ReadHeadersIn(const std::string& modelFolder, std::span<CalFileInfo> rows,
                          const std::function<void(const CalFileInfo& row)>& rowRead);

/// Reads the header of the data file at `path` (path text of the program) alone; nothing when the
/// file is none.
[[nodiscard]] std::optional<CalFileInfo> ReadCalFileHeader(const std::string& path);

}  // namespace tarvell

#endif
