// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_LINUXPLATFORM_H
#define TARVELL_CORE_PLATFORM_LINUXPLATFORM_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "core/platform/Platform.h"

namespace tarvell {

/// Linux, without a recycle bin: DesktopPlatform adds the desktop's trash.
class LinuxPlatform : public Platform {
 public:
  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path,
                                               std::unique_ptr<InputFile>& file) override;
  [[nodiscard]] std::error_code OpenFound(const FoundEntry& entry,
                                          std::unique_ptr<InputFile>& file) override;
  [[nodiscard]] std::unique_ptr<OpenFolder> KeepOpen(const std::filesystem::path& folder) override;
  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code OpenForAppending(const std::filesystem::path& path,
                                                 std::unique_ptr<OutputFile>& file,
                                                 bool& beginsLine) override;
  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override;
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& folder) override;
  [[nodiscard]] std::error_code RemoveFile(const std::filesystem::path& path) override;

  [[nodiscard]] std::error_code Lock(const std::filesystem::path& path, std::uint32_t number,
                                     std::unique_ptr<HeldLock>& lock) override;
  [[nodiscard]] std::error_code Facts(const std::filesystem::path& path,
                                      EntryFacts& facts) override;
  [[nodiscard]] bool IsSameFile(const std::filesystem::path& a,
                                const std::filesystem::path& b) override;
  [[nodiscard]] std::error_code ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) override;
  [[nodiscard]] std::error_code MayChange(const std::filesystem::path& folder) override;
  [[nodiscard]] std::error_code MakeFolder(const std::filesystem::path& path) override;
  [[nodiscard]] std::error_code MakePrivateFolder(const std::filesystem::path& path) override;
  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override;
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override;
  [[nodiscard]] bool HasRecycleBin() override;

  [[nodiscard]] std::filesystem::path ProgramFolder() override;
  [[nodiscard]] std::filesystem::path DriveFolder() override;
  /// $XDG_DATA_HOME/tarvell, by default ~/.local/share/tarvell.
  [[nodiscard]] std::filesystem::path UserFolder() override;
  [[nodiscard]] std::string WindowsDirectory() override;
  [[nodiscard]] std::string OwnWindowsDirectory() override;
  [[nodiscard]] std::string UserName() override;
  [[nodiscard]] std::string HostName() override;
  [[nodiscard]] std::time_t Now() override;
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override;
};

}  // namespace tarvell

#endif
