// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_SAVEFILE_H
#define TARVELL_COMMON_SAVEFILE_H

#include <functional>
#include <string>
#include <string_view>

namespace tarvell {

/// Writes `bytes` as the whole content of the file at `path` (path text of the program). This is
/// the only way in which the program writes a file.
///
/// A new content is written and synced beside the file and then takes its place in one step, with
/// the mode, owner and group that the file had; links are followed. Where that cannot be (no
/// ordinary file, several hard links, a folder that takes no new file, an owner that cannot be
/// kept), the file is overwritten in place, and gets its old content back when that fails.
///
/// Throws a WriteFailed error when a step failed; the file then holds its earlier content, whole,
/// or the new one when only the last step, syncing its folder, failed.
///
/// `keepEarlier` is called with the native path of an ordinary file that stands there, links
/// followed, before anything is written; what it throws ends the save.
void SaveFile(const std::string& path, std::string_view bytes,
              const std::function<void(const std::string& native)>& keepEarlier = {});

}  // namespace tarvell

#endif
