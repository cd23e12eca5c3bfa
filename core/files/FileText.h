// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILETEXT_H
#define TARVELL_CORE_FILES_FILETEXT_H

#include <string>
#include <string_view>

namespace tarvell {

/// Builds the text of a file line by line, in the characters of the file.
class FileText {
 public:
  /// Appends one line and its CR LF. Throws a Character error for a character, a line end
  /// included, that a line cannot hold.
  void Line(std::string_view line);

  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace tarvell

#endif
