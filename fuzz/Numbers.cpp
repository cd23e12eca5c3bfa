// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "FuzzTarget.h"
#include "core/numbers/NumberPattern.h"

/// Numbers and digit patterns against an arithmetic on decimal digits. An input is eight bytes, a
/// number of the machine, and the bytes that choose a pattern; behind them stands a number's text.
namespace tarvell::fuzz {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// A text's number as the C library reads it; the text is cleaned for it. "" when there is none.
std::string CleanNumber(std::string_view text) {
  std::string clean;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') {
      clean += c == 'd' || c == 'D' || c == 'E' ? 'e' : c;
    }
  }
  std::size_t i = 0;
  const auto skip = [&](std::size_t& at) {
    const std::size_t start = at;
    while (at < clean.size() && IsDigit(clean[at])) {
      ++at;
    }
    return at - start;
  };
  if (i < clean.size() && (clean[i] == '+' || clean[i] == '-')) {
    ++i;
  }
  std::size_t digits = skip(i);
  if (i < clean.size() && clean[i] == '.') {
    ++i;
    digits += skip(i);
  }
  if (digits == 0) {
    return {};
  }
  if (i < clean.size() && clean[i] == 'e') {
    std::size_t at = i + 1;
    if (at < clean.size() && (clean[at] == '+' || clean[at] == '-')) {
      ++at;
    }
    if (skip(at) > 0) {
      i = at;
    }
  }
  return clean.substr(0, i);
}

/// A number's 15 significant digits: 0.d1d2d3... times ten to the power of `point`.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

Decimal DecimalOf(double value) {
  std::array<char, 64> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%.14e", std::fabs(value)));
  Decimal decimal;
  decimal.negative = value < 0;
  decimal.digits = std::string(1, text[0]) + std::string(&text[2], 14);
  decimal.point = value == 0 ? 0 : static_cast<int>(std::strtol(&text[17], nullptr, 10)) + 1;
  return decimal;
}

/// The digits in front of and behind the point.
struct Places {
  std::string whole;
  std::string decimals;
};

/// Rounds half away from zero to `count` decimals.
Places Rounded(const Decimal& decimal, int count) {
  // One digit line with the point at a fixed place: zeros in front and behind, as many as needed.
  const int front = std::max(1, 1 - decimal.point);
  std::string line(static_cast<std::size_t>(front), '0');
  line += decimal.digits;
  const int behindWhole = front + decimal.point;
  auto point = static_cast<std::size_t>(behindWhole);
  const std::size_t length = point + static_cast<std::size_t>(count);
  if (line.size() <= length) {
    line.append(length + 1 - line.size(), '0');
  }
  const bool up = line[length] >= '5';
  line.resize(length);
  if (up) {
    std::size_t i = length;
    while (i > 0 && line[i - 1] == '9') {
      line[--i] = '0';
    }
    if (i > 0) {
      ++line[i - 1];
    } else {
      line.insert(0, "1");
      ++point;
    }
  }
  std::string whole = line.substr(0, point);
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
  return {whole, line.substr(point)};
}

/// A pattern, chosen by a few bytes.
struct Pattern {
  int wholeHashes = 0;
  int wholeZeros = 0;
  int decimalZeros = 0;
  int decimalHashes = 0;
  int exponentZeros = 0;
  int blanks = 0;

  [[nodiscard]] std::string Text() const {
    const auto many = [](int count, char c) {
      return std::string(static_cast<std::size_t>(count), c);
    };
    const bool hasDecimals = decimalZeros + decimalHashes > 0;
    return many(wholeHashes, '#') + many(wholeZeros, '0') + (hasDecimals ? "." : "") +
           many(decimalZeros, '0') + many(decimalHashes, '#') + (exponentZeros > 0 ? "E-" : "") +
           many(exponentZeros, '0') + many(blanks, ' ');
  }
};

Pattern PatternOf(Input& input) {
  Pattern pattern;
  const unsigned first = input.Byte();
  const unsigned second = input.Byte();
  pattern.wholeZeros = static_cast<int>(first % 4);
  pattern.wholeHashes = static_cast<int>(first / 4 % 4);
  pattern.blanks = static_cast<int>(first / 16 % 2);
  pattern.decimalZeros = static_cast<int>(second % 8);
  pattern.decimalHashes = static_cast<int>(second / 8 % 8);
  if (second >= 128) {
    pattern.exponentZeros = static_cast<int>(first / 32 % 3 + 1);
    pattern.wholeHashes = 0;
    pattern.wholeZeros = 1;
  } else if (pattern.wholeZeros + pattern.wholeHashes == 0) {
    pattern.wholeZeros = 1;
  }
  return pattern;
}

