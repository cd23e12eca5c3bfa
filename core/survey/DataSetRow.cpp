// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include "core/caldata/CalFileList.h"
#include "core/caldata/DataFileSummary.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/HeaderLines.h"
#include "core/caldata/Models.h"
#include "core/dates/FileDate.h"
#include "core/files/FileNames.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/FileCheck.h"
#include "core/survey/ValueCheck.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Whether the first item of a file begins with "#", as those in the old style do not.
bool IsNewStyle(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t");
  return first != std::string_view::npos && bytes[first] == '#';
}

void TakeHeader(const CalFileInfo& header, SurveyRow& row) {
  row.serialNumber = header.SerialNumber;
  row.calibrationNumber = header.CalibrationNumber;
  row.calibrated = {header.CalYear, header.CalMonth, header.CalDay};
  row.due = {header.DueYear, header.DueMonth, header.DueDay};
  row.comment = header.Comment;
}

/// Whether a date in a file has all of its eight digits.
bool HasAllDigits(std::string_view text) {
  static constexpr std::size_t kDateDigits = 8;
  return text.size() == kDateDigits &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Takes the serial number and the due date of a header that cannot be read as a whole: what is due
/// stays due, whatever is wrong with the other lines.
void TakeRestOfHeader(std::string_view bytes, SurveyRow& row) {
  row.serialNumber = SummaryOfDataFile(bytes, 0).serialNumber;
  while (!bytes.empty()) {
    const std::string_view line = TrimLeft(TakeLine(bytes));
    if (!line.starts_with('#') ||
        HeaderFieldOf(HeaderValueRead(line.substr(1))) != HeaderField::DueDate) {
      continue;
    }
    const std::string_view date = ListedHeaderValue(line);
    if (HasAllDigits(date)) {
      row.due = FileDate::From(date);
    }
    return;
  }
}

void CheckName(SurveyRow& row) {
  const std::string_view name = LastNameOf(row.path);
  if (row.serialNumber.empty()) {
    row.Add(FindingKind::OtherSerial,
            "The file holds no serial number. Open it and enter that of the instrument.");
  } else if (!EqualsIgnoringCase(name, UncheckedDataFileName(row.serialNumber))) {
    row.Add(FindingKind::OtherSerial, "The file holds the serial number " +
                                          Quoted(row.serialNumber) + ", whose file name is " +
                                          UncheckedDataFileName(row.serialNumber) +
                                          ". Find out which instrument it belongs to, then "
                                          "correct its serial number or rename it.");
  }
}

/// The lines where a file has its header.
using TopLines = std::array<std::string_view, kHeaderLines>;

TopLines TopLinesOf(std::string_view bytes) {
  TopLines lines;
  std::ranges::generate(lines, [&bytes] { return TakeLine(bytes); });
  return lines;
}

/// What the line of a date holds; nothing if it is not where a file has it.
std::optional<std::string_view> DateIn(const TopLines& lines, HeaderField field) {
  const std::string_view line = lines.at(static_cast<std::size_t>(field));
  const auto* end = std::ranges::find_if(line, [](char c) { return IsBlankOrTab(c) || c == ':'; });
  const std::string_view keyword(line.begin(), end);
  const bool isThere =
      keyword.starts_with('#') && EqualsIgnoringCase(keyword.substr(1), KeywordOf(field));
  return isThere ? std::optional(ListedHeaderValue(line)) : std::nullopt;
}

/// `date` is what the lists make of the date of `field`, which completes one that lacks digits.
void CheckDate(const TopLines& lines, HeaderField field, FileDate& date, SurveyRow& row) {
  const std::string name = field == HeaderField::DueDate ? "due" : "calibration";
  const std::optional<std::string_view> text = DateIn(lines, field);
  if (text && !text->empty() && !HasAllDigits(*text)) {
    date = {};
    row.Add(FindingKind::NoSuchDate, "The " + name + " date " + Quoted(DecodeFileText(*text)) +
                                         " is not complete: it should have eight digits, such as "
                                         "20270305. Open the data set and correct it.");
    return;
  }
  if (Exists(date)) {
    return;
  }
  const std::string digits = IsoDate(date);
  row.Add(FindingKind::NoSuchDate,
          "The " + name + " date " + (digits.empty() ? "is missing" : digits + " does not exist") +
              ". Open the data set and correct it.");
}

/// The dates of a test kit's file are wherever its maker has put them.
void LeaveOutOddDates(SurveyRow& row) {
  if (!Exists(row.calibrated)) {
    row.calibrated = {};
    row.due = {};
  }
}

void AddOtherModel(const std::string& other, SurveyRow& row) {
  if (!EqualsIgnoringCase(other, row.model)) {
    row.Add(FindingKind::OtherModel,
            "The file " + NameText(LastNameOf(row.path)) + " is in the folder " +
                Quoted(NameText(row.model)) + ", but holds data of the model " + Quoted(other) +
                ". Move it to the folder of its model. If the folder is right, correct the file's "
                "model line, as OK in the editor does.");
  }
}

/// Checks the model of a file that no class can read.
void CheckModelLine(std::string_view bytes, const CalFileInfo& header, SurveyRow& row) {
  if (!IsNewStyle(bytes)) {
    AddOtherModel(header.ModelNumber, row);
    return;
  }
  const LineWords words = WordsOf(TrimLeft(TakeLine(bytes)));
  if (HeaderFieldOf(words[0]) == HeaderField::ModelNumber) {
    AddOtherModel(DecodeFileText(ModelOnLine(words)), row);
  }
}

/// Reads the whole data set as the editors do.
void CheckContent(const Model& model, std::string_view bytes, const SlipLimits& limits,
                  const std::vector<KeptVersion>& versions, SurveyRow& row) {
  const std::unique_ptr<cifCaldata> data = model.create();
  data->LoadFromBytes(bytes, row.path);
  const LoadedHeader& header = data->HeaderOfLoad();
  if (!header.otherModel.empty()) {
    AddOtherModel(header.otherModel, row);
  }
  CheckRewritten(
      bytes, [&] { return data->BytesToSave(); }, header.isComplete, row);
  CheckValues(model, *data, LoadEarlier(model, versions, row.calibrated).get(), limits, row);
}

void CheckDataSet(std::string_view bytes, const SlipLimits& limits,
                  const std::vector<KeptVersion>& versions, SurveyRow& row) {
  const std::optional<CalFileInfo> header = CalFileHeaderIn(bytes, row.path);
  if (!header) {
    throw Error(ErrorKind::NotAFile,
                "The file does not begin like a data file. Put the right file in its place, or "
                "rename it.",
                row.path);
  }
  TakeHeader(*header, row);
  CheckName(row);
  const Model* model = FindModel(ToUpper(row.model));
  if (model != nullptr && model->family == ModelFamily::TestKit) {
    LeaveOutOddDates(row);
    return;
  }
  const TopLines lines = TopLinesOf(bytes);
  CheckDate(lines, HeaderField::CalDate, row.calibrated, row);
  if (IsNewStyle(bytes)) {
    // In the old style the due date is calculated, and may be 29 FEB of a common year.
    CheckDate(lines, HeaderField::DueDate, row.due, row);
  }
  if (model != nullptr && IsNewStyle(bytes)) {
    CheckContent(*model, bytes, limits, versions, row);
  } else {
    // No save could change it: only what every format has in common can be checked.
    CheckModelLine(bytes, *header, row);
    CheckLastLine(bytes, "put a whole copy in its place", row);
  }
}

}  // namespace

SurveyRow DataSetRow(const std::string& modelFolder, const std::string& path,
                     std::string_view bytes, const SlipLimits& limits,
                     const std::vector<KeptVersion>& versions) {
  SurveyRow row;
  row.kind = SurveyRow::Kind::DataSet;
  row.model = modelFolder;
  row.path = path;
  try {
    CheckDataSet(bytes, limits, versions, row);
  } catch (const Error& error) {
    AddUnreadable(error, row);
    if (row.serialNumber.empty()) {
      TakeRestOfHeader(bytes, row);
    }
  }
  return row;
}

}  // namespace tarvell
