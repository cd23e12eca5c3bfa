// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_PAPERLAYOUT_H
#define TARVELL_CORE_PAPER_PAPERLAYOUT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/paper/PaperDocument.h"

/// Where everything of a document is on its sheets. Lengths are in points, 72 for an inch, from the
/// upper left corner of the area inside the margins.
namespace tarvell {

enum class PaperFont { Text, Strong, Title, Small };

/// The sizes of texts on the device that prints.
class PaperFonts {
 public:
  PaperFonts() = default;
  PaperFonts(const PaperFonts&) = delete;
  PaperFonts& operator=(const PaperFonts&) = delete;
  virtual ~PaperFonts() = default;

  [[nodiscard]] virtual double WidthOf(std::string_view text, PaperFont font) const = 0;
  [[nodiscard]] virtual double LineHeight(PaperFont font) const = 0;
};

/// The area inside the margins of a sheet.
struct PaperArea {
  double width = 0;
  double height = 0;
};

/// A text of one line; x and y are its upper left corner.
struct PlacedText {
  double x = 0;
  double y = 0;
  std::string text;
  PaperFont font = PaperFont::Text;

  bool operator==(const PlacedText&) const = default;
};

/// A horizontal line; y is its middle.
struct PlacedRule {
  double x = 0;
  double y = 0;
  double width = 0;
  double thickness = 0;

  bool operator==(const PlacedRule&) const = default;
};

struct PlacedPicture {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  std::size_t number = 0;  ///< see PaperPicture

  bool operator==(const PlacedPicture&) const = default;
};

struct PaperSheet {
  std::vector<PlacedText> texts;
  std::vector<PlacedRule> rules;
  std::vector<PlacedPicture> pictures;
};

/// Breaks a document into sheets, at least one. A row of a table, a picture and its caption, and
/// lines to write on are never split. A table, or a picture, that does not fit below what is before
/// it begins on the next sheet; of a table, that is when not even its captions and its first row
/// fit. A cell that is higher than a whole sheet is cut off and ends in "...".
[[nodiscard]] std::vector<PaperSheet> LayOut(const PaperDocument& document, PaperArea area,
                                             const PaperFonts& fonts);

}  // namespace tarvell

#endif
