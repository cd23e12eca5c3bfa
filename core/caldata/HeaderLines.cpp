// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/HeaderLines.h"

#include <algorithm>

#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::string_view kLineClasses = "#*!";
constexpr std::string_view kLineClassesAndQuote = "#*!\"";
constexpr std::array<std::string_view, kHeaderLines> kKeywords = {
    "MODEL_NO", "SER_NO", "CAL_DATE", "CAL_NO", "DUE_DATE", "COMMENT"};
constexpr std::size_t kKeywordWidth = 8;

constexpr std::string_view kMaker = "QZ";
constexpr std::string_view kOption = "Opt001";
constexpr std::size_t kModelWithOption = 6;

/// The text before the first comma, with a blank for every colon.
std::string WordsBeforeComma(std::string_view value) {
  return Replaced(value.substr(0, value.find(',')), ':', ' ');
}

/// `model` without the maker before it, and without blanks around it.
std::string_view WithoutMaker(std::string_view model) {
  return Trim(model.starts_with(kMaker) ? model.substr(kMaker.size()) : model);
}

}  // namespace

std::optional<HeaderField> HeaderFieldOf(std::string_view keyword) {
  const auto* found = std::find(kKeywords.begin(), kKeywords.end(), ToUpper(keyword));
  return found == kKeywords.end()
             ? std::nullopt
             : std::optional(static_cast<HeaderField>(found - kKeywords.begin()));
}

std::string_view KeywordOf(HeaderField field) {
  return kKeywords.at(static_cast<std::size_t>(field));
}

std::string HeaderLine(HeaderField field, std::string_view value) {
  std::string line = "#" + std::string(KeywordOf(field));
  line.resize(1 + kKeywordWidth, ' ');
  return line + " : " + std::string(value);
}

bool BeginsLine(std::string_view item) {
  return !item.empty() && kLineClasses.find(item.front()) != std::string_view::npos;
}

LineWords WordsOf(std::string_view item) {
  LineWords words;
  SplitWords(Replaced(WithoutFirst(item, 1), ':', ' '), words);
  return words;
}

std::string HeaderValueRead(std::string_view value) {
  // A value of too many words for a line is refused by the save, not while it is typed.
  std::array<std::string, kWordLimit> words;
  SplitWords(WordsBeforeComma(value), words);
  return words[0];
}

std::string_view ListedHeaderValue(std::string_view item) {
  const std::size_t colon = item.find(':');
  return colon == std::string_view::npos ? std::string_view() : Trim(item.substr(colon + 1));
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
    if (!rest.empty() && kLineClassesAndQuote.find(rest.front()) != std::string_view::npos) {
      throw Error(ErrorKind::Character, "The " + field + " holds the character \"" +
                                            std::string(1, rest.front()) +
                                            "\" after a comma, which the data file cannot keep. "
                                            "Remove one of them, then try again.");
    }
  }
  std::array<std::string, kWordLimit> words;
  // One of the words of a line is its keyword.
  if (static_cast<std::size_t>(SplitWords(WordsBeforeComma(value), words)) >= kLineWords) {
    throw Error(ErrorKind::Character,
                "The " + field + " holds more than " + std::to_string(kLineWords - 1) +
                    " words, which the data file cannot keep. Shorten it, then "
                    "try again.");
  }
}

std::string ModelOnLine(const LineWords& words) {
  const std::string upper = ToUpper(words[1]);
  const std::size_t length = CharacterCount(WithoutMaker(upper));
  return length == 0 ? words[2] : std::string(LastCharacters(words[1], length));
}

bool IsOldStyle(std::string_view firstItem, const HeaderFieldSet& headerLines) {
  return headerLines.none() && !BeginsLine(firstItem);
}

OldStyleModel OldStyleModelOf(std::string_view item) {
  const std::string_view model = WithoutMaker(Trim(item));
  if (LastCharacters(model, kOption.size()) != kOption) {
    return {std::string(model), false};
  }
  return {std::string(Trim(FirstCharacters(model, kModelWithOption))), true};
}

FileDate OldStyleDateOf(std::string_view item) {
  FileDate date;
  date.day = NumericInt16(FirstCharacters(item, 2));
  date.month = MonthToNumber(FirstCharacters(WithoutFirst(item, 2), 3));
  date.year = NumericInt16(LastCharacters(item, 4));
  return date;
}

FileDate OneYearAfter(const FileDate& date) {
  return {ToInt16(date.year + 1.0), date.month, date.day};
}

std::string StationModelOf(std::string_view listedModel) {
  if (listedModel.starts_with(kMaker)) {
    listedModel = WithoutFirst(listedModel, kMaker.size() + 1);
  }
  if (LastCharacters(listedModel, kOption.size()) == kOption) {
    listedModel = Trim(WithoutLast(listedModel, kOption.size()));
  }
  return std::string(listedModel);
}

}  // namespace tarvell
