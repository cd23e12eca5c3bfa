// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_FAULTPLATFORM_H
#define TARVELL_TESTS_SUPPORT_FAULTPLATFORM_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell::test {

/// The current platform, but one step of reading or saving a file fails, once or always. The
/// current platform itself while it lives.
class FaultPlatform : public ForwardingPlatform {
 public:
  enum class Step {
    None,
    Resolve,
    Facts,  ///< of what is about to be saved
    Create,
    Open,
    Write,    ///< takes the bytes before `failAtByte`, then fails
    Nothing,  ///< takes the bytes before `failAtByte`, then none, without an error
    Cut,
    Length,  ///< reports a length that is wrong by `wrongBy`
    Attributes,
    Sync,
    Close,
    Replace,
    SyncFolder,
    OpenForReading,
    Read,
    Append,
    Lock,
    MakeFolder
  };

  FaultPlatform() : ForwardingPlatform(CurrentPlatform()), before_(SetCurrentPlatform(this)) {}
  FaultPlatform(const FaultPlatform&) = delete;
  FaultPlatform& operator=(const FaultPlatform&) = delete;
  ~FaultPlatform() override { SetCurrentPlatform(before_); }

  Step step = Step::None;
  std::errc fault = std::errc::io_error;
  bool always = false;
  int passes = 0;              ///< how often the step succeeds before it fails
  std::size_t failAtByte = 0;  ///< for Step::Write and Step::Nothing
  std::uintmax_t wrongBy = 1;  ///< for Step::Length
  std::size_t portion = std::numeric_limits<std::size_t>::max();      ///< of one write
  std::size_t readPortion = std::numeric_limits<std::size_t>::max();  ///< of one read
  bool waits = true;           ///< whether a sync waits for the disk
  bool sparesHistory = false;  ///< whether no step fails in the history
  int faults = 0;              ///< how often the step has failed
  int opened = 0;              ///< how often a file was opened in place

