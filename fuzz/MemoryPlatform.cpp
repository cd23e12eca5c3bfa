// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "MemoryPlatform.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

namespace tarvell::fuzz {

namespace {

constexpr const char* kDrive = "/drives/c";
constexpr const char* kTemporary = "/.temporary";

class Reader final : public InputFile {
 public:
  Reader(std::shared_ptr<std::string> bytes, std::size_t readAtMost)
      : bytes_(std::move(bytes)), readAtMost_(readAtMost) {}

  [[nodiscard]] std::error_code Read(char* buffer, std::size_t size, std::size_t& count) override {
    count = bytes_->copy(buffer, std::min(size, readAtMost_), position_);
    position_ += count;
    return {};
  }

 private:
  std::shared_ptr<std::string> bytes_;
  std::size_t readAtMost_;
  std::size_t position_ = 0;
};

class Writer final : public OutputFile {
 public:
  explicit Writer(std::shared_ptr<std::string> bytes) : bytes_(std::move(bytes)) {}

  [[nodiscard]] std::error_code Write(std::string_view bytes, std::size_t& count) override {
    bytes_->replace(position_, std::min(bytes.size(), bytes_->size() - position_), bytes);
    count = bytes.size();
    position_ += count;
    return {};
  }
  [[nodiscard]] std::error_code TruncateHere() override {
    bytes_->resize(position_);
    return {};
  }
  [[nodiscard]] std::error_code Length(std::uintmax_t& length) override {
    length = bytes_->size();
    return {};
  }
  [[nodiscard]] std::error_code TakeAttributesOf(const std::filesystem::path& /*path*/) override {
    return {};
  }
  [[nodiscard]] std::error_code Sync() override { return {}; }
  [[nodiscard]] std::error_code Close() override { return {}; }

 private:
  std::shared_ptr<std::string> bytes_;
  std::size_t position_ = 0;
};

std::error_code Failure(std::errc reason) {
  return std::make_error_code(reason);
}

std::string WithoutLastSeparator(const std::string& folder) {
  return folder.size() > 1 && folder.back() == '/' ? folder.substr(0, folder.size() - 1) : folder;
}

std::string ParentOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

std::string OnDrive(const std::string& path) {
  return std::string(kDrive) + "/" + path;
}

}  // namespace

MemoryPlatform::MemoryPlatform() : before_(SetCurrentPlatform(this)) {
  entries_["/drives"].isFolder = true;
  entries_[kDrive].isFolder = true;
}

MemoryPlatform::~MemoryPlatform() {
  SetCurrentPlatform(before_);
}

void MemoryPlatform::Put(const std::string& path, const std::string& bytes) {
  if (path.find('/') != std::string::npos) {
    MakeFolders(ParentOf(path));
  }
  entries_[OnDrive(path)] = {false, std::make_shared<std::string>(bytes)};
}

void MemoryPlatform::MakeFolders(const std::string& path) {
  const std::string native = OnDrive(path) + "/";
  for (std::size_t end = native.find('/', 1); end != std::string::npos;
       end = native.find('/', end + 1)) {
    entries_[native.substr(0, end)].isFolder = true;
  }
}

const std::string* MemoryPlatform::Find(const std::string& path) const {
  const Entry* entry = At(OnDrive(path));
  return entry == nullptr ? nullptr : entry->bytes.get();
}

bool MemoryPlatform::HasFolder(const std::string& path) const {
  const Entry* entry = At(OnDrive(path));
  return entry != nullptr && entry->isFolder;
}

std::error_code MemoryPlatform::OpenForReading(const std::filesystem::path& path,
                                               EntryKind /*kind*/,
                                               std::unique_ptr<InputFile>& file) {
  const Entry* entry = At(path);
  if (entry == nullptr) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  if (entry->isFolder) {
    return Failure(std::errc::is_a_directory);
  }
  file = std::make_unique<Reader>(entry->bytes, readAtMost);
  return {};
}

std::error_code MemoryPlatform::CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) {
  const std::string parent = WithoutLastSeparator(folder);
  const Entry* entry = At(parent);
  if (entry == nullptr || !entry->isFolder) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  path = parent + kTemporary;
  Entry& created = entries_[path.string()];
  created.bytes = std::make_shared<std::string>();
  file = std::make_unique<Writer>(created.bytes);
  return {};
}

std::error_code MemoryPlatform::OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) {
  const Entry* entry = At(path);
  if (entry == nullptr || entry->isFolder) {
    return Failure(entry == nullptr ? std::errc::no_such_file_or_directory
                                    : std::errc::is_a_directory);
  }
  file = std::make_unique<Writer>(entry->bytes);
  return {};
}

std::error_code MemoryPlatform::Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) {
  const auto found = entries_.find(from);
  if (found == entries_.end()) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  Entry moved = std::move(found->second);
  entries_.erase(found);
  entries_[to.string()] = std::move(moved);
  return {};
}

std::error_code MemoryPlatform::SyncFolder(const std::filesystem::path& /*folder*/) {
  return {};
}

std::error_code MemoryPlatform::RemoveFile(const std::filesystem::path& path) {
  return entries_.erase(path) == 1 ? std::error_code()
                                   : Failure(std::errc::no_such_file_or_directory);
}

std::error_code MemoryPlatform::Facts(const std::filesystem::path& path, EntryFacts& facts) {
  const Entry* entry = At(path);
  facts = {};
  if (entry != nullptr) {
    facts.kind = entry->isFolder ? EntryKind::Folder : EntryKind::File;
    facts.linkCount = 1;
  }
  return {};
}

bool MemoryPlatform::IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  return a == b && At(a) != nullptr;
}

std::error_code MemoryPlatform::ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) {
  resolved = path;
  return {};
}

std::error_code MemoryPlatform::MakeFolder(const std::filesystem::path& path) {
  if (At(path) != nullptr) {
    return Failure(std::errc::file_exists);
  }
  const Entry* parent = At(ParentOf(path));
  if (parent == nullptr || !parent->isFolder) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  entries_[path.string()].isFolder = true;
  return {};
}

std::error_code MemoryPlatform::Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) {
  const Entry* entry = At(folder);
  if (entry == nullptr || !entry->isFolder) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  const std::string prefix = folder.string() + "/";
  for (auto at = entries_.lower_bound(prefix);
       at != entries_.end() && at->first.compare(0, prefix.size(), prefix) == 0; ++at) {
    const std::string name = at->first.substr(prefix.size());
    const bool isMeant =
        (kind != SearchKind::NamesWithoutDot || name.find('.') == std::string::npos) &&
        (kind != SearchKind::OrdinaryFiles || !at->second.isFolder);
    if (name.find('/') == std::string::npos && isMeant &&
        !visit(name, at->second.isFolder ? EntryKind::Folder : EntryKind::File)) {
      break;
    }
  }
  return {};
}

std::error_code MemoryPlatform::Recycle(const std::filesystem::path& path) {
  if (entries_.erase(path) == 0) {
    return Failure(std::errc::no_such_file_or_directory);
  }
  std::erase_if(entries_, [&](const auto& entry) {
    return entry.first.starts_with(path.string() + "/") == 0;
  });
  return {};
}

bool MemoryPlatform::QueryOSVersion(OSVersionRecord& /*record*/) {
  return false;
}

const MemoryPlatform::Entry* MemoryPlatform::At(const std::string& path) const {
  const auto found = entries_.find(path);
  return found == entries_.end() ? nullptr : &found->second;
}

}  // namespace tarvell::fuzz
