// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_COMMANDS_H
#define TARVELL_CLI_COMMANDS_H

#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "core/dates/FileDate.h"
#include "exchange/Certificate.h"

/// The commands of the shell companion. Each returns the exit status of the program.
namespace tarvell::cli {

inline constexpr int kClean = 0;         ///< nothing was found; for diff, nothing differs
inline constexpr int kFindings = 1;      ///< something was found, or differs
inline constexpr int kCouldNotLook = 2;  ///< a file or folder could not be read, or written

/// The options that commands share.
struct Options {
  std::string calibrationDir;  ///< a path of the program
  std::string stationDir;
  FileDate today;
  std::time_t now = 0;
  int dueSoonDays = 30;
  bool isJson = false;
  bool isQuiet = false;  ///< only the exit status counts
};

/// Every finding in both trees. A data set that no station uses counts only if `showUnused`.
int Check(const Options& options, bool showUnused, Console& console);

/// What is past due or due soon, by due date.
int Due(const Options& options, Console& console);

/// A data file or an instrument's file as text.
int Show(const Options& options, const std::string& path, Console& console);

/// The values that differ between two data files, or the bytes.
int Diff(const Options& options, const std::string& first, const std::string& second,
         bool comparesBytes, Console& console);

/// What the file of a data set holds and has held, the latest first.
int History(const Options& options, const std::string& path, Console& console);

enum class ExportFormat { Csv, Json, Calendar };

/// Every row of the survey, or the due dates, to standard output or to the file `target`.
int Export(const Options& options, ExportFormat format, const std::string& target,
           Console& console);

/// A certificate to make a new data set of.
struct ImportOrder {
  std::string file;
  std::string model;
  std::string serialNumber;  ///< "" for the certificate's; else that of the item to take
  /// The tables to take, by their titles or numbers in the certificate; all that fit, if empty.
  std::vector<std::string> tables;
  ReadingChoices reading;
  std::optional<FileDate> calibrated;  ///< in place of the certificate's
  std::optional<FileDate> due;
  bool isSure = false;  ///< whether to take a certificate about which there are doubts
  bool replaces = false;
};

/// Saves a certificate as a new data set. One that lacks a date or a serial number is not saved,
/// nor is one about which there are doubts or that lacks values of a page, unless the user is sure.
/// A file is replaced only if the order says so.
int Import(const Options& options, const ImportOrder& order, Console& console);

/// Runs the program with its arguments, without its own name.
int RunCommandLine(const std::vector<std::string>& arguments, std::time_t now, Console& console);

}  // namespace tarvell::cli

#endif
