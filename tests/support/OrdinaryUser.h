// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_ORDINARYUSER_H
#define TARVELL_TESTS_SUPPORT_ORDINARYUSER_H

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/types.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tarvell::test {

/// While it lives, a test that root has started runs as a user to whom permissions apply. That user
/// owns `tree` and its contents.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(const std::filesystem::path& tree) : wasRoot_(::geteuid() == 0) {
    if (!wasRoot_) {
      return;
    }
    Give(tree);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(tree)) {
      Give(entry.path());
    }
    EXPECT_EQ(::setegid(kNobody), 0) << "this test cannot give up its group";
    EXPECT_EQ(::seteuid(kNobody), 0) << "this test cannot give up its rights";
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (wasRoot_) {
      EXPECT_EQ(::seteuid(0), 0);
      EXPECT_EQ(::setegid(0), 0);
    }
  }

 private:
  static constexpr uid_t kNobody = 65534;

  static void Give(const std::filesystem::path& path) {
    EXPECT_EQ(::lchown(path.c_str(), kNobody, kNobody), 0) << path;
  }

  bool wasRoot_;
};

/// Makes a folder read-only while it lives.
class LockedFolder {
 public:
  explicit LockedFolder(std::filesystem::path folder) : folder_(std::move(folder)) {
    std::filesystem::permissions(folder_, std::filesystem::perms(0555));
  }
  LockedFolder(const LockedFolder&) = delete;
  LockedFolder& operator=(const LockedFolder&) = delete;
  ~LockedFolder() {
    std::error_code code;
    std::filesystem::permissions(folder_, std::filesystem::perms(0755), code);
    EXPECT_FALSE(code) << folder_;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace tarvell::test

#endif
