// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "core/numbers/WrittenNumber.h"

namespace tarvell {
namespace {

struct Case {
  std::string_view written;
  std::string_view withPoint;  ///< "" where it is not a number
  std::string_view withComma;
};

TEST(WrittenNumber, IsReadWithTheGivenDecimalSign) {
  const std::vector<Case> cases = {// No sign, or one that can be meant in one way only.
                                   {"12", "12", "12"},
                                   {"0012", "0012", "0012"},
                                   {"98.7", "98.7", ""},
                                   {"98,7", "", "98.7"},
                                   {".5", "0.5", ""},
                                   {"-,5", "", "-0.5"},
                                   {"+1.25", "1.25", ""},
                                   {"\u22121", "-1", "-1"},
                                   // Thousands.
                                   {"12.400", "12.400", "12400"},
                                   {"12,400", "12400", "12.400"},
                                   {"1.234.567,8", "", "1234567.8"},
                                   {"1,234,567.8", "1234567.8", ""},
                                   {"1,234,567", "1234567", ""},
                                   {"0.050", "0.050", ""},
                                   {"1234.567", "1234.567", ""},
                                   {"1 234", "1234", "1234"},
                                   {"1\u00A0234,5", "", "1234.5"},
                                   {"1\u202F234\u202F567.8", "1234567.8", ""},
                                   {"1\u2009234", "1234", "1234"},
                                   {"1\u2007234", "1234", "1234"},
                                   {"1'234.5", "1234.5", ""},
                                   {"1\u2019234,5", "", "1234.5"},
                                   // Exponents, which go only with ungrouped numbers.
                                   {"5.00E+07", "5.00E+07", ""},
                                   {"1.234E+07", "1.234E+07", ""},
                                   {"1,234e-7", "", "1.234E-7"},
                                   {"1 234E5", "", ""},
                                   // Blanks of every kind around it.
                                   {"\uFEFF\u00A0 98.7\t\r\n", "98.7", ""},
                                   // No numbers.
                                   {"", "", ""},
                                   {"-", "", ""},
                                   {"1.", "", ""},
                                   {"1E", "", ""},
                                   {"E5", "", ""},
                                   {"12 34", "", ""},
                                   {"1 2345", "", ""},
                                   {"1234 567", "", ""},
                                   {"1'234 567", "", ""},
                                   {"1.234'567", "", ""},
                                   {" 234,5 6", "", ""},
                                   {",234", "", "0.234"},
                                   {"0 234", "", ""},
                                   {"98.7%", "", ""},
                                   {"1-2", "", ""},
                                   {"- 1", "", ""}};
  for (const Case& one : cases) {
    EXPECT_EQ(PlainNumber(one.written, DecimalSign::Point).value_or(""), one.withPoint)
        << one.written;
    EXPECT_EQ(PlainNumber(one.written, DecimalSign::Comma).value_or(""), one.withComma)
        << one.written;
  }
}

}  // namespace
}  // namespace tarvell
