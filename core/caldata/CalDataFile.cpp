// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalDataFile.h"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <utility>

#include "core/caldata/DataFileSummary.h"
#include "core/caldata/HeaderLines.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kEnd = "!End";

}  // namespace

/// The reading of one file.
class CalDataFile::Load {
 public:
  /// Reads the whole file; throws what stops the reading.
  Load(CalDataFile& data, ItemReader reader)
      : data_(data), reader_(std::move(reader)), notes_(data.holdsDefaults_) {
    data_.notices_.clear();
    body_ = data_.NewBodyReader(notes_);
    ReadItems();
    data_.header_ = {
        .isOldStyle = IsOldStyle(firstItem_, headerLines_),
        .hasSerialNumber = HasLine(HeaderField::SerialNumber) && !data_.serialNumber_.empty(),
        .isComplete = isComplete_,
        .lacksCalDate = IsFromTemplate(HeaderField::CalDate),
        .lacksDueDate = IsFromTemplate(HeaderField::DueDate),
        .otherModel = OtherModel()};
    NoteMissingHeaderLines();
    data_.lackedCells_ = notes_.TakenLackedCells();
    data_.notices_ = std::move(notes_).Taken();
  }

  [[nodiscard]] const std::string& FileBytes() const { return reader_.Bytes(); }
  [[nodiscard]] bool IsComplete() const { return isComplete_; }
  /// The model that the file names, if it is not that of the object; otherwise "".
  [[nodiscard]] std::string OtherModel() const {
    return EqualsIgnoringCase(model_, data_.modelCode_) ? std::string() : model_;
  }

 private:
  [[nodiscard]] bool HasLine(HeaderField field) const {
    return headerLines_[static_cast<std::size_t>(field)];
  }

  void ReadItems() {
    std::string item = reader_.ReadItem();
    firstItem_ = item;
    while (!reader_.AtEnd()) {
      reader_.AtThisLine([&] { Interpret(item); });
      if (reader_.AtEnd()) {
        break;
      }
      item = reader_.ReadItem();
    }
    const bool hasEnd = hasEnd_ || EqualsIgnoringCase(item, kEnd);
    isComplete_ = body_->End({item, hasEnd, nextDataLine_.value > 0});
  }

  void Interpret(const std::string& item) {
    if (item.starts_with('#')) {
      TakeHeaderLine(WordsOf(data_.HeaderText(item)));
    } else if (item.starts_with('*')) {
      const TableIndex index = nextDataLine_;
      ++nextDataLine_.value;
      body_->TakeDataLine(index, item);
    } else if (item.starts_with('!')) {
      hasEnd_ = hasEnd_ || EqualsIgnoringCase(item, kEnd);
      body_->TakeCommentLine(item, reader_);
    }
  }

  void TakeHeaderLine(const LineWords& words) {
    const std::optional<HeaderField> field = HeaderFieldOf(words[0]);
    if (!field) {
      body_->TakePageLine(words, reader_);
      return;
    }
    headerLines_.set(static_cast<std::size_t>(*field));
    const std::string& value = words[1];
    switch (*field) {
      case HeaderField::ModelNumber:
        data_.modelNumber_ = data_.modelCode_;
        model_ = ModelOnLine(words);
        break;
      case HeaderField::SerialNumber:
        data_.serialNumber_ = value;
        break;
      case HeaderField::CalDate:
        data_.calDate_ = Date::From(value);
        break;
      case HeaderField::CalNumber:
        data_.calibrationNumber_ = value;
        break;
      case HeaderField::DueDate:
        data_.dueDate_ = Date::From(value);
        break;
      case HeaderField::Comment:
        data_.comment_ = value;
        break;
    }
  }

  [[nodiscard]] bool IsFromTemplate(HeaderField field) const {
    return notes_.IsReadOverDefaults() && !HasLine(field);
  }

