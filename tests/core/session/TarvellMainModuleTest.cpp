// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string_view>

#include "core/session/Tarvell_MainModule.h"

namespace tarvell {
namespace {

TEST(RevisionText, HasTwoDigitsForEachNumber) {
  EXPECT_EQ(RevisionText(2, 61), "A.02.61");
  EXPECT_EQ(RevisionText(2, 5), "A.02.05");
  EXPECT_EQ(RevisionText(0, 0), "A.00.00");
  EXPECT_EQ(RevisionText(12, 3), "A.12.03");
  EXPECT_EQ(RevisionText(100, 250), "A.100.250");
}

TEST(FindCalFile, GivesTheRowOfTheFirstOfExactlyThatSerialNumber) {
  gCalFiles.fill({});
  gCalFiles[3].SerialNumber = "12345";
  gCalFiles[7].SerialNumber = "12345";
  gCalFiles[50].SerialNumber = "A1";
  EXPECT_EQ(FindCalFile("12345"), 3);
  EXPECT_EQ(FindCalFile("A1"), 50);
  for (const std::string_view none : {"a1", "A1 ", " A1", "1234", "A"}) {
    SCOPED_TRACE(none);
    EXPECT_EQ(FindCalFile(none), 51);
  }
  gCalFiles.fill({});
}

}  // namespace
}  // namespace tarvell
