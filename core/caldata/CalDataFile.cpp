// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalDataFile.h"

#include <algorithm>
#include <cstdlib>

#include "core/caldata/DataFileSummary.h"
#include "core/caldata/TableRows.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/Paths.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::string_view kEnd = "!End";
constexpr std::string_view kMaker = "QZ";

constexpr std::array<std::string_view, 6> kHeaderKeywords = {"MODEL_NO", "SER_NO",   "CAL_DATE",
                                                             "CAL_NO",   "DUE_DATE", "COMMENT"};
constexpr std::size_t kSerialLine = 1;

/// The model that a model line names, without the maker before it.
std::string NamedModel(const LineWords& words) {
  const std::string_view value = words[1];
  if (!EqualsIgnoringCase(FirstCharacters(value, kMaker.size()), kMaker)) {
    return words[1];
  }
  const std::string_view rest = WithoutFirst(value, kMaker.size());
  return rest.empty() ? words[2] : std::string(rest);
}

}  // namespace

LineWords WordsOf(std::string_view item) {
  LineWords words;
  SplitWords(Replaced(WithoutFirst(item, 1), ':', ' '), words);
  return words;
}

void CheckHeaderName(const std::string& field, std::string_view name) {
  if (name.find(',') != std::string_view::npos) {
    throw Error(
        ErrorKind::Character,
        "The " + field + " \"" + std::string(name) +
            "\" holds a comma, which the data file cannot keep. Remove it, then try again.");
  }
  CheckHeaderValue(field, name);
}

void CheckHeaderValue(const std::string& field, std::string_view value) {
  for (std::size_t i = value.find(','); i < value.size(); i = value.find(',', i + 1)) {
    const std::string_view rest = TrimLeft(value.substr(i + 1));
    if (!rest.empty() && std::string_view("#*!\"").find(rest.front()) != std::string_view::npos) {
      throw Error(ErrorKind::Character, "The " + field + " holds the character \"" +
                                            std::string(1, rest.front()) +
                                            "\" behind a comma, which the data file cannot keep. "
                                            "Remove one of them, then try again.");
    }
  }
  std::array<std::string, kMostWords> words;
  // The line ends at its first comma, and one of its words is its keyword.
  const std::string line = Replaced(value.substr(0, value.find(',')), ':', ' ');
  if (static_cast<std::size_t>(SplitWords(line, words)) >= kLineWords) {
    throw Error(ErrorKind::Character,
                "The " + field + " holds more than " + std::to_string(kLineWords - 1) +
                    " words, which the data file cannot keep. Shorten it, then "
                    "try again.");
  }
}

std::string HeaderValueRead(std::string_view value) {
  // A value of too many words for a line is refused by the save, not while it is typed.
  std::array<std::string, kMostWords> words;
  SplitWords(Replaced(value.substr(0, value.find(',')), ':', ' '), words);
  return words[0];
}

void WriteDataLine(FileText& text, std::string_view line) {
  if (line.find(',') != std::string_view::npos) {
    throw Error(
        ErrorKind::Character,
        "A row of the table holds a comma, which the data file cannot keep: \"" +
            std::string(line) +
            "\". Take it out of the table, or of the file that it came from, then try again.");
  }
  text.Line(line);
}

Error FullTableError() {
  return {ErrorKind::Index, "A table holds at most " + std::to_string(kTableRows) +
                                " rows. Remove the rows that are not needed, then try again."};
}

void TakeDataRows(const CalDataGrid& grid,
                  const std::function<void(std::size_t index, std::int16_t row)>& take) {
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    const auto index = static_cast<std::size_t>(row - 1);
    if (index == kTableRows) {
      throw FullTableError();
    }
    take(index, row);
  }
}

CalDataFile::Date CalDataFile::Date::From(std::string_view digits) {
  const FileDate date = FileDate::From(digits);
  return {date.year, NumberToMonth(date.month), date.day};
}

std::string CalDataFile::Date::Digits() const {
  return std::to_string(std::abs(year)) + AtLeastTwoDigits(MonthToNumber(month)) +
         AtLeastTwoDigits(day);
}

void CalDataFile::GetCalDate(std::int16_t& year, std::string& month, std::int16_t& day) const {
  year = calDate_.year;
  month = calDate_.month;
  day = calDate_.day;
}

void CalDataFile::SetCalDate(std::int16_t year, const std::string& month, std::int16_t day) {
  calDate_ = {year, month, day};
}

