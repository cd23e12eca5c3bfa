// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/TableParts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "core/text/Text.h"
#include "exchange/ColumnMatch.h"
#include "exchange/ModelColumns.h"
#include "exchange/Units.h"
#include "exchange/Words.h"
#include "exchange/WrittenDate.h"

namespace tarvell {

namespace {

using Words = std::span<const std::string_view>;

// Folded beginnings of words in English, German, French, Spanish and Italian.
constexpr std::array<std::string_view, 25> kBefore = {
    "before",       "as found",     "as-found",    "asfound",      "as received",
    "pre-adj",      "pre adj",      "preadj",      "pre-cal",      "initial",
    "vor just",     "vor der just", "vor einer",   "vor dem abg",  "vor abgl",
    "vor einst",    "vor rep",      "vor der rep", "eingangsmess", "eingangskal",
    "eingangszust", "avant",        "antes",       "prima d",      "iniziale"};
constexpr std::array<std::string_view, 24> kAfter = {
    "after",        "as left",     "as-left",      "asleft",    "as returned",   "post-adj",
    "post adj",     "postadj",     "post-cal",     "nach just", "nach der just", "nach einer",
    "nach dem abg", "nach abgl",   "nach einst",   "nach rep",  "nach der rep",  "nachher",
    "ausgangsmess", "ausgangskal", "ausgangszust", "après",     "después",       "dopo"};
constexpr std::array<std::string_view, 23> kChannels = {
    "channel", "kanal",   "canal",    "voie",     "port",   "sensor",  "sonde",         "capteur",
    "input",   "eingang", "head",     "messkopf", "polari", "run",     "unit",          "dut",
    "uut",     "device",  "prüfling", "sample",   "muster", "meas. #", "measurement no"};
/// Words of titles that say which part of a table follows, not what is in it.
constexpr std::array<std::string_view, 40> kOfParts = {
    "range",     "ranges",      "table",     "tabelle",     "tableau",
    "tabella",   "tabla",       "part",      "teil",        "partie",
    "parte",     "section",     "abschnitt", "bereich",     "frequenzbereich",
    "plage",     "gamme",       "campo",     "band",        "bande",
    "banda",     "cont",        "continued", "fortsetzung", "suite",
    "seguito",   "page",        "seite",     "sheet",       "blatt",
    "to",        "bis",         "from",      "von",         "of",
    "frequency", "frequencies", "frequenz",  "frequenzen",  "line"};
/// Words of titles that divide a range only before a word for it: "High power" is no part.
constexpr std::array<std::string_view, 4> kHalves = {"low", "high", "lower", "upper"};

bool IsWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) > 0x7F;
}

bool HasDigit(std::string_view word) {
  return word.find_first_of("0123456789") != std::string_view::npos;
}

std::vector<std::string> WordsOf(std::string_view title) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : Folded(title) + " ") {
    if (IsWordByte(c)) {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  return words;
}

bool IsOfPart(const std::string& word) {
  return std::ranges::find(kOfParts, word) != kOfParts.end();
}

bool IsFrequencyUnit(std::string_view word) {
  const std::optional<Unit> unit = UnitFrom(word);
  return unit && unit->IsLike(*UnitFrom("Hz"));
}

/// Whether a word is a unit of something else, in small letters.
bool IsOtherUnit(std::string word) {
  const auto isUnit = [](std::string_view text) {
    return UnitFrom(text).has_value() && !IsFrequencyUnit(text);
  };
  if (word.empty() || isUnit(word)) {
    return !word.empty();
  }
  word.back() = ToUpper(word.substr(word.size() - 1)).front();
  return isUnit(word);
}

/// Whether the number at this place is one of a range of frequencies.
bool IsNumberOfRange(const std::vector<std::string>& words, std::size_t at) {
  while (at < words.size() && (HasDigit(words[at]) || IsOfPart(words[at]))) {
    const std::size_t unit = words[at].find_first_not_of("0123456789");
    if (unit != std::string::npos && IsFrequencyUnit(std::string_view(words[at]).substr(unit))) {
      return true;
    }
    ++at;
  }
  return at < words.size() && IsFrequencyUnit(words[at]);
}

/// Whether the number at this place is the number of a part, as in "Table 1", or of a range of
/// frequencies. "1 mW" says what was measured, and "2025" when.
bool IsNumberOfPart(const std::vector<std::string>& words, std::size_t at) {
  constexpr std::size_t kYearDigits = 4;
  if (IsNumberOfRange(words, at)) {
    return true;
  }
  const std::string& word = words[at];
  const std::size_t end = std::min(word.find_first_not_of("0123456789"), word.size());
  const bool isYear = end == word.size() && end == kYearDigits &&
                      (word.starts_with("19") || word.starts_with("20"));
  const std::string unit = end < word.size()       ? word.substr(end)
                           : at + 1 < words.size() ? words[at + 1]
                                                   : std::string();
  return at > 0 && IsOfPart(words[at - 1]) && !isYear && !IsOtherUnit(unit);
}

/// Whether the word at this place, which has no digit, only says which part follows.
bool IsWordOfPart(const std::vector<std::string>& words, std::size_t at) {
  // A unit by itself, as in "GHz", may be that of the rows below it.
  return IsOfPart(words[at]) || (IsFrequencyUnit(words[at]) && at > 0 && HasDigit(words[at - 1])) ||
         (std::ranges::find(kHalves, words[at]) != kHalves.end() && at + 1 < words.size() &&
          IsOfPart(words[at + 1]));
}

/// The words of a title that say more than which part of a table follows.
std::vector<std::string> OwnWords(const CertificateTable& table) {
  const std::vector<std::string> words = WordsOf(NameIn(table.name, "en"));
  std::vector<std::string> own;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool isPart = HasDigit(words[i]) ? IsNumberOfPart(words, i) : IsWordOfPart(words, i);
    if (!isPart) {
      own.push_back(words[i]);
    }
  }
  return own;
}

