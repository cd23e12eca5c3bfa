// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/Units.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "core/numbers/Numbers.h"
#include "core/numbers/WrittenNumber.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

struct KnownUnit {
  std::string_view name;  ///< as it is shown
  std::string_view word;  ///< of the D-SI form
  Unit unit;
};

constexpr std::array<KnownUnit, 24> kUnits = {{{"Hz", "hertz", {{0, 0, -1, 0, 0}}},
                                               {"ohm", "ohm", {{2, 1, -3, -2, 0}}},
                                               {"F", "farad", {{-2, -1, 4, 2, 0}}},
                                               {"H", "henry", {{2, 1, -2, -2, 0}}},
                                               {"S", "siemens", {{-2, -1, 3, 2, 0}}},
                                               {"dB", "decibel", {{}, "decibel"}},
                                               {"%", "percent", {{}, "", -2}},
                                               {"ppm", "ppm", {{}, "", -6}},
                                               {"1", "one", {{}}},
                                               {"dBm", "", {{}, "dBm"}},
                                               {"K", "kelvin", {{0, 0, 0, 0, 1}}},
                                               {"°C", "degreecelsius", {{}, "degree Celsius"}},
                                               {"°", "degree", {{}, "degree"}},
                                               {"deg", "", {{}, "degree"}},
                                               {"rad", "radian", {{}, "radian"}},
                                               {"V", "volt", {{2, 1, -3, -1, 0}}},
                                               {"W", "watt", {{2, 1, -3, 0, 0}}},
                                               {"A", "ampere", {{0, 0, 0, 1, 0}}},
                                               {"s", "second", {{0, 0, 1, 0, 0}}},
                                               {"m", "metre", {{1, 0, 0, 0, 0}}},
                                               {"kg", "kilogram", {{0, 1, 0, 0, 0}}},
                                               {"g", "gram", {{0, 1, 0, 0, 0}, "", -3}},
                                               {"Pa", "pascal", {{-1, 1, -2, 0, 0}}},
                                               {"h", "hour", {{}, "hour"}}}};

struct Prefix {
  std::string_view sign;
  std::string_view word;
  int power;
};

constexpr std::array<Prefix, 16> kPrefixes = {{{"T", "tera", 12},
                                               {"G", "giga", 9},
                                               {"M", "mega", 6},
                                               {"k", "kilo", 3},
                                               {"K", "", 3},
                                               {"h", "hecto", 2},
                                               {"", "deca", 1},
                                               {"d", "deci", -1},
                                               {"c", "centi", -2},
                                               {"m", "milli", -3},
                                               {"u", "micro", -6},
                                               {"\u00B5", "", -6},
                                               {"\u03BC", "", -6},
                                               {"n", "nano", -9},
                                               {"p", "pico", -12},
                                               {"f", "femto", -15}}};

constexpr int kLargestExponent = 9;
constexpr std::size_t kWordLimit = 24;

const KnownUnit* UnitNamed(std::string_view name) {
  if (name == "\u03A9" || name == "\u2126") {
    name = "ohm";
  }
  const auto* exact = std::ranges::find(kUnits, name, &KnownUnit::name);
  if (exact != kUnits.end() || name.size() < 2) {
    return exact == kUnits.end() ? nullptr : exact;
  }
  const auto* found = std::ranges::find_if(
      kUnits, [&](const KnownUnit& known) { return EqualsIgnoringCase(known.name, name); });
  return found == kUnits.end() ? nullptr : found;
}

/// Only these have prefixes in certificates of this kind; "cd" or "Pa" are no prefix and unit.
bool TakesPrefix(const KnownUnit& known) {
  return known.unit.special.empty() && known.unit.power == 0 && !known.word.empty() &&
         known.name != "1" && known.name != "kg";
}

std::optional<Unit> PlainUnit(std::string_view text) {
  if (const KnownUnit* known = UnitNamed(text)) {
    return known->unit;
  }
  for (const Prefix& prefix : kPrefixes) {
    if (prefix.sign.empty() || !text.starts_with(prefix.sign)) {
      continue;
    }
    const KnownUnit* known = UnitNamed(text.substr(prefix.sign.size()));
    // "KF" is the calibration factor of a German certificate. Nothing has kilofarads.
    const bool isFactor = prefix.power > 0 && known != nullptr && known->name == "F";
    if (known != nullptr && TakesPrefix(*known) && !isFactor) {
      Unit unit = known->unit;
      // Captions are often in small letters, and nobody means millihertz then.
      unit.power += text == "mhz" ? 6 : prefix.power;
      return unit;
    }
  }
  return EqualsIgnoringCase(text, "ghz")
             ? std::optional<Unit>(Unit{.bases = kUnits.front().unit.bases, .power = 9})
             : std::nullopt;
}

/// The words of a D-SI text without their backslashes; nothing for a text that has no such form.
std::vector<std::string_view> WordsOfDsi(std::string_view text) {
  std::vector<std::string_view> words;
  while (text.starts_with('\\') && words.size() <= kWordLimit) {
    text.remove_prefix(1);
    words.push_back(WithoutBlanks(text.substr(0, text.find('\\'))));
    text.remove_prefix(std::min(text.find('\\'), text.size()));
  }
  return text.empty() && words.size() <= kWordLimit ? words : std::vector<std::string_view>();
}

template <typename Table>
auto FindWord(const Table& table, std::string_view word) {
  return std::ranges::find_if(table, [&](const auto& known) {
    return !known.word.empty() && EqualsIgnoringCase(known.word, word);
  });
}

