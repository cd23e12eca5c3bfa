// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_FUZZ_MEMORYPLATFORM_H
#define TARVELL_FUZZ_MEMORYPLATFORM_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/platform/Platform.h"

namespace tarvell::fuzz {

/// A disk in memory with the folder of drive C:; the current platform while it exists. It has no
/// links, and nothing on it fails, so that no file is overwritten in place. A search returns the
/// names in the order of their bytes.
class MemoryPlatform final : public Platform {
 public:
  using Path = std::filesystem::path;

  MemoryPlatform() : before_(SetCurrentPlatform(this)) { MakeFolders(""); }
  ~MemoryPlatform() override { SetCurrentPlatform(before_); }

  /// Puts a file at a path on drive C: ("data/SN00001"), and makes its folders.
  void Put(const Path& path, const std::string& bytes) {
    MakeFolders(path.parent_path());
    entries_[kDrive / path] = std::make_shared<std::string>(bytes);
  }
  /// Puts a file at a path of the system, and makes its folders.
  void PutAt(const Path& path, const std::string& bytes) {
    Path folder;
    for (const Path& name : path.parent_path()) {
      folder /= name;
      entries_.try_emplace(folder);
    }
    entries_[path] = std::make_shared<std::string>(bytes);
  }
  /// Content of the file at a path of the system, nullptr when there is none.
  [[nodiscard]] const std::string* FindAt(const Path& path) const {
    const auto found = entries_.find(path);
    return found == entries_.end() ? nullptr : found->second.get();
  }
  /// Makes a folder on drive C: and the folders above it.
  void MakeFolders(const Path& path) {
    Path folder;
    for (const Path& name : path.empty() ? kDrive : kDrive / path) {
      folder /= name;
      entries_.try_emplace(folder);
    }
  }
  /// Content of the file at a path on drive C:, nullptr when there is none.
  [[nodiscard]] const std::string* Find(const Path& path) const {
    const auto found = entries_.find(kDrive / path);
    return found == entries_.end() ? nullptr : found->second.get();
  }

  std::time_t now = 1772719387;  ///< 2026-03-05T14:03:07Z

  /// The largest number of bytes that one read returns.
  std::size_t readAtMost = 4096;

  std::error_code OpenForReading(const Path& path, std::unique_ptr<InputFile>& file) override {
    const auto found = entries_.find(path);
    if (found == entries_.end()) {
      return Failure(std::errc::no_such_file_or_directory);
    }
    if (!found->second) {
      return Failure(std::errc::is_a_directory);
    }
    file = std::make_unique<Reader>(*found->second, readAtMost);
    return {};
  }
  std::error_code CreateTemporary(const Path& folder, Path& path,
                                  std::unique_ptr<OutputFile>& file) override {
    if (!IsFolder(folder)) {
      return Failure(std::errc::no_such_file_or_directory);
    }
    path = folder / ".temporary";
    file = std::make_unique<Writer>(entries_[path] = std::make_shared<std::string>());
    return {};
  }
  std::error_code OpenInPlace(const Path& /*path*/,
                              std::unique_ptr<OutputFile>& /*file*/) override {
    return Failure(std::errc::not_supported);
  }
  std::error_code Replace(const Path& from, const Path& to) override {
    entries_[to] = entries_.at(from);
    return RemoveFile(from);
  }
  std::error_code SyncFolder(const Path& /*folder*/) override { return {}; }
  std::error_code RemoveFile(const Path& path) override {
    return entries_.erase(path) == 1 ? std::error_code()
                                     : Failure(std::errc::no_such_file_or_directory);
  }

  std::error_code OpenForAppending(const Path& path, std::unique_ptr<OutputFile>& file,
                                   bool& beginsLine) override {
    const auto found = entries_.find(path);
    if (found == entries_.end() || !found->second) {
      return Failure(std::errc::no_such_file_or_directory);
    }
    beginsLine = found->second->empty() || found->second->ends_with('\n');
    file = std::make_unique<Writer>(found->second);
    return {};
  }

