// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/DueCalendar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "core/dates/Calendar.h"
#include "core/dates/DueDate.h"
#include "core/files/FileNames.h"
#include "core/numbers/Numbers.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/SurveyTable.h"
#include "core/text/FileCharacters.h"
#include "core/text/PercentEscapes.h"

namespace tarvell {

namespace {

constexpr std::size_t kLineBytes = 75;  // without its end

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// Whether a byte continues a character of UTF-8.
bool Continues(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Appends a line of UTF-8. A long one goes on in the next line, after a blank; no character is
/// split.
void AppendLine(std::string& text, std::string_view line) {
  std::size_t room = kLineBytes;
  while (line.size() > room) {
    std::size_t length = room;
    while (Continues(line[length])) {
      --length;
    }
    text.append(line.substr(0, length)).append("\r\n ");
    line.remove_prefix(length);
    room = kLineBytes - 1;
  }
  text.append(line).append("\r\n");
}

/// A value of the type TEXT.
std::string Escaped(std::string_view value) {
  std::string text;
  for (const char c : value) {
    if (c == '\n') {
      text += "\\n";
    } else if (IsControl(c)) {
      text += ' ';
    } else {
      text += c == '\\' || c == ';' || c == ',' ? "\\" : "";
      text += c;
    }
  }
  return text;
}

/// A part of an identifier: letters, digits, "-" and "."; every other byte as "%" and its number.
std::string Identifier(std::string_view value) {
  return PercentEscaped(value, [](unsigned char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.';
  });
}

/// YYYYMMDD. The last day of the month replaces a day after it.
std::string Digits(const FileDate& date) {
  const std::string year = "000" + std::to_string(date.year);
  return year.substr(year.size() - 4) + AtLeastTwoDigits(date.month) +
         AtLeastTwoDigits(std::min(date.day, DaysInMonth(date.year, date.month)));
}

std::string StampOf(std::time_t now) {
  const auto time = std::chrono::system_clock::from_time_t(now);
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(std::chrono::floor<std::chrono::seconds>(time - day));
  return Digits({static_cast<std::int16_t>(static_cast<int>(date.year())),
                 static_cast<std::int16_t>(static_cast<unsigned>(date.month())),
                 static_cast<std::int16_t>(static_cast<unsigned>(date.day()))}) +
         "T" + AtLeastTwoDigits(static_cast<int>(clock.hours().count())) +
         AtLeastTwoDigits(static_cast<int>(clock.minutes().count())) +
         AtLeastTwoDigits(static_cast<int>(clock.seconds().count())) + "Z";
}

bool HasDueDate(const SurveyRow& row) {
  return row.kind != SurveyRow::Kind::Place && !row.isCopy && row.daysLeft;
}

std::string DescriptionOf(const SurveyRow& row, const std::vector<std::string>& usedBy) {
  std::string text;
  const auto add = [&](std::string_view name, std::string_view value) {
    if (!value.empty()) {
      text += (text.empty() ? "" : "\n") + std::string(name) + ": " + NameText(value);
    }
  };
  std::string stations;
  for (const std::string& station : usedBy) {
    stations += (stations.empty() ? "" : ", ") + NameText(station);
  }
  add("Calibration number", row.calibrationNumber);
  add("Calibrated", row.calibrated.year == 0 ? std::string() : DateText(row.calibrated));
  add("Comment", row.comment);
  add("Stations", stations);
  return text;
}

std::string IdentifierOf(SurveyRow::Kind kind, std::string_view folder, std::string_view name) {
  // A "_" in a name is escaped.
  return std::string(CodeOf(kind)) + "_" + Identifier(folder) + "_" + Identifier(name) + "@tarvell";
}

/// The identifier of an entry: the place of its file, which neither a new calibration nor another
/// file changes.
std::string IdentifierOf(const SurveyRow& row) {
  return IdentifierOf(row.kind, LastNameOf(FolderOf(row.path)), LastNameOf(row.path));
}

/// The identifier that the data set of a row has, or would have: the entry stays the same when
/// somebody enters or mends the data set.
std::string IdentifierOfDataSet(const SurveyRow& row) {
  constexpr SurveyRow::Kind kDataSet = SurveyRow::Kind::DataSet;
  if (row.kind == kDataSet || row.isDataSetOfOther || row.serialNumber.empty()) {
    return IdentifierOf(row);
  }
  return row.dataSet.empty()
             ? IdentifierOf(kDataSet, row.model, UncheckedDataFileName(row.serialNumber))
             : IdentifierOf(kDataSet, LastNameOf(FolderOf(row.dataSet)), LastNameOf(row.dataSet));
}

/// Whether two rows with one file name are of two instruments. A damaged file may hold no serial
/// number.
bool IsOther(const SurveyRow& a, const SurveyRow& b) {
  return a.serialNumber != b.serialNumber && !a.serialNumber.empty() && !b.serialNumber.empty();
}

/// What one instrument has in the calendar.
struct Entry {
  std::string identifier;
  const SurveyRow* row;  ///< the one with the earliest due date
  std::vector<std::string> stations;

  /// Takes another row of the same instrument.
  void Take(const SurveyRow& other) {
    row = *other.daysLeft < *row->daysLeft ? &other : row;
    for (const std::string& station : other.stations) {
      if (std::ranges::find(stations, station) == stations.end()) {
        stations.push_back(station);
      }
    }
  }
};

/// The entries in the order of the rows. The stations of an instrument whose due date is in no data
/// set share an entry.
std::vector<Entry> EntriesOf(std::span<const SurveyRow> rows) {
  std::vector<Entry> entries;
  std::map<std::string, std::size_t, std::less<>> places;
  for (const SurveyRow& row : rows) {
    if (!HasDueDate(row)) {
      continue;
    }
    std::string identifier = IdentifierOfDataSet(row);
    auto [place, isNew] = places.emplace(identifier, entries.size());
    if (!isNew && IsOther(*entries[place->second].row, row)) {
      identifier = IdentifierOf(row);
      std::tie(place, isNew) = places.emplace(identifier, entries.size());
    }
    if (isNew) {
      entries.push_back({std::move(identifier), &row, row.stations});
    } else {
      entries[place->second].Take(row);
    }
  }
  return entries;
}

void AppendEntry(std::string& text, const Entry& entry, const std::string& stamp) {
  const SurveyRow& row = *entry.row;
  AppendLine(text, "BEGIN:VEVENT");
  AppendLine(text, "UID:" + entry.identifier);
  AppendLine(text, "DTSTAMP:" + stamp);
  AppendLine(text, "DTSTART;VALUE=DATE:" + Digits(row.due));
  AppendLine(text, "SUMMARY:" +
                       Escaped("Calibration due: " + NameText(row.model) + " " + row.serialNumber));
  if (const std::string description = DescriptionOf(row, entry.stations); !description.empty()) {
    AppendLine(text, "DESCRIPTION:" + Escaped(description));
  }
  AppendLine(text, "TRANSP:TRANSPARENT");
  AppendLine(text, "END:VEVENT");
}

}  // namespace

std::string DueCalendar(std::span<const SurveyRow> rows, std::time_t now) {
  const std::string stamp = StampOf(now);
  std::string text;
  for (const std::string_view line :
       {"BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Tarvell//Due dates//EN"}) {
    AppendLine(text, line);
  }
  for (const Entry& entry : EntriesOf(rows)) {
    AppendEntry(text, entry, stamp);
  }
  AppendLine(text, "END:VCALENDAR");
  return text;
}

}  // namespace tarvell