/// The number in "tothe{-2}"; nothing for another word or a number that no unit has.
std::optional<int> ExponentIn(std::string_view word) {
  constexpr std::string_view kBegin = "tothe{";
  if (!word.starts_with(kBegin) || !word.ends_with('}')) {
    return std::nullopt;
  }
  word.remove_prefix(kBegin.size());
  word.remove_suffix(1);
  const std::optional<double> number = ParseNumber(word);
  if (!number || *number < -kLargestExponent || *number > kLargestExponent ||
      *number != static_cast<int>(*number)) {
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

/// Multiplies the factors of a D-SI text.
class Product {
 public:
  bool Take(std::string_view word) {
    if (const std::optional<int> exponent = ExponentIn(word)) {
      return SetExponent(*exponent);
    }
    Finish();
    if (EqualsIgnoringCase(word, "per")) {
      sign_ = -1;
      return true;
    }
    if (const auto* prefix = FindWord(kPrefixes, word); prefix != kPrefixes.end()) {
      prefix_ += prefix->power;
      return true;
    }
    const auto* known = FindWord(kUnits, word);
    if (known == kUnits.end()) {
      return false;
    }
    factor_ = known->unit;
    exponent_ = sign_;
    sign_ = 1;
    return true;
  }

  std::optional<Unit> Result() {
    Finish();
    const bool isWhole = prefix_ == 0 && sign_ == 1 && count_ > 0;
    return isWhole && (result_.special.empty() || count_ == 1) ? std::optional(result_)
                                                               : std::nullopt;
  }

 private:
  bool SetExponent(int exponent) {
    if (!factor_ || std::abs(exponent_) != 1) {
      return false;
    }
    exponent_ *= exponent;
    return true;
  }

  void Finish() {
    if (!factor_) {
      return;
    }
    for (std::size_t base = 0; base < Unit::kBases; ++base) {
      result_.bases.at(base) =
          static_cast<std::int8_t>(result_.bases.at(base) + factor_->bases.at(base) * exponent_);
    }
    result_.power += (factor_->power + prefix_) * exponent_;
    result_.special = factor_->special.empty() ? result_.special : factor_->special;
    prefix_ = 0;
    ++count_;
    factor_.reset();
  }

  Unit result_;
  std::optional<Unit> factor_;
  int exponent_ = 1;
  int sign_ = 1;
  int prefix_ = 0;
  int count_ = 0;
};

std::optional<Unit> DsiUnit(std::string_view text) {
  Product product;
  for (const std::string_view word : WordsOfDsi(text)) {
    if (!product.Take(word)) {
      return std::nullopt;
    }
  }
  return product.Result();
}

}  // namespace

std::optional<Unit> UnitFrom(std::string_view text) {
  text = WithoutBlanks(text);
  return text.starts_with('\\') ? DsiUnit(text) : PlainUnit(text);
}

std::string ShownUnit(std::string_view unit) {
  const std::optional<Unit> parsed = UnitFrom(unit);
  if (!unit.starts_with('\\') || !parsed) {
    return std::string(unit);
  }
  const auto* known = std::ranges::find_if(kUnits, [&](const KnownUnit& each) {
    return each.unit.IsLike(*parsed) && each.unit.power == parsed->power;
  });
  if (known != kUnits.end()) {
    return std::string(known->name == "1" ? "" : known->name);
  }
  for (const KnownUnit& each : kUnits) {
    const auto* prefix =
        std::ranges::find(kPrefixes, parsed->power - each.unit.power, &Prefix::power);
    if (each.unit.IsLike(*parsed) && TakesPrefix(each) && prefix != kPrefixes.end()) {
      return std::string(prefix->sign) + std::string(each.name);
    }
  }
  return std::string(unit);
}

std::string Shifted(std::string_view number, int power) {
  constexpr int kZeroLimit = 40;
  const bool isNegative = number.starts_with('-');
  number.remove_prefix(isNegative || number.starts_with('+') ? 1 : 0);
  const std::size_t end = std::min(number.find_first_of("EeDd"), number.size());
  const std::string_view mantissa = number.substr(0, end);
  double exponent = power;
  if (end < number.size()) {
    exponent += NumericValueOrInfinity(number.substr(end + 1));
  }
  const std::string sign = isNegative ? "-" : "";
  if (exponent > kZeroLimit || exponent < -kZeroLimit) {
    // Too large or too small for any table; without digits of its own it would be read as it was.
    const bool isFinite = exponent > -1E6 && exponent < 1E6;
    return sign + std::string(mantissa) + "E" +
           std::to_string(isFinite       ? static_cast<int>(exponent)
                          : exponent > 0 ? 9999
                                         : -9999);
  }
  std::string digits;
  std::size_t point = mantissa.find('.');
  for (const char c : mantissa) {
    digits += c == '.' ? "" : std::string(1, c);
  }
  int whole = static_cast<int>(point == std::string_view::npos ? mantissa.size() : point) +
              static_cast<int>(exponent);
  if (whole <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - whole), '0');
    whole = 1;
  }
  if (static_cast<std::size_t>(whole) > digits.size()) {
    digits.append(static_cast<std::size_t>(whole) - digits.size(), '0');
  }
  const std::size_t firstDigit =
      std::min(digits.find_first_not_of('0'), static_cast<std::size_t>(whole) - 1);
  const std::string decimals = digits.substr(static_cast<std::size_t>(whole));
  return sign + digits.substr(firstDigit, static_cast<std::size_t>(whole) - firstDigit) +
         (decimals.empty() ? "" : "." + decimals);
}

}  // namespace tarvell
