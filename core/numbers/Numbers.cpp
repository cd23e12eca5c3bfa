// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <system_error>

#include "core/numbers/DecimalText.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsIgnored(char c) {
  return c == ' ' || c == '\t' || c == '\n';
}

/// The end of the number at the beginning of a text, if it is one of digits with perhaps a "-" and
/// a point, as nearly all are; 0 for any other text.
std::size_t EndOfPlainNumber(std::string_view text) {
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  std::size_t end = first;
  bool hasPoint = false;
  bool hasDigit = false;
  for (; end < text.size(); ++end) {
    if (IsDigit(text[end])) {
      hasDigit = true;
    } else if (text[end] == '.' && !hasPoint) {
      hasPoint = true;
    } else {
      break;
    }
  }
  // After blanks, or with an exponent, the number could go on.
  constexpr std::string_view kMore = "0123456789.eEdD";
  const std::size_t next = std::min(text.find_first_not_of(" \t\n", end), text.size());
  const bool isWhole = next == text.size() || kMore.find(text[next]) == std::string_view::npos;
  return hasDigit && isWhole ? end : 0;
}

/// Collects the leading numeric part of a text in the form that std::from_chars reads.
class NumberScanner {
 public:
  explicit NumberScanner(std::string_view text) : text_(text) {}

  /// The text of the number, "" if it has no digits. Afterwards Position() is the end of what was
  /// read.
  std::string Scan() {
    std::string number;
    const char sign = Peek();
    if (sign == '+' || sign == '-') {
      ++position_;
      if (sign == '-') {
        number += sign;
      }
    }
    bool digits = TakeDigits(number);
    if (Peek() == '.') {
      ++position_;
      number += '.';
      digits = TakeDigits(number) || digits;
    }
    if (!digits) {
      return {};
    }
    TakeExponent(number);
    return number;
  }

  [[nodiscard]] std::size_t Position() const { return position_; }

  /// Whether nothing but ignored characters is left.
  bool AtEnd() { return Peek() == '\0' && position_ >= text_.size(); }

 private:
  char Peek() {
    while (position_ < text_.size() && IsIgnored(text_[position_])) {
      ++position_;
    }
    return position_ < text_.size() ? text_[position_] : '\0';
  }

  bool TakeDigits(std::string& number) {
    bool any = false;
    while (IsDigit(Peek())) {
      number += text_[position_++];
      any = true;
    }
    return any;
  }

  void TakeExponent(std::string& number) {
    const char letter = Peek();
    if (letter != 'E' && letter != 'e' && letter != 'D' && letter != 'd') {
      return;
    }
    const std::size_t start = position_++;
    std::string exponent = "e";
    const char sign = Peek();
    if (sign == '+' || sign == '-') {
      ++position_;
      exponent += sign;
    }
    if (TakeDigits(exponent)) {
      number += exponent;
    } else {
      position_ = start;
    }
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

/// Whether a number that no double can hold is too large rather than too small. `number` is in the
/// form that NumberScanner gives.
bool IsTooLarge(std::string_view number) {
  const std::size_t mantissaEnd = std::min(number.find('e'), number.size());
  const std::string_view mantissa = number.substr(0, mantissaEnd);
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) {
    return false;
  }
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissaEnd));
  const std::int64_t order = point - static_cast<std::int64_t>(first);
  std::int64_t exponent = 0;
  if (mantissaEnd < number.size()) {
    const std::string_view power = number.substr(mantissaEnd + 1);
    const char* digits = power.data() + (power.front() == '+' ? 1 : 0);
    if (std::from_chars(digits, power.data() + power.size(), exponent).ec != std::errc()) {
      return power.front() != '-';
    }
  }
  return order + exponent > 0;
}

/// The value of `number`, infinite when it is too large for a double.
double ParsedNumber(std::string_view number) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range && IsTooLarge(number)) {
    return number.front() == '-' ? -kInfinity : kInfinity;
  }
  // A number that is too small for a double is 0, and zero is never negative.
  return result.ec != std::errc() || value == 0 ? 0.0 : value;
}

bool FitsInt16(double rounded) {
  return rounded >= std::numeric_limits<std::int16_t>::min() &&
         rounded <= std::numeric_limits<std::int16_t>::max();
}

/// Whether `text` has blanks, tabs or LFs that are not at its ends.
bool HasBlanksInside(std::string_view text) {
  constexpr std::string_view kIgnored = " \t\n";
  const std::size_t first = std::min(text.find_first_not_of(kIgnored), text.size());
  return text.find_first_of(kIgnored, first) < text.find_last_not_of(kIgnored) + std::size_t{1};
}

}  // namespace

