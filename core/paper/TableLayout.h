// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_TABLELAYOUT_H
#define TARVELL_CORE_PAPER_TABLELAYOUT_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/paper/PaperDocument.h"
#include "core/paper/PaperLayout.h"

namespace tarvell {

/// The widths of columns that would like to have `wanted`, in a table that is at most `available`
/// wide: narrow columns get what they want, and the others share the rest.
[[nodiscard]] std::vector<double> SharedWidths(std::span<const double> wanted, double available);

/// A row whose texts are broken into lines.
struct WrappedRow {
  std::vector<std::vector<std::string>> cells;
  double height = 0;
};

/// Lays out the rows of a table, which must live as long as this.
class TableLayout {
 public:
  TableLayout(const PaperTable& table, double width, const PaperFonts& fonts);

  /// A row that is no higher than `limit`; what is too long for that ends in "...".
  [[nodiscard]] WrappedRow Captions(double limit) const;
  [[nodiscard]] WrappedRow Row(std::size_t row, double limit) const;

  /// Puts a row at `y` of a sheet, with a line below it.
  void PlaceCaptions(const WrappedRow& captions, double y, PaperSheet& sheet) const;
  void PlaceRow(const WrappedRow& wrapped, std::size_t row, double y, PaperSheet& sheet) const;

 private:
  void FindWidths(double width);
  [[nodiscard]] double WidestLine(std::string_view text, PaperFont font) const;
  [[nodiscard]] double TextWidth(std::size_t column) const;
  void Place(const WrappedRow& wrapped, PaperFont font, double y, PaperSheet& sheet) const;
  [[nodiscard]] WrappedRow Wrapped(std::vector<std::string> texts, PaperFont font,
                                   double limit) const;

  const PaperTable& table_;
  const PaperFonts& fonts_;
  std::vector<double> widths_;  ///< of the columns, with their padding and the places of the marks
  std::vector<double> markWidths_;
};

}  // namespace tarvell

#endif