void CalDataFile::GetDueDate(std::int16_t& year, std::string& month, std::int16_t& day) const {
  year = dueDate_.year;
  month = dueDate_.month;
  day = dueDate_.day;
}

void CalDataFile::SetDueDate(std::int16_t year, const std::string& month, std::int16_t day) {
  dueDate_ = {year, month, day};
}

std::int32_t CalDataFile::LoadCalibrationDataFromFile(const std::string& fileName) {
  if (EqualsIgnoringCase(fileName, "NEW")) {
    return SetInitialDefaultData();
  }
  FileStamp stamp;
  const Seen seen = Read(fileName, stamp);
  file_.WasRead(fileName, stamp, serialNumber_);
  if (!seen.model.empty() && !EqualsIgnoringCase(seen.model, modelCode_)) {
    Note("The file says that it holds data of the model \"" + seen.model +
         "\". It was read, and will be saved, as data of \"" + std::string(modelCode_) + "\".");
  }
  return 0;
}

std::string CalDataFile::Bytes() const {
  FileText text;
  WriteHeader(text);
  WriteBody(text);
  return text.Bytes();
}

std::int32_t CalDataFile::SaveCalibrationDataToFile(const std::string& fileName) {
  file_.Save(fileName, serialNumber_, Bytes());
  return 0;
}

Replacement CalDataFile::WouldReplace(const std::string& fileName) const {
  return ReplacementBy(file_, fileName, Bytes(), [this](std::string_view bytes) {
    return SummaryOfDataFile(bytes, ShownCells());
  });
}

void CalDataFile::RememberUnchangedSave() {
  try {
    file_.WouldBeWrittenAs(Bytes());
  } catch (const Error&) {
    // What cannot be saved before it is corrected is told then.
    file_.WouldBeWrittenAs({});
  }
}

std::string CalDataFile::TemplatePath() const {
  return Joined(PathText(CurrentPlatform().ProgramFolder()), "Temp" + std::string(modelCode_));
}

std::int32_t CalDataFile::SetInitialDefaultData() {
  const std::filesystem::path native = NativePath(TemplatePath());
  const std::string path = PathText(native);
  const std::string remedy = " Put the right template file back beside the program.";
  EntryFacts facts;
  if (!CurrentPlatform().Facts(native, facts) && facts.kind == EntryKind::None) {
    throw Error(ErrorKind::NotFound, "The template file of the model is missing." + remedy, path);
  }
  holdsDefaults_ = false;
  FileStamp stamp;
  const Seen seen = Read(path, stamp);
  if (!seen.model.empty() && !EqualsIgnoringCase(seen.model, modelCode_)) {
    throw Error(ErrorKind::Template,
                "The template file is one for the model \"" + seen.model + "\", not for \"" +
                    std::string(modelCode_) + "\"." + remedy,
                path);
  }
  if (!seen.isComplete) {
    throw Error(ErrorKind::Template,
                "The template file is not complete: a line \"!End\" is missing." + remedy, path);
  }
  modelNumber_ = modelCode_;
  holdsDefaults_ = true;
  return 0;
}

void CalDataFile::NoteRows(const std::string& notice, const RowSet& rows) {
  if (rows.any()) {
    Note(notice + ": " + RowsText(rows) + ".");
  }
}

void CalDataFile::NoteDoubtfulRows(const DoubtfulRows& rows, std::size_t shown,
                                   const TableTexts& texts) {
  if (shown < rows.count) {
    Note(texts.table + " has no " + std::string(texts.firstColumn) + " in row " +
         std::to_string(shown + 1) +
         ": that row and the rows after it are not shown, and would not be saved.");
  } else if (IsReadOverDefaults()) {
    NoteRows(texts.table +
                 " shows rows that the file does not hold. They come from the template, and would "
                 "be saved",
             RowsBetween(rows.count, shown));
  }
  const RowSet others = RowsBetween(0, shown) & ~rows.beyond;
  NoteRows(
      texts.table + " has more rows than the program has formats for. " + std::string(texts.beyond),
      RowsBetween(0, shown) & rows.beyond);
  NoteRows(
      texts.table + " has rows with an empty field in the file. " + std::string(texts.emptyField),
      others & rows.emptyField);
  NoteRows(texts.table + " has rows with too few values in the file. " + std::string(texts.missing),
           others & rows.missing & ~rows.emptyField);
}

