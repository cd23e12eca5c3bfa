// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/KnownMessages.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <vector>

namespace tarvell::test {

namespace {

/// A pattern for the whole text of every message that random input may cause. Errors that only a
/// fault of the program can cause (a row, page or column that a table does not have, a model that
/// the editors do not know) are missing on purpose, as are those of a failing disk.
const std::array kKnownMessages = {
    // The main menu.
    "(Station|Calibration data) directory does not set\\.",
    "(Input station folder does|Select calibration data folder is) not exist\\.\r\nIf you want to "
    "create new folder, then press Ok button\\.(\n\nIt would be the folder\n.*)?",
    "On this computer, a share is reached through .*",
    "Morrand Tarvell\nVersion A\\.02\\.61\n.*",  // About
    // The calibration data.
    "Are you (sure (you |to )?want to|want) delete.*\\?.*",
    "Please input serial number",
    "The data of .+ cannot be edited\\. Use Add or Update to copy a finished file\\.",
    "Cannot add to same calibration point",
    "(The folder holds m|M)ore than 51 data files.*; only the first 51 are listed and sorted\\. .*",
    "A calibration point cannot be below zero\\.",
    "This calibration point is too small: its row would show zero\\. Check its unit\\.",
    "\"[*/]\" cannot be the serial number of a member\\. .*",
    "A table holds at most 51 rows\\. .*",
    ".*\n\nThe file is as it was\\. Check the data before you save them with OK\\.",
    "The file holds no serial number where its second line should\\. .*",
    "The chosen file is the kit's data file itself\\. Nothing was changed\\..*",
    // The stations.
    "(Station name is no input|This (station name was|instrment is) already exist)\\.",
    "This action is current station instrment data be all lost\\.\r\nDo you wish to continue\\?",
    "Current station data delete completed\\.",
    "Instruemnt Data was changed\\. Do you want to save it\\?(\n\nThese instruments were added "
    "but not saved: .*)?",
    "Error: Invailed Input Date",
    "The folder of this station is not there any more\\. Leave the station without writing its "
    "list "
    "INDEX\\?.*",
    "Stations were added or deleted, and their list INDEX was not saved\\..*",
    "There is no equipment calibration data\\.\r\nIt's not possible to add it\\.",
    // The overview.
    "(Wait until all files|Not all files) have been read.* press F5 to read them again\\.",
    "(No row is selected|There is no screen for this folder or list)\\..*",
    ".+ is not there any more: somebody has deleted or renamed it\\..*",
    "(No station has an instrument that could be|Nothing has to be) updated.*",
    "The file does not begin like a data file\\. .*",
    "The file is in the old style, without the header lines of a data file, .*",
    // What is chosen, and files that are replaced.
    "(No (calibration data|stations?|model)|Model number or serial number) is (no )?selected\\."
    "(\n\n.+ has an outline, but is not selected\\. .*)?",
    "The chosen (data set|instrument) is not in the .+ any more\\. .*",
    "The (end of the )?file .+ (is missing, and its last line was not read|holds data without a "
    "serial number|holds the data of another serial number, "
    "\".+\"|has changed since it was opened here|with this serial number already exists)\\. Do you "
    "want to replace it\\?\n\n.*",
    // Names, numbers and characters.
    "The (model number|data file name|serial number) \".*\" cannot be used.*",
    "The station name \".*\" (cannot be used|holds the character|is the name of the list).*",
    "The .+ holds (a comma[.,]|the character \".\" after a comma,|more than 20 words,) .*",
    "(The character \".+\"|The control character number \\d+|A line end) cannot be stored in a "
    "data file\\. .*",
    ".+: \".*\" is not a number\\. .*",
    "(.+: |(.+: )?The number ).* is (too large to be calculated with|outside the range -32768 to "
    "32767)\\. .*",
    // The clipboard.
    "A table (of \\d+ lines? cannot be pasted into a field|cannot be pasted into an open cell)\\. "
    ".*",
    "The (column \".+\" cannot be edited|table has no current cell)\\. .*",
    "(There is no text to paste\\.|The copied text has \\d+ lines, and the table has \\d+ "
    "rows) .*",
    "(There are no numbers to paste\\.|What is to be pasted has \\d+ points\\.) .*",
    "\".+\" can be read as .+ or as .+\\.\n\nIs the (point|comma) in it a decimal "
    "(point|comma)\\?.*",
    "The copied lines have \\d+ columns?(: one is missing)?\\. Copy .*",
    "Line \\d+.*\n\nCorrect them in the spreadsheet, then copy and paste again\\.",
    "Line \\d+: (It has \\d+ columns, and the table has \\d+|The table has no value in this "
    "place\\.|There is no value\\.|The character \".+\" in \".+\" cannot be stored in a data "
    "file\\.|\".+\" is not a number|.+ is too large to be calculated with\\.).*",
    // Certificates.
    "The file is (empty|larger than .+|not a text)[.,] .*",
    "The file cannot be read as a certificate: .*",
    "The certificate has more than \\d+ values\\. .*",
    // Drafts and the history.
    "What was typed is not kept as a draft\\. Close without saving\\?.*",
    "The file .+ has changed in the meantime\\. Nothing was done\\..*",
    "The earlier data cannot be kept in the history\\. Do you want to .+ without it\\?.*",
    "Do you want to put back this version of .+\\?.*",
    // Paper.
    "No printer is set up on this computer\\. .*",
    "Nothing was printed\\. Select one version, or two to compare them\\.",
    "Nothing was exported\\. Select one version\\.",
    "The folder holds files that stations read, .*",
    "The file is (a data set that was exported as )?JSON, .*",
    // Files and folders that are damaged, missing or not permitted.
    "The file ends too early: more lines were expected .*",
    "\\d+ entries of the folder cannot be read as a data file:.*",
    "Cannot (list the folder|make the folder|delete it|read the file|save the file): (it, or the "
    "folder it belongs in, does not exist \\(any more\\)|you have no permission to do so|it is a "
    "folder, not a file|its name is too long|there already is one with this name)[.,] .*",
    // Messages of the toolkit's file dialog.
    ".*\n(File|Directory) not found\\.\nPlease verify the correct (file|directory) name was "
    "given\\.",
};

/// What is said above the reason for it.
constexpr const char* kFailures =
    "((Can't make a new station|Cannot make folder!|Error: Cannot save |Nothing was pasted, and "
    "the "
    "table is as it was\\.)\n\n)?";

}  // namespace

bool IsKnownMessage(const QString& text) {
  static const std::vector<QRegularExpression> patterns = [] {
    std::vector<QRegularExpression> made;
    made.reserve(kKnownMessages.size());
    for (const char* pattern : kKnownMessages) {
      made.emplace_back(QRegularExpression::anchoredPattern(kFailures + QString(pattern)),
                        QRegularExpression::DotMatchesEverythingOption);
    }
    return made;
  }();
  // The trash takes every file, so no message may mention it.
  return !text.contains("Trash") && std::ranges::any_of(patterns, [&](const auto& pattern) {
    return pattern.match(text).hasMatch();
  });
}

}  // namespace tarvell::test