  /// One program only: nobody else holds a lock.
  std::error_code Lock(const Path& path, std::uint32_t /*number*/,
                       std::unique_ptr<HeldLock>& lock) override {
    if (auto& bytes = entries_[path]; !bytes) {
      bytes = std::make_shared<std::string>();
    }
    lock = std::make_unique<HeldLock>();
    return {};
  }

  std::error_code Facts(const Path& path, EntryFacts& facts) override {
    const auto found = entries_.find(path);
    facts = {};
    if (found != entries_.end()) {
      facts.kind = found->second ? EntryKind::File : EntryKind::Folder;
      facts.linkCount = 1;
    }
    return {};
  }
  bool IsSameFile(const Path& a, const Path& b) override { return a == b && entries_.contains(a); }
  std::error_code ResolveLinks(const Path& path, Path& resolved) override {
    resolved = path;
    return {};
  }
  std::error_code MayChange(const Path& /*folder*/) override { return {}; }
  std::error_code MakeFolder(const Path& path) override {
    if (!IsFolder(path.parent_path())) {
      return Failure(std::errc::no_such_file_or_directory);
    }
    return entries_.try_emplace(path).second ? std::error_code() : Failure(std::errc::file_exists);
  }
  std::error_code MakePrivateFolder(const Path& path) override { return MakeFolder(path); }
  std::error_code Search(const Path& folder, SearchKind kind, const SearchVisitor& visit) override {
    if (!IsFolder(folder)) {
      return Failure(std::errc::no_such_file_or_directory);
    }
    for (const auto& [path, bytes] : entries_) {
      const std::string name = path.filename().string();
      const bool isMeant =
          (kind != SearchKind::NamesWithoutDot || name.find('.') == std::string::npos) &&
          (kind != SearchKind::OrdinaryFiles || bytes);
      if (path.parent_path() == folder && path != folder && isMeant &&
          !visit({folder, name, bytes ? EntryKind::File : EntryKind::Folder})) {
        break;
      }
    }
    return {};
  }
  std::error_code Recycle(const Path& /*path*/) override {
    return Failure(std::errc::not_supported);
  }
  bool HasRecycleBin() override { return false; }

  std::string UserName() override { return "anna"; }
  std::string HostName() override { return "bench3"; }
  std::time_t Now() override { return now; }
  Path ProgramFolder() override { return "/program"; }
  Path UserFolder() override { return "/user"; }
  Path DriveFolder() override { return "/drives"; }
  std::string WindowsDirectory() override { return "c:\\windows"; }
  std::string OwnWindowsDirectory() override { return {}; }
  bool QueryOSVersion(OSVersionRecord& /*record*/) override { return false; }

 private:
  class Reader final : public InputFile {
   public:
    Reader(std::string bytes, std::size_t most) : bytes_(std::move(bytes)), most_(most) {}
    std::error_code Read(char* buffer, std::size_t size, std::size_t& count) override {
      count = bytes_.copy(buffer, std::min(size, most_), position_);
      position_ += count;
      return {};
    }

   private:
    std::string bytes_;
    std::size_t most_;
    std::size_t position_ = 0;
  };

  class Writer final : public OutputFile {
   public:
    explicit Writer(std::shared_ptr<std::string> bytes) : bytes_(std::move(bytes)) {}
    std::error_code Write(std::string_view bytes, std::size_t& count) override {
      *bytes_ += bytes;
      count = bytes.size();
      return {};
    }
    std::error_code TruncateHere() override { return {}; }
    std::error_code Length(std::uintmax_t& length) override {
      length = bytes_->size();
      return {};
    }
    std::error_code TakeAttributesOf(const Path& /*path*/) override { return {}; }
    std::error_code Sync() override { return {}; }
    std::error_code Close() override { return {}; }

   private:
    std::shared_ptr<std::string> bytes_;
  };

  static std::error_code Failure(std::errc reason) { return std::make_error_code(reason); }
  [[nodiscard]] bool IsFolder(const Path& path) const {
    const auto found = entries_.find(path);
    return found != entries_.end() && !found->second;
  }

  inline static const Path kDrive = "/drives/c";
  Platform* before_;
  std::map<Path, std::shared_ptr<std::string>> entries_;  ///< content by path, nullptr for a folder
};

}  // namespace tarvell::fuzz

#endif
