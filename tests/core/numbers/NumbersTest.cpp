// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/numbers/DecimalText.h"
#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using namespace std::string_view_literals;

using test::Contains;
using test::ErrorOf;

using Values = std::vector<std::pair<std::string_view, double>>;

void ExpectValues(const Values& values) {
  for (const auto& [text, value] : values) {
    EXPECT_EQ(NumericValue(text), value) << '"' << text << '"';
  }
}

TEST(NumericValue, ReadsDigitsSignsAndExponents) {
  ExpectValues({{"0", 0},          {"007", 7},
                {"97.26", 97.26},  {".5", 0.5},
                {"5.", 5},         {"-5", -5},
                {"+5", 5},         {"-.5", -0.5},
                {"- 5", -5},       {" \t-\n 5", -5},
                {"--5", 0},        {"+-5", 0},
                {"1-2", 1},        {"1+2", 1},
                {"5.00E07", 5E7},  {"1e3", 1000},
                {"1E+3", 1000},    {"1E-3", 0.001},
                {"1D3", 1000},     {"1d-3", 0.001},
                {"1 E 3", 1000},   {"\t\n 1 2\n. 5\t", 12.5},
                {"1E - 3", 0.001}, {"1.5E2.5", 150},
                {".5E1", 5},       {"5.E1", 50},
                {"1E2E3", 100}});
}

TEST(NumericValue, EndsAtTheFirstCharacterThatCannotBelongToTheNumber) {
  ExpectValues({{"7E", 7},    {"7E+", 7},         {"7E-", 7},  {"7Ex", 7},      {"7D", 7},
                {"7E--1", 7}, {"7 E -", 7},       {"1,5", 1},  {"1.5x", 1.5},   {"1.2.3", 1.2},
                {"10pF", 10}, {"0.005 %", 0.005}, {"0x10", 0}, {"1'000", 1},    {"1_000", 1},
                {"1\r2", 1},  {"1\v2", 1},        {"1\f2", 1}, {"1\0002"sv, 1}, {"1\u00A02", 1}});
}

TEST(NumericValue, IsZeroWithoutADigit) {
  for (const char* text : {"", " ", "abc", ".", "-", "+.", "E3", ".E3", "-E5", "inf", "-infinity",
                           "nan", "*", "Ls/5", "\u00B5"}) {
    EXPECT_EQ(NumericValue(text), 0) << text;
    EXPECT_FALSE(BeginsWithNumber(text)) << text;
  }
  EXPECT_TRUE(BeginsWithNumber("0x"));
}