CalDataFile::Seen CalDataFile::Read(const std::string& fileName, FileStamp& stamp) {
  ItemReader reader(fileName);
  reader.StampContent(stamp);
  Seen seen;
  notices_.clear();
  BeginRead();
  std::size_t dataLines = 0;
  std::string item = reader.ReadItem();
  const std::string firstItem = item;
  while (!reader.AtEnd()) {
    reader.AtThisLine([&] { Interpret(item, reader, dataLines, seen); });
    if (reader.AtEnd()) {
      break;
    }
    item = reader.ReadItem();
  }
  hasDataLines_ = dataLines > 0;
  seen.isComplete = EndRead(item, seen.hasEnd || EqualsIgnoringCase(item, kEnd));
  NoteHeader(firstItem, seen);
  return seen;
}

void CalDataFile::NoteHeader(const std::string& firstItem, const Seen& seen) {
  const bool beginsWithLine =
      !firstItem.empty() && std::string_view("#*!").find(firstItem.front()) != std::string::npos;
  header_.isOldStyle = seen.header.none() && !beginsWithLine;
  header_.hasSerialNumber = seen.header[kSerialLine] && !serialNumber_.empty();
  if (!IsReadOverDefaults()) {
    return;
  }
  std::string missing;
  for (std::size_t line = kSerialLine + 1; line < kHeaderKeywords.size(); ++line) {
    if (!seen.header[line]) {
      missing += (missing.empty() ? "#" : ", #") + std::string(kHeaderKeywords.at(line));
    }
  }
  if (!missing.empty()) {
    Note(
        "The file lacks header lines. The values shown for them come from the template, and would "
        "be saved: " +
        missing + ".");
  }
}

bool CalDataFile::EndRead(const std::string& lastItem, bool hasEnd) {
  // A file that ends in a remark after its rows has lost nothing.
  const bool endsInRemark = hasDataLines_ && lastItem.starts_with('!');
  if (!hasEnd && !endsInRemark) {
    Note("The file does not end with its line \"!End\". Its last line was not read: " + lastItem);
  }
  return hasEnd;
}

void CalDataFile::Interpret(const std::string& item, ItemReader& reader, std::size_t& dataLines,
                            Seen& seen) {
  if (item.empty()) {
    return;
  }
  switch (item.front()) {
    case '#':
      TakeHeaderLine(WordsOf(HeaderText(item)), reader, seen);
      break;
    case '*':
      TakeDataLine(dataLines++, item);
      break;
    case '!':
      seen.hasEnd = seen.hasEnd || EqualsIgnoringCase(item, kEnd);
      TakeCommentLine(item, reader);
      break;
    default:
      break;
  }
}

void CalDataFile::TakeHeaderLine(const LineWords& words, ItemReader& reader, Seen& seen) {
  const std::string keyword = ToUpper(words[0]);
  const std::string& value = words[1];
  const auto* known = std::find(kHeaderKeywords.begin(), kHeaderKeywords.end(), keyword);
  if (known != kHeaderKeywords.end()) {
    seen.header.set(static_cast<std::size_t>(known - kHeaderKeywords.begin()));
  }
  if (keyword == "MODEL_NO") {
    modelNumber_ = modelCode_;
    seen.model = NamedModel(words);
  } else if (keyword == "SER_NO") {
    serialNumber_ = value;
  } else if (keyword == "CAL_DATE") {
    calDate_ = Date::From(value);
  } else if (keyword == "CAL_NO") {
    calibrationNumber_ = value;
  } else if (keyword == "DUE_DATE") {
    dueDate_ = Date::From(value);
  } else if (keyword == "COMMENT") {
    comment_ = value;
  } else {
    TakePageLine(words, reader);
  }
}

void CalDataFile::WriteHeader(FileText& text) const {
  CheckHeaderName("serial number", serialNumber_);
  CheckHeaderName("calibration number", calibrationNumber_);
  CheckHeaderValue("comment", comment_);
  text.Line("#MODEL_NO : " + std::string(WrittenModel()));
  text.Line("#SER_NO   : " + serialNumber_);
  text.Line("#CAL_DATE : " + calDate_.Digits());
  text.Line("#CAL_NO   : " + calibrationNumber_);
  text.Line("#DUE_DATE : " + dueDate_.Digits());
  text.Line("#COMMENT  : " + comment_);
}

}  // namespace tarvell
