// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILETEXT_H
#define TARVELL_CORE_FILES_FILETEXT_H

#include <string>
#include <string_view>

namespace tarvell {

/// Builds the bytes of a file line by line. Every line end that the program writes comes from here.
class FileText {
 public:
  /// Appends a line of UTF-8 text in the character set of the data files, and CR LF. Throws a
  /// Character error for a character, or a line end, that a line cannot hold.
  void Line(std::string_view line);

  /// Appends bytes as they are, and CR LF.
  void RawLine(std::string_view bytes);

  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace tarvell

#endif
