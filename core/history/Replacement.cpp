// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/Replacement.h"

#include <algorithm>
#include <cstdint>

#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"
#include "core/files/Paths.h"
#include "core/numbers/Numbers.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

using Fields = std::vector<FileSummary::Field>;
using Rows = std::vector<std::vector<std::string>>;

constexpr int kFirstYear = 1900;  // the year 0 of std::tm

std::string ValueIn(const Fields& fields, const std::string& name) {
  const auto found = std::ranges::find(fields, name, &FileSummary::Field::name);
  return found == fields.end() ? std::string() : found->value;
}

/// The fields of `file` that `saved` has with another value or lacks. Then, as empty fields, those
/// that only `saved` has.
Fields DifferentFields(const FileSummary& file, const FileSummary& saved) {
  Fields different;
  for (const FileSummary::Field& field : file.fields) {
    if (field.value != ValueIn(saved.fields, field.name)) {
      different.push_back(field);
    }
  }
  for (const FileSummary::Field& field : saved.fields) {
    const bool isMissing =
        std::ranges::find(file.fields, field.name, &FileSummary::Field::name) == file.fields.end();
    if (isMissing && !field.value.empty()) {
      different.push_back({field.name, ""});
    }
  }
  return different;
}

std::size_t DifferentCells(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t count = std::max(a.size(), b.size()) - common;
  for (std::size_t i = 0; i < common; ++i) {
    count += a.at(i) == b.at(i) ? 0 : 1;
  }
  return count;
}

/// An inserted or removed row adds only its own cells to the count, not those of the rows after it.
std::size_t DifferentCells(const Rows& a, const Rows& b) {
  const auto head = std::ranges::mismatch(a, b);
  const auto first = static_cast<std::size_t>(head.in1 - a.begin());
  std::size_t endA = a.size();
  std::size_t endB = b.size();
  while (endA > first && endB > first && a.at(endA - 1) == b.at(endB - 1)) {
    --endA;
    --endB;
  }
  static const std::vector<std::string> kNoRow;
  std::size_t count = 0;
  for (std::size_t i = first; i < std::max(endA, endB); ++i) {
    count += DifferentCells(i < endA ? a.at(i) : kNoRow, i < endB ? b.at(i) : kNoRow);
  }
  return count;
}

/// Sets what would be lost. `before` is the file as it was read, if known.
void Compare(Replacement& replacement, const FileSummary& saved,
             const std::optional<FileSummary>& before) {
  const FileSummary& file = replacement.file;
  replacement.fields = DifferentFields(file, saved);
  replacement.cells = DifferentCells(file.rows, saved.rows);
  if (before) {
    const Fields since = DifferentFields(file, *before);
    std::erase_if(replacement.fields, [&](const FileSummary::Field& field) {
      return std::ranges::find(since, field) == since.end();
    });
    if (replacement.cells > 0) {
      replacement.cells = DifferentCells(file.rows, before->rows);
    }
  }
}

std::string Line(const FileSummary::Field& field) {
  return field.name + ": " + TextOrNone(field.value) + "\n";
}

/// One line for each field that is not empty.
std::string Lines(const Fields& fields) {
  std::string lines;
  for (const FileSummary::Field& field : fields) {
    lines += field.value.empty() ? "" : Line(field);
  }
  return lines;
}

std::string DifferenceText(const Replacement& replacement) {
  if (replacement.fields.empty() && replacement.cells == 0) {
    return "Its fields and cells are the same; only remarks or blanks differ.\n";
  }
  std::string text = "What would be replaced:\n";
  for (const FileSummary::Field& field : replacement.fields) {
    text += Line(field);
  }
  if (replacement.cells > 0) {
    text += "Cells of its tables: " + std::to_string(replacement.cells) + "\n";
  }
  return text;
}

}  // namespace

std::string NameWithFolder(std::string_view path) {
  return NameText(Joined(LastNameOf(FolderOf(path)), LastNameOf(path)));
}

