// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_COUNTINGPLATFORM_H
#define TARVELL_TESTS_SUPPORT_COUNTINGPLATFORM_H

#include <filesystem>
#include <memory>
#include <system_error>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell::test {

/// Counts the files that are opened while it exists.
class CountingPlatform final : public ForwardingPlatform {
 public:
  CountingPlatform() : ForwardingPlatform(CurrentPlatform()), before_(SetCurrentPlatform(this)) {}
  CountingPlatform(const CountingPlatform&) = delete;
  CountingPlatform& operator=(const CountingPlatform&) = delete;
  ~CountingPlatform() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path,
                                               std::unique_ptr<InputFile>& file) override {
    ++opened;
    return ForwardingPlatform::OpenForReading(path, file);
  }
  [[nodiscard]] std::error_code OpenFound(const FoundEntry& entry,
                                          std::unique_ptr<InputFile>& file) override {
    ++opened;
    return ForwardingPlatform::OpenFound(entry, file);
  }

  int opened = 0;

 private:
  Platform* before_;
};

}  // namespace tarvell::test

#endif
