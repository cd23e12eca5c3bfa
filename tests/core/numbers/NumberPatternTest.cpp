// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <charconv>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/numbers/NumberPattern.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

/// A pattern, and what it makes of some values: "value=text value=text".
struct PatternCases {
  const char* pattern;
  const char* cases;
};

// One pattern of each kind; the program's others differ from these only in the number of their
// digits. The texts were worked out by hand. The values include halves of the last digit on both
// sides of zero, carries, values that round to zero, and very large and very small ones.
constexpr PatternCases kPatterns[] = {
    {"#0",
     "0=0 0.4=0 0.5=1 -0.5=-1 -0.4=-0 1.5=2 2.5=3 -2.5=-3 9.5=10 9.49=9 999.5=1000 12=12 "
     "1E15=1000000000000000 123456789012345678=123456789012346000 1E-300=0 -1E-300=-0 "
     "0.4999999999999999=1 0.499999999999999=0"},
    {"##0.0",
     "0=0.0 5=5.0 97.26=97.3 99.96=100.0 99.95=100.0 99.949=99.9 98.25=98.3 -98.25=-98.3 "
     "-7=-7.0 -0.04=-0.0 0.5=0.5 12345.6=12345.6 1E-20=0.0 0.45=0.5"},
    {"0.00",
     "0=0.00 1.005=1.01 -1.005=-1.01 2.675=2.68 0.125=0.13 -0.125=-0.13 9.995=10.00 "
     "9.9949=9.99 -0.004=-0.00 0.005=0.01 1E15=1000000000000000.00 1E-200=0.00 "
     "0.30000000000000004=0.30"},
    {"0.0000",
     "0=0.0000 10.01234=10.0123 10.01235=10.0124 0.0012=0.0012 0.5=0.5000 0.03125=0.0313 "
     "-0.03125=-0.0313 9.99995=10.0000 0.00005=0.0001 -0.00005=-0.0001 -0.00004=-0.0000 "
     "1E12=1000000000000.0000 1E-100=0.0000"},
    {"0.000000",
     "0=0.000000 1.0000123=1.000012 1.0000125=1.000013 0.0078125=0.007813 "
     "-0.0078125=-0.007813 0.9999995=1.000000 9.9999995=10.000000 0.0000005=0.000001 "
     "-0.0000005=-0.000001 -0.0000004=-0.000000 1E9=1000000000.000000 1E-8=0.000000 "
     "12345678.12345678=12345678.123457"},
    {"#0.0000#",
     "0=0.0000 1.5=1.5000 1.23456=1.23456 1.2345=1.2345 1.234505=1.23451 "
     "-1.234505=-1.23451 1.234496=1.2345 9.999995=10.0000 0.00004=0.00004 0.000004=0.0000 "
     "-0.000004=-0.0000 123456.7=123456.7000"},
    {"0.00000#",
     "0=0.00000 0.123456=0.123456 0.12345=0.12345 0.1=0.10000 0.1234505=0.123451 "
     "-0.1234505=-0.123451 0.9999995=1.00000 0.0000005=0.000001 -0.0000004=-0.00000 "
     "1234=1234.00000"},
    {"0.0#",
     "0=0.0 1.25=1.25 1.2=1.2 1.204=1.2 0.05=0.05 0.055=0.06 -0.055=-0.06 0.995=1.0 "
     "9.995=10.0 -0.004=-0.0 100=100.0 1E-7=0.0"},
    {"0.##",
     "0=0 5=5 10=10 100=100 5.5=5.5 5.25=5.25 5.05=5.05 5.255=5.26 -5.255=-5.26 9.995=10 "
     "0.004=0 -0.004=-0 0.005=0.01 0.295=0.3 1E10=10000000000 1E-10=0"},
    {"#0.#",
     "0=0 2.5=2.5 30=30 2.05=2.1 -2.05=-2.1 9.95=10 0.05=0.1 -0.04=-0 1000.01=1000 1E-10=0"},
    {"0.00E-00",
     "0=0.00E00 1=1.00E00 50000000=5.00E07 -50000000=-5.00E07 6992500000=6.99E09 "
     "0.5=5.00E-01 123456=1.23E05 1225000=1.23E06 1.005=1.01E00 -1.005=-1.01E00 "
     "1.005E-5=1.01E-05 9.994=9.99E00 9.995=1.00E01 99950=1.00E05 0.9995=1.00E00 "
     "0.09995=1.00E-01 -9.995E-10=-1.00E-09 9.995E99=1.00E100 1E100=1.00E100 "
     "1E-100=1.00E-100 1E300=1.00E300 5E-324=4.94E-324"},
    {"0.00##E-00",
     "0=0.00E00 1=1.00E00 100000=1.00E05 50000000=5.00E07 6992500000=6.9925E09 "
     "6992000000=6.992E09 6990000000=6.99E09 6900000000=6.90E09 6000500000=6.0005E09 "
     "123456=1.2346E05 123445=1.2345E05 -123445=-1.2345E05 9.9999=9.9999E00 "
     "9.99995=1.00E01 -0.5=-5.00E-01 0.00012345=1.2345E-04 1E-300=1.00E-300"},
};