  /// From now on this step fails.
  void Set(Step failing, std::errc how = std::errc::io_error) {
    step = failing;
    fault = how;
    faults = 0;
    opened = 0;
  }

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path,
                                               std::unique_ptr<InputFile>& file) override {
    if (Fails(Step::OpenForReading)) {
      return Fault();
    }
    const std::error_code code = ForwardingPlatform::OpenForReading(path, file);
    if (file != nullptr) {
      file = std::make_unique<Source>(*this, std::move(file));
    }
    return code;
  }
  [[nodiscard]] std::error_code OpenFound(const FoundEntry& entry,
                                          std::unique_ptr<InputFile>& file) override {
    return OpenForReading(entry.folder / entry.name, file);
  }
  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    if (IsSpared(folder)) {
      return ForwardingPlatform::CreateTemporary(folder, path, file);
    }
    if (Fails(Step::Create)) {
      return Fault();
    }
    const std::error_code code = ForwardingPlatform::CreateTemporary(folder, path, file);
    return Wrapped(code, file);
  }
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override {
    if (IsSpared(path)) {
      return ForwardingPlatform::OpenInPlace(path, file);
    }
    ++opened;
    if (Fails(Step::Open)) {
      return Fault();
    }
    const std::error_code code = ForwardingPlatform::OpenInPlace(path, file);
    return Wrapped(code, file);
  }
  [[nodiscard]] std::error_code OpenForAppending(const std::filesystem::path& path,
                                                 std::unique_ptr<OutputFile>& file,
                                                 bool& beginsLine) override {
    if (IsSpared(path)) {
      return ForwardingPlatform::OpenForAppending(path, file, beginsLine);
    }
    if (Fails(Step::Append)) {
      return Fault();
    }
    const std::error_code code = ForwardingPlatform::OpenForAppending(path, file, beginsLine);
    return Wrapped(code, file);
  }
  [[nodiscard]] std::error_code Lock(const std::filesystem::path& path, std::uint32_t number,
                                     std::unique_ptr<HeldLock>& lock) override {
    return Fails(Step::Lock) ? Fault() : ForwardingPlatform::Lock(path, number, lock);
  }
  [[nodiscard]] std::error_code MakeFolder(const std::filesystem::path& path) override {
    return Fails(Step::MakeFolder) ? Fault() : ForwardingPlatform::MakeFolder(path);
  }
  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    if (IsSpared(to)) {
      return ForwardingPlatform::Replace(from, to);
    }
    return Fails(Step::Replace) ? Fault() : ForwardingPlatform::Replace(from, to);
  }
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& folder) override {
    if (IsSpared(folder)) {
      return ForwardingPlatform::SyncFolder(folder);
    }
    if (Fails(Step::SyncFolder)) {
      return Fault();
    }
    return waits ? ForwardingPlatform::SyncFolder(folder) : std::error_code();
  }
  [[nodiscard]] std::error_code ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) override {
    if (Fails(Step::Resolve)) {
      return Fault();
    }
    const std::error_code code = ForwardingPlatform::ResolveLinks(path, resolved);
    resolved_ = resolved;
    return code;
  }
  [[nodiscard]] std::error_code Facts(const std::filesystem::path& path,
                                      EntryFacts& facts) override {
    // Only the look at the target of a save fails, not those that find the name of a path.
    const bool isTarget = !resolved_.empty() && path == resolved_;
    resolved_.clear();
    return isTarget && Fails(Step::Facts) ? Fault() : ForwardingPlatform::Facts(path, facts);
  }

  // No recycle bin, so that a save takes only the steps above.
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override {
    return SystemPlatform().Recycle(path);
  }

 private:
  [[nodiscard]] bool IsSpared(const std::filesystem::path& path) const {
    return sparesHistory && path.string().find("history.tarvell") != std::string::npos;
  }

  class Source : public InputFile {
   public:
    Source(FaultPlatform& platform, std::unique_ptr<InputFile> file)
        : platform_(platform), file_(std::move(file)) {}

    [[nodiscard]] std::error_code Read(char* buffer, std::size_t size,
                                       std::size_t& count) override {
      if (platform_.Fails(Step::Read)) {
        count = 0;
        return platform_.Fault();
      }
      return file_->Read(buffer, std::min(size, platform_.readPortion), count);
    }

   private:
    FaultPlatform& platform_;
    std::unique_ptr<InputFile> file_;
  };

  class File : public ForwardingOutputFile {
   public:
    File(FaultPlatform& platform, std::unique_ptr<OutputFile> file)
        : ForwardingOutputFile(std::move(file)), platform_(platform) {}

    [[nodiscard]] std::error_code Write(std::string_view bytes, std::size_t& count) override {
      std::size_t most = std::min(bytes.size(), platform_.portion);
      const bool toFail = platform_.step == Step::Write || platform_.step == Step::Nothing;
      if (toFail && (platform_.faults == 0 || platform_.always)) {
        if (written_ >= platform_.failAtByte) {
          if (platform_.Fails(Step::Write)) {
            count = 0;
            return platform_.Fault();
          }
          if (platform_.Fails(Step::Nothing)) {
            count = 0;
            // A loop that tries again without end fails here instead of hanging.
            return platform_.faults < 1000 ? std::error_code() : platform_.Fault();
          }
        }
        most = std::min(most, platform_.failAtByte - written_);
      }
      const std::error_code code = ForwardingOutputFile::Write(bytes.substr(0, most), count);
      written_ += count;
      return code;
    }
    [[nodiscard]] std::error_code TruncateHere() override {
      return platform_.Fails(Step::Cut) ? platform_.Fault() : ForwardingOutputFile::TruncateHere();
    }
    [[nodiscard]] std::error_code Length(std::uintmax_t& length) override {
      const std::error_code code = ForwardingOutputFile::Length(length);
      if (platform_.Fails(Step::Length)) {
        length -= platform_.wrongBy;
      }
      return code;
    }
    [[nodiscard]] std::error_code TakeAttributesOf(const std::filesystem::path& path) override {
      return platform_.Fails(Step::Attributes) ? platform_.Fault()
                                               : ForwardingOutputFile::TakeAttributesOf(path);
    }
    [[nodiscard]] std::error_code Sync() override {
      if (platform_.Fails(Step::Sync)) {
        return platform_.Fault();
      }
      return platform_.waits ? ForwardingOutputFile::Sync() : std::error_code();
    }
    [[nodiscard]] std::error_code Close() override {
      const std::error_code code = ForwardingOutputFile::Close();
      return platform_.Fails(Step::Close) ? platform_.Fault() : code;
    }

   private:
    FaultPlatform& platform_;
    std::size_t written_ = 0;
  };

  [[nodiscard]] bool Fails(Step now) {
    if (now != step || (faults > 0 && !always)) {
      return false;
    }
    if (passes > 0) {
      --passes;
      return false;
    }
    ++faults;
    return true;
  }
  [[nodiscard]] std::error_code Fault() const { return std::make_error_code(fault); }

  [[nodiscard]] std::error_code Wrapped(std::error_code code, std::unique_ptr<OutputFile>& file) {
    if (file != nullptr) {
      file = std::make_unique<File>(*this, std::move(file));
    }
    return code;
  }

  Platform* before_;
  std::filesystem::path resolved_;
};

inline std::ostream& operator<<(std::ostream& stream, FaultPlatform::Step step) {
  static constexpr std::array<const char*, 19> kNames = {
      "None",  "Resolve", "Facts",   "Create",     "Open",
      "Write", "Nothing", "Cut",     "Length",     "Attributes",
      "Sync",  "Close",   "Replace", "SyncFolder", "OpenForReading",
      "Read",  "Append",  "Lock",    "MakeFolder"};
  return stream << kNames.at(static_cast<std::size_t>(step));
}

}  // namespace tarvell::test

#endif