  void NoteMissingHeaderLines() {
    std::string missing;
    for (const HeaderField field : {HeaderField::CalDate, HeaderField::CalNumber,
                                    HeaderField::DueDate, HeaderField::Comment}) {
      if (IsFromTemplate(field)) {
        missing += (missing.empty() ? "#" : ", #") + std::string(KeywordOf(field));
      }
    }
    if (!missing.empty()) {
      notes_.Add(
          "The file lacks header lines. The values shown for them come from the template, "
          "and would be saved: " +
          missing + ".");
    }
  }

  CalDataFile& data_;
  ItemReader reader_;
  LoadNotes notes_;
  std::unique_ptr<BodyReader> body_;
  std::string firstItem_;
  std::string model_ = std::string(data_.modelCode_);  ///< as the file names it
  HeaderFieldSet headerLines_;
  TableIndex nextDataLine_;
  bool hasEnd_ = false;
  bool isComplete_ = false;
};

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
  const Load load(*this, ItemReader(fileName));
  TakeLoad(load);
  file_.WasRead(fileName, load.FileBytes(), serialNumber_);
  return 0;
}

void CalDataFile::LoadFromBytes(std::string_view bytes, const std::string& fileName) {
  TakeLoad(Load(*this, ItemReader::Of(bytes, fileName)));
  LeaveFile();
}

void CalDataFile::TakeLoad(const Load& load) {
  holdsOnlyDefaults_ = false;
  if (const std::string other = load.OtherModel(); !other.empty()) {
    notices_.push_back("The file says that it holds data of the model \"" + other +
                       "\". It was read, and will be saved, as data of \"" +
                       std::string(modelCode_) + "\".");
  }
}

Origin CalDataFile::OriginOfLoad(std::int16_t page, Cell cell) const {
  if (holdsOnlyDefaults_) {
    return Origin::Template;
  }
  const auto lacked = lackedCells_.find({page, IndexOf(cell.row)});
  const bool isLacked =
      lacked != lackedCells_.end() && static_cast<std::size_t>(cell.column) >= lacked->second;
  return isLacked && holdsDefaults_ ? Origin::Template : Origin::File;
}

std::string CalDataFile::BytesToSave() const {
  FileText text;
  WriteHeader(text);
  WriteBody(text);
  return text.Bytes();
}

std::int32_t CalDataFile::SaveCalibrationDataToFile(const std::string& fileName, Earlier earlier) {
  file_.Save(fileName, serialNumber_, BytesToSave(), earlier);
  return 0;
}

Replacement CalDataFile::WouldReplace(const std::string& fileName) const {
  return ReplacementBy(file_, fileName, BytesToSave(), [this](std::string_view bytes) {
    return SummaryOfDataFile(bytes, ShownCells());
  });
}

void CalDataFile::RememberUnchangedSave() {
  try {
    file_.SetUnchangedBytes(BytesToSave());
  } catch (const Error&) {
    // Such data cannot be saved; the save reports why.
    file_.SetUnchangedBytes({});
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
  const Load load(*this, ItemReader(path));
  if (const std::string other = load.OtherModel(); !other.empty()) {
    throw Error(ErrorKind::Template,
                "The template file is for the model \"" + other + "\", not for \"" +
                    std::string(modelCode_) + "\"." + remedy,
                path);
  }
  if (!load.IsComplete()) {
    throw Error(ErrorKind::Template,
                "The template file is not complete: a line \"!End\" is missing." + remedy, path);
  }
  modelNumber_ = modelCode_;
  holdsDefaults_ = true;
  holdsOnlyDefaults_ = true;
  return 0;
}

void CalDataFile::WriteHeader(FileText& text) const {
  CheckHeaderName("serial number", serialNumber_);
  CheckHeaderName("calibration number", calibrationNumber_);
  CheckHeaderValue("comment", comment_);
  text.Line(HeaderLine(HeaderField::ModelNumber, WrittenModel()));
  text.Line(HeaderLine(HeaderField::SerialNumber, serialNumber_));
  text.Line(HeaderLine(HeaderField::CalDate, calDate_.Digits()));
  text.Line(HeaderLine(HeaderField::CalNumber, calibrationNumber_));
  text.Line(HeaderLine(HeaderField::DueDate, dueDate_.Digits()));
  text.Line(HeaderLine(HeaderField::Comment, comment_));
}

}  // namespace tarvell
