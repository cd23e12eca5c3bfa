// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "core/dates/FileDate.h"
#include "core/platform/Error.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

TEST(FileDate, IsParsedByPosition) {
  struct Case {
    std::string_view text;
    int year;
    int month;
    int day;
  };
  for (const Case& expected : std::vector<Case>{{"20010305", 2001, 3, 5},
                                                {"19041231", 1904, 12, 31},
                                                {"20370000", 2037, 0, 0},
                                                {"2001", 2001, 0, 1},
                                                {"200103", 2001, 3, 3},
                                                {"200103051", 2001, 3, 51},
                                                {"", 0, 0, 0},
                                                {"7", 7, 0, 7},
                                                {"12", 12, 0, 12},
                                                {"abcdefgh", 0, 0, 0},
                                                {"2001AB05", 2001, 0, 5},
                                                {"C-0042", 0, 42, 42},
                                                {"20019905", 2001, 99, 5}}) {
    SCOPED_TRACE(expected.text);
    const FileDate date = FileDate::From(expected.text);
    EXPECT_EQ(date.year, expected.year);
    EXPECT_EQ(date.month, expected.month);
    EXPECT_EQ(date.day, expected.day);
  }
}

TEST(FileDate, ANumberBeyondSixteenBitsIsATypeError) {
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("9E900305"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(FileDate::From("3E4 0305").year, 30000);
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("4E4 0305"); }).Kind(), ErrorKind::Type);
}

}  // namespace
}  // namespace tarvell
