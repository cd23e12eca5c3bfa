// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/Certificate.h"

#include <algorithm>

#include "core/platform/Error.h"
#include "core/text/Sha256.h"
#include "core/text/Text.h"

namespace tarvell {

std::string ExportFormat(std::string_view lines) {
  return std::string(kExportFormat) + " " + Sha256(lines);
}

std::string NameIn(const Names& names, std::string_view language) {
  // The text in the language itself, else in a form of it: "de-CH" for "de", and "de" for "de-CH".
  const auto primary = [](std::string_view tag) { return tag.substr(0, tag.find_first_of("-_")); };
  for (const std::string_view wanted : {language, std::string_view(), std::string_view("en")}) {
    auto found = std::ranges::find_if(
        names, [&](const LocalText& name) { return EqualsIgnoringCase(name.language, wanted); });
    if (found == names.end()) {
      found = std::ranges::find_if(names, [&](const LocalText& name) {
        return EqualsIgnoringCase(primary(name.language), primary(wanted));
      });
    }
    if (found != names.end()) {
      return found->text;
    }
  }
  return names.empty() ? std::string() : names.front().text;
}

std::string TitleOf(const CertificateTable& table, std::string_view language) {
  std::string title = WithSingleBlanks(NameIn(table.name, language));
  for (const std::string& more : {table.section, table.part}) {
    if (!more.empty() && !ContainsIgnoringCase(title, WithSingleBlanks(more))) {
      title += (title.empty() ? "" : ", ") + WithSingleBlanks(more);
    }
  }
  return title;
}

std::string WithSingleBlanks(std::string_view text) {
  std::string single;
  for (const char c : text) {
    const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    single += !isBlank ? std::string(1, c) : single.ends_with(' ') ? "" : " ";
  }
  return single;
}

std::string Shortened(std::string_view text) {
  constexpr std::size_t kLongest = 200;
  if (text.size() <= kLongest) {
    return std::string(text);
  }
  const auto isInside = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  std::size_t end = kLongest;
  while (end > 0 && isInside(text[end])) {
    --end;
  }
  return std::string(text.substr(0, end)) + "...";
}

void CheckColumns(std::size_t columns, const std::string& where) {
  constexpr std::size_t kColumnLimit = 1000;
  if (columns > kColumnLimit) {
    throw Error(ErrorKind::Type, "A table (" + where + ") has more than " +
                                     std::to_string(kColumnLimit) +
                                     " columns, which no certificate has. Ask for one with the "
                                     "results only.");
  }
}

std::size_t CertificateTable::RowCount() const {
  std::size_t rows = 0;
  for (const CertificateColumn& column : columns) {
    rows = std::max(rows, column.series.front().values.size());
  }
  return rows;
}

std::vector<ReadingQuestion> OpenQuestions(const Certificate& certificate,
                                           const ReadingChoices& choices) {
  std::vector<ReadingQuestion> open = certificate.questions;
  std::erase_if(open, [&](const ReadingQuestion& question) {
    return question.about == ReadingQuestion::About::DecimalSign ? choices.sign.has_value()
                                                                 : choices.dateOrder.has_value();
  });
  return open;
}

}  // namespace tarvell
