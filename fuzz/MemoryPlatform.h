// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_FUZZ_MEMORYPLATFORM_H
#define TARVELL_FUZZ_MEMORYPLATFORM_H

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <system_error>

#include "core/platform/Platform.h"

namespace tarvell::fuzz {

/// A disk in memory, empty but for the folder of drive C:; the current platform while it lives.
/// Its files are whole and never fail; there are no links. A search gives the names in the order
/// of their bytes.
class MemoryPlatform final : public Platform {
 public:
  MemoryPlatform();
  ~MemoryPlatform() override;

  /// Puts a file at a path on drive C: ("data/SN00001"), with the folders that it lies in.
  void Put(const std::string& path, const std::string& bytes);
  void MakeFolders(const std::string& path);
  /// Content of the file at a path on drive C:, nullptr when there is none.
  [[nodiscard]] const std::string* Find(const std::string& path) const;
  /// Whether a folder stands at a path on drive C:.
  [[nodiscard]] bool HasFolder(const std::string& path) const;
  /// Number of files and folders on the disk.
  [[nodiscard]] std::size_t EntryCount() const { return entries_.size(); }

  /// How many bytes a file gives at most when it is read once.
  std::size_t readAtMost = 4096;

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
  [[nodiscard]] std::error_code RecycleCopy(const std::string& /*path*/) override { return {}; }

  [[nodiscard]] std::string ProgramFolder() override { return "/program"; }
  [[nodiscard]] std::string DriveFolder() override { return "/drives"; }
  [[nodiscard]] std::string WindowsDirectory() override { return "c:\\windows"; }
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override;

 private:
  struct Entry {
    bool isFolder = false;
    std::shared_ptr<std::string> bytes;
  };

  [[nodiscard]] const Entry* At(const std::string& path) const;

  Platform* before_;
  std::map<std::string, Entry> entries_;  ///< by native path
};

}  // namespace tarvell::fuzz

#endif
