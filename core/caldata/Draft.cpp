// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/Draft.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

#include "core/caldata/ResistorFormats.h"
#include "core/caldata/TableRows.h"
#include "core/files/FileText.h"
#include "core/text/FileCharacters.h"
#include "core/text/PercentEscapes.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kVersionLine = "Tarvell draft 1";
constexpr std::string_view kOpenCell = "Open cell";
constexpr std::string_view kUntypedCell = "Open cell as it was";
constexpr std::string_view kOpenedLine = "As opened";
constexpr std::string_view kLastLine = "End";
constexpr std::string_view kOn = "on";
constexpr std::string_view kOff = "off";

/// No data set has more pages than the resistor set.
constexpr std::size_t kPageLimit = kResistorPages;

/// The letters of the origins, in the order of their values.
constexpr std::string_view kOrigins = "TEFO";

struct DraftField {
  std::string_view keyword;
  std::string DraftHeader::*text;
};

constexpr std::array<DraftField, kHeaderBoxes.size()> kFields = {{
    {"Serial number", &DraftHeader::serialNumber},
    {"Calibration number", &DraftHeader::calibrationNumber},
    {"Calibration year", &DraftHeader::calYear},
    {"Calibration month", &DraftHeader::calMonth},
    {"Calibration day", &DraftHeader::calDay},
    {"Due year", &DraftHeader::dueYear},
    {"Due month", &DraftHeader::dueMonth},
    {"Due day", &DraftHeader::dueDay},
    {"Comment", &DraftHeader::comment},
}};

/// Control characters, which include the TAB between cells and line ends, are escaped. So is every
/// byte of a character in a path that is not UTF-8.
std::string Escaped(std::string_view text) {
  return PercentEscaped(text, [isText = IsUtf8(text)](unsigned char byte) {
    constexpr unsigned char kBlank = 0x20;
    constexpr unsigned char kDelete = 0x7F;
    return byte >= kBlank && (byte < kDelete || (byte > kDelete && isText));
  });
}

std::string EscapedCells(std::span<const std::string> cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    line += (i == 0 ? "" : "\t") + Escaped(cells[i]);
  }
  return line;
}

/// Takes the lines of a draft one after the other. After the first wrong one it takes nothing more.
class DraftReader {
 public:
  explicit DraftReader(std::string_view bytes) : rest_(bytes), isRight_(IsUtf8(bytes)) {}

  /// Whether the next line is `keyword`, a colon, a blank and a value.
  [[nodiscard]] bool IsNext(std::string_view keyword) const {
    return isRight_ && rest_.starts_with(keyword) && rest_.substr(keyword.size()).starts_with(": ");
  }

  /// Whether the next line is `text`.
  [[nodiscard]] bool IsNextLine(std::string_view text) const {
    std::string_view rest = rest_;
    return isRight_ && !rest.empty() && TakeLine(rest) == text;
  }

  void TakeLineOf(std::string_view text) {
    isRight_ = isRight_ && !rest_.empty() && TakeLine(rest_) == text;
  }

  [[nodiscard]] std::string Text(std::string_view keyword) { return Decoded(Value(keyword)); }

  [[nodiscard]] std::vector<std::string> Cells(std::string_view keyword, std::size_t limit) {
    std::string_view line = Value(keyword);
    std::vector<std::string> cells;
    while (isRight_) {
      const std::size_t end = std::min(line.find('\t'), line.size());
      cells.push_back(Decoded(line.substr(0, end)));
      if (end == line.size()) {
        break;
      }
      line.remove_prefix(end + 1);
      Require(cells.size() < limit);
    }
    return cells;
  }

  [[nodiscard]] std::int64_t NumberOf(std::string_view text, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    Require(code == std::errc() && end == text.data() + text.size() && number >= 0 &&
            number <= most);
    return isRight_ ? number : 0;
  }
  [[nodiscard]] std::int64_t Number(std::string_view keyword, std::int64_t most) {
    return NumberOf(Value(keyword), most);
  }

