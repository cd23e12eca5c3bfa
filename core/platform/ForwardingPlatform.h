// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_FORWARDINGPLATFORM_H
#define TARVELL_CORE_PLATFORM_FORWARDINGPLATFORM_H

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "core/platform/Platform.h"

namespace tarvell {

/// Passes every call on to another platform, which must outlive it. A class that changes a few
/// calls derives from this one and overrides only those. Files are opened by OpenForReading and by
/// OpenFound.
class ForwardingPlatform : public Platform {
 public:
  explicit ForwardingPlatform(Platform& target = SystemPlatform()) : target_(target) {}

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path,
                                               std::unique_ptr<InputFile>& file) override {
    return target_.OpenForReading(path, file);
  }
  [[nodiscard]] std::error_code OpenFound(const FoundEntry& entry,
                                          std::unique_ptr<InputFile>& file) override {
    return target_.OpenFound(entry, file);
  }
  [[nodiscard]] std::unique_ptr<OpenFolder> KeepOpen(const std::filesystem::path& folder) override {
    return target_.KeepOpen(folder);
  }
  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    return target_.CreateTemporary(folder, path, file);
  }
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override {
    return target_.OpenInPlace(path, file);
  }
  [[nodiscard]] std::error_code OpenForAppending(const std::filesystem::path& path,
                                                 std::unique_ptr<OutputFile>& file,
                                                 bool& beginsLine) override {
    return target_.OpenForAppending(path, file, beginsLine);
  }
  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    return target_.Replace(from, to);
  }
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& folder) override {
    return target_.SyncFolder(folder);
  }
  [[nodiscard]] std::error_code RemoveFile(const std::filesystem::path& path) override {
    return target_.RemoveFile(path);
  }
  [[nodiscard]] std::error_code Lock(const std::filesystem::path& path, std::uint32_t number,
                                     std::unique_ptr<HeldLock>& lock) override {
    return target_.Lock(path, number, lock);
  }
  [[nodiscard]] std::error_code Facts(const std::filesystem::path& path,
                                      EntryFacts& facts) override {
    return target_.Facts(path, facts);
  }
  [[nodiscard]] bool IsSameFile(const std::filesystem::path& a,
                                const std::filesystem::path& b) override {
    return target_.IsSameFile(a, b);
  }
  [[nodiscard]] std::error_code ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) override {
    return target_.ResolveLinks(path, resolved);
  }
  [[nodiscard]] std::error_code MayChange(const std::filesystem::path& folder) override {
    return target_.MayChange(folder);
  }
  [[nodiscard]] std::error_code MakeFolder(const std::filesystem::path& path) override {
    return target_.MakeFolder(path);
  }
  [[nodiscard]] std::error_code MakePrivateFolder(const std::filesystem::path& path) override {
    return target_.MakePrivateFolder(path);
  }
  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override {
    return target_.Search(folder, kind, visit);
  }
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override {
    return target_.Recycle(path);
  }
  [[nodiscard]] bool HasRecycleBin() override { return target_.HasRecycleBin(); }
  [[nodiscard]] std::filesystem::path ProgramFolder() override { return target_.ProgramFolder(); }
  [[nodiscard]] std::filesystem::path DriveFolder() override { return target_.DriveFolder(); }
  [[nodiscard]] std::filesystem::path UserFolder() override { return target_.UserFolder(); }
  [[nodiscard]] std::string WindowsDirectory() override { return target_.WindowsDirectory(); }
  [[nodiscard]] std::string OwnWindowsDirectory() override { return target_.OwnWindowsDirectory(); }
  [[nodiscard]] std::string UserName() override { return target_.UserName(); }
  [[nodiscard]] std::string HostName() override { return target_.HostName(); }
  [[nodiscard]] std::time_t Now() override { return target_.Now(); }
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override {
    return target_.QueryOSVersion(record);
  }

 private:
  Platform& target_;
};

/// The same for a file open for writing, which it owns.
class ForwardingOutputFile : public OutputFile {
 public:
  explicit ForwardingOutputFile(std::unique_ptr<OutputFile> target) : target_(std::move(target)) {}

  [[nodiscard]] std::error_code Write(std::string_view bytes, std::size_t& count) override {
    return target_->Write(bytes, count);
  }
  [[nodiscard]] std::error_code TruncateHere() override { return target_->TruncateHere(); }
  [[nodiscard]] std::error_code Length(std::uintmax_t& length) override {
    return target_->Length(length);
  }
  [[nodiscard]] std::error_code TakeAttributesOf(const std::filesystem::path& path) override {
    return target_->TakeAttributesOf(path);
  }
  [[nodiscard]] std::error_code Sync() override { return target_->Sync(); }
  [[nodiscard]] std::error_code Close() override { return target_->Close(); }

 private:
  std::unique_ptr<OutputFile> target_;
};

}  // namespace tarvell

#endif
