// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/station/StationFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sstream>
#include <system_error>
#include <utility>

#include "core/dates/Calendar.h"
#include "core/dates/Months.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/FileNames.h"
#include "core/files/FileText.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/files/SaveFile.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"
#include "core/station/InstrumentEnd.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::string_view kModelNumber = "MODEL NUMBER";
constexpr std::string_view kAddressType = "ADDRESS TYPE";

/// A line of an instrument file.
struct Field {
  std::string_view keyword;
  std::string StationInstrument::*member;  ///< nullptr for the due date, which has three members
};

/// The lines in the order of the file.
constexpr std::array<Field, 12> kFields = {{
    {kModelNumber, &StationInstrument::ModelNumber},
    {"SERIAL NUMBER", &StationInstrument::SerialNumber},
    {kAddressType, &StationInstrument::AddressType},
    {"ADDRESS", &StationInstrument::Address},
    {"STATION", &StationInstrument::Station},
    {"OPTIONS", &StationInstrument::Options},
    {"AVAILABILITY", &StationInstrument::Availability},
    {"CAL DUE DATE", nullptr},
    {"ASSET", &StationInstrument::Asset},
    {"TRACE", &StationInstrument::Trace},
    {"COMMENT", &StationInstrument::Comment},
    {"CAL DATA", &StationInstrument::CalData},
}};

/// The line with exactly this keyword, nullptr if none exists.
const Field* FindField(std::string_view keyword) {
  const auto* found = std::ranges::find(kFields, keyword, &Field::keyword);
  return found == kFields.end() ? nullptr : found;
}

/// The words of a line. SplitWords never fills the last one, so that it stays empty.
using Words = std::array<std::string, kWordLimit + 1>;

/// Number of words in the keyword of a line.
std::size_t KeywordLength(const Words& words) {
  if (words[0] == "MODEL" || words[0] == "SERIAL") {
    return 2;
  }
  if (words[0] == "ADDRESS") {
    return words[1] == "TYPE" ? 2 : 1;
  }
  if (words[0] == "CAL") {
    return words[1] == "DATA" ? 2 : 3;
  }
  return 1;
}

/// The words from `first` on, separated by single blanks.
std::string JoinedWords(const Words& words, std::size_t first) {
  std::string text;
  for (std::size_t i = first; i < words.size(); ++i) {
    if (!words.at(i).empty()) {
      text += (text.empty() ? "" : " ") + words.at(i);
    }
  }
  return text;
}

std::string AddressTypeOf(const std::string& value) {
  if (value == "QZ-IB") {
    return "GP-IB";
  }
  return value.empty() ? "NONE" : value;
}

void ApplyDueDate(const std::string& value, StationInstrument& instrument) {
  if (value.empty()) {
    instrument.DueYear = "2000";
    // Other station software expects this digit instead of a month's name.
    instrument.DueMonth = "1";
    instrument.DueDay = "1";
    return;
  }
  Words words;
  SplitWords(value, words);
  instrument.DueYear = Normalised(words[2]);
  instrument.DueMonth = words[1];
  instrument.DueDay = Normalised(words[0]);
}

std::string DueDateText(const StationInstrument& instrument) {
  return std::string(Trim(instrument.DueDay)) + " " + std::string(Trim(instrument.DueMonth)) + " " +
         std::string(Trim(instrument.DueYear));
}

/// What is read back from a file that has other lines after this one.
StationInstrument ReadBackOf(std::string_view line) {
  std::string_view item = line.substr(0, line.find(','));
  item = item.substr(0, item.find_last_not_of(" \t") + 1);
  StationInstrument instrument;
  ApplyKeywordLine(ParseKeywordLine(item), instrument);
  return instrument;
}

/// A value in quotation marks for a notice. Of a long one, only the last words: they show where it
/// was cut off.
std::string QuotedEnd(const std::string& value) {
  static constexpr std::size_t kShownCharacters = 40;
  if (CharacterCount(value) <= kShownCharacters) {
    return "\"" + value + "\"";
  }
  const std::string_view end = LastCharacters(value, kShownCharacters);
  return "\"... " + std::string(end.substr(end.find(' ') + 1)) + "\"";
}

