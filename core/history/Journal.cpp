// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/Journal.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "core/numbers/Numbers.h"
#include "core/text/PercentEscapes.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr char kSeparator = '\t';
constexpr std::string_view kNothing = "-";
constexpr std::size_t kFields = 8;
constexpr std::size_t kHashDigits = 64;

using Fields = std::array<std::string_view, kFields>;

/// Whether a byte is on the line as it is.
bool IsPlain(unsigned char byte) {
  constexpr unsigned char kBlank = 0x20;
  constexpr unsigned char kDelete = 0x7F;
  return byte >= kBlank && byte != kDelete && byte != '%';
}

/// A field as it is on its line. No text can end the field or the line, or look like an empty one.
std::string Escaped(std::string_view text) {
  if (text.empty()) {
    return std::string(kNothing);
  }
  return PercentEscaped(text,
                        [text](unsigned char byte) { return IsPlain(byte) && text != kNothing; });
}

/// The text of a field; nothing if no text is written like this.
std::optional<std::string> Unescaped(std::string_view field) {
  if (field == kNothing) {
    return std::string();
  }
  if (!field.empty() && std::ranges::all_of(field, &IsPlain)) {
    return std::string(field);
  }
  std::optional<std::string> text = WithoutPercentEscapes(field);
  // A text is written in one way only.
  return text && Escaped(*text) == field ? text : std::nullopt;
}

/// The fields of a line; false unless there are as many as an event has.
bool Split(std::string_view line, Fields& fields) {
  for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
    const std::size_t end = line.find(kSeparator);
    if (end == std::string_view::npos) {
      return false;
    }
    fields.at(i) = line.substr(0, end);
    line.remove_prefix(end + 1);
  }
  fields.back() = line;
  return line.find(kSeparator) == std::string_view::npos;
}

bool IsHash(std::string_view text) {
  const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
  return text == kNothing || (text.size() == kHashDigits && std::ranges::all_of(text, isDigit));
}

/// The number of `digits` digits at the beginning of `text`, which loses them and the character
/// `end` after them; -1 for anything else.
int TakeNumber(std::string_view& text, std::size_t digits, char end) {
  const std::string_view field = text.substr(0, digits);
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (text.size() <= digits || text[digits] != end || !std::ranges::all_of(field, isDigit)) {
    return -1;
  }
  int number = 0;
  for (const char c : field) {
    number = 10 * number + (c - '0');
  }
  text.remove_prefix(digits + 1);
  return number;
}

std::optional<HistoryEvent> EventOf(const Fields& fields) {
  const std::optional<std::time_t> time = UtcTimeOf(fields[0]);
  if (!time || fields[4] == kNothing || !IsHash(fields[6]) || !IsHash(fields[7])) {
    return std::nullopt;
  }
  HistoryEvent event;
  event.time = *time;
  const std::array<std::string*, kFields - 1> texts = {
      &event.user, &event.host, &event.done, &event.file, &event.kept, &event.before, &event.after};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::optional<std::string> text = Unescaped(fields.at(i + 1));
    if (!text) {
      return std::nullopt;
    }
    *texts.at(i) = *text;
  }
  // Nothing outside the folder of the versions is ever taken for one.
  const bool isName = event.kept.find_first_of("/\\") == std::string::npos && event.kept != "." &&
                      event.kept != "..";
  return isName ? std::optional(event) : std::nullopt;
}

}  // namespace

std::string UtcText(std::time_t time) {
  using namespace std::chrono;
  // The system's clock counts in nanoseconds, which many years of a journal exceed.
  const sys_seconds seconds{std::chrono::seconds(time)};
  const year_month_day day(floor<days>(seconds));
  const hh_mm_ss clock(seconds - floor<days>(seconds));
  const auto two = [](auto number) { return AtLeastTwoDigits(static_cast<int>(number)); };
  return std::to_string(static_cast<int>(day.year())) + "-" +
         two(static_cast<unsigned>(day.month())) + "-" + two(static_cast<unsigned>(day.day())) +
         "T" + two(clock.hours().count()) + ":" + two(clock.minutes().count()) + ":" +
         two(clock.seconds().count()) + "Z";
}

std::optional<std::time_t> UtcTimeOf(std::string_view text) {
  using namespace std::chrono;
  const int year = TakeNumber(text, 4, '-');
  const int month = TakeNumber(text, 2, '-');
  const int day = TakeNumber(text, 2, 'T');
  const int hour = TakeNumber(text, 2, ':');
  const int minute = TakeNumber(text, 2, ':');
  const int second = TakeNumber(text, 2, 'Z');
  const year_month_day date(std::chrono::year(year),
                            std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day)));
  constexpr int kFirstYear = 1000;  // four digits
  const auto isBelow = [](int number, int limit) { return number >= 0 && number < limit; };
  if (!text.empty() || year < kFirstYear || !date.ok() || !isBelow(hour, 24) ||
      !isBelow(minute, 60) || !isBelow(second, 60)) {
    return std::nullopt;
  }
  const sys_seconds moment = sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
  return moment.time_since_epoch().count();
}

std::string JournalLine(const HistoryEvent& event) {
  std::string line = UtcText(event.time);
  for (const std::string* text : {&event.user, &event.host, &event.done, &event.file, &event.kept,
                                  &event.before, &event.after}) {
    line += kSeparator + Escaped(*text);
  }
  return line;
}

std::optional<HistoryEvent> EventOf(std::string_view line) {
  Fields fields;
  return Split(line, fields) ? EventOf(fields) : std::nullopt;
}

Journal ReadJournal(std::string_view bytes, std::string_view file) {
  Journal journal;
  const std::string wanted = file.empty() ? std::string() : Escaped(file);
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    Fields fields;
    if (line.empty()) {
      continue;
    }
    const bool isSplit = Split(line, fields);
    if (isSplit && !wanted.empty() && !EqualsIgnoringCase(fields[4], wanted)) {
      continue;
    }
    std::optional<HistoryEvent> event = isSplit ? EventOf(fields) : std::nullopt;
    if (event) {
      journal.events.push_back(*std::move(event));
    } else {
      ++journal.damagedLines;
    }
  }
  return journal;
}

}  // namespace tarvell
