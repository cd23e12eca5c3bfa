// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_FULLDISK_H
#define TARVELL_TESTS_SUPPORT_FULLDISK_H

#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell::test {

/// The system with a disk that takes nothing more while `isFull`; the current platform while it
/// lives.
class FullDisk : public ForwardingPlatform {
 public:
  FullDisk() : before_(SetCurrentPlatform(this)) {}
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    const std::error_code code = ForwardingPlatform::CreateTemporary(folder, path, file);
    Wrap(file);
    return code;
  }
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override {
    const std::error_code code = ForwardingPlatform::OpenInPlace(path, file);
    Wrap(file);
    return code;
  }

  bool isFull = true;
  int refused = 0;  ///< how often the disk was found full

 private:
  class File : public ForwardingOutputFile {
   public:
    File(FullDisk& disk, std::unique_ptr<OutputFile> file)
        : ForwardingOutputFile(std::move(file)), disk_(disk) {}

    [[nodiscard]] std::error_code Write(std::string_view bytes, std::size_t& count) override {
      if (disk_.isFull) {
        ++disk_.refused;
        count = 0;
        return std::make_error_code(std::errc::no_space_on_device);
      }
      return ForwardingOutputFile::Write(bytes, count);
    }

   private:
    FullDisk& disk_;
  };

  void Wrap(std::unique_ptr<OutputFile>& file) {
    if (file) {
      file = std::make_unique<File>(*this, std::move(file));
    }
  }

  Platform* before_;
};

}  // namespace tarvell::test

#endif