TEST(NumberPattern, FormatsValues) {
  for (const PatternCases& pattern : kPatterns) {
    std::istringstream cases(pattern.cases);
    std::string word;
    while (cases >> word) {
      SCOPED_TRACE(std::string(pattern.pattern) + " of " + word);
      const std::size_t equals = word.find('=');
      double value = 0;
      const auto result = std::from_chars(word.data(), word.data() + equals, value);
      ASSERT_EQ(result.ptr, word.data() + equals);
      EXPECT_EQ(NumberPattern(std::string_view(pattern.pattern)).Format(value),
                word.substr(equals + 1));
    }
  }
}

TEST(NumberPattern, KeepsBlanksAtItsEnd) {
  const NumberPattern pattern = "### ";
  EXPECT_EQ(pattern.Format(10), "10 ");
  EXPECT_EQ(pattern.Format(0), " ");
  EXPECT_EQ(pattern.Format(-0.4), "- ");
  EXPECT_EQ(pattern.Format(999.5), "1000 ");
}

TEST(NumberPattern, OfAnInfiniteValueIsATypeError) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double value : {infinite, -infinite}) {
    EXPECT_EQ(ErrorOf([&] { (void)NumberPattern("##0.0").Format(value); }).Kind(), ErrorKind::Type);
  }
}

TEST(NumberPattern, RejectsAMalformedPattern) {
  for (const std::string_view pattern :
       {"x",        "0.0x",    "x0.0",   "0#",       "#0#",       "0#.0",       "0.#0",
        "0.0#0",    "0,0",     "0.0.0",  " 0",       "0 0",       "-0",         "+0",
        "@@@",      "0%",      "0.00E-", "0.00E",    "0.00E00",   "0.00E+00",   "0.00e-00",
        "00.0E-00", "#.0E-00", ".0E-00", "0.00E-0#", "0.00E-00x", "0.00E-00 x", "E-00"}) {
    SCOPED_TRACE(pattern);
    EXPECT_THROW((void)NumberPattern(pattern), std::invalid_argument);
  }
}

TEST(FormatText, FormatsTheNumberAtTheStartOfAText) {
  EXPECT_EQ(FormatText("10.01234", "0.0000"), "10.0123");
  EXPECT_EQ(FormatText("abc", "##0.0"), "0.0");
  EXPECT_EQ(FormatText("98.76 %", "##0.0"), "98.8");
  EXPECT_EQ(ErrorOf([] { (void)FormatText("1E400", "##0.0"); }).Kind(), ErrorKind::Type);
}

}  // namespace
}  // namespace tarvell
