// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVSIGN_H
#define TARVELL_EXCHANGE_CSVSIGN_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "exchange/Certificate.h"

namespace tarvell {

/// Finds out with which decimal sign the numbers of a CSV file are written. A number that only one
/// sign fits decides for all: a file is written with one of them.
class CsvSign {
 public:
  /// `separator` is between the cells of the file.
  explicit CsvSign(char separator) : separator_(separator) {}

  void Add(std::string_view number);

  /// The sign that the numbers show, or else the chosen one, or else the point.
  [[nodiscard]] DecimalSign Sign(std::optional<DecimalSign> chosen) const;
  /// What has to be asked: nothing if the numbers show the sign, or are the same with both.
  [[nodiscard]] std::optional<ReadingQuestion> Question() const;

 private:
  /// The only sign that fits, nothing if both do.
  [[nodiscard]] std::optional<DecimalSign> Decided() const;

  char separator_;
  std::size_t unreadPoint_ = 0;
  std::size_t unreadComma_ = 0;
  bool hasComma_ = false;
  std::optional<ReadingQuestion> first_;  ///< about the first number of two readings
};

}  // namespace tarvell

#endif