std::string LocalTimeText(std::time_t time) {
  const std::tm* local =
      time == 0 ? nullptr : std::localtime(&time);  // NOLINT(concurrency-mt-unsafe): one thread
  if (local == nullptr) {
    return "(unknown)";
  }
  const FileDate date = {static_cast<std::int16_t>(local->tm_year + kFirstYear),
                         static_cast<std::int16_t>(local->tm_mon + 1),
                         static_cast<std::int16_t>(local->tm_mday)};
  return DateText(date) + " " + AtLeastTwoDigits(local->tm_hour) + ":" +
         AtLeastTwoDigits(local->tm_min) + ":" + AtLeastTwoDigits(local->tm_sec);
}

Replacement ReplacementBy(const StoredFile& file, const std::string& path, std::string_view bytes,
                          const Summarise& summarise) {
  Replacement replacement;
  const std::optional<UnseenFile> unseen = file.Unseen(path, bytes);
  if (!unseen) {
    return replacement;
  }
  replacement.path = path;
  replacement.modified = unseen->modified;
  replacement.bytes = unseen->bytes;
  replacement.file = summarise(unseen->bytes);
  const FileSummary saved = summarise(bytes);
  std::optional<FileSummary> before;
  if (unseen->wasRead && !file.UnchangedBytes().empty()) {
    before = summarise(file.UnchangedBytes());
  }
  const std::string& serial = replacement.file.serialNumber;
  // The user may have corrected the serial number of the same instrument.
  const bool isSame =
      serial == saved.serialNumber || (unseen->wasRead && serial == file.SerialNumber());
  replacement.kind = unseen->isAsRead  ? Replacement::Kind::ReadInPart
                     : !isSame         ? Replacement::Kind::AnotherSerialNumber
                     : unseen->wasRead ? Replacement::Kind::Changed
                                       : Replacement::Kind::NotOpened;
  Compare(replacement, saved, before);
  const bool isNothingLost = replacement.fields.empty() && replacement.cells == 0;
  return unseen->isAsRead && isNothingLost ? Replacement() : replacement;
}

ReplacementQuestion QuestionOf(const Replacement& replacement) {
  const std::string file = "The file " + NameWithFolder(replacement.path);
  const std::string time = LocalTimeText(replacement.modified);
  const std::string question = "Do you want to replace it?";
  const std::string no = "No leaves the file as it is.";
  switch (replacement.kind) {
    case Replacement::Kind::None:
      break;
    case Replacement::Kind::AnotherSerialNumber: {
      const std::string& serial = replacement.file.serialNumber;
      const std::string holds =
          serial.empty() ? " holds data without a serial number. "
                         : " holds the data of another serial number, \"" + serial + "\". ";
      return {file + holds + question,
              Lines(replacement.file.fields) + "Last changed: " + time + "\n\n" + no};
    }
    case Replacement::Kind::ReadInPart:
      return {"The end of the file " + NameWithFolder(replacement.path) +
                  " is missing, and its last line was not read. " + question,
              "Last changed: " + time + "\n" + DifferenceText(replacement) + "\n" + no};
    case Replacement::Kind::Changed:
      return {file + " has changed since it was opened here. " + question,
              "Last changed: " + time + "\n" + DifferenceText(replacement) + "\n" + no};
    case Replacement::Kind::NotOpened:
      return {file + " with this serial number already exists. " + question,
              "Last changed: " + time + "\n" + DifferenceText(replacement) + "\n" + no};
  }
  return {};
}

bool MayReplace(const std::function<Replacement()>& look,
                const std::function<bool(const Replacement&)>& agrees,
                std::optional<std::string>& agreed) {
  while (true) {
    const Replacement replacement = look();
    if (replacement.kind == Replacement::Kind::None || replacement.bytes == agreed) {
      return true;
    }
    if (!agrees(replacement)) {
      return false;
    }
    agreed = replacement.bytes;
  }
}

bool MayReplace(const std::function<Replacement()>& look,
                const std::function<bool(const Replacement&)>& agrees) {
  std::optional<std::string> agreed;
  return MayReplace(look, agrees, agreed);
}

}  // namespace tarvell