TEST(NumericValue, IsTheNearestDouble) {
  EXPECT_EQ(NumericValue("0.1"), 0.1);
  EXPECT_EQ(NumericValue("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(NumericValue("1.7976931348623157E308"), std::numeric_limits<double>::max());
  EXPECT_EQ(NumericValue("2.2250738585072014E-308"), std::numeric_limits<double>::min());
}

TEST(NumericValue, OfANumberTooLargeForADoubleIsATypeError) {
  for (const std::string& text :
       {std::string("-1E309"), std::string("1D400"), std::string("1.8E308"),
        std::string("1E99999999999999999999"), std::string("1E2147483648"),
        std::string("1E4294967297"), "-" + std::string(400, '9') + "x"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ErrorOf([&] { (void)NumericValue(text); }).Kind(), ErrorKind::Type);
  }
}

TEST(NumericValue, OfANumberTooSmallForADoubleIsZero) {
  for (const std::string& text :
       {std::string("-1E-400"), std::string("1E-99999999999999999999"),
        std::string("1E-2147483649"), "0." + std::string(400, '0') + "1"}) {
    EXPECT_EQ(NumericValue(text), 0.0) << text;
  }
}

TEST(NumericValue, OfZeroIsNeverNegative) {
  for (const std::string_view text : {"-0", "-0.0", "-1E-400", "-", "- 0E5"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(std::signbit(NumericValue(text)));
    EXPECT_EQ(Normalised(text), "0");
    EXPECT_EQ(FormatText(text, "##0.0"), "0.0");
  }
}

TEST(NumericValue, OfAHugeExponentMayStillFit) {
  EXPECT_EQ(NumericValue("1E0000000000000000000002"), 100.0);
  EXPECT_EQ(NumericValue("0.000E99999999999999999999"), 0.0);
  EXPECT_EQ(NumericValue("1" + std::string(400, '0') + "E-400"), 1.0);
  EXPECT_EQ(NumericValue("0." + std::string(400, '0') + "1E401"), 1.0);
  EXPECT_EQ(NumericValue(std::string(1000, '0') + "5"), 5.0);
}

TEST(ToInt16, RoundsHalvesAwayFromZeroToSixteenBits) {
  const std::vector<std::pair<double, int>> rounded = {
      {0.49999999999999994, 0}, {0.5, 1},           {-0.5, -1}, {2.5, 3}, {-2.5, -3}, {-2.4, -2},
      {32767.49, 32767},        {-32768.49, -32768}};
  for (const auto& [value, integer] : rounded) {
    EXPECT_EQ(ToInt16(value), integer) << value;
  }
  for (const double value :
       {32767.5, 65537.0, -32768.5, 2147483648.0, 1E300, -1E300,
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(ErrorOf([&] { (void)ToInt16(value); }).Kind(), ErrorKind::Type);
  }
  EXPECT_EQ(NumericInt16("-1.5"), -2);
  EXPECT_EQ(ErrorOf([] { (void)NumericInt16("1E400"); }).Kind(), ErrorKind::Type);
}

TEST(IntegerValue, RoundsTheNumberOfTheWholeText) {
  const std::vector<std::pair<std::string_view, int>> values = {
      {"2001", 2001}, {"  31 ", 31}, {"-4", -4},         {"+4", 4},
      {"0", 0},       {"12.5", 13},  {"12.4", 12},       {"2.5", 3},
      {"-0.5", -1},   {"1E3", 1000}, {"32767.4", 32767}, {"-32768", -32768}};
  for (const auto& [text, value] : values) {
    EXPECT_EQ(IntegerValue(text, "year"), value) << text;
  }
}

TEST(IntegerValue, OfAnyOtherTextIsATypeErrorThatNamesTheField) {
  for (const std::string_view text :
       {"",   " ",   "abc", "12x",  "x12", "1,5",   "1 2",     "1-2",    "--1", ".",     "-",
        "1E", "inf", "nan", "0x10", "12%", "32768", "32767.5", "-32769", "1E5", "1E400", "65537"}) {
    SCOPED_TRACE(text);
    const Error error = ErrorOf([&] { (void)IntegerValue(text, "Calibration year"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Type);
    EXPECT_TRUE(Contains(error.Text(), "Calibration year")) << error.Text();
  }
}

TEST(ParseNumber, IsTheValueOfANumberWithBlanksAround) {
  EXPECT_EQ(ParseNumber("97.26"), 97.26);
  EXPECT_EQ(ParseNumber(" -5 "), -5.0);
  EXPECT_EQ(ParseNumber("5.00E07"), 50000000.0);
  EXPECT_EQ(ParseNumber("9E999"), std::numeric_limits<double>::infinity());
  for (const std::string_view text : {"", " ", "abc", "12x", "1,5", "1 2", "1-2", ".", "-", "1E"}) {
    EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
  }
}

/// `cases` are values and the texts that `format` makes of them: "value=text value=text".
template <typename Format>
void ExpectTexts(const char* cases, const Format& format) {
  std::istringstream words(cases);
  std::string word;
  while (words >> word) {
    const std::size_t equals = word.find('=');
    double value = 0;
    const auto result = std::from_chars(word.data(), word.data() + equals, value);
    ASSERT_EQ(result.ptr, word.data() + equals);
    EXPECT_EQ(format(value), word.substr(equals + 1)) << word;
  }
}

TEST(ShortestText, IsAPlainDecimalOfAtMostFifteenDigitsElseItHasAnExponent) {
  ExpectTexts(
      "0=0 -100=-100 98.80=98.8 -0.5=-0.5 0.30000000000000004=0.3 6992500000=6992500000 "
      "-0.66666666666666663=-0.666666666666667 1234567890.123456=1234567890.12346 "
      "99999999999999.95=100000000000000 999999999999999=999999999999999 "
      "1E-15=0.000000000000001 1.2E-14=0.000000000000012 "
      "-1E15=-1E+15 999999999999999.5=1E+15 1.5E-15=1.5E-15 1E-16=1E-16 1.25E-14=1.25E-14 "
      "-1.5E20=-1.5E+20 -9.99E-100=-9.99E-100 123456789012345678=1.23456789012346E+17 "
      "1.7976931348623157E308=1.79769313486232E+308 5E-324=4.94065645841247E-324",
      &ShortestText);
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double value : {infinite, -infinite}) {
    EXPECT_EQ(ErrorOf([&] { (void)ShortestText(value); }).Kind(), ErrorKind::Type);
    EXPECT_EQ(ErrorOf([&] { (void)NumberPattern("##0.0").Format(value); }).Kind(), ErrorKind::Type);
  }
}

TEST(PowerOfTen, IsTheNearestNumberOnEverySystem) {
  EXPECT_EQ(PowerOfTen(0), 1.0);
  EXPECT_EQ(PowerOfTen(3), 1000.0);
  EXPECT_EQ(PowerOfTen(-1), 0.1);
  EXPECT_EQ(PowerOfTen(-5), 0.00001);
  EXPECT_EQ(PowerOfTen(-15), 1e-15);
  EXPECT_EQ(PowerOfTen(22), 1e22);
  EXPECT_EQ(PowerOfTen(400), 0.0);
  EXPECT_EQ(PowerOfTen(-400), 0.0);
}

TEST(Normalised, IsTheNumberInItsShortestText) {
  const std::vector<std::pair<std::string_view, std::string_view>> texts = {
      {"98.80", "98.8"}, {"abc", "0"},    {"5.00E07", "50000000"}, {"-.50", "-0.5"},
      {" 1 0 ", "10"},   {"00012", "12"}, {"1D-16", "1E-16"},      {"1.5e20", "1.5E+20"}};
  for (const auto& [text, expected] : texts) {
    EXPECT_EQ(Normalised(text), expected) << text;
  }
  EXPECT_EQ(ErrorOf([] { (void)Normalised("1E400"); }).Kind(), ErrorKind::Type);
}

// A locale with "," before the decimals and "." between the thousands.
class CommaPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Numbers, AreReadAndWrittenWithAPointUnderEveryLocale) {
  // Sets the C locale too, if the system has one of these.
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) {
      break;
    }
  }
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
  EXPECT_EQ(NumericValue("1.5"), 1.5);
  EXPECT_EQ(NumericValue("1,5"), 1.0);
  EXPECT_EQ(NumericValue("1.234.567"), 1.234);
  EXPECT_EQ(IntegerValue("12.5", "day"), 13);
  EXPECT_EQ(ErrorOf([] { (void)IntegerValue("12,5", "day"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(ShortestText(1234567.5), "1234567.5");
  EXPECT_EQ(ShortestText(1.5E20), "1.5E+20");
  EXPECT_EQ(NumberPattern("0.0000").Format(12345.6), "12345.6000");
  EXPECT_EQ(NumberPattern("0.00E-00").Format(6992500000.0), "6.99E09");
  EXPECT_EQ(NumberPattern("#0").Format(1234567), "1234567");
  std::locale::global(before);
  EXPECT_NE(std::setlocale(LC_ALL, "C"), nullptr);
}

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
  for (const PatternCases& each : kPatterns) {
    SCOPED_TRACE(each.pattern);
    const NumberPattern pattern(std::string_view(each.pattern));
    ExpectTexts(each.cases, [&](double value) { return pattern.Format(value); });
  }
}

TEST(NumberPattern, KeepsBlanksAtItsEnd) {
  const NumberPattern pattern = "### ";
  EXPECT_EQ(pattern.Format(10), "10 ");
  EXPECT_EQ(pattern.Format(0), " ");
  EXPECT_EQ(pattern.Format(-0.4), "- ");
  EXPECT_EQ(pattern.Format(999.5), "1000 ");
}

TEST(NumberPattern, RejectsAMalformedPattern) {
  for (const std::string_view pattern :
       {"x",       "0.0x",     "0#",       "#0#",      "0#.0",   "0.#0",     "0.0#0",
        "0,0",     "0.0.0",    " 0",       "0 0",      "-0",     "@@@",      "0.00E-",
        "0.00E00", "0.00E+00", "0.00e-00", "00.0E-00", ".0E-00", "0.00E-0#", "E-00"}) {
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