/// Why a line is not read back as it is written, and what to do about it.
std::string ReasonOf(const std::string& line) {
  if (line.find(',') != std::string::npos) {
    return " only: a comma ends it. Write it without a comma.";
  }
  std::istringstream words(line);
  std::string word;
  std::size_t count = 0;
  while (words >> word) {
    ++count;
  }
  return count > kWordLimit ? " only: a line holds " + std::to_string(kWordLimit) +
                                  " words, its keyword included. Shorten it."
                            : ": blanks at its beginning and runs of blanks are not kept.";
}

/// The notice about a field other than the due date, "" for none.
std::string NoticeOf(const Field& field, const std::string& value) {
  const std::string keyword(field.keyword);
  const std::string line = keyword + " " + value;
  const StationInstrument read = ReadBackOf(line);
  const std::string& readBack = read.*(field.member);
  if (readBack == TrimRight(value)) {
    return "";
  }
  if (field.member == &StationInstrument::Address && !read.AddressType.empty()) {
    return keyword + " will be read back as the " + std::string(kAddressType) + " " +
           QuotedEnd(read.AddressType) + ", because it begins with \"TYPE\". Write it another way.";
  }
  const bool isRenamed =
      field.keyword == kAddressType && readBack == AddressTypeOf(std::string(TrimRight(value)));
  return keyword + " will be read back as " + QuotedEnd(readBack) +
         (isRenamed ? "." : ReasonOf(line));
}

/// Whether a part of the due date is the same text or number when it is read back.
bool IsSamePart(const std::string& part, const std::string& readBack) {
  return Trim(part) == readBack || (ParseNumber(part) && Normalised(part) == readBack);
}

/// The notice about the due date; its field is nullptr if none exists.
ReadBackNotice DueDateNotice(const StationInstrument& instrument) {
  static constexpr std::array kParts = {&StationInstrument::DueDay, &StationInstrument::DueMonth,
                                        &StationInstrument::DueYear};
  try {
    if (!HasValidDueDate(instrument)) {
      return {};
    }
  } catch (const Error&) {
    return {};
  }
  const std::string keyword = "CAL DUE DATE";
  const std::string advice = ". Write its day and its year as numbers only.";
  StationInstrument read;
  try {
    read = ReadBackOf(keyword + " " + DueDateText(instrument));
  } catch (const Error&) {
    return {&StationInstrument::DueDay, keyword + " will make the file unreadable" + advice};
  }
  for (const auto part : kParts) {
    if (!IsSamePart(instrument.*part, read.*part)) {
      return {part, keyword + " will be read back as " + QuotedEnd(DueDateText(read)) + advice};
    }
  }
  return {};
}

/// Removes the INDEX file from the names in its folder. If none has exactly that name, it is the
/// file whose name differs only in case, because saving would replace that.
void LeaveOutIndex(const std::filesystem::path& folder, std::vector<std::string>& names) {
  auto index = std::ranges::find(names, kIndexName);
  if (index == names.end()) {
    index = std::ranges::find_if(
        names, [](const std::string& name) { return EqualsIgnoringCase(name, kIndexName); });
    EntryFacts facts;
    if (index == names.end() || CurrentPlatform().Facts(folder / SystemName(*index), facts) ||
        facts.kind == EntryKind::Folder) {
      return;
    }
  }
  names.erase(index);
}

/// The names in the folder at `native`. Errors show its path as `folder`.
std::vector<std::string> NamesIn(const std::filesystem::path& native, const std::string& folder,
                                 SearchKind kind) {
  std::vector<std::string> names;
  const std::error_code code = CurrentPlatform().Search(native, kind, [&](const FoundEntry& entry) {
    names.push_back(entry.name);
    return true;
  });
  if (code) {
    throw SystemError(code, "list the folder", folder);
  }
  return names;
}

std::vector<std::string> NamesWithoutIndex(const std::string& folder, SearchKind kind) {
  const std::filesystem::path native = NativePath(folder);
  std::vector<std::string> names = NamesIn(native, folder, kind);
  LeaveOutIndex(native, names);
  return names;
}