std::optional<LeadingNumber> LeadingNumberOf(std::string_view text) {
  if (const std::size_t end = EndOfPlainNumber(text); end > 0) {
    const std::size_t next = std::min(text.find_first_not_of(" \t\n", end), text.size());
    return LeadingNumber{ParsedNumber(text.substr(0, end)), text.substr(next)};
  }
  NumberScanner scanner(text);
  const std::string number = scanner.Scan();
  return number.empty()
             ? std::nullopt
             : std::optional(LeadingNumber{ParsedNumber(number), text.substr(scanner.Position())});
}

double NumericValueOrInfinity(std::string_view text) {
  const std::optional<LeadingNumber> number = LeadingNumberOf(text);
  return number ? number->value : 0.0;
}

std::string_view TooLargeNumber(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789";
  std::size_t first = text.find_first_of(kDigits);
  if (first == std::string_view::npos) {
    return {};
  }
  if (first > 0 && text[first - 1] == '.') {
    --first;
  }
  if (first > 0 && (text[first - 1] == '-' || text[first - 1] == '+')) {
    --first;
  }
  NumberScanner scanner(text.substr(first));
  if (!std::isinf(ParsedNumber(scanner.Scan()))) {
    return {};
  }
  return TrimRight(text.substr(first, scanner.Position()));
}

double NumericValue(std::string_view text) {
  const double value = NumericValueOrInfinity(text);
  if (std::isinf(value)) {
    throw Error(ErrorKind::Type, "The number \"" + std::string(Trim(text)) +
                                     "\" is too large to be calculated with. Enter a smaller one.");
  }
  return value;
}

bool BeginsWithNumber(std::string_view text) {
  return LeadingNumberOf(text).has_value();
}

std::string_view AfterNumber(std::string_view text) {
  const std::optional<LeadingNumber> number = LeadingNumberOf(text);
  return number ? number->after : text;
}

std::optional<double> ParseNumber(std::string_view text) {
  NumberScanner scanner(text);
  const std::string number = scanner.Scan();
  if (number.empty() || !scanner.AtEnd() || HasBlanksInside(text)) {
    return std::nullopt;
  }
  return ParsedNumber(number);
}

double RoundedToWhole(double value) {
  constexpr double kHalf = 0.5;
  const double whole = std::trunc(value);
  return std::abs(value - whole) >= kHalf ? whole + std::copysign(1.0, value) : whole;
}

std::int16_t ToInt16(double value) {
  const double rounded = RoundedToWhole(value);
  if (!FitsInt16(rounded)) {
    throw Error(ErrorKind::Type, "The number " + ShortestText(value) +
                                     " is outside the range -32768 to 32767. Correct it.");
  }
  return static_cast<std::int16_t>(rounded);
}

std::int16_t NumericInt16(std::string_view text) {
  // Most are the digits of dates, which need no floating point.
  std::int16_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isWhole ? value : ToInt16(NumericValue(text));
}

std::int16_t IntegerValue(std::string_view text, std::string_view field) {
  const std::string where = std::string(field) + ": ";
  const std::optional<double> number = ParseNumber(text);
  if (!number) {
    throw Error(ErrorKind::Type,
                where + "\"" + std::string(text) + "\" is not a number. Enter a whole number.");
  }
  const double rounded = RoundedToWhole(*number);
  if (!FitsInt16(rounded)) {
    throw Error(ErrorKind::Type, where + std::string(Trim(text)) +
                                     " is outside the range -32768 to 32767. Correct it.");
  }
  return static_cast<std::int16_t>(rounded);
}

std::string ShortestText(double value) {
  const DecimalText decimal(value);
  std::string_view digits = decimal.Digits();
  digits = digits.substr(0, digits.find_last_not_of('0') + 1);
  if (digits.empty()) {
    return "0";
  }
  const int exponent = decimal.Exponent();
  const int decimals = static_cast<int>(digits.size()) - 1 - exponent;
  std::string text(decimal.Negative() ? "-" : "");
  if (exponent < static_cast<int>(DecimalText::kDigits) &&
      decimals <= static_cast<int>(DecimalText::kDigits)) {
    for (int place = std::max(exponent, 0); place >= std::min(0, -decimals); --place) {
      if (place == -1) {
        text += '.';
      }
      text += decimal.DigitAt(place);
    }
    return text;
  }
  text += digits[0];
  if (digits.size() > 1) {
    text += '.';
    text += digits.substr(1);
  }
  text += exponent < 0 ? "E-" : "E+";
  return text + AtLeastTwoDigits(std::abs(exponent));
}

std::string AtLeastTwoDigits(int number) {
  const std::string text = std::to_string(number);
  return text.size() < 2 ? "0" + text : text;
}

double RoundedTo15Digits(double value) {
  constexpr double kLargest = 1E15;
  if (std::abs(value) < kLargest && value == std::trunc(value)) {
    return value + 0.0;  // zero is never negative
  }
  return NumericValue(ShortestText(value));
}

std::string Normalised(std::string_view text) {
  return ShortestText(NumericValue(text));
}

}  // namespace tarvell
