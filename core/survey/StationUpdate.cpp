// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/StationUpdate.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/station/InstrumentEnd.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::string ReadInstrument(const std::string& path) {
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(NativePath(path), bytes, kDataFileLimit)) {
    throw SystemError(code, "read the file", path);
  }
  return bytes;
}

/// A save would make a file that was cut off look whole.
void CheckIsWhole(std::string_view bytes, const std::string& path) {
  if (!NoticeOfMissingEnd(bytes).empty()) {
    throw Error(
        ErrorKind::InputPastEnd,
        "The file was cut off: its end is missing. Select it at the station, compare it with "
        "the instrument, and save it first.",
        path);
  }
}

/// The header of a data set with a due date.
CalFileInfo ReadDataSet(const std::string& path) {
  const std::optional<CalFileInfo> header = ReadCalFileHeader(path);
  if (!header || !Exists({header->DueYear, header->DueMonth, header->DueDay})) {
    throw Error(ErrorKind::Type,
                "The data set has no due date that the station could take. Open it and correct "
                "the date first.",
                path);
  }
  return *header;
}

void CheckSameInstrument(const StationInstrument& instrument, const std::string& path,
                         const CalFileInfo& dataSet) {
  const std::string name = NameText(LastNameOf(path));
  if (!EqualsIgnoringCase(instrument.ModelNumber, name)) {
    throw Error(ErrorKind::Name,
                "The file is called " + Quoted(name) + ", but the MODEL NUMBER in it is " +
                    Quoted(instrument.ModelNumber) +
                    ". Select it at the station, correct the MODEL NUMBER and save it first.",
                path);
  }
  if (instrument.SerialNumber != dataSet.SerialNumber) {
    throw Error(ErrorKind::Name,
                "The station has the " + instrument.ModelNumber + " " + instrument.SerialNumber +
                    ", the data set is that of " + dataSet.SerialNumber +
                    ". Choose the right serial number at the station first.",
                path);
  }
}

void TakeDataSet(const CalFileInfo& dataSet, StationInstrument& instrument) {
  instrument.DueDay = std::to_string(dataSet.DueDay);
  instrument.DueMonth = NumberToMonth(dataSet.DueMonth);
  instrument.DueYear = std::to_string(dataSet.DueYear);
  instrument.Comment = dataSet.Comment;
}

/// A line of an instrument's file.
struct FileLine {
  std::string text;
  std::string keyword;
  std::string_view end;  ///< CR LF, CR or LF; "" for a last line without an end
};
using FileLines = std::vector<FileLine>;

FileLines LinesOf(std::string_view bytes) {
  FileLines lines;
  while (!bytes.empty()) {
    std::string_view end = bytes;
    const std::string_view line = TakeLine(bytes);
    end.remove_suffix(bytes.size());
    end.remove_prefix(line.size());
    std::string text = DecodeFileText(line);
    std::string keyword = ParseKeywordLine(text).keyword;
    lines.push_back({std::move(text), std::move(keyword), end});
  }
  return lines;
}

/// How much two lines have in common; 0 if one cannot have become the other.
std::size_t Likeness(const FileLine& before, const FileLine& after) {
  if (before.text == after.text) {
    return before.end == after.end ? 3 : 2;
  }
  return before.keyword == after.keyword ? 1 : 0;
}

/// Pairs the lines of two files, in the order of both, so that the pairs have as much in common as
/// possible.
class PairedLines {
 public:
  /// Both must outlive the object.
  PairedLines(const FileLines& before, const FileLines& after)
      : before_(before),
        after_(after),
        width_(after.size() + 1),
        best_((before.size() + 1) * width_) {
    for (std::size_t i = before.size(); i-- > 0;) {
      for (std::size_t j = after.size(); j-- > 0;) {
        const std::size_t likeness = Likeness(before[i], after[j]);
        best_[i * width_ + j] = std::max(
            {Best(i + 1, j), Best(i, j + 1), likeness == 0 ? 0 : likeness + Best(i + 1, j + 1)});
      }
    }
  }

