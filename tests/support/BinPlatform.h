// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_BINPLATFORM_H
#define TARVELL_TESTS_SUPPORT_BINPLATFORM_H

#include <string>
#include <system_error>
#include <vector>

#include "core/platform/ForwardingPlatform.h"
#include "support/TestTree.h"

namespace tarvell::test {

/// The system with a recycle bin that remembers the contents of its copies. Is the current platform
/// until the TestTree that was made before it ends.
class BinPlatform : public ForwardingPlatform {
 public:
  BinPlatform() { SetCurrentPlatform(this); }
  BinPlatform(const BinPlatform&) = delete;
  BinPlatform& operator=(const BinPlatform&) = delete;
  ~BinPlatform() override { SetCurrentPlatform(nullptr); }

  [[nodiscard]] std::error_code RecycleCopy(const std::filesystem::path& path) override {
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
