// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "core/platform/Error.h"

namespace tarvell {
namespace {

TEST(Error, ShowsTheWholeTextDespiteANulInIt) {
  const Error error(ErrorKind::Type,
                    std::string("The number \"1E999\0\" is too large. Correct it.", 45), "c:\\a",
                    3);
  EXPECT_EQ(error.Text(), "The number \"1E999 \" is too large. Correct it.");
  EXPECT_NE(std::string(error.what()).find("Correct it."), std::string::npos) << error.what();
}

}  // namespace
}  // namespace tarvell
