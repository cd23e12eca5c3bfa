// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_PAPERDOCUMENT_H
#define TARVELL_CORE_PAPER_PAPERDOCUMENT_H

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

/// What is printed, or saved as PDF: a value, without a layout. LayOut in PaperLayout.h breaks it
/// into sheets. Everything is readable in black and white.
namespace tarvell {

/// A line such as "Serial number   3318A12345". A long value goes on in the next line.
struct PaperField {
  std::string name;
  std::string value;

  bool operator==(const PaperField&) const = default;
};
using PaperFields = std::vector<PaperField>;

struct PaperParagraph {
  std::string text;  ///< "\n" begins a new line
  bool isStrong = false;

  bool operator==(const PaperParagraph&) const = default;
};

struct PaperCell {
  std::string text;
  std::string mark = {};  ///< a sign after the text, in a place of its own

  bool operator==(const PaperCell&) const = default;
};

struct PaperColumn {
  std::string caption;
  bool isNumber = false;  ///< whether its texts end at its right edge

  bool operator==(const PaperColumn&) const = default;
};

/// A table. A row is never split; each sheet that the table goes on to repeats its captions.
struct PaperTable {
  std::string caption = {};  ///< above the table, "" for none
  std::vector<PaperColumn> columns = {};
  std::vector<std::vector<PaperCell>> rows = {};  ///< a row may have fewer cells than columns

  bool operator==(const PaperTable&) const = default;
};

/// A picture as wide as the sheet. Whoever prints the document has the pictures.
struct PaperPicture {
  std::string caption = {};  ///< above the picture, "" for none
  std::size_t number = 0;    ///< among the pictures of the document
  double height = 0;         ///< in points; a sheet that is lower shows it smaller

  bool operator==(const PaperPicture&) const = default;
};

/// Lines to write on by hand, side by side, with a caption below each.
struct PaperBlanks {
  std::vector<std::string> captions;

  bool operator==(const PaperBlanks&) const = default;
};

using PaperPart = std::variant<PaperFields, PaperParagraph, PaperTable, PaperPicture, PaperBlanks>;

struct PaperDocument {
  std::string title = {};  ///< large on the first sheet, small on the others
  std::string foot = {};   ///< on every sheet, before "Page 2 of 5"
  bool isWide = false;     ///< whether the long side of the sheet is its width
  std::vector<PaperPart> parts = {};
};

}  // namespace tarvell

#endif