/// Whether a value in the bytes of a file is read and written as it is: single blanks between its
/// words, and no more words than a line has besides its keyword.
bool IsPlainValue(std::string_view value) {
  static constexpr std::size_t kBlankLimit = 26;
  std::size_t blanks = 0;
  char before = ' ';
  for (const char c : value) {
    if (c == ',' || static_cast<unsigned char>(c) < ' ' || (c == ' ' && before == ' ')) {
      return false;
    }
    blanks += c == ' ' ? 1U : 0U;
    before = c;
  }
  return value.empty() || (before != ' ' && blanks <= kBlankLimit);
}

/// Whether a text has at most four digits and no others, the first of which is not 0.
bool IsPlainNumber(std::string_view text) {
  return !text.empty() && text.size() <= 4 && text.front() != '0' &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool TakePlainDueDate(std::string_view value, StationInstrument& instrument) {
  const std::size_t month = value.find(' ') + 1;
  const std::size_t year = value.find(' ', month) + 1;
  if (month == 0 || year == 0) {
    return false;
  }
  instrument.DueDay = value.substr(0, month - 1);
  instrument.DueMonth = value.substr(month, year - month - 1);
  instrument.DueYear = value.substr(year);
  return IsPlainNumber(instrument.DueDay) && IsPlainNumber(instrument.DueYear) &&
         MonthToNumber(instrument.DueMonth) != 0;
}

/// Refuses the name INDEX, because every other file in the folder belongs to an instrument.
void CheckInstrumentName(const std::string& modelNumber) {
  CheckFileName(modelNumber, "The model number");
  if (EqualsIgnoringCase(modelNumber, kIndexName)) {
    throw Error(ErrorKind::Name,
                "The model number \"" + modelNumber +
                    "\" cannot be used: it is the name of the station's list of instruments. "
                    "Change it, then try again.");
  }
}

/// Adds a line. A comma ends its value when it is read back. Throws a Character error when the text
/// after the comma would be read as a line of its own, or as one item with the lines after it.
void AddLine(FileText& text, std::string_view keyword, const std::string& value) {
  std::size_t comma = value.find(',');
  while (comma != std::string::npos) {
    std::size_t start = std::min(value.find_first_not_of(" \t", comma + 1), value.size());
    std::size_t end = value.find(',', start);
    comma = end;
    const bool isQuoted = value.compare(start, 1, "\"") == 0;
    if (isQuoted) {
      end = value.find('"', ++start);
      comma = value.find(',', std::min(end, value.size()));
    }
    const bool isOpen = isQuoted && end == std::string::npos;
    const std::string item = value.substr(start, end - start);
    if (isOpen || FindField(ParseKeywordLine(item).keyword) != nullptr) {
      throw Error(ErrorKind::Character,
                  "The value \"" + value + "\" of " + std::string(keyword) +
                      " cannot be kept: the text after its comma, \"" + item +
                      "\", would be taken for another line. Change it, then try again.");
    }
  }
  text.Line(std::string(keyword) + " " + value);
}

/// Whether a line can hold a name. The name may be in the character set of an older system.
bool CanBeListed(const std::string& name) {
  return name.find_first_of("\r\n") == std::string::npos && (!IsUtf8(name) || IsFileText(name));
}

/// A list of file names, one per line. A name that is not UTF-8 keeps its bytes.
FileText NameLines(const std::vector<std::string>& names, const std::string& path) {
  FileText text;
  for (const std::string& name : names) {
    if (!CanBeListed(name)) {
      throw Error(ErrorKind::Character,
                  "The name \"" + name +
                      "\" holds a character that the list cannot hold. Rename the file or folder "
                      "of this name, then try again.",
                  path);
    }
    text.RawLine(IsUtf8(name) ? EncodeFileText(name) : name);
  }
  return text;
}

/// What a save would write if the user changed nothing, "" if it would fail.
std::string UnchangedBytes(const StationInstrument& instrument) {
  try {
    return InstrumentBytes(instrument);
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

KeywordLine ParseKeywordLine(std::string_view item) {
  Words words;
  SplitWords(item, words);
  const std::size_t length = KeywordLength(words);
  // A keyword of several words keeps its blanks even if a word is missing.
  std::string keyword = words[0];
  for (std::size_t i = 1; i < length; ++i) {
    keyword += " " + words.at(i);
  }
  return {keyword, JoinedWords(words, length)};
}

void ApplyKeywordLine(const KeywordLine& line, StationInstrument& instrument) {
  const Field* field = FindField(line.keyword);
  if (field == nullptr) {
    return;
  }
  if (field->member == nullptr) {
    ApplyDueDate(line.value, instrument);
  } else {
    instrument.*(field->member) =
        field->keyword == kAddressType ? AddressTypeOf(line.value) : line.value;
  }
}

bool LoadInstrumentFile(const std::string& path, StationInstrument& instrument, StoredFile& file) {
  ItemReader reader(path);
  if (reader.AtEnd()) {
    return false;
  }
  StationInstrument loaded = instrument;
  // The serial number of another instrument must not stay if the file has none.
  loaded.SerialNumber.clear();
  std::string item = reader.ReadItem();
  while (!reader.AtEnd()) {
    const KeywordLine line = ParseKeywordLine(item);
    reader.AtThisLine([&] { ApplyKeywordLine(line, loaded); });
    item = reader.ReadItem();
  }
  instrument = loaded;
  file.WasRead(path, reader.Bytes(), instrument.SerialNumber);
  file.SetUnchangedBytes(UnchangedBytes(instrument));
  file.SetUnread(NoticeOfMissingEnd(reader.Bytes()));
  return true;
}

std::optional<StationInstrument> PlainInstrumentIn(std::string_view bytes) {
  StationInstrument instrument;
  for (const Field& field : kFields) {
    const std::size_t end = bytes.find("\r\n");
    const std::size_t start = field.keyword.size() + 1;
    if (end == std::string_view::npos || end < start || !bytes.starts_with(field.keyword) ||
        bytes[start - 1] != ' ') {
      return std::nullopt;
    }
    const std::string_view value = bytes.substr(start, end - start);
    if (!IsPlainValue(value)) {
      return std::nullopt;
    }
    if (field.member != nullptr) {
      AppendDecoded(instrument.*(field.member), value);
    } else if (!TakePlainDueDate(value, instrument)) {
      return std::nullopt;
    }
    bytes.remove_prefix(end + 2);
  }
  const bool isAsWritten = bytes.empty() && !instrument.Address.starts_with("TYPE") &&
                           AddressTypeOf(instrument.AddressType) == instrument.AddressType;
  return isAsWritten ? std::optional(std::move(instrument)) : std::nullopt;
}

StationInstrument InstrumentIn(std::string_view bytes, const std::string& path) {
  ItemReader reader = ItemReader::Of(bytes, path);
  StationInstrument instrument;
  while (!reader.AtEnd()) {
    const KeywordLine line = ParseKeywordLine(reader.ReadItem());
    reader.AtThisLine([&] { ApplyKeywordLine(line, instrument); });
  }
  return instrument;
}

FileSummary SummaryOfInstrument(std::string_view bytes) {
  const std::string text = DecodeFileText(bytes);
  FileSummary summary;
  for (const Field& field : kFields) {
    summary.fields.push_back({std::string(field.keyword), ""});
  }
  std::string_view rest = text;
  while (!rest.empty()) {
    const KeywordLine line = ParseKeywordLine(TakeLine(rest));
    if (const Field* field = FindField(line.keyword)) {
      summary.fields.at(static_cast<std::size_t>(field - kFields.data())).value = line.value;
    }
  }
  summary.serialNumber = summary.fields.at(1).value;
  return summary;
}

std::string InstrumentBytes(const StationInstrument& instrument) {
  FileText text;
  for (const Field& field : kFields) {
    AddLine(text, field.keyword,
            field.member == nullptr ? DueDateText(instrument) : instrument.*(field.member));
  }
  return text.Bytes();
}

std::vector<ReadBackNotice> ReadBackNotices(const StationInstrument& instrument) {
  std::vector<ReadBackNotice> notices;
  for (const Field& field : kFields) {
    ReadBackNotice notice;
    if (field.member == nullptr) {
      notice = DueDateNotice(instrument);
    } else if (field.member != &StationInstrument::CalData) {
      notice = {field.member, NoticeOf(field, instrument.*(field.member))};
    }
    if (!notice.text.empty()) {
      notices.push_back(notice);
    }
  }
  return notices;
}

bool HasValidDueDate(const StationInstrument& instrument) {
  return IsValidDate(NumericInt16(instrument.DueYear), MonthToNumber(instrument.DueMonth),
                     NumericInt16(instrument.DueDay));
}

FileDate DueDateOf(const StationInstrument& instrument) {
  const auto number = [](const std::string& text) {
    const double value = NumericValueOrInfinity(text);
    return std::abs(value) <= std::numeric_limits<std::int16_t>::max() ? ToInt16(value)
                                                                       : std::int16_t{0};
  };
  return {number(instrument.DueYear), MonthToNumber(instrument.DueMonth),
          number(instrument.DueDay)};
}

void SaveInstrumentFile(const std::string& stationFolder, const StationInstrument& instrument,
                        StoredFile& file, Earlier earlier) {
  CheckInstrumentName(instrument.ModelNumber);
  file.Save(Joined(stationFolder, instrument.ModelNumber), instrument.SerialNumber,
            InstrumentBytes(instrument), earlier);
}

Replacement InstrumentWouldReplace(const std::string& stationFolder,
                                   const StationInstrument& instrument, const StoredFile& file) {
  CheckInstrumentName(instrument.ModelNumber);
  return ReplacementBy(file, Joined(stationFolder, instrument.ModelNumber),
                       InstrumentBytes(instrument), &SummaryOfInstrument);
}

void DeleteInstrumentFile(const std::string& stationFolder, const std::string& modelNumber,
                          Earlier earlier) {
  CheckInstrumentName(modelNumber);
  const std::string path = Joined(stationFolder, modelNumber);
  EntryFacts facts;
  const std::error_code code = CurrentPlatform().Facts(NativePath(path), facts);
  // A name that is too long is not the name of any file, so that nothing has to be deleted.
  if (code && code != std::errc::filename_too_long) {
    throw SystemError(code, "delete the instrument", path);
  }
  if (facts.isLink || facts.kind == EntryKind::File || facts.kind == EntryKind::Other) {
    // A name in another case means the file that is there.
    DeleteWithHistory(stationFolder, NativePath(path).filename().string(), earlier);
  } else if (facts.kind == EntryKind::Folder) {
    throw SystemError(std::make_error_code(std::errc::is_a_directory), "delete the instrument",
                      path);
  }
}

void DeleteAllInstrumentFiles(const std::string& stationFolder, Earlier earlier) {
  const std::vector<std::string> names =
      NamesIn(NativePath(stationFolder), stationFolder, SearchKind::OrdinaryFiles);
  for (const std::string& name : names) {
    DeleteWithHistory(stationFolder, name,
                      EqualsIgnoringCase(name, kIndexName) ? Earlier::LetGo : earlier);
  }
}

void DeleteStation(const std::string& root, const std::string& name, Earlier earlier) {
  DeleteFolderWithHistory(root, name, kIndexName, earlier);
}

void MakeStation(const std::string& root, const std::string& name) {
  CheckFileName(name, "The station name");
  // Throws for what INDEX cannot hold.
  static_cast<void>(EncodeFileText(name));
  if (name.find('.') != std::string::npos) {
    throw Error(ErrorKind::Name,
                "The station name \"" + name +
                    "\" holds the character \".\": the station list would never show it. Choose "
                    "another name.");
  }
  if (EqualsIgnoringCase(name, kIndexName)) {
    throw Error(ErrorKind::Name,
                "The station name \"" + name +
                    "\" is the name of the list of stations. Choose another name.");
  }
  MakeFolder(Joined(root, name));
}

std::vector<std::string> ListStations(const std::string& root) {
  return NamesWithoutIndex(root, SearchKind::NamesWithoutDot);
}

std::vector<std::string> ListInstruments(const std::string& stationFolder) {
  return NamesWithoutIndex(stationFolder, SearchKind::OrdinaryFiles);
}

void WriteStationIndex(const std::string& root, const std::vector<std::string>& stations) {
  const std::string path = Joined(root, kIndexName);
  SaveFile(path, NameLines(stations, path).Bytes());
}

void WriteStationInstrumentIndex(const std::string& stationFolder,
                                 const std::vector<std::string>& instruments) {
  const std::string path = Joined(stationFolder, kIndexName);
  FileText text = NameLines(instruments, path);
  text.RawLine(kIndexName);
  SaveFile(path, text.Bytes());
}

}  // namespace tarvell