  void Require(bool holds) { isRight_ = isRight_ && holds; }

  /// Whether every line was right and none is left.
  [[nodiscard]] bool IsWhole() const { return isRight_ && rest_.empty(); }

 private:
  [[nodiscard]] std::string_view Value(std::string_view keyword) {
    Require(IsNext(keyword));
    if (!isRight_) {
      return {};
    }
    std::string_view line = TakeLine(rest_);
    line.remove_prefix(keyword.size() + 2);
    return line;
  }

  [[nodiscard]] std::string Decoded(std::string_view escaped) {
    const std::optional<std::string> text = WithoutPercentEscapes(escaped);
    Require(text.has_value());
    return text.value_or("");
  }

  std::string_view rest_;
  bool isRight_;
};

/// Takes the origins of the last row.
void TakeOrigins(DraftReader& reader, DraftPage& page) {
  const std::string letters = reader.Text("From");
  reader.Require(letters.size() == page.rows.back().size());
  const GridRow row = RowOf(TableIndex{page.rows.size() - 1});
  for (std::size_t column = 0; column < letters.size(); ++column) {
    const std::size_t origin = kOrigins.find(letters[column]);
    reader.Require(origin != std::string_view::npos);
    if (origin != static_cast<std::size_t>(Origin::File)) {
      page.origins[{row, static_cast<std::int16_t>(column)}] = static_cast<Origin>(origin);
    }
  }
}

/// The origins of a row as letters, "" if all its cells come from the file.
std::string OriginLetters(const DraftPage& page, std::size_t index) {
  std::string letters(page.rows[index].size(), kOrigins[static_cast<std::size_t>(Origin::File)]);
  bool isOther = false;
  for (std::size_t column = 0; column < letters.size(); ++column) {
    const Cell cell = {RowOf(TableIndex{index}), static_cast<std::int16_t>(column)};
    const auto found = page.origins.find(cell);
    if (found != page.origins.end() && found->second != Origin::File) {
      letters[column] = kOrigins[static_cast<std::size_t>(found->second)];
      isOther = true;
    }
  }
  return isOther ? letters : std::string();
}

/// Takes the notes of the last row.
void TakeNotes(DraftReader& reader, DraftPage& page) {
  const GridRow row = RowOf(TableIndex{page.rows.size() - 1});
  while (reader.IsNext("Note")) {
    std::vector<std::string> parts = reader.Cells("Note", 2);
    reader.Require(parts.size() == 2 && !parts.back().empty());
    parts.resize(2);
    const auto last = static_cast<std::int64_t>(page.rows.back().size()) - 1;
    const auto column = static_cast<std::int16_t>(reader.NumberOf(parts.front(), last));
    page.notes[{row, column}] = std::move(parts.back());
  }
}

DraftPage TakePage(DraftReader& reader) {
  DraftPage page;
  page.serialNumber = reader.Text("Page");
  while (reader.IsNext("Row")) {
    reader.Require(page.rows.size() < kTableRows);
    page.rows.push_back(reader.Cells("Row", kTableColumns));
    if (reader.IsNext("From")) {
      TakeOrigins(reader, page);
    }
    TakeNotes(reader, page);
  }
  return page;
}

OpenCell TakeOpenCell(DraftReader& reader, std::string_view keyword) {
  constexpr std::size_t kParts = 4;
  OpenCell open;
  open.isTyped = keyword == kOpenCell;
  std::vector<std::string> parts = reader.Cells(keyword, kParts);
  reader.Require(parts.size() == kParts);
  parts.resize(kParts);
  open.cell.row.number = static_cast<std::int16_t>(reader.NumberOf(parts[0], kTableRows));
  open.cell.column = static_cast<std::int16_t>(reader.NumberOf(parts[1], kTableColumns - 1));
  open.text = std::move(parts[2]);
  open.unit = std::move(parts[3]);
  return open;
}

