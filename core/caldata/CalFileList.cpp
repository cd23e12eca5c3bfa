// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalFileList.h"

#include <system_error>
#include <utility>

#include "core/caldata/HeaderLines.h"
#include "core/dates/FileDate.h"
#include "core/files/FileNames.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::size_t kListedEntries = 256;

bool MeansMissing(std::error_code code) {
  return code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
}

/// Whether this is a link to a place that does not exist, such as a disk that is not mounted.
bool IsDanglingLink(const std::filesystem::path& native) {
  EntryFacts facts;
  return !CurrentPlatform().Facts(native, facts) && facts.isLink && facts.kind == EntryKind::None;
}

/// Whether an entry is a folder with something in it. A folder that cannot be read counts as
/// filled: it is listed, and choosing it reports the reason.
bool HoldsEntries(const std::filesystem::path& folder) {
  bool any = false;
  const std::error_code code =
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const FoundEntry&) {
        any = true;
        return false;
      });
  return any || (code && (!MeansMissing(code) || IsDanglingLink(folder)));
}

void TakeCalDate(const FileDate& date, CalFileInfo& row) {
  row.CalYear = date.year;
  row.CalMonth = date.month;
  row.CalDay = date.day;
}

void TakeDueDate(const FileDate& date, CalFileInfo& row) {
  row.DueYear = date.year;
  row.DueMonth = date.month;
  row.DueDay = date.day;
}

FileDate ReadDate(ItemReader& reader) {
  const std::string_view value = ListedHeaderValue(reader.ReadItem());
  return reader.AtThisLine([&] { return FileDate::From(value); });
}

void ReadNewStyleHeader(ItemReader& reader, const std::string& firstItem, CalFileInfo& row) {
  row.ModelNumber = ListedHeaderValue(firstItem);
  row.SerialNumber = ListedHeaderValue(reader.ReadItem());
  TakeCalDate(ReadDate(reader), row);
  row.CalibrationNumber = ListedHeaderValue(reader.ReadItem());
  TakeDueDate(ReadDate(reader), row);
  row.Comment = ListedHeaderValue(reader.ReadItem());
}

void ReadOldStyleHeader(ItemReader& reader, std::string_view firstItem, CalFileInfo& row) {
  const OldStyleModel model = OldStyleModelOf(firstItem);
  row.ModelNumber = model.model;
  row.Option = model.hasOption ? "001" : "";
  row.SerialNumber = Trim(reader.ReadItem());
  const std::string date = reader.ReadItem();
  reader.AtThisLine([&] {
    TakeCalDate(OldStyleDateOf(date), row);
    TakeDueDate(OneYearAfter(OldStyleDateOf(date)), row);
  });
}

/// Reads one file's header; nothing when the file has neither of the two styles.
std::optional<CalFileInfo> ReadHeader(ItemReader& reader) {
  CalFileInfo row;
  row.FilePath = reader.Path();
  const std::string first = reader.ReadItem();
  if (!first.empty() && first.front() == '#') {
    ReadNewStyleHeader(reader, first, row);
  } else if (first.find_first_of("\r\n") == std::string::npos) {
    ReadOldStyleHeader(reader, first, row);
  } else {
    return std::nullopt;
  }
  return row;
}

/// The entries of a folder that could not be read.
class UnreadableEntries {
 public:
  void Add(const std::string& name, const Error& reason) {
    if (++count_ == 1) {
      first_ = reason;
    }
    if (count_ <= kNamedEntries) {
      const std::string line =
          reason.Line() > 0 ? ", line " + std::to_string(reason.Line()) : std::string();
      list_ += "\n\n" + name + line + ": " + reason.Text();
    }
  }

  /// Throws one error for all of them, if there are any.
  void Report(const std::string& folder) const {
    if (count_ == 1) {
      throw Error(first_->Kind(), first_->Text() + " All other data sets of its folder are listed.",
                  first_->Path(), first_->Line());
    }
    if (count_ > 1) {
      throw Error(first_->Kind(), Text() + "\n\nAll other data sets of the folder are listed.",
                  folder);
    }
  }

  /// Throws `error`, which ended the reading, and adds these entries to its text.
  [[noreturn]] void ReportWith(const Error& error) const {
    throw Error(error.Kind(), count_ == 0 ? error.Text() : error.Text() + "\n\n" + Text(),
                error.Path(), error.Line());
  }

 private:
  // As many as a message on a small screen has room for.
  static constexpr std::size_t kNamedEntries = 5;

  [[nodiscard]] std::string Text() const {
    const std::string subject = count_ == 1 ? "One entry" : std::to_string(count_) + " entries";
    const std::string others =
        count_ > kNamedEntries ? "\n\n... and " + std::to_string(count_ - kNamedEntries) + " more."
                               : std::string();
    return subject + " of the folder cannot be read as a data file:" + list_ + others;
  }

  std::size_t count_ = 0;
  std::optional<Error> first_;
  std::string list_;
};