std::string ExpectedText(const Pattern& pattern, double value) {
  Decimal decimal = DecimalOf(value);
  int exponent = 0;
  if (pattern.exponentZeros > 0) {
    exponent = value == 0 ? 0 : decimal.point - 1;
    decimal.point = value == 0 ? 0 : 1;
  }
  Places places = Rounded(decimal, pattern.decimalZeros + pattern.decimalHashes);
  if (pattern.exponentZeros > 0 && places.whole == "10") {
    places.whole = "1";
    ++exponent;
  }
  const auto zeros = static_cast<std::size_t>(pattern.wholeZeros);
  if (places.whole.size() < zeros) {
    places.whole.insert(0, zeros - places.whole.size(), '0');
  }
  while (places.decimals.size() > static_cast<std::size_t>(pattern.decimalZeros) &&
         places.decimals.back() == '0') {
    places.decimals.pop_back();
  }
  std::string text = (decimal.negative ? "-" : "") + places.whole;
  if (!places.decimals.empty()) {
    text += "." + places.decimals;
  }
  if (pattern.exponentZeros > 0) {
    const std::string power = std::to_string(std::abs(exponent));
    const auto width = static_cast<std::size_t>(pattern.exponentZeros);
    text += exponent < 0 ? "E-" : "E";
    text += std::string(width - std::min(width, power.size()), '0') + power;
  }
  return text + std::string(static_cast<std::size_t>(pattern.blanks), ' ');
}

/// Plain decimals below 1E15 that fit 15 decimals, else with an exponent.
std::string ExpectedShortest(double value) {
  if (value == 0) {
    return "0";
  }
  const Decimal decimal = DecimalOf(value);
  std::string digits = decimal.digits;
  digits.resize(digits.find_last_not_of('0') + 1);
  const int decimals = std::max(0, static_cast<int>(digits.size()) - decimal.point);
  const std::string sign = decimal.negative ? "-" : "";
  if (decimal.point <= 15 && decimals <= 15) {
    const Places places = Rounded(decimal, decimals);
    return sign + (places.whole.empty() ? "0" : places.whole) +
           (places.decimals.empty() ? "" : "." + places.decimals);
  }
  std::array<char, 16> power{};
  static_cast<void>(std::snprintf(power.data(), power.size(), "E%+03d", decimal.point - 1));
  return sign + digits.substr(0, 1) + (digits.size() > 1 ? "." + digits.substr(1) : "") +
         power.data();
}

void CheckValue(double value, const Pattern& pattern) {
  const std::string text = pattern.Text();
  const NumberPattern engine{std::string_view(text)};
  std::string shortest;
  std::string formatted;
  const bool accepted = Accepts([&] {
    shortest = ShortestText(value);
    formatted = engine.Format(value);
  });
  Require(accepted == std::isfinite(value), "only a number that is not finite is refused");
  if (!accepted) {
    return;
  }
  Require(formatted == ExpectedText(pattern, value), "a pattern gives the digits by hand",
          text + ": " + formatted + " not " + ExpectedText(pattern, value));
  Require(shortest == ExpectedShortest(value), "the shortest text has the digits by hand",
          shortest + " not " + ExpectedShortest(value));

  // The 15 digits of the very largest numbers are those of none that a double can hold.
  const double reread = std::strtod(shortest.c_str(), nullptr);
  if (std::isinf(reread)) {
    Require(!Accepts([&] { static_cast<void>(NumericValue(shortest)); }), "too large is refused");
    return;
  }
  Require(NumericValue(shortest) == reread, "the shortest text is read as its number", shortest);
  Require(ShortestText(NumericValue(shortest)) == shortest, "the shortest text stays as it is",
          shortest);
  const bool fits = std::round(value) >= -32768 && std::round(value) <= 32767;
  std::int16_t small = 0;
  Require(Accepts([&] { small = ToInt16(value); }) == fits, "16 bits take what fits them");
  Require(!fits || small == std::round(value), "a number is rounded half away from zero");
}

void CheckText(const std::string& text, const Pattern& pattern) {
  const std::string clean = CleanNumber(text);
  Require(BeginsWithNumber(text) == !clean.empty(), "a text begins with a number or not", text);
  const double expected = clean.empty() ? 0 : std::strtod(clean.c_str(), nullptr);
  double value = 0;
  const bool accepted = Accepts([&] { value = NumericValue(text); });
  Require(accepted == std::isfinite(expected), "only too large a number is refused", text);
  if (!accepted) {
    return;
  }
  Require(value == expected && (value != 0 || !std::signbit(value)),
          "a text has the value that the C library reads", text);
  CheckValue(value, pattern);

  // A text box takes the whole text as one number, with blanks around it alone.
  std::string trimmed = text;
  trimmed.erase(0, std::min(trimmed.find_first_not_of(" \t\n"), trimmed.size()));
  trimmed.resize(trimmed.find_last_not_of(" \t\n") + 1);
  const bool isWhole = !clean.empty() && trimmed.size() == clean.size() &&
                       trimmed.find_first_of(" \t\n") == std::string::npos;
  const double rounded = std::round(expected);
  std::int16_t integer = 0;
  Require(Accepts([&] { integer = IntegerValue(text, "Field"); }) ==
              (isWhole && rounded >= -32768 && rounded <= 32767),
          "a box takes a whole number of 16 bits", text);
  Require(integer == 0 || integer == rounded, "a box gives its number", text);
}

void Run(Input input) {
  std::array<unsigned char, sizeof(double)> bytes{};
  for (unsigned char& byte : bytes) {
    byte = static_cast<unsigned char>(input.Byte());
  }
  double value = 0;
  std::memcpy(&value, bytes.data(), bytes.size());
  const Pattern pattern = PatternOf(input);
  if (!std::isnan(value)) {
    CheckValue(value, pattern);
  }
  CheckText(input.Rest(), pattern);
}

}  // namespace
}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
