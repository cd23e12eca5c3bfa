// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_BINPLATFORM_H
#define TARVELL_TESTS_SUPPORT_BINPLATFORM_H

#include <string>
#include <system_error>
#include <vector>

#include "core/platform/LinuxPlatform.h"
#include "support/TestTree.h"

namespace tarvell::test {

/// A system whose recycle bin remembers the copies that were put into it; the current platform
/// until the TestTree that was made before it ends.
class BinPlatform : public LinuxPlatform {
 public:
  BinPlatform() { SetCurrentPlatform(this); }
  BinPlatform(const BinPlatform&) = delete;
  BinPlatform& operator=(const BinPlatform&) = delete;
  ~BinPlatform() override { SetCurrentPlatform(nullptr); }

  [[nodiscard]] std::error_code RecycleCopy(const std::string& path) override {
    if (!failure) {
      kept.push_back(ReadNative(path));
    }
    return failure;
  }

  std::vector<std::string> kept;  ///< contents of the copies
  std::error_code failure;        ///< of a bin that takes nothing
};

}  // namespace tarvell::test

#endif