/// Reads the header of a file that was found, but adds a file that cannot be read to `unreadable`.
std::optional<CalFileInfo> TryReadHeader(const FoundEntry& entry, std::string path,
                                         UnreadableEntries& unreadable) {
  try {
    return ReadFirstItems(entry, std::move(path), &ReadHeader);
  } catch (const Error& error) {
    // The data sets after it must still be listed: all such files are reported together.
    unreadable.Add(entry.name, error);
    return std::nullopt;
  }
}

Error TooManyFiles(const std::string& folder, std::size_t listed, bool isFiltered) {
  const std::string count = std::to_string(listed);
  const std::string first = "only the first " + count + " are listed and sorted. ";
  return {ErrorKind::Index,
          isFiltered
              ? "More than " + count + " data files match the filter; " + first +
                    "Type more of the serial number, calibration number or comment."
              : "The folder holds more than " + count + " data files; " + first +
                    "To list others, type a part of their serial number, calibration number or "
                    "comment into the filter above the serial numbers, in the menu of calibration "
                    "data or where you pick an instrument. Or move the files of instruments that "
                    "are no longer used to another folder.",
          folder};
}

}  // namespace

bool ListModelFolders(const std::string& root, std::vector<std::string>& names) {
  const std::filesystem::path native = NativePath(root);
  std::vector<std::string> entries;
  bool tooMany = false;
  const std::error_code code =
      CurrentPlatform().Search(native, SearchKind::NamesWithoutDot, [&](const FoundEntry& entry) {
        tooMany = entries.size() == kListedEntries;
        if (!tooMany) {
          entries.push_back(entry.name);
        }
        return !tooMany;
      });
  names.clear();
  for (const std::string& entry : entries) {
    names.push_back(HoldsEntries(native / SystemName(entry)) ? ToUpper(entry) : "*");
  }
  if (names.empty()) {
    names.emplace_back("*");
  }
  names.emplace_back();
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "list the folder", root);
  }
  if (tooMany) {
    const std::string listed = std::to_string(kListedEntries);
    throw Error(ErrorKind::Index,
                "The folder holds more than " + listed + " entries; only the first " + listed +
                    " are listed. Move what does not belong there to another folder.",
                root);
  }
  return true;
}

std::vector<std::string> ModelsWithData(std::vector<std::string> names) {
  std::erase_if(names, [](const std::string& name) { return name == "*" || name.empty(); });
  return names;
}

bool MatchesFilter(const CalFileInfo& row, std::string_view filter) {
  return ContainsIgnoringCase(row.SerialNumber, filter) ||
         ContainsIgnoringCase(row.CalibrationNumber, filter) ||
         ContainsIgnoringCase(row.Comment, filter);
}

std::size_t ReadHeadersIn(const std::string& modelFolder, std::span<CalFileInfo> rows,
                          const std::function<void(const CalFileInfo& row)>& rowRead,
                          std::string_view filter) {
  const std::string_view part = Trim(filter);
  const std::filesystem::path native = NativePath(modelFolder);
  std::size_t count = 0;
  UnreadableEntries unreadable;
  const std::error_code code =
      CurrentPlatform().Search(native, SearchKind::NamesWithoutDot, [&](const FoundEntry& entry) {
        if (!IsDataFileName(entry.name)) {
          return true;
        }
        UnreadableEntries others;
        const bool isNamed = ContainsIgnoringCase(entry.name, part);
        std::optional<CalFileInfo> row =
            TryReadHeader(entry, Joined(modelFolder, entry.name), isNamed ? unreadable : others);
        if (row && MatchesFilter(*row, part)) {
          if (count == rows.size()) {
            unreadable.ReportWith(TooManyFiles(modelFolder, rows.size(), !part.empty()));
          }
          rows[count] = std::move(*row);
          if (rowRead) {
            rowRead(rows[count]);
          }
          ++count;
        }
        return true;
      });
  if (code && (!MeansMissing(code) || IsDanglingLink(native))) {
    unreadable.ReportWith(SystemError(code, "list the folder", modelFolder));
  }
  unreadable.Report(modelFolder);
  return count;
}

std::optional<CalFileInfo> CalFileHeaderIn(std::string_view bytes, const std::string& path) {
  ItemReader reader = ItemReader::Of(bytes, path);
  return ReadHeader(reader);
}

std::optional<CalFileInfo> ReadCalFileHeader(const std::string& path) {
  ItemReader reader(NativePath(path), path);
  return ReadHeader(reader);
}

std::optional<CalFileInfo> ReadableCalFileHeader(const std::string& path) {
  try {
    return ReadCalFileHeader(path);
  } catch (const Error&) {
    return std::nullopt;
  }
}

bool IsDamagedDataFile(const std::string& path, const std::string& earlier) {
  return !ReadableCalFileHeader(path) && ReadableCalFileHeader(earlier);
}

}  // namespace tarvell
