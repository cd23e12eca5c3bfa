// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string_view>
#include <utility>
#include <vector>

#include "core/dates/FileDate.h"
#include "core/platform/Error.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

TEST(FileDate, IsParsedByPosition) {
  using Numbers = std::vector<int>;
  for (const auto& [text, numbers] :
       std::vector<std::pair<std::string_view, Numbers>>{{"20010305", {2001, 3, 5}},
                                                         {"20370000", {2037, 0, 0}},
                                                         {"2001", {2001, 0, 1}},
                                                         {"200103", {2001, 3, 3}},
                                                         {"200103051", {2001, 3, 51}},
                                                         {"", {0, 0, 0}},
                                                         {"12", {12, 0, 12}},
                                                         {"2001AB05", {2001, 0, 5}},
                                                         {"C-0042", {0, 42, 42}},
                                                         {"20019905", {2001, 99, 5}}}) {
    const FileDate date = FileDate::From(text);
    EXPECT_EQ((Numbers{date.year, date.month, date.day}), numbers) << text;
  }
}

TEST(FileDate, ANumberBeyondSixteenBitsIsATypeError) {
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("9E900305"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(FileDate::From("3E4 0305").year, 30000);
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("4E4 0305"); }).Kind(), ErrorKind::Type);
}

}  // namespace
}  // namespace tarvell
