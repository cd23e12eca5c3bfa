// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVCOLUMNS_H
#define TARVELL_EXCHANGE_CSVCOLUMNS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"
#include "exchange/CsvPlaces.h"

namespace tarvell {

/// The caption of a column and the unit below it, as in "Frequency [MHz]".
[[nodiscard]] std::string CaptionOf(const std::vector<DelimitedLine>& lines,
                                    const TablePlace& place, std::size_t column);

/// Reads the columns of the tables of a CSV file, with their captions, numbers and units.
class CsvColumns {
 public:
  /// `lines` must outlive it. The numbers of an unchanged export are taken as they
  /// are written; whoever changes one may have saved it with another decimal sign.
  CsvColumns(const std::vector<DelimitedLine>& lines, DecimalSign sign, bool isUnchanged)
      : lines_(lines), sign_(sign), isUnchanged_(isUnchanged) {}

  [[nodiscard]] CertificateColumn Of(const TablePlace& place, std::size_t column);

  /// Whether a column or a cell was in "mHz", and was read as MHz.
  [[nodiscard]] bool HasMillihertz() const { return hasMillihertz_; }

 private:
  [[nodiscard]] WrittenValue ValueOf(std::string_view cell, const std::string& captionUnit);
  /// Nobody calibrates in millihertz, and many write "mHz" for megahertz; but the user has to know.
  [[nodiscard]] std::string Meant(std::string unit);

  const std::vector<DelimitedLine>& lines_;
  DecimalSign sign_;
  bool isUnchanged_;
  bool hasMillihertz_ = false;
};

}  // namespace tarvell

#endif
