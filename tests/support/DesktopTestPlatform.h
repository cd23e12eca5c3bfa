// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_DESKTOPTESTPLATFORM_H
#define TARVELL_TESTS_SUPPORT_DESKTOPTESTPLATFORM_H

#include <ctime>
#include <filesystem>
#include <string>

#include "screens/widgets/DesktopPlatform.h"
#include "support/TestTree.h"

namespace tarvell::test {

/// The desktop's platform with a program folder of the test, and the user's folder beside it. Is
/// the current platform until the TestTree that was made before it ends.
class DesktopTestPlatform : public DesktopPlatform {
 public:
  explicit DesktopTestPlatform(const std::filesystem::path& programFolder)
      : programFolder_(programFolder) {
    SetCurrentPlatform(this);
  }
  DesktopTestPlatform(const DesktopTestPlatform&) = delete;
  DesktopTestPlatform& operator=(const DesktopTestPlatform&) = delete;
  ~DesktopTestPlatform() override { SetCurrentPlatform(nullptr); }

  [[nodiscard]] std::filesystem::path ProgramFolder() override { return programFolder_; }
  [[nodiscard]] std::filesystem::path UserFolder() override {
    return programFolder_.parent_path() / "user";
  }
  [[nodiscard]] std::string WindowsDirectory() override { return "c:\\windows"; }
  [[nodiscard]] std::string OwnWindowsDirectory() override { return {}; }
  [[nodiscard]] std::string UserName() override { return kUser; }
  [[nodiscard]] std::string HostName() override { return kHost; }
  [[nodiscard]] std::time_t Now() override { return kNow; }

 private:
  std::filesystem::path programFolder_;
};

}  // namespace tarvell::test

#endif
