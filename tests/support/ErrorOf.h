// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_ERROROF_H
#define TARVELL_TESTS_SUPPORT_ERROROF_H

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/platform/Error.h"

namespace tarvell::test {

/// The error that `action` throws; a failure of the test when it throws none.
template <typename Action>
[[nodiscard]] Error ErrorOf(const Action& action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  ADD_FAILURE() << "no error was thrown";
  return {ErrorKind::System, "no error"};
}

[[nodiscard]] inline bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace tarvell::test

#endif
