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

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path, EntryKind kind,
                                               std::unique_ptr<InputFile>& file) override;
  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override;
  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override;
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& folder) override;
  [[nodiscard]] std::error_code RemoveFile(const std::filesystem::path& path) override;

  [[nodiscard]] std::error_code Facts(const std::filesystem::path& path,
                                      EntryFacts& facts) override;
  [[nodiscard]] bool IsSameFile(const std::filesystem::path& a,
                                const std::filesystem::path& b) override;
  [[nodiscard]] std::error_code ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) override;
  [[nodiscard]] bool MayChange(const std::filesystem::path& /*folder*/) override { return true; }
  [[nodiscard]] std::error_code MakeFolder(const std::filesystem::path& path) override;
  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override;
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override;
  [[nodiscard]] std::error_code RecycleCopy(const std::filesystem::path& /*path*/) override {
    return {};
  }

  [[nodiscard]] std::filesystem::path ProgramFolder() override { return "/program"; }
  [[nodiscard]] std::filesystem::path DriveFolder() override { return "/drives"; }
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
