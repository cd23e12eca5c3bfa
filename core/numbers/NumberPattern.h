// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_NUMBERPATTERN_H
#define TARVELL_CORE_NUMBERS_NUMBERPATTERN_H

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvell {

/// A digit pattern such as "##0.0", "0.####", "0.00E-00" or "### ".
///
/// "0" is a digit that is always shown, "#" one that is shown only if significant. The last decimal
/// is rounded half away from zero. A "#" after the point drops a trailing zero; when no decimal is
/// left, the point is dropped, too. "E-00" is an exponent of at least two digits, with a sign only
/// if negative. Blanks at the end are kept. Only 15 significant digits of a value count. A negative
/// value keeps its "-", even when it is rounded to zero.
///
/// The constructor parses the pattern, so that a wrong one in a constexpr table does not compile.
class NumberPattern {
 public:
  constexpr NumberPattern(std::string_view pattern) {  // NOLINT(google-explicit-constructor)
    if (pattern.find_first_of("0#") == std::string_view::npos) {
      throw std::invalid_argument("no digit");
    }
    std::size_t i = 0;
    for (; i < pattern.size() && (pattern[i] == '#' || pattern[i] == '0'); ++i) {
      if (pattern[i] == '0') {
        ++wholeDigits_;
      } else if (wholeDigits_ > 0) {
        throw std::invalid_argument("'#' after '0' before the point");
      }
    }
    if (i < pattern.size() && pattern[i] == '.') {
      for (++i; i < pattern.size() && (pattern[i] == '#' || pattern[i] == '0'); ++i) {
        ++decimals_;
        if (pattern[i] == '0') {
          ++fixedDecimals_;
        }
        if (fixedDecimals_ != decimals_ && pattern[i] == '0') {
          throw std::invalid_argument("'0' after '#' after the point");
        }
      }
    }
    if (pattern.substr(i, 2) == "E-") {
      for (i += 2; i < pattern.size() && pattern[i] == '0'; ++i) {
        ++exponentDigits_;
      }
      if (exponentDigits_ == 0 || pattern[0] != '0' || wholeDigits_ != 1) {
        throw std::invalid_argument(
            "an exponent needs one digit before the point and digits of its own");
      }
    }
    for (; i < pattern.size() && pattern[i] == ' '; ++i) {
      ++blanks_;
    }
    if (i != pattern.size()) {
      throw std::invalid_argument("not a digit pattern");
    }
  }
  template <std::size_t N>
  constexpr NumberPattern(const char (&pattern)[N])  // NOLINT
      : NumberPattern(std::string_view(pattern, N - 1)) {}

  /// The text of `value`. Throws a Type error when it is infinite.
  [[nodiscard]] std::string Format(double value) const;

 private:
  int wholeDigits_ = 0;
  int fixedDecimals_ = 0;
  int decimals_ = 0;
  int exponentDigits_ = 0;
  int blanks_ = 0;
};

/// The number at the beginning of `text`, in the form of `pattern`.
[[nodiscard]] std::string FormatText(std::string_view text, const NumberPattern& pattern);

}  // namespace tarvell

#endif
