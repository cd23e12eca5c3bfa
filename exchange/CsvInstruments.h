// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVINSTRUMENTS_H
#define TARVELL_EXCHANGE_CSVINSTRUMENTS_H

#include <cstddef>
#include <string>
#include <vector>

#include "exchange/CsvPlaces.h"

namespace tarvell {

/// The rows of a table that are about one instrument.
struct InstrumentRows {
  std::string serialNumber;  ///< "" where the first rows do not name one
  std::string model;         ///< "" where no column names it
  std::vector<std::size_t> rows;
};

/// The rows of a table with a column of serial numbers, by instrument, in the order of the file. An
/// empty cell means what is above it. Nothing for a table without such a column, or if the
/// column only counts the rows.
[[nodiscard]] std::vector<InstrumentRows> RowsByInstrument(const std::vector<DelimitedLine>& lines,
                                                           const TablePlace& place);

}  // namespace tarvell

#endif
