// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_WINDOWSFILE_H
#define TARVELL_CORE_PLATFORM_WINDOWSFILE_H

#include <filesystem>
#include <memory>

#include "core/platform/Platform.h"
#include "core/platform/WindowsHandle.h"

namespace tarvell::windows {

/// An open file, as the platform hands it out. It owns the handle.
[[nodiscard]] std::unique_ptr<InputFile> NewInputFile(HANDLE handle);
/// `path` is that of the file itself.
[[nodiscard]] std::unique_ptr<OutputFile> NewOutputFile(HANDLE handle, std::filesystem::path path);

/// Fails for a file that is marked as read-only. Windows itself refuses to open it for writing, but
/// not each server of a share does.
[[nodiscard]] std::error_code MayWrite(const std::filesystem::path& path);

/// Whether the user may write the file at `path`, which is there. Fails with
/// device_or_resource_busy while another program does not let others write or replace it.
[[nodiscard]] std::error_code MayReplace(const std::filesystem::path& path);

/// Whether the file at `path`, which could not be replaced, is only in use: the user may write and
/// delete it, or another program does not let others open it.
[[nodiscard]] bool IsInUse(const std::filesystem::path& path);

}  // namespace tarvell::windows

#endif
