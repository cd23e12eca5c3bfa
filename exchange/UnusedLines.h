// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_UNUSEDLINES_H
#define TARVELL_EXCHANGE_UNUSEDLINES_H

#include <cstddef>
#include <string>
#include <vector>

#include "exchange/DelimitedText.h"

namespace tarvell {

/// The lines of a CSV file that no field takes. Those with a number or a date may matter, and are
/// quoted; titles, addresses and other texts are only counted up.
class UnusedLines {
 public:
  void Add(const DelimitedLine& line);

  /// Whether a line has a number or a date, after a key in the same cell or in a cell of its own.
  [[nodiscard]] static bool MayMatter(const DelimitedLine& line);

  /// A sentence for each line that may matter, then one about all the others.
  [[nodiscard]] std::vector<std::string> Sentences() const;

 private:
  std::vector<std::string> quoted_;  ///< sentences
  std::size_t more_ = 0;             ///< lines that are not quoted, because there are too many
  std::vector<std::size_t> texts_;
};

}  // namespace tarvell

#endif
