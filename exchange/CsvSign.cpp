// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvSign.h"

#include <string>

#include "core/numbers/Numbers.h"

namespace tarvell {

void CsvSign::Add(std::string_view number) {
  hasComma_ = hasComma_ || number.find(',') != std::string_view::npos;
  const std::optional<std::string> point = PlainNumber(number, DecimalSign::Point);
  const std::optional<std::string> comma = PlainNumber(number, DecimalSign::Comma);
  unreadPoint_ += point ? 0 : 1;
  unreadComma_ += comma ? 0 : 1;
  if (!first_ && point && comma && ParseNumber(*point) != ParseNumber(*comma)) {
    first_ = ReadingQuestion{ReadingQuestion::About::DecimalSign, std::string(number),
                             Normalised(*point), Normalised(*comma)};
  }
}

std::optional<DecimalSign> CsvSign::Decided() const {
  // Who writes a decimal comma does not separate cells by commas, except with quotes.
  const std::size_t unreadComma = unreadComma_ + (separator_ == ',' && !hasComma_ ? 1 : 0);
  const bool isDecided = unreadPoint_ != unreadComma;
  return isDecided
             ? std::optional(unreadPoint_ < unreadComma ? DecimalSign::Point : DecimalSign::Comma)
             : std::nullopt;
}

DecimalSign CsvSign::Sign(std::optional<DecimalSign> chosen) const {
  return Decided().value_or(chosen.value_or(DecimalSign::Point));
}

std::optional<ReadingQuestion> CsvSign::Question() const {
  return Decided() ? std::nullopt : first_;
}

}  // namespace tarvell