EditorState TakeState(DraftReader& reader) {
  EditorState state;
  for (const DraftField& field : kFields) {
    state.header.*field.text = reader.Text(field.keyword);
  }
  if (reader.IsNext("Option")) {
    const std::string option = reader.Text("Option");
    reader.Require(option == kOn || option == kOff);
    state.option = option == kOn;
  }
  state.shownPage = static_cast<std::int16_t>(reader.Number("Shown page", kPageLimit - 1));
  while (reader.IsNext("Page")) {
    reader.Require(state.pages.size() < kPageLimit);
    state.pages.push_back(TakePage(reader));
  }
  for (const std::string_view keyword : {kOpenCell, kUntypedCell}) {
    if (!state.openCell && reader.IsNext(keyword)) {
      state.openCell = TakeOpenCell(reader, keyword);
    }
  }
  return state;
}

void AddLine(std::string_view keyword, std::string_view value, FileText& text) {
  text.RawLine(std::string(keyword) + ": " + std::string(value));
}

void AddPage(const DraftPage& page, FileText& text) {
  AddLine("Page", Escaped(page.serialNumber), text);
  for (std::size_t index = 0; index < page.rows.size(); ++index) {
    AddLine("Row", EscapedCells(page.rows[index]), text);
    const std::string origins = OriginLetters(page, index);
    if (!origins.empty()) {
      AddLine("From", origins, text);
    }
    const GridRow row = RowOf(TableIndex{index});
    for (auto note = page.notes.lower_bound({row, 0});
         note != page.notes.end() && note->first.row == row; ++note) {
      AddLine("Note", EscapedCells(std::array{std::to_string(note->first.column), note->second}),
              text);
    }
  }
}

void AddState(const EditorState& state, FileText& text) {
  for (const DraftField& field : kFields) {
    AddLine(field.keyword, Escaped(state.header.*field.text), text);
  }
  if (state.option) {
    AddLine("Option", *state.option ? kOn : kOff, text);
  }
  AddLine("Shown page", std::to_string(state.shownPage), text);
  for (const DraftPage& page : state.pages) {
    AddPage(page, text);
  }
  if (const std::optional<OpenCell>& open = state.openCell) {
    AddLine(open->isTyped ? kOpenCell : kUntypedCell,
            EscapedCells(std::array{std::to_string(open->cell.row.number),
                                    std::to_string(open->cell.column), open->text, open->unit}),
            text);
  }
}

}  // namespace

std::string DraftBytes(const Draft& draft) {
  FileText text;
  text.RawLine(kVersionLine);
  AddLine("Written", std::to_string(draft.written), text);
  AddLine("Model", Escaped(draft.model), text);
  AddLine("File", Escaped(draft.file), text);
  if (!draft.fileContent.empty()) {
    AddLine("Content", Escaped(draft.fileContent), text);
  }
  AddState(draft.state, text);
  if (draft.opened) {
    text.RawLine(kOpenedLine);
    AddState(*draft.opened, text);
  }
  text.RawLine(kLastLine);
  return text.Bytes();
}

std::optional<Draft> DraftFrom(std::string_view bytes) {
  DraftReader reader(bytes);
  Draft draft;
  reader.TakeLineOf(kVersionLine);
  draft.written = reader.Number("Written", std::numeric_limits<std::int32_t>::max() * 2LL);
  draft.model = reader.Text("Model");
  draft.file = reader.Text("File");
  if (reader.IsNext("Content")) {
    draft.fileContent = reader.Text("Content");
  }
  draft.state = TakeState(reader);
  if (reader.IsNextLine(kOpenedLine)) {
    reader.TakeLineOf(kOpenedLine);
    draft.opened = TakeState(reader);
  }
  reader.TakeLineOf(kLastLine);
  return reader.IsWhole() ? std::optional(std::move(draft)) : std::nullopt;
}

}  // namespace tarvell