  /// Calls `visit` with each pair, and with nullptr beside a line that has no other.
  template <typename Visit>
  void Each(const Visit& visit) const {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < before_.size() || j < after_.size()) {
      // Of several lines with one keyword, a reader takes the last.
      if (i < before_.size() && Best(i, j) == Best(i + 1, j)) {
        visit(&before_[i++], nullptr);
      } else if (j < after_.size() && Best(i, j) == Best(i, j + 1)) {
        visit(nullptr, &after_[j++]);
      } else {
        visit(&before_[i++], &after_[j++]);
      }
    }
  }

 private:
  /// What the lines from these two on have in common.
  [[nodiscard]] std::size_t Best(std::size_t i, std::size_t j) const {
    return best_[i * width_ + j];
  }

  const FileLines& before_;
  const FileLines& after_;
  std::size_t width_;
  std::vector<std::size_t> best_;
};

std::string ShownText(const FileLine& line) {
  return line.text.empty() ? "(empty line)" : line.text;
}

/// A line whose end changes.
std::string TextWithEnd(const FileLine& line) {
  const std::string_view end = line.end == "\r\n" ? " (line end CR LF)"
                               : line.end == "\n" ? " (line end LF)"
                               : line.end == "\r" ? " (line end CR)"
                                                  : " (no line end)";
  return ShownText(line) + std::string(end);
}

ChangedLine ChangeOf(const FileLine& before, const FileLine& after) {
  return before.end == after.end ? ChangedLine{ShownText(before), ShownText(after)}
                                 : ChangedLine{TextWithEnd(before), TextWithEnd(after)};
}

/// Whether a file with these lines has the due date and the comment that it should have.
bool IsUpToDate(const FileLines& lines, const FileLines& wanted) {
  return std::ranges::all_of(wanted, [&](const FileLine& line) {
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [&](const FileLine& other) {
      return other.keyword == line.keyword;
    });
    return (line.keyword != "CAL DUE DATE" && line.keyword != "COMMENT") ||
           (last != lines.rend() && last->text == line.text);
  });
}

}  // namespace

std::vector<ChangedLine> ChangedLines(std::string_view before, std::string_view after) {
  const FileLines earlier = LinesOf(before);
  const FileLines later = LinesOf(after);
  std::vector<ChangedLine> changed;
  if (IsUpToDate(earlier, later)) {
    return changed;
  }
  PairedLines(earlier, later).Each([&](const FileLine* from, const FileLine* to) {
    if (from == nullptr) {
      changed.push_back({"", ShownText(*to)});
    } else if (to == nullptr) {
      changed.push_back({ShownText(*from), ""});
    } else if (from->text != to->text || from->end != to->end) {
      changed.push_back(ChangeOf(*from, *to));
    }
  });
  return changed;
}

StationUpdate::StationUpdate(const std::string& instrumentPath, const std::string& dataSetPath)
    : stationFolder_(FolderOf(instrumentPath)), path_(instrumentPath) {
  const std::string bytes = ReadInstrument(instrumentPath);
  CheckIsWhole(bytes, instrumentPath);
  const CalFileInfo dataSet = ReadDataSet(dataSetPath);
  instrument_ = InstrumentIn(bytes, instrumentPath);
  CheckSameInstrument(instrument_, instrumentPath, dataSet);
  file_.WasRead(instrumentPath, bytes, instrument_.SerialNumber);
  file_.SetUnchangedBytes(InstrumentBytes(instrument_));
  TakeDataSet(dataSet, instrument_);
  lines_ = ChangedLines(bytes, InstrumentBytes(instrument_));
}

Replacement StationUpdate::WouldReplace() const {
  return InstrumentWouldReplace(stationFolder_, instrument_, file_);
}

void StationUpdate::Save(Earlier earlier) {
  EntryFacts facts;
  if (!CurrentPlatform().Facts(NativePath(path_), facts) && facts.kind == EntryKind::None) {
    throw Error(ErrorKind::NotFound,
                "The instrument was not updated: somebody has deleted its file meanwhile. If the "
                "station still uses it, add it to the station again.",
                path_);
  }
  SaveInstrumentFile(stationFolder_, instrument_, file_, earlier);
}

}  // namespace tarvell
