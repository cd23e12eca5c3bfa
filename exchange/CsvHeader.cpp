// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvHeader.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/caldata/Models.h"
#include "core/numbers/WrittenNumber.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/CsvLines.h"
#include "exchange/ModelColumns.h"
#include "exchange/TableParts.h"

namespace tarvell {

namespace {

/// A longer line above a table is not its title.
constexpr std::size_t kLongestTitle = 80;
constexpr std::size_t kItemLimit = 100;
/// In more columns of a line nobody says when something was measured.
constexpr std::size_t kColumnsOfStates = 20;

/// Whether a cell is a key itself. Such a cell after a key is not its value: both are captions, as
/// above a list of the standards that were used.
bool IsCaption(std::string_view cell) {
  const std::optional<KeyField> field = KeyFieldOf(cell);
  const bool hasDigit = cell.find_first_of("0123456789") != std::string_view::npos;
  return field && *field != KeyField::Model && !hasDigit;
}

/// The cell of a line that says when results were measured; "" for none. A line that names two
/// states compares them.
std::string_view StateCellOf(const DelimitedLine& line) {
  std::string_view found;
  for (std::size_t column = 0; column < std::min(line.Width(), kColumnsOfStates); ++column) {
    const std::string_view cell = line.Cell(column);
    const std::string_view state = cell.size() > kLongestTitle ? "" : StateIn(cell);
    if (!found.empty() && !state.empty() && state != StateIn(found)) {
      return {};
    }
    found = found.empty() && !state.empty() ? cell : found;
  }
  // "Previous certificate" in a line of keys and values says nothing about the tables.
  const bool isKey = line.Width() > 1 || found.find(':') != std::string_view::npos;
  return isKey && StateIn(found) == "earlier" ? std::string_view() : found;
}

bool IsComment(std::string_view key) {
  return KeyFieldOf(key) == KeyField::Comment;
}

/// Whether a value after such a key can be the number of this certificate. After "Calibration
/// certificate" there may be a page or the name of the laboratory.
bool MayBeNumber(std::string_view key, std::string_view value) {
  const std::string folded = Folded(key);
  const bool hasDigit = value.find_first_of("0123456789") != std::string_view::npos;
  return !NamesEarlier(folded) &&
         (NamesNumber(folded) || (hasDigit && KeyFieldOf(value) != KeyField::Page));
}

}  // namespace

std::string WhereOf(const DelimitedLine& line) {
  return "line " + std::to_string(line.number);
}

void CsvHeader::TakeLine(const DelimitedLine& line) {
  if (IsBlank(line)) {
    // A heading may be above a blank line.
    isInStandards_ = isInStandards_ && standardLines_ == 0;
    return;
  }
  if (!certificate_.isExport && IsOfStandards(line)) {
    DropTitle();
    KeepStandard(line);
    unused_.Add(line);
    return;
  }
  TakeSection(line);
  KeepModels(line);
  const std::size_t items = head_.items.size();
  const bool isTaken = IsTaken(line);
  // Between a title and its table there may be the serial number of the member.
  const bool isAboutTable = isTaken && (head_.items.size() > items || head_.memberSerial);
  if (!isAboutTable) {
    DropTitle();
  }
  const bool isTitle = line.Width() == 1 && head_.title == line.Cell(0);
  if (!isTaken && isTitle && !UnusedLines::MayMatter(line)) {
    title_ = line;
  } else if (!isTaken) {
    unused_.Add(line);
  }
}

void CsvHeader::TakeColumn(const DelimitedLine& line, std::string_view caption,
                           std::string_view value) {
  (void)Take(line, caption, value);
}

bool CsvHeader::IsOfStandards(const DelimitedLine& line) {
  if (IsHeadingOfStandards(Folded(line.Cell(0)))) {
    isInStandards_ = true;
    isStandardInHeading_ = line.Width() > 1 || line.Cell(0).find(':') < line.Cell(0).size() - 1;
    standardLines_ = isStandardInHeading_ ? 1 : 0;
    return true;
  }
  // A heading with a standard of its own may be followed by the keys of the instrument.
  isInStandards_ = isInStandards_ && (!isStandardInHeading_ || !KeyFieldOf(line.Cell(0)));
  standardLines_ += isInStandards_ ? 1 : 0;
  return isInStandards_ || (line.Width() > 1 && !KeyFieldOf(line.Cell(0)) &&
                            NamesMeasuringDevice(Folded(line.Cell(0))));
}

void CsvHeader::KeepStandard(const DelimitedLine& line) {
  for (std::size_t column = 0; column < line.Width(); ++column) {
    const std::string_view cell = line.Cell(column);
    const std::size_t colon = std::min(cell.find(':'), cell.size());
    const std::string_view inCell = WithoutBlanks(cell.substr(std::min(colon + 1, cell.size())));
    const std::string_view value = inCell.empty() ? line.Cell(column + 1) : inCell;
    if (KeyFieldOf(cell.substr(0, colon)) == KeyField::SerialNumber && !value.empty() &&
        !IsCaption(value)) {
      standards_.push_back({std::string(value), WhereOf(line)});
    }
  }
}

void CsvHeader::FinishStandards() {
  const bool hasOwn = std::ranges::any_of(
      certificate_.items, [](const CertificateItem& item) { return !item.serialNumber.empty(); });
  for (const FoundText& serial : standards_) {
    const std::string named =
        "The serial number " + Quoted(serial.text) + " (" + serial.where + ")";
    if (hasOwn) {
      certificate_.notes.push_back(named + " is not used, because it is that of a standard.");
      continue;
    }
    const std::size_t item = ItemWith(&CertificateItem::serialNumber, serial.text).index;
    certificate_.items[item].where = serial.where;
    certificate_.doubts.push_back(named + " may be that of a standard that was used.");
  }
}

TableHead CsvHeader::TakeHead() {
  head_.isOfStandards = std::exchange(isInStandards_, false);
  if (!head_.page.empty()) {
    DropTitle();
  }
  // It is the name of the table.
  title_.reset();
  // "As found" above "RT521A" holds for all members, "RT521A as found" only for that one.
  isStateOfOneTable_ = isStateOfOneTable_ || (!state_.empty() && head_.title == state_);
  head_.section = state_ + (state_.empty() || channel_.empty() ? "" : ", ") + channel_;
  return std::exchange(head_, {});
}

void CsvHeader::KeepModels(const DelimitedLine& line) {
  std::vector<FoundText>& named = certificate_.namedModels;
  for (std::size_t column = 0; column < std::min(line.Width(), kColumnsOfStates); ++column) {
    for (const Model& model : kModels) {
      // Each once, however many lines of a hostile file name it.
      if (std::ranges::find(named, model.code, &FoundText::text) == named.end() &&
          NamesModel(line.Cell(column), model.code)) {
        named.push_back({std::string(model.code), WhereOf(line)});
      }
    }
  }
}

void CsvHeader::TakeSection(const DelimitedLine& line) {
  const std::string_view first = line.Cell(0);
  const bool isHeading = line.Width() == 1 && first.size() <= kLongestTitle;
  if (const std::string_view cell = StateCellOf(line); !cell.empty()) {
    state_ = cell;
    isStateOfOneTable_ = false;
    channel_.clear();
  } else if (isHeading && first.find(':') == std::string_view::npos &&
             (isStateOfOneTable_ || StateIn(state_) == "earlier")) {
    // Under the next heading are other results.
    state_.clear();
  }
  if (isHeading && !ChannelIn(first).empty()) {
    channel_ = state_ == first ? std::string() : std::string(first);
  }
}

void CsvHeader::DropTitle() {
  if (title_) {
    unused_.Add(*title_);
    title_.reset();
  }
}

std::size_t CsvHeader::ItemOf(const InstrumentRows& instrument, const DelimitedLine& line) {
  const auto [index, isNew] = ItemWith(&CertificateItem::serialNumber, instrument.serialNumber);
  CertificateItem& item = certificate_.items[index];
  item.model = item.model.empty() ? instrument.model : item.model;
  item.where = isNew ? WhereOf(line) : item.where;
  return index;
}

void CsvHeader::Finish() {
  DropTitle();
  FinishStandards();
  FinishNumbers();
  dates_.Store(certificate_);
  std::ranges::move(unused_.Sentences(), std::back_inserter(certificate_.notes));
}

bool CsvHeader::IsTaken(const DelimitedLine& line) {
  if (certificate_.isExport && line.cells.size() <= 2 && KeyFieldOf(line.Cell(0))) {
    // An export has the value as it is, even if it is empty.
    return Take(line, line.Cell(0), line.cells.size() > 1 ? line.cells[1] : std::string());
  }
  return line.Width() == 1 ? TakeCell(line) : TakePairs(line);
}

/// A title, or "Serial number: 4711" in one cell.
bool CsvHeader::TakeCell(const DelimitedLine& line) {
  const std::string_view cell = line.Cell(0);
  if (cell.size() <= kLongestTitle) {
    head_.title = cell;
  }
  return TakeColon(line, cell);
}

bool CsvHeader::TakePairs(const DelimitedLine& line) {
  bool isTaken = false;
  for (std::size_t column = 0; column < line.Width(); ++column) {
    std::size_t value = column + 1;
    while (value < line.Width() && line.Cell(value).empty()) {
      ++value;
    }
    if (TakeColon(line, line.Cell(column))) {
      isTaken = true;
    } else if (value < line.Width() &&
               (IsComment(line.Cell(column)) || !IsCaption(line.Cell(value))) &&
               Take(line, line.Cell(column), line.Cell(value))) {
      isTaken = true;
      column = value;
    }
  }
  return isTaken;
}

/// A key and a value in one cell, with a colon between them or, after "no.", a blank.
bool CsvHeader::TakeColon(const DelimitedLine& line, std::string_view cell) {
  const std::size_t colon = std::min(cell.find(':'), cell.size());
  const std::string_view value = WithoutBlanks(cell.substr(std::min(colon + 1, cell.size())));
  if (const auto pair = KeyAndValueIn(cell); pair && colon == cell.size()) {
    if (line.Width() == 1) {
      // A title names the instrument of the tables below it, whatever is above.
      head_.items.clear();
    }
    return Take(line, pair->first, pair->second);
  }
  return !value.empty() && Take(line, cell.substr(0, colon), value);
}

bool CsvHeader::Take(const DelimitedLine& line, std::string_view key, std::string_view value) {
  const std::optional<KeyField> field = KeyFieldOf(key);
  // "Page 1/3" is a page of paper.
  const bool isPaper =
      field == KeyField::Page && !value.empty() && value.front() >= '0' && value.front() <= '9';
  if (!field || isPaper || (field == KeyField::CalibrationNumber && !MayBeNumber(key, value))) {
    return false;
  }
  TakeField(*field, line, key, value);
  return true;
}

void CsvHeader::TakeField(KeyField field, const DelimitedLine& line, std::string_view key,
                          std::string_view value) {
  CertificateHeader& header = certificate_.header;
  switch (field) {
    case KeyField::Model:
      (void)ItemWith(&CertificateItem::model, value);
      break;
    case KeyField::SerialNumber: {
      if (NamesStandardUsed(Folded(key))) {
        standards_.push_back({std::string(value), WhereOf(line)});
        break;
      }
      const std::size_t item = ItemWith(&CertificateItem::serialNumber, value).index;
      certificate_.items[item].where = WhereOf(line);
      head_.items.push_back(item);
      break;
    }
    case KeyField::CalibrationNumber:
      (NamesNumber(Folded(key)) ? numbers_ : likelyNumbers_)
          .push_back({std::string(value), WhereOf(line)});
      break;
    case KeyField::CalDate:
    case KeyField::DueDate:
      TakeDate(field, line, key, value);
      break;
    case KeyField::Comment:
      Keep(value, line, header.comment);
      break;
    case KeyField::Option:
      Keep(value, line, header.option);
      break;
    case KeyField::Format:
      TakeFormat(value);
      break;
    case KeyField::Page:
      head_.page = Shortened(value);
      break;
    case KeyField::MemberSerial:
      head_.memberSerial = Shortened(value);
      break;
  }
}

void CsvHeader::Keep(std::string_view value, const DelimitedLine& line,
                     std::optional<FoundText>& target) {
  if (!target) {
    target = FoundText{std::string(value), WhereOf(line)};
  } else if (target->text != value) {
    certificate_.notes.push_back("Line " + std::to_string(line.number) + ": " + Quoted(value) +
                                 " is not used, because " + target->where + " has " +
                                 Quoted(target->text) + ".");
  }
}

/// A spreadsheet writes numbers with other digits than the data set.
void CsvHeader::TakeFormat(std::string_view value) {
  certificate_.isExport = value.starts_with(kExportFormat);
  const std::size_t firstEnd = std::min(text_.find('\n'), text_.size() - 1);
  certificate_.isUnchanged = value == ExportFormat(text_.substr(firstEnd + 1));
  if (certificate_.isExport && !certificate_.isUnchanged) {
    certificate_.notes.emplace_back(
        "This export was changed after it was written. Its numbers get the digits of the table.");
  }
}

void CsvHeader::TakeDate(KeyField field, const DelimitedLine& line, std::string_view key,
                         std::string_view value) {
  const bool isCalDate = field == KeyField::CalDate;
  const std::string where = WhereOf(line);
  const std::optional<FileDate> exported =
      certificate_.isExport ? ExportedDate(value) : std::nullopt;
  if (!exported) {
    const std::string folded = Folded(key);
    const bool isSure = IsOnlyOfDates(folded) && !NamesEarlier(folded);
    dates_.Add(isCalDate, value, where, isSure ? std::string_view() : WithoutBlanks(key));
    return;
  }
  CertificateHeader& header = certificate_.header;
  (isCalDate ? header.calDate : header.dueDate) = FoundDate{*exported, where};
}

void CsvHeader::FinishNumbers() {
  const bool isNamed = !numbers_.empty();
  numbers_.insert(numbers_.end(), likelyNumbers_.begin(), likelyNumbers_.end());
  std::optional<FoundText>& target = certificate_.header.calibrationNumber;
  for (const FoundText& number : numbers_) {
    if (!target) {
      target = number;
    } else if (number.text != target->text) {
      const bool isLikely = std::ranges::any_of(
          likelyNumbers_, [&](const FoundText& likely) { return likely.where == number.where; });
      (isNamed && isLikely ? certificate_.notes : certificate_.doubts)
          .push_back("There are two certificate numbers: " + Quoted(target->text) + " (" +
                     target->where + "), which is used, and " + Quoted(number.text) + " (" +
                     number.where + ").");
    }
  }
}

CsvHeader::FoundItem CsvHeader::ItemWith(std::string CertificateItem::*field,
                                         std::string_view value) {
  std::vector<CertificateItem>& items = certificate_.items;
  const auto known = std::ranges::find(items, value, field);
  if (known != items.end()) {
    return {static_cast<std::size_t>(known - items.begin()), false};
  }
  const bool isNext = items.empty() || !(items.back().*field).empty();
  if (isNext && items.size() == kItemLimit) {
    throw Error(ErrorKind::Type, "The file names more than " + std::to_string(kItemLimit) +
                                     " instruments, which no certificate does.");
  }
  if (isNext) {
    items.emplace_back();
  }
  items.back().*field = value;
  return {items.size() - 1, true};
}

}  // namespace tarvell
