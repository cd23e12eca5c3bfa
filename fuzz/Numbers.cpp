// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/Numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "FuzzTarget.h"
#include "core/numbers/NumberPattern.h"

/// Compares numbers and digit patterns with an arithmetic on decimal digits. An input is the eight
/// bytes of a double, the two bytes that choose a pattern, and the text of a number.
namespace tarvell::fuzz {
namespace {

/// The number that a text begins with, as the C library reads it; "" when there is none.
std::string CleanNumber(std::string_view text) {
  std::string clean;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') {
      clean += c == 'd' || c == 'D' || c == 'E' ? 'e' : c;
    }
  }
  const auto digitsFrom = [&](std::size_t start) {
    return std::min(clean.find_first_not_of("0123456789", start), clean.size());
  };
  const auto afterSign = [&](std::size_t start) {
    return start + (clean.find_first_of("+-", start) == start ? 1 : 0);
  };
  const std::size_t first = afterSign(0);
  std::size_t end = digitsFrom(first);
  std::size_t digits = end - first;
  if (clean.compare(end, 1, ".") == 0) {
    const std::size_t decimals = end + 1;
    end = digitsFrom(decimals);
    digits += end - decimals;
  }
  if (digits == 0) {
    return {};
  }
  if (clean.compare(end, 1, "e") == 0) {
    const std::size_t power = afterSign(end + 1);
    end = digitsFrom(power) > power ? digitsFrom(power) : end;
  }
  return clean.substr(0, end);
}

/// A number's 15 significant digits: 0.d1d2d3... times ten to the power of `point`.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;

  bool operator==(const Decimal&) const = default;
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

/// The digits before and after the point.
struct Places {
  std::string whole;
  std::string decimals;
};

/// Rounds half away from zero to `count` decimals.
Places Rounded(const Decimal& decimal, int count) {
  // One line of digits, with a zero before them for a carry and at least one after the last place.
  const int front = std::max(1, 1 - decimal.point);
  std::string line = std::string(static_cast<std::size_t>(front), '0') + decimal.digits;
  const int place = front + decimal.point;
  const auto point = static_cast<std::size_t>(place);
  const std::size_t length = point + static_cast<std::size_t>(count);
  line.resize(std::max(line.size(), length + 1), '0');
  if (line[length] >= '5') {
    std::size_t i = length;
    while (line[--i] == '9') {
      line[i] = '0';
    }
    ++line[i];
  }
  std::string whole = line.substr(0, point);
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
  return {whole, line.substr(point, length - point)};
}

std::string Many(int count, char c) {
  std::string text;
  text.assign(static_cast<std::size_t>(count), c);
  return text;
}

/// A pattern, chosen by two bytes.
struct Pattern {
  Pattern(int first, int second)
      : wholeHashes(first / 4 % 4),
        wholeZeros(first % 4),
        decimalZeros(second % 8),
        decimalHashes(second / 8 % 8),
        exponentZeros(second >= 128 ? first / 32 % 3 + 1 : 0),
        blanks(first / 16 % 2) {
    if (exponentZeros > 0 || wholeZeros + wholeHashes == 0) {
      wholeHashes = 0;
      wholeZeros = 1;
    }
  }

  [[nodiscard]] std::string Text() const {
    return Many(wholeHashes, '#') + Many(wholeZeros, '0') +
           (decimalZeros + decimalHashes > 0 ? "." : "") + Many(decimalZeros, '0') +
           Many(decimalHashes, '#') + (exponentZeros > 0 ? "E-" : "") + Many(exponentZeros, '0') +
           Many(blanks, ' ');
  }

  int wholeHashes;
  int wholeZeros;
  int decimalZeros;
  int decimalHashes;
  int exponentZeros;
  int blanks;
};

std::string ExpectedText(const Pattern& pattern, double value) {
  Decimal decimal = DecimalOf(value);
  int exponent = 0;
  if (pattern.exponentZeros > 0 && value != 0) {
    exponent = decimal.point - 1;
    decimal.point = 1;
  }
  Places places = Rounded(decimal, pattern.decimalZeros + pattern.decimalHashes);
  if (pattern.exponentZeros > 0 && places.whole == "10") {
    places.whole = "1";
    ++exponent;
  }
  const auto padded = [](const std::string& digits, int width) {
    return Many(std::max(0, width - static_cast<int>(digits.size())), '0') + digits;
  };
  while (places.decimals.size() > static_cast<std::size_t>(pattern.decimalZeros) &&
         places.decimals.back() == '0') {
    places.decimals.pop_back();
  }
  std::string text = (decimal.negative ? "-" : "") + padded(places.whole, pattern.wholeZeros) +
                     (places.decimals.empty() ? "" : "." + places.decimals);
  if (pattern.exponentZeros > 0) {
    text += (exponent < 0 ? "E-" : "E") +
            padded(std::to_string(std::abs(exponent)), pattern.exponentZeros);
  }
  return text + Many(pattern.blanks, ' ');
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

  // Rounded to 15 digits, the very largest numbers are too large for a double.
  const double reread = std::strtod(shortest.c_str(), nullptr);
  if (std::isinf(reread)) {
    Require(!Accepts([&] { static_cast<void>(NumericValue(shortest)); }), "too large is refused");
    return;
  }
  Require(DecimalOf(reread) == DecimalOf(value), "the shortest text has every digit", shortest);
  Require(NumericValue(shortest) == reread, "the shortest text is read as its number", shortest);
  Require(ShortestText(NumericValue(shortest)) == shortest, "the shortest text stays as it is",
          shortest);
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
}

}  // namespace

void Run(Input input) {
  std::array<unsigned char, sizeof(double)> bytes{};
  for (unsigned char& byte : bytes) {
    byte = static_cast<unsigned char>(input.Byte());
  }
  const auto value = std::bit_cast<double>(bytes);
  const auto first = static_cast<int>(input.Byte());
  const Pattern pattern(first, static_cast<int>(input.Byte()));
  if (!std::isnan(value)) {
    CheckValue(value, pattern);
  }
  CheckText(input.Rest(), pattern);
}

}  // namespace tarvell::fuzz
