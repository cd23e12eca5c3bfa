// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_ERROR_H
#define TARVELL_CORE_PLATFORM_ERROR_H

#include <exception>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvell {

enum class ErrorKind {
  NotFound,      ///< a file or folder does not exist
  NoPermission,  ///< the operating system refuses the access
  NotAFile,      ///< a folder, device, pipe or foreign file stands where a data file is expected
  InputPastEnd,  ///< a file ends before its expected items
  Index,         ///< a table has no such row, page or column
  Type,          ///< a text is no number, or a number does not fit its 16-bit field
  Name,          ///< a text cannot be a file or folder name
  Character,     ///< a text holds a character that the files cannot hold
  Template,      ///< a template file does not fit its model
  WriteFailed,   ///< a file could not be written whole; what was there before is still there
  System         ///< any other failure that the operating system reported
};

/// The one exception that the core throws.
///
/// `text` is a whole sentence (or several) for the operator: what happened and what to do.
/// `path` is the file or folder concerned, as the program speaks of it, or "".
/// `line` is the line of that file, counted from 1, or 0 where no line is meant.
class Error : public std::exception {
 public:
  Error(ErrorKind kind, std::string text, std::string path = {}, int line = 0);

  [[nodiscard]] ErrorKind Kind() const noexcept { return kind_; }
  [[nodiscard]] const std::string& Text() const noexcept { return text_; }
  [[nodiscard]] const std::string& Path() const noexcept { return path_; }
  [[nodiscard]] int Line() const noexcept { return line_; }

  /// Text, path and line, ready to be shown.
  [[nodiscard]] const char* what() const noexcept override { return message_.c_str(); }

  /// The same error, told of `path` and `line` where it named none itself.
  [[nodiscard]] Error Located(const std::string& path, int line) const;

 private:
  ErrorKind kind_;
  std::string text_;
  std::string path_;
  int line_;
  std::string message_;
};

/// The error that an operating-system result stands for. `action` completes the sentence
/// "Cannot ...", for example "read the file".
[[nodiscard]] Error SystemError(std::error_code code, const std::string& action,
                                std::string_view path);

}  // namespace tarvell

#endif
