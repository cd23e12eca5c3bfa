// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CAPTIONWORDS_H
#define TARVELL_EXCHANGE_CAPTIONWORDS_H

#include <string>
#include <string_view>
#include <vector>

#include "exchange/ModelColumns.h"

/// Whether a caption says only what a column of a model's table holds. No list can have all words
/// that mean something else, so that every word counts that is not known.
namespace tarvell {

/// What a caption says about a column.
struct CaptionReading {
  bool hasWords = false;  ///< it has more than a unit
  bool isNamed = false;   ///< one of its words or symbols names the quantity of the column
  std::vector<std::string> unknown;  ///< the words that do not, those in a row as one text
};

/// Knows the words and symbols of the column's quantity, its units and brackets, neutral words such
/// as "measured value", and those of the coverage of an uncertainty, in English, German, French,
/// Spanish and Italian.
[[nodiscard]] CaptionReading ReadingOf(std::string_view caption, const ModelColumn& column);

}  // namespace tarvell

#endif
