// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ExportFile.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "core/files/Paths.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/station/StationFiles.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

bool AreSameName(const std::filesystem::path& a, const std::filesystem::path& b) {
  return EqualsIgnoringCase(PathText(a), PathText(b));
}

/// Whether stations would find `target`: it is in a folder of `tree`, or is its INDEX.
bool IsReadByStations(const std::filesystem::path& target, const std::filesystem::path& tree) {
  const auto [inTree, inTarget] =
      std::mismatch(tree.begin(), tree.end(), target.begin(), target.end(), &AreSameName);
  return inTree == tree.end() &&
         (std::distance(inTarget, target.end()) > 1 || AreSameName(target.filename(), kIndexName));
}

}  // namespace

void SaveExport(const std::filesystem::path& target, std::string_view bytes,
                std::span<const std::string> trees) {
  const std::filesystem::path whole = WholePath(target);
  for (const std::string& tree : trees) {
    const std::filesystem::path folder = WholePath(NativePath(tree));
    if (IsReadByStations(whole, folder.has_filename() ? folder : folder.parent_path())) {
      throw Error(
          ErrorKind::Name,
          "The folder holds files that stations read, and the new file could replace one of "
          "them. Nothing was written. Choose another folder.",
          PathText(target));
    }
  }
  if (const std::error_code error = SaveNativeFile(target, bytes)) {
    throw SystemError(error, "save the file", PathText(target));
  }
}

}  // namespace tarvell
