// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/FileCheck.h"

#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// The first line that a save would change.
std::string ChangedLine(std::string_view bytes, std::string_view saved) {
  for (int line = 1; !bytes.empty() || !saved.empty(); ++line) {
    const std::string_view before = TakeLine(bytes);
    const std::string_view after = TakeLine(saved);
    if (before != after) {
      return "Line " + std::to_string(line) + ", " + Quoted(DecodeFileText(before)) +
             ", would become " + Quoted(DecodeFileText(after)) + ".";
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
