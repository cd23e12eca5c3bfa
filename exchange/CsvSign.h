// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVSIGN_H
#define TARVELL_EXCHANGE_CSVSIGN_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"
#include "exchange/CsvPlaces.h"

namespace tarvell {

/// Finds out with which decimal sign the numbers of a CSV file are written. A number that only one
/// sign fits decides for all: a file is written with one of them. Serial numbers, dates and remarks
/// decide nothing, and a column that may be one of those decides only where no value has two
/// readings.
class CsvSign {
 public:
  /// `separator` is between the cells of the file.
  explicit CsvSign(char separator) : separator_(separator) {}

  void Add(const std::vector<DelimitedLine>& lines, const TablePlace& table);

  /// The sign that the numbers show, or else the chosen one, or else the point.
  [[nodiscard]] DecimalSign Sign(std::optional<DecimalSign> chosen) const;
  /// Says that values have different decimal signs, and where; "" where they have not.
  [[nodiscard]] std::string Mixed() const;
  /// What has to be asked: nothing if the numbers show the sign, or are the same with both.
  [[nodiscard]] std::optional<ReadingQuestion> Question() const;

 private:
  /// What the numbers of some columns show.
  struct Numbers {
    std::size_t unreadPoint = 0;
    std::size_t unreadComma = 0;
    std::optional<ReadingQuestion> first;  ///< about the first number of two readings
    // The first numbers that only one sign fits, with their lines; "" for none.
    std::string withComma;
    std::string withPoint;

    void Add(std::string_view number, std::size_t line);
  };

  /// The only sign that fits these numbers, nothing if both do.
  [[nodiscard]] std::optional<DecimalSign> DecidedBy(const Numbers& numbers) const;
  [[nodiscard]] std::optional<DecimalSign> Decided() const;

  char separator_;
  bool hasComma_ = false;
  Numbers values_;  ///< of columns that are surely points or values
  Numbers others_;  ///< of columns of which that is not known
};

}  // namespace tarvell

#endif
