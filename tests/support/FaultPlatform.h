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

#include "support/TestTree.h"

namespace tarvell::test {

/// The system, but for one step of reading or saving a file, which fails once or always; the
/// current platform while it lives. The program folder stays that of the platform before.
class FaultPlatform : public TestPlatform {
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
    Length,  ///< tells a length that is wrong by `wrongBy`
    Attributes,
    Sync,
    Close,
    Replace,
    SyncFolder,
    OpenForReading,
    Read
  };

  FaultPlatform() : before_(SetCurrentPlatform(nullptr)) {
    SetCurrentPlatform(before_);
    programFolder = CurrentPlatform().ProgramFolder();
    SetCurrentPlatform(this);
  }
  FaultPlatform(const FaultPlatform&) = delete;
  FaultPlatform& operator=(const FaultPlatform&) = delete;
  ~FaultPlatform() override { SetCurrentPlatform(before_); }

  Step step = Step::None;
  std::errc fault = std::errc::io_error;
  bool always = false;
  int passes = 0;              ///< how often the step is taken well before it fails
  std::size_t failAtByte = 0;  ///< for Step::Write and Step::Nothing
  std::uintmax_t wrongBy = 1;  ///< for Step::Length
  std::size_t portion = std::numeric_limits<std::size_t>::max();
  bool waits = true;  ///< whether a sync waits for the disk: a sweep of thousands need not
  int faults = 0;     ///< how often the step has failed
  int opened = 0;     ///< how often a file was opened in place

  /// From now on this step fails.
  void Set(Step failing, std::errc how = std::errc::io_error) {
    step = failing;
    fault = how;
    faults = 0;
    opened = 0;
  }

  [[nodiscard]] std::error_code OpenForReading(const std::string& path,
                                               std::unique_ptr<InputFile>& file) override {
    if (Fails(Step::OpenForReading)) {
      return Fault();
    }
    const std::error_code code = TestPlatform::OpenForReading(path, file);
    if (file != nullptr) {
      file = std::make_unique<Source>(*this, std::move(file));
    }
    return code;
  }
  [[nodiscard]] std::error_code CreateTemporary(const std::string& folder, std::string& path,
                                                std::unique_ptr<OutputFile>& file) override {
    if (Fails(Step::Create)) {
      return Fault();
    }
    const std::error_code code = TestPlatform::CreateTemporary(folder, path, file);
    return Wrapped(code, file);
  }
  [[nodiscard]] std::error_code OpenInPlace(const std::string& path,
                                            std::unique_ptr<OutputFile>& file) override {
    ++opened;
    if (Fails(Step::Open)) {
      return Fault();
    }
    const std::error_code code = TestPlatform::OpenInPlace(path, file);
    return Wrapped(code, file);
  }
  [[nodiscard]] std::error_code Replace(const std::string& from, const std::string& to) override {
    return Fails(Step::Replace) ? Fault() : TestPlatform::Replace(from, to);
  }
  [[nodiscard]] std::error_code SyncFolder(const std::string& folder) override {
    if (Fails(Step::SyncFolder)) {
      return Fault();
    }
    return waits ? TestPlatform::SyncFolder(folder) : std::error_code();
  }
  [[nodiscard]] std::error_code ResolveLinks(const std::string& path,
                                             std::string& resolved) override {
    if (Fails(Step::Resolve)) {
      return Fault();
    }
    const std::error_code code = TestPlatform::ResolveLinks(path, resolved);
    resolved_ = resolved;
    return code;
  }
  [[nodiscard]] std::error_code Facts(const std::string& path, EntryFacts& facts) override {
    // Looking for the name of a path takes no part in it.
    const bool isTarget = !resolved_.empty() && path == resolved_;
    resolved_.clear();
    return isTarget && Fails(Step::Facts) ? Fault() : TestPlatform::Facts(path, facts);
  }

 private:
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
      return file_->Read(buffer, size, count);
    }

   private:
    FaultPlatform& platform_;
    std::unique_ptr<InputFile> file_;
  };

  class File : public OutputFile {
   public:
    File(FaultPlatform& platform, std::unique_ptr<OutputFile> file)
        : platform_(platform), file_(std::move(file)) {}

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
      const std::error_code code = file_->Write(bytes.substr(0, most), count);
      written_ += count;
      return code;
    }
    [[nodiscard]] std::error_code CutHere() override {
      return platform_.Fails(Step::Cut) ? platform_.Fault() : file_->CutHere();
    }
    [[nodiscard]] std::error_code Length(std::uintmax_t& length) override {
      const std::error_code code = file_->Length(length);
      if (platform_.Fails(Step::Length)) {
        length -= platform_.wrongBy;
      }
      return code;
    }
    [[nodiscard]] std::error_code TakeAttributesOf(const std::string& path) override {
      return platform_.Fails(Step::Attributes) ? platform_.Fault() : file_->TakeAttributesOf(path);
    }
    [[nodiscard]] std::error_code Sync() override {
      if (platform_.Fails(Step::Sync)) {
        return platform_.Fault();
      }
      return platform_.waits ? file_->Sync() : std::error_code();
    }
    [[nodiscard]] std::error_code Close() override {
      const std::error_code code = file_->Close();
      return platform_.Fails(Step::Close) ? platform_.Fault() : code;
    }

   private:
    FaultPlatform& platform_;
    std::unique_ptr<OutputFile> file_;
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
  std::string resolved_;
};

inline std::ostream& operator<<(std::ostream& stream, FaultPlatform::Step step) {
  static constexpr std::array<const char*, 16> kNames = {
      "None",   "Resolve",    "Facts", "Create", "Open",    "Write",      "Nothing",        "Cut",
      "Length", "Attributes", "Sync",  "Close",  "Replace", "SyncFolder", "OpenForReading", "Read"};
  return stream << kNames.at(static_cast<std::size_t>(step));
}

}  // namespace tarvell::test

#endif
