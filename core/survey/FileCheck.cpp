// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/FileCheck.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "core/survey/PairedLines.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Removes the lines at the beginning of both that are the same, and returns how many they are.
std::size_t RemoveSameLines(std::string_view& bytes, std::string_view& saved) {
  std::size_t count = 0;
  while (!bytes.empty() && !saved.empty()) {
    std::string_view before = bytes;
    std::string_view after = saved;
    if (TakeLine(before) != TakeLine(after)) {
      break;
    }
    bytes = before;
    saved = after;
    ++count;
  }
  return count;
}

/// The beginning of `bytes`, at most as many lines as can be paired soon.
std::string_view FirstLines(std::string_view bytes) {
  static constexpr int kPairedLines = 200;
  std::string_view rest = bytes;
  for (int line = 0; line < kPairedLines && !rest.empty(); ++line) {
    static_cast<void>(TakeLine(rest));
  }
  return bytes.substr(0, bytes.size() - rest.size());
}

/// The first line that a save would change.
std::string ChangedLine(std::string_view bytes, std::string_view saved) {
  std::size_t number = RemoveSameLines(bytes, saved);
  const FileLines before = LinesOf(FirstLines(bytes));
  const FileLines after = LinesOf(FirstLines(saved));
  std::vector<std::pair<const FileLine*, const FileLine*>> pairs;
  PairedLines(before, after).Each([&](const FileLine* from, const FileLine* to) {
    pairs.emplace_back(from, to);
  });
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const FileLine* from = pairs[i].first;
    const FileLine* to = pairs[i].second;
    if (from == nullptr) {
      return "After line " + std::to_string(number) + ", it would add " + Quoted(to->text) + ".";
    }
    const std::string line = "Line " + std::to_string(++number) + ", " + Quoted(from->text);
    if (to == nullptr && i + 1 < pairs.size() && pairs[i + 1].first == nullptr) {
      // Another line comes in its place.
      to = pairs[i + 1].second;
    }
    if (to == nullptr) {
      return line + ", would be left out.";
    }
    if (from->text != to->text) {
      return line + ", would become " + Quoted(to->text) + ".";
    }
  }
  return "Its line ends would become CR LF.";
}

}  // namespace

void AddUnreadable(const Error& error, SurveyRow& row) {
  const std::string line =
      error.Line() > 0 ? "Line " + std::to_string(error.Line()) + ": " : std::string();
  row.Add(error.Kind() == ErrorKind::InputPastEnd ? FindingKind::CutOff : FindingKind::Unreadable,
          line + NameText(error.Text()));
}

bool CheckLastLine(std::string_view bytes, std::string_view remedy, SurveyRow& row) {
  const bool hasEnd = bytes.ends_with('\n') || bytes.ends_with('\r');
  if (!hasEnd) {
    row.Add(FindingKind::CutOff,
            "The last line of the file has no line end: the file may be cut off. Compare it with "
            "its source, then " +
                std::string(remedy) + ".");
  }
  return hasEnd;
}

void CheckRewritten(std::string_view bytes, const std::function<std::string()>& save, bool hasEnd,
                    SurveyRow& row) {
  std::string saved;
  try {
    saved = save();
  } catch (const Error& error) {
    row.Add(FindingKind::NotRewritten, "A save would refuse the file. " + error.Text());
    return;
  }
  if (saved == bytes) {
    return;
  }
  if (!CheckLastLine(bytes, "save it again", row)) {
    return;
  }
  if (!hasEnd) {
    row.Add(FindingKind::NoEnd,
            "The line that ends the file, or one of its pages, is missing. Compare it with its "
            "source, then save it again.");
  } else if (!row.Has(FindingKind::OtherModel) && !row.Has(FindingKind::NoSuchDate)) {
    row.Add(FindingKind::NotRewritten, "A save would not write the file as it is. " +
                                           ChangedLine(bytes, saved) +
                                           " Check what would be lost before you save it.");
  }
}

}  // namespace tarvell