/// Calls `find` with the section of a table and its names until one gives a text.
template <typename Find>
std::string FirstFound(const CertificateTable& table, const Find& find) {
  std::string found(find(table.section));
  for (const LocalText& name : table.name) {
    found = found.empty() ? std::string(find(name.text)) : found;
  }
  return found;
}

// --- Tables with rows of several kinds

/// More parts are no longer something to choose from.
constexpr std::size_t kPartLimit = 20;

/// Captions of the level at which values were measured.
constexpr std::array<std::string_view, 10> kLevels = {"level",    "pegel",  "niveau",   "livello",
                                                      "nivel ",   "power",  "leistung", "puissance",
                                                      "potencia", "potenza"};

/// Results of a test, which say nothing about what was measured.
bool IsVerdict(std::string_view text) {
  constexpr std::array<std::string_view, 26> kVerdicts = {
      "pass", "passed", "fail", "failed", "ok", "o.k.", "nok",    "yes",      "no",
      "ja",   "nein",   "oui",  "non",    "si", "i.o.", "n.i.o.", "conforme", "bon",
      "good", "ng",     "bad",  "x",      "in", "out",  "-",      "n/a"};
  const std::string folded = Folded(text);
  return std::ranges::find(kVerdicts, folded) != kVerdicts.end();
}

/// "<0.01" or "\u00B1 0.5 %"
bool IsQualifiedNumber(std::string_view text) {
  constexpr std::array<std::string_view, 7> kSigns = {"\u00B1", "+/-", "<",     ">",
                                                      "\u2264", "~",   "\u2265"};
  return HasDigit(text) &&
         std::ranges::any_of(kSigns, [&](std::string_view sign) { return text.starts_with(sign); });
}

bool NamesRemark(std::string_view folded) {
  constexpr std::array<std::string_view, 36> kWords = {
      "remark", "comment",  "bemerk",   "kommentar", "remarque", "observ",   "note",   "hinweis",
      "anmerk", "nota",     "pass",     "verdict",   "result",   "ergebnis", "bewert", "judg",
      "status", "assess",   "beurteil", "giudiz",    "esito",    "date",     "datum",  "fecha",
      "data ",  "time",     "uhrzeit",  "zeit",      "heure",    "hora",     "operat", "operad",
      "opérat", "bearbeit", "prüfer",   "conform"};
  return HasWord(folded, kWords);
}

