// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileIOCommonModule.h"

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

namespace {

void RecycleNative(const std::string& native, const std::string& path) {
  if (const std::error_code code = CurrentPlatform().Recycle(native)) {
    throw SystemError(code, "delete it", path);
  }
}

}  // namespace

bool FolderExists(const std::string& path) {
  EntryFacts facts;
  return !path.empty() && !CurrentPlatform().Facts(NativePath(path), facts) &&
         facts.kind == EntryKind::Folder;
}

void MakeFolder(const std::string& path) {
  if (const std::error_code code = CurrentPlatform().MakeFolder(NativePath(path))) {
    throw SystemError(code, "make the folder", path);
  }
}

void Recycle(const std::string& path) {
  RecycleNative(NativePath(path), path);
}

void RecycleEntry(const std::string& folder, const std::string& name) {
  RecycleNative(NativePath(folder) + "/" + name, Joined(folder, name));
}

}  // namespace tarvell
