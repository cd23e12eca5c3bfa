// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileIOCommonModule.h"

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"

namespace tarvell {

namespace {

void RecycleNative(const std::filesystem::path& native, std::string_view path) {
  if (const std::error_code code = CurrentPlatform().Recycle(native)) {
    throw SystemError(code, "delete it", path);
  }
}

}  // namespace

bool FolderExists(std::string_view path) {
  EntryFacts facts;
  return !path.empty() && !CurrentPlatform().Facts(NativePath(path), facts) &&
         facts.kind == EntryKind::Folder;
}

void MakeFolder(std::string_view path) {
  if (const std::error_code code = CurrentPlatform().MakeFolder(NativePath(path))) {
    throw SystemError(code, "make the folder", path);
  }
}

void Recycle(std::string_view path) {
  RecycleNative(NativePath(path), path);
}

void RecycleEntry(std::string_view folder, const std::string& name) {
  RecycleNative(NativePath(folder) / SystemName(name), Joined(folder, name));
}

}  // namespace tarvell