/// The text of each row in a column that divides the rows; nothing for any other column.
std::optional<std::vector<std::string>> DividingTexts(const CertificateColumn& column) {
  const std::string caption = FoldedNames(column);
  const bool isChannel = HasWord(caption, kChannels);
  const bool isLevel = HasWord(caption, kLevels);
  std::vector<std::string> texts;
  std::vector<std::string> kinds;
  for (const WrittenValue& value : column.series.front().values) {
    if (value.isNumber && !isLevel && (!isChannel || !value.unit.empty())) {
      return std::nullopt;
    }
    // As in a merged cell, an empty one means the text above it.
    if (value.text.empty() && texts.empty()) {
      return std::nullopt;
    }
    texts.push_back(value.text.empty() ? texts.back() : value.text);
    if (std::ranges::find(kinds, texts.back()) == kinds.end()) {
      kinds.push_back(texts.back());
    }
    if (kinds.size() > kPartLimit) {
      return std::nullopt;
    }
  }
  const bool isRepeated =
      kinds.size() < texts.size() || isChannel ||
      std::ranges::any_of(kinds, [](const std::string& kind) { return !StateIn(kind).empty(); });
  const bool saysNothing = std::ranges::all_of(kinds, [](const std::string& kind) {
    return IsVerdict(kind) || UnitFrom(kind) || IsQualifiedNumber(kind) ||
           DateFrom(kind, DateOrder::DayFirst);
  });
  return kinds.size() > 1 && isRepeated && !saysNothing && !NamesRemark(caption)
             ? std::optional(std::move(texts))
             : std::nullopt;
}

/// The rows of `table` whose text in the dividing column is this one.
CertificateTable PartWith(const CertificateTable& table, const std::vector<std::string>& texts,
                          const std::string& wanted) {
  CertificateTable part = table;
  const auto keep = [&](auto& all) {
    std::remove_reference_t<decltype(all)> kept;
    for (std::size_t row = 0; row < all.size() && row < texts.size(); ++row) {
      if (texts[row] == wanted) {
        kept.push_back(std::move(all[row]));
      }
    }
    all = std::move(kept);
  };
  keep(part.rowLines);
  for (CertificateColumn& column : part.columns) {
    for (Series& series : column.series) {
      keep(series.values);
      keep(series.uncertainties);
    }
  }
  if (!part.rowLines.empty()) {
    part.where = "line " + std::to_string(part.rowLines.front());
  }
  return part;
}

/// "Channel A" for the text "A" below the caption "Channel".
std::string NameOfPart(const CertificateColumn& column, const std::string& text) {
  const std::string caption = NameIn(column.caption, "en");
  const bool isKnown = caption.empty() || Folded(text).starts_with(Folded(caption));
  return isKnown ? text : caption + " " + text;
}

/// Adds the parts of a table, or the table itself.
void AddParts(CertificateTable table, std::vector<CertificateTable>& parts) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const CertificateColumn& column = table.columns[i];
    const std::optional<std::vector<std::string>> texts = DividingTexts(column);
    if (!texts) {
      continue;
    }
    std::vector<std::string> done;
    for (const std::string& text : *texts) {
      if (std::ranges::find(done, text) != done.end()) {
        continue;
      }
      done.push_back(text);
      CertificateTable part = PartWith(table, *texts, text);
      part.part = Shortened(NameOfPart(column, text));
      parts.push_back(std::move(part));
    }
    return;
  }
  parts.push_back(std::move(table));
}

}  // namespace

std::string_view StateIn(std::string_view title) {
  const std::string folded = Folded(title);
  std::string blank = folded;
  std::ranges::replace(blank, '-', ' ');
  const auto has = [&](Words words) { return HasWord(folded, words) || HasWord(blank, words); };
  const std::array<std::pair<bool, std::string_view>, 3> states = {
      {{has(kBefore), "before"}, {has(kAfter), "after"}, {NamesEarlier(folded), "earlier"}}};
  std::string_view found;
  for (const auto& [isNamed, state] : states) {
    if (isNamed && !found.empty()) {
      return {};
    }
    found = isNamed ? state : found;
  }
  return found;
}

std::string ChannelIn(std::string_view title) {
  const std::vector<std::string> words = WordsOf(title);
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    const bool isName = words[i + 1].size() <= 2 || HasDigit(words[i + 1]);
    if (isName && HasWord(words[i], kChannels)) {
      return words[i] + " " + words[i + 1];
    }
  }
  return {};
}

std::string KindOfResults(const CertificateTable& table) {
  return FirstFound(table, StateIn) + "|" + FirstFound(table, ChannelIn) + "|" + Folded(table.part);
}

bool HasState(const CertificateTable& table) {
  return !FirstFound(table, StateIn).empty() || !StateIn(table.part).empty();
}

bool AreTitledAsParts(const CertificateTable& first, const CertificateTable& later) {
  const std::vector<std::string> own = OwnWords(later);
  return own.empty() || own == OwnWords(first);
}

void DivideTables(Certificate& certificate) {
  if (certificate.isExport) {
    return;
  }
  std::vector<CertificateTable> divided;
  for (CertificateTable& table : certificate.tables) {
    AddParts(std::move(table), divided);
  }
  certificate.tables = std::move(divided);
}

}  // namespace tarvell
