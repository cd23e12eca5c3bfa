// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "screens/widgets/Guard.h"
#include "support/ScriptedQuestions.h"

namespace tarvell {
namespace {

TEST(Guard, ShowsEveryStandardExceptionAndSaysThatTheActionDidNotEnd) {
  test::ScriptedQuestions questions;
  questions.ExpectError({"row 5", "no such row"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw Error(ErrorKind::Index, "no such row", "row 5"); }));
  questions.ExpectError({"not enough memory"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw std::bad_alloc(); }));
  questions.ExpectError({"stray position", "What you typed is still here"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw std::out_of_range("stray position"); }));
  EXPECT_TRUE(Guarded(nullptr, [] {}));
  std::string shown;
  EXPECT_FALSE(Guarded(
      nullptr, [] { throw std::out_of_range("stray position"); },
      [&](const Error& error) { shown = error.Text(); }));
  EXPECT_NE(shown.find("stray position"), std::string::npos);
}

}  // namespace
}  // namespace tarvell
