// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_FILESIZELIMIT_H
#define TARVELL_TESTS_SUPPORT_FILESIZELIMIT_H

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace tarvell::test {

/// Limits the size of the files that this process writes, while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
    signalBefore_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before_), 0);
    EXPECT_NE(std::signal(SIGXFSZ, signalBefore_), SIG_ERR);
  }

 private:
  rlimit before_{};
  void (*signalBefore_)(int) = nullptr;
};

}  // namespace tarvell::test

#endif
