// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_ANOTHERPROCESS_H
#define TARVELL_TESTS_SUPPORT_ANOTHERPROCESS_H

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace tarvell::test {

/// Runs `act` in a forked process, and waits for its end. An exception from it fails the test.
template <typename Act>
void InAnotherProcess(const Act& act) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      act();
      ::_exit(0);
    } catch (...) {
      ::_exit(1);
    }
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  ASSERT_EQ(WEXITSTATUS(status), 0) << "the other process met an error";
}

}  // namespace tarvell::test

#endif
