// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_LINUXPLATFORM_H
#define TARVELL_CORE_PLATFORM_LINUXPLATFORM_H

#include <memory>
#include <string>

#include "core/platform/Platform.h"

namespace tarvell {

/// Linux. It knows no recycle bin: that is the desktop's, which the screens add.
class LinuxPlatform : public Platform {
 public:
  [[nodiscard]] std::error_code OpenForReading(const std::string& path,
                                               std::unique_ptr<InputFile>& file) override;
  [[nodiscard]] std::error_code CreateTemporary(const std::string& folder, std::string& path,
                                                std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code OpenInPlace(const std::string& path,
                                            std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code Replace(const std::string& from, const std::string& to) override;
  [[nodiscard]] std::error_code SyncFolder(const std::string& folder) override;
  [[nodiscard]] std::error_code RemoveFile(const std::string& path) override;

  [[nodiscard]] std::error_code Facts(const std::string& path, EntryFacts& facts) override;
  [[nodiscard]] bool IsSameFile(const std::string& a, const std::string& b) override;
  [[nodiscard]] std::error_code ResolveLinks(const std::string& path,
                                             std::string& resolved) override;
  [[nodiscard]] std::error_code MakeFolder(const std::string& path) override;
  [[nodiscard]] std::error_code Search(
      const std::string& folder, SearchKind kind,
      const std::function<bool(const std::string& name)>& visit) override;
  [[nodiscard]] std::error_code Recycle(const std::string& path) override;
  [[nodiscard]] std::error_code RecycleCopy(const std::string& path) override;

  [[nodiscard]] std::string ProgramFolder() override;
  [[nodiscard]] std::string DriveFolder() override;
  [[nodiscard]] std::string WindowsDirectory() override;
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override;
};

}  // namespace tarvell

#endif
