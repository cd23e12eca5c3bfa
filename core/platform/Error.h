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
  NotAFile,      ///< there is a folder, device, pipe or foreign file instead of a data file
  InputPastEnd,  ///< a file ends before its expected items
  Index,         ///< a table has no such row, page or column
  Type,          ///< a text is not a number, or a number is too large for its field
  Name,          ///< a text cannot be a file or folder name
  Character,     ///< a text holds a character that the files cannot hold
  Template,      ///< a template file does not fit its model
  WriteFailed,   ///< a file could not be written; its earlier content is still there
  NotKept,       ///< the history cannot take a file that would be replaced; nothing was changed
  System         ///< any other failure that the operating system reported
};

/// The only exception type that the core throws at run time. Guarded, around every action of a
/// screen, catches it and shows it. There are these other catches:
/// - ItemReader::AtThisLine throws the error again with the file and line.
/// - ReadFirstItems reads more of a file whose beginning was not enough.
/// - TryReadHeader (CalFileList.cpp) collects the errors of the files for one error at the end of
///   the list.
/// - EarlierCalibration.cpp and TreeVersions.cpp leave out what cannot be read of the history.
/// - TakeTemplate (OpenedDataSet.cpp) turns the error of a template into a notice.
/// - CalDataFile::RememberUnchangedSave ignores the error of data that have to be corrected before
///   they can be saved.
/// - UnchangedBytes (StationFiles.cpp) does the same for an instrument.
/// - DueDateNotice (StationFiles.cpp) finds out whether a due date could be read back.
/// - EditedFileOnPaper prints the error of data that cannot be saved.
/// - ChangedWithHistory asks whether to go on where the history fails.
/// - ReadProfile falls back to the default directories.
/// - ReadableCalFileHeader (CalFileList.cpp) finds out whether a file can be read.
/// - SurveyThread hands what a survey throws to the thread of the screens.
/// - RunCommandLine reports it, and any other exception, on standard error.
/// - DataSetRow, InstrumentRow and CheckRewritten (FileCheck.h) turn the error of a file into a
///   finding of the survey.
///
/// Of other exceptions, Guarded and RunCommandLine report any; SurveyInThreads and SurveyThread do
/// without a thread that cannot be started (std::system_error).
///
/// `text` is one or more whole sentences for the operator: what happened and what to do.
/// `path` is the file or folder concerned, or "": a path of the program, or of the system for a
/// file that the user has chosen there. `line` is the line of that file, counted from 1, or 0 if
/// the error is not about one line.
class Error : public std::exception {
 public:
  Error(ErrorKind kind, std::string text, std::string path = {}, int line = 0);

  [[nodiscard]] ErrorKind Kind() const noexcept { return kind_; }
  [[nodiscard]] const std::string& Text() const noexcept { return text_; }
  [[nodiscard]] const std::string& Path() const noexcept { return path_; }
  [[nodiscard]] int Line() const noexcept { return line_; }

  /// Text, path and line, ready to be shown.
  [[nodiscard]] const char* what() const noexcept override { return message_.c_str(); }

  /// The same error with `path` and `line`, unless it has a path already.
  [[nodiscard]] Error Located(const std::string& path, int line) const;

 private:
  ErrorKind kind_;
  std::string text_;
  std::string path_;
  int line_;
  std::string message_;
};

/// The error for a result of the operating system. `action` completes the sentence "Cannot ...",
/// for example "read the file".
[[nodiscard]] Error SystemError(std::error_code code, const std::string& action,
                                std::string_view path);

}  // namespace tarvell

#endif
