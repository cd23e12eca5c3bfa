// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;

struct Reading {
  std::string_view text;
  double value;
};

class NumericValueOf : public testing::TestWithParam<Reading> {};

TEST_P(NumericValueOf, IsItsLongestLeadingNumber) {
  EXPECT_EQ(NumericValue(GetParam().text), GetParam().value) << '"' << GetParam().text << '"';
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(Digits, NumericValueOf,
                         testing::Values(Reading{"0", 0}, Reading{"12", 12}, Reading{"007", 7},
                                         Reading{"97.26", 97.26}, Reading{".5", 0.5},
                                         Reading{"5.", 5}, Reading{"1.0000123", 1.0000123},
                                         Reading{"32768", 32768},
                                         Reading{"123456789012", 123456789012.0}));

INSTANTIATE_TEST_SUITE_P(Signs, NumericValueOf,
                         testing::Values(Reading{"-5", -5}, Reading{"+5", 5}, Reading{"-.5", -0.5},
                                         Reading{"- 5", -5}, Reading{" \t-\n 5", -5},
                                         Reading{"--5", 0}, Reading{"+-5", 0}, Reading{"1-2", 1},
                                         Reading{"1+2", 1}));

INSTANTIATE_TEST_SUITE_P(Exponents, NumericValueOf,
                         testing::Values(Reading{"5.00E07", 50000000}, Reading{"1e3", 1000},
                                         Reading{"1E+3", 1000}, Reading{"1E-3", 0.001},
                                         Reading{"1D3", 1000}, Reading{"1d-3", 0.001},
                                         Reading{"1 E 3", 1000}, Reading{"1E - 3", 0.001},
                                         Reading{"6.9925E09", 6992500000.0},
                                         Reading{"1.5E2.5", 150}, Reading{".5E1", 5},
                                         Reading{"5.E1", 50}, Reading{"1E2E3", 100},
                                         Reading{"1E0000000000000000000002", 100}));

INSTANTIATE_TEST_SUITE_P(ExponentsWithoutDigits, NumericValueOf,
                         testing::Values(Reading{"7E", 7}, Reading{"7E+", 7}, Reading{"7E-", 7},
                                         Reading{"7Ex", 7}, Reading{"7D", 7}, Reading{"7E--1", 7},
                                         Reading{"7 E -", 7}));

INSTANTIATE_TEST_SUITE_P(IgnoredCharacters, NumericValueOf,
                         testing::Values(Reading{"  12", 12}, Reading{"1 2 3", 123},
                                         Reading{"1\t2", 12}, Reading{"1\n2", 12},
                                         Reading{"\t\n 1 . 5 ", 1.5}, Reading{"1\r2", 1},
                                         Reading{"1\v2", 1}, Reading{"1\f2", 1},
                                         Reading{"1\0002"sv, 1},
                                         Reading{"1\xC2\xA0"
                                                 "2",
                                                 1}));

INSTANTIATE_TEST_SUITE_P(CharactersThatCannotBelong, NumericValueOf,
                         testing::Values(Reading{"1,5", 1}, Reading{"1.5x", 1.5},
                                         Reading{"1.2.3", 1.2}, Reading{"10pF", 10},
                                         Reading{"1.000012pF", 1.000012}, Reading{"0.005 %", 0.005},
                                         Reading{"12%", 12}, Reading{"0x10", 0},
                                         Reading{"1'000", 1}, Reading{"1_000", 1}));

INSTANTIATE_TEST_SUITE_P(NoDigits, NumericValueOf,
                         testing::Values(Reading{"", 0}, Reading{" ", 0}, Reading{"abc", 0},
                                         Reading{".", 0}, Reading{"-", 0}, Reading{"+.", 0},
                                         Reading{"E3", 0}, Reading{".E3", 0}, Reading{"-E5", 0},
                                         Reading{"inf", 0}, Reading{"-infinity", 0},
                                         Reading{"nan", 0}, Reading{"*", 0}, Reading{"Ls/5", 0},
                                         Reading{"\xC2\xB5", 0}));

TEST(NumericValue, OfATextIsTheNearestDouble) {
  EXPECT_EQ(NumericValue("0.1"), 0.1);
  EXPECT_EQ(NumericValue("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(NumericValue("1.7976931348623157E308"), std::numeric_limits<double>::max());
  EXPECT_EQ(NumericValue("2.2250738585072014E-308"), std::numeric_limits<double>::min());
}

TEST(NumericValue, TooLargeForADoubleIsATypeError) {
  for (const std::string& text :
       {std::string("1E309"), std::string("-1E309"), std::string("1D400"), std::string("1.8E308"),
        std::string("1E99999999999999999999"), std::string("1E2147483648"),
        std::string("1E4294967297"), std::string(400, '9'), "-" + std::string(400, '9') + "x",
        "1" + std::string(2000, '0')}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ErrorOf([&] { (void)NumericValue(text); }).Kind(), ErrorKind::Type);
  }
}

TEST(NumericValue, TooSmallForADoubleIsZero) {
  for (const std::string& text :
       {std::string("1E-400"), std::string("-1E-400"), std::string("1E-99999999999999999999"),
        std::string("1E-2147483649"), "0." + std::string(400, '0') + "1"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(NumericValue(text), 0.0);
  }
}

TEST(NumericValue, OfNothingIsNeverNegative) {
  for (const std::string_view text : {"-0", "-0.0", "-1E-400", "-", "- 0E5"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(std::signbit(NumericValue(text)));
    EXPECT_EQ(Normalised(text), "0");
    EXPECT_EQ(FormatText(text, "##0.0"), "0.0");
  }
}

TEST(NumericValue, OnlyTheNumberDecidesWhatIsTooLarge) {
  EXPECT_EQ(NumericValue("0E999"), 0.0);
  EXPECT_EQ(NumericValue("0.000E99999999999999999999"), 0.0);
  EXPECT_EQ(NumericValue("1" + std::string(400, '0') + "E-400"), 1.0);
  EXPECT_EQ(NumericValue("0." + std::string(400, '0') + "1E401"), 1.0);
  EXPECT_EQ(NumericValue(std::string(1000, '0') + "5"), 5.0);
}

TEST(ToInt16, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(ToInt16(0), 0);
  EXPECT_EQ(ToInt16(0.4), 0);
  EXPECT_EQ(ToInt16(0.5), 1);
  EXPECT_EQ(ToInt16(-0.5), -1);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(2.5), 3);
  EXPECT_EQ(ToInt16(-2.5), -3);
  EXPECT_EQ(ToInt16(-2.4), -2);
  EXPECT_EQ(ToInt16(0.49999999999999994), 0);
}

TEST(ToInt16, TakesTheWholeRangeAndNothingBeyond) {
  EXPECT_EQ(ToInt16(32767), 32767);
  EXPECT_EQ(ToInt16(32767.49), 32767);
  EXPECT_EQ(ToInt16(-32768), -32768);
  EXPECT_EQ(ToInt16(-32768.49), -32768);
  for (const double value :
       {32767.5, 32768.0, 65536.0, 65537.0, -32768.5, -32769.0, -65536.0, 2147483648.0, 1E20, -1E20,
        1E300, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(ErrorOf([&] { (void)ToInt16(value); }).Kind(), ErrorKind::Type);
  }
}

TEST(NumericInt16, IsTheNumericValueInSixteenBits) {
  EXPECT_EQ(NumericInt16("2001"), 2001);
  EXPECT_EQ(NumericInt16("07x"), 7);
  EXPECT_EQ(NumericInt16(""), 0);
  EXPECT_EQ(NumericInt16("1.5"), 2);
  EXPECT_EQ(NumericInt16("-1.5"), -2);
  EXPECT_EQ(NumericInt16("3E4"), 30000);
  EXPECT_EQ(ErrorOf([] { (void)NumericInt16("32768"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(ErrorOf([] { (void)NumericInt16("9E90"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(ErrorOf([] { (void)NumericInt16("1E400"); }).Kind(), ErrorKind::Type);
}

TEST(IntegerValue, IsTheNumberOfTheWholeTextRounded) {
  EXPECT_EQ(IntegerValue("2001", "year"), 2001);
  EXPECT_EQ(IntegerValue("  31 ", "day"), 31);
  EXPECT_EQ(IntegerValue("-4", "day"), -4);
  EXPECT_EQ(IntegerValue("+4", "day"), 4);
  EXPECT_EQ(IntegerValue("0", "day"), 0);
  EXPECT_EQ(IntegerValue("12.5", "day"), 13);
  EXPECT_EQ(IntegerValue("12.4", "day"), 12);
  EXPECT_EQ(IntegerValue("2.5", "day"), 3);
  EXPECT_EQ(IntegerValue("-0.5", "day"), -1);
  EXPECT_EQ(IntegerValue("1E3", "day"), 1000);
  EXPECT_EQ(IntegerValue("32767.4", "year"), 32767);
  EXPECT_EQ(IntegerValue("-32768", "year"), -32768);
}

TEST(IntegerValue, AnythingElseIsATypeErrorThatNamesTheField) {
  for (const std::string_view text :
       {"",   " ",   "abc", "12x",  "x12", "1,5",   "1 2",     "1-2",    "--1", ".",     "-",
        "1E", "inf", "nan", "0x10", "12%", "32768", "32767.5", "-32769", "1E5", "1E400", "65537"}) {
    SCOPED_TRACE(text);
    const Error error = ErrorOf([&] { (void)IntegerValue(text, "Calibration year"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Type);
    EXPECT_TRUE(Contains(error.Text(), "Calibration year")) << error.Text();
  }
}

TEST(WholeNumber, IsTheValueOfATextThatIsANumberAsAWhole) {
  EXPECT_EQ(WholeNumber("97.26"), 97.26);
  EXPECT_EQ(WholeNumber(" -5 "), -5.0);
  EXPECT_EQ(WholeNumber("5.00E07"), 50000000.0);
  EXPECT_EQ(WholeNumber(".5"), 0.5);
  EXPECT_EQ(WholeNumber("0"), 0.0);
  EXPECT_EQ(WholeNumber("9E999"), std::numeric_limits<double>::infinity());
}

TEST(WholeNumber, IsNothingForAnyOtherText) {
  for (const std::string_view text : {"", " ", "abc", "12x", "1,5", "1 2", "1-2", ".", "-", "1E"}) {
    EXPECT_EQ(WholeNumber(text), std::nullopt) << text;
  }
}

struct Shown {
  double value;
  std::string_view text;
};

class ShortestTextOf : public testing::TestWithParam<Shown> {};

TEST_P(ShortestTextOf, HasEveryDigitThatCountsAndNoOther) {
  EXPECT_EQ(ShortestText(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    PlainDecimals, ShortestTextOf,
    testing::Values(Shown{0, "0"}, Shown{1, "1"}, Shown{100, "100"}, Shown{-100, "-100"},
                    Shown{98.8, "98.8"}, Shown{0.5, "0.5"}, Shown{-0.5, "-0.5"},
                    Shown{0.0001, "0.0001"}, Shown{0.00001, "0.00001"}, Shown{50000000, "50000000"},
                    Shown{6992500000.0, "6992500000"}, Shown{1.000012, "1.000012"},
                    Shown{0.001 * 3, "0.003"}, Shown{0.1 + 0.2, "0.3"}, Shown{1.1 * 1.1, "1.21"},
                    Shown{123456.789, "123456.789"}));

INSTANTIATE_TEST_SUITE_P(FifteenSignificantDigits, ShortestTextOf,
                         testing::Values(Shown{1.0 / 3, "0.333333333333333"},
                                         Shown{2.0 / 3, "0.666666666666667"},
                                         Shown{-2.0 / 3, "-0.666666666666667"},
                                         Shown{1234567890.123456, "1234567890.12346"},
                                         Shown{100.0 / 3, "33.3333333333333"},
                                         Shown{0.1234567890123456, "0.123456789012346"},
                                         Shown{99999999999999.95, "100000000000000"}));

INSTANTIATE_TEST_SUITE_P(
    BordersOfPlainDecimals, ShortestTextOf,
    testing::Values(Shown{999999999999999.0, "999999999999999"},
                    Shown{-999999999999999.0, "-999999999999999"},
                    Shown{100000000000000.0, "100000000000000"}, Shown{1E15, "1E+15"},
                    Shown{-1E15, "-1E+15"}, Shown{999999999999999.5, "1E+15"},
                    Shown{1E-15, "0.000000000000001"}, Shown{-1E-15, "-0.000000000000001"},
                    Shown{1.2E-14, "0.000000000000012"}, Shown{1.5E-15, "1.5E-15"},
                    Shown{1E-16, "1E-16"}, Shown{1.25E-14, "1.25E-14"}));

INSTANTIATE_TEST_SUITE_P(
    Exponents, ShortestTextOf,
    testing::Values(Shown{1.5E20, "1.5E+20"}, Shown{-1.5E20, "-1.5E+20"}, Shown{1E22, "1E+22"},
                    Shown{123456789012345678.0, "1.23456789012346E+17"}, Shown{1E300, "1E+300"},
                    Shown{1.7976931348623157E308, "1.79769313486232E+308"},
                    Shown{2.5E-200, "2.5E-200"}, Shown{-9.99E-100, "-9.99E-100"},
                    Shown{5E-324, "4.94065645841247E-324"},
                    Shown{1.23456789012345E-10, "1.23456789012345E-10"}));

TEST(ShortestText, OfAnInfiniteValueIsATypeError) {
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ErrorOf([&] { (void)ShortestText(infinite); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(ErrorOf([&] { (void)ShortestText(-infinite); }).Kind(), ErrorKind::Type);
}

TEST(Normalised, IsTheNumberInItsShortestText) {
  const std::vector<std::pair<std::string_view, std::string_view>> cases = {
      {"100.0", "100"},
      {"98.80", "98.8"},
      {"abc", "0"},
      {"", "0"},
      {"5.00E07", "50000000"},
      {".5", "0.5"},
      {"-.50", "-0.5"},
      {"+7", "7"},
      {" 1 0 ", "10"},
      {"00012", "12"},
      {"10.0000x", "10"},
      {"1D-16", "1E-16"},
      {"1.5e20", "1.5E+20"},
      {"0.000000", "0"},
      {"1.000012pF", "1.000012"},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Normalised(text), expected);
  }
  EXPECT_EQ(ErrorOf([] { (void)Normalised("1E400"); }).Kind(), ErrorKind::Type);
}

// A locale of another country: "," before the decimals and "." between the thousands.
class CommaPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

class UnderAForeignLocale : public testing::Test {
 public:
  UnderAForeignLocale() {
    // The C locale follows where the system has one; the other needs none.
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) {
        break;
      }
    }
    before_ = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
  }
  UnderAForeignLocale(const UnderAForeignLocale&) = delete;
  UnderAForeignLocale& operator=(const UnderAForeignLocale&) = delete;
  ~UnderAForeignLocale() override {
    std::locale::global(before_);
    EXPECT_NE(std::setlocale(LC_ALL, "C"), nullptr);
  }

 private:
  std::locale before_;
};

TEST_F(UnderAForeignLocale, NumbersAreReadWithAPoint) {
  EXPECT_EQ(NumericValue("1.5"), 1.5);
  EXPECT_EQ(NumericValue("1,5"), 1.0);
  EXPECT_EQ(NumericValue("1.234.567"), 1.234);
  EXPECT_EQ(NumericValue("2.5E-3"), 0.0025);
  EXPECT_EQ(IntegerValue("12.5", "day"), 13);
  EXPECT_EQ(ErrorOf([] { (void)IntegerValue("12,5", "day"); }).Kind(), ErrorKind::Type);
}

TEST_F(UnderAForeignLocale, NumbersAreWrittenWithAPointAndNoSeparator) {
  EXPECT_EQ(ShortestText(1234567.5), "1234567.5");
  EXPECT_EQ(ShortestText(1.5E20), "1.5E+20");
  EXPECT_EQ(Normalised("98.80"), "98.8");
  EXPECT_EQ(NumberPattern("0.0000").Format(12345.6), "12345.6000");
  EXPECT_EQ(NumberPattern("0.00E-00").Format(6992500000.0), "6.99E09");
  EXPECT_EQ(NumberPattern("#0").Format(1234567), "1234567");
}

}  // namespace
}  // namespace tarvell
