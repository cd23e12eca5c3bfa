// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/station/InstrumentEnd.h"

#include <algorithm>
#include <vector>

#include "core/files/ItemReader.h"
#include "core/station/StationFiles.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// The keywords of an instrument's file, in its order. The last one ends the file.
std::vector<std::string> Keywords() {
  std::vector<std::string> keywords;
  for (const FileSummary::Field& field : SummaryOfInstrument({}).fields) {
    keywords.push_back(field.name);
  }
  return keywords;
}

}  // namespace

std::string NoticeOfMissingEnd(std::string_view bytes) {
  const std::vector<std::string> keywords = Keywords();
  const std::string& end = keywords.back();
  std::vector<std::string> lacked = keywords;
  ItemReader reader = ItemReader::Of(bytes);
  std::string item;
  std::string lastKeyword;
  while (!reader.AtEnd()) {
    item = reader.ReadItem();
    const std::string keyword = ParseKeywordLine(item).keyword;
    if (std::ranges::find(keywords, keyword) != keywords.end()) {
      lastKeyword = keyword;
    }
    if (!reader.AtEnd()) {
      std::erase(lacked, keyword);
    }
  }
  if (lastKeyword == end) {
    return {};
  }
  std::erase(lacked, end);
  std::string text = "The file does not end with its line \"" + end + "\": it may be cut off.";
  if (!item.empty()) {
    text += " Its last line was not read: line " + std::to_string(reader.Line()) + ", " +
            Quoted(item) + ".";
  }
  if (!lacked.empty()) {
    text += " What is shown for " + Listed(lacked) + " is not from the file.";
  }
  return text;
}

}  // namespace tarvell
