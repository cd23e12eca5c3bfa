// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/SetPages.h"

#include <functional>

#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Calls `take` with every item up to a line "!End", in any case. Returns false when the file ends
/// first; its last item is then not taken.
bool ReadToEnd(ItemReader& reader, const std::function<void(const std::string& item)>& take) {
  if (reader.AtEnd()) {
    return false;
  }
  std::string item = reader.ReadItem();
  while (!EqualsIgnoringCase(item, "!End")) {
    if (reader.AtEnd()) {
      return false;
    }
    reader.AtThisLine([&] { take(item); });
    item = reader.ReadItem();
  }
  return true;
}

}  // namespace

std::size_t PageIndex(std::int16_t page, std::int16_t pages) {
  if (page < 0 || page >= pages) {
    throw Error(ErrorKind::Index, "The data set has no page " + std::to_string(page) + ".");
  }
  return static_cast<std::size_t>(page);
}

void WriteTableCaption(FileText& text) {
  text.Line("!");
  text.Line("!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)");
  text.Line("!");
}

SetReader::SetReader(LoadNotes& notes, const std::vector<Page>& pages) : notes_(notes) {
  for (const Page& page : pages) {
    pages_.push_back({page, 0, false, {}});
  }
}

void SetReader::ReadPage(std::int16_t page, int titleLines, ItemReader& reader) {
  PageState& state = PageAt(page);
  for (int i = 0; i < titleLines && !reader.AtEnd(); ++i) {
    PassTitle(state, reader);
  }
  if (++state.count == 2) {
    notes_.Add("The " + state.page.name +
               " stands in the file more than once. The rows of the later one were read over "
               "those of the earlier one.");
  }
  TableIndex next;
  state.hasEnd = ReadToEnd(reader, [&](const std::string& item) {
    const std::string text = RowText(item);
    if (text.empty()) {
      return;
    }
    CheckTableIndex(next);
    if (!text.starts_with('*')) {
      notes_.Add("In the " + state.page.name +
                 " a line that is no data line was read as one of its rows (is its \"!END\" "
                 "missing?): " +
                 text);
    }
    TakeRow(page, next, text);
    ++next.value;
  });
}

void SetReader::PassTitle(const PageState& state, ItemReader& reader) {
  const std::string item = reader.ReadItem();
  if (item.starts_with('*')) {
    notes_.Add(
        "The " + state.page.name +
        " lacks a title line. The line in its place was not read as one of its rows: " + item);
  }
}

bool SetReader::End(const FileEnd& /*end*/) {
  bool isComplete = true;
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    const auto page = static_cast<std::int16_t>(index);
    const PageState& state = PageAt(page);
    if (state.count == 0 && !state.page.isOptional) {
      notes_.Add(
          "The file holds no " + state.page.name + state.page.ifMissing + ". " +
          (notes_.IsReadOverDefaults() ? "The default data are shown for it." : "It is empty."));
    } else if (state.count > 0 && !state.hasEnd) {
      notes_.Add("The " + state.page.name +
                 " has no line \"!END\". The last line of the file was not read as one of its "
                 "rows.");
    }
    notes_.AddLackedRows(page, {state.rows.count});
    if (state.count > 0) {
      NoteRows(page, "The " + state.page.name);
    }
    isComplete = isComplete && (state.hasEnd || (state.page.isOptional && state.count == 0));
  }
  return isComplete;
}

}  // namespace tarvell
