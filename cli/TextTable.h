// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_TEXTTABLE_H
#define TARVELL_CLI_TEXTTABLE_H

#include <string>
#include <vector>

namespace tarvell::cli {

/// Lines of texts whose columns begin below each other.
class TextTable {
 public:
  /// Adds a line. Control characters in its cells, which could change the terminal, become blanks.
  void Add(std::vector<std::string> cells);

  /// The lines, each with a line end; the columns are two blanks apart.
  [[nodiscard]] std::string Text() const;

 private:
  std::vector<std::vector<std::string>> lines_;
};

/// A text of a file for a column beside others: its first 57 characters and "..." if it has more
/// than 60, which would make every line as wide.
[[nodiscard]] std::string ForColumn(const std::string& text);

/// `name` as NameText returns it, with a blank for each control character.
[[nodiscard]] std::string WithoutControls(const std::string& name);

}  // namespace tarvell::cli

#endif
