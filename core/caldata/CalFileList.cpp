// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalFileList.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::size_t kMostEntries = 256;

bool MeansMissing(std::error_code code) {
  return code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
}

/// Whether a link stands here that leads nowhere, such as to a disk that is not there.
bool IsDanglingLink(const std::filesystem::path& native) {
  EntryFacts facts;
  return !CurrentPlatform().Facts(native, facts) && facts.isLink && facts.kind == EntryKind::None;
}

/// Whether an entry is a folder with something in it. One that cannot be looked into counts as
/// filled, so that it is listed and choosing it says the reason.
bool HoldsEntries(const std::filesystem::path& folder) {
  bool any = false;
  const std::error_code code =
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const std::string&, EntryKind) {
        any = true;
        return false;
      });
  return any || (code && (!MeansMissing(code) || IsDanglingLink(folder)));
}

bool IsDataFileName(std::string_view name) {
  const std::string_view prefix = name.substr(0, 2);
  return prefix == "SN" || prefix == "Sn" || prefix == "sn";
}

/// The value of a header line: what stands behind its first colon.
std::string HeaderValue(std::string_view item) {
  const std::size_t colon = item.find(':');
  return colon == std::string_view::npos ? std::string()
                                         : std::string(Trim(item.substr(colon + 1)));
}

FileDate ReadDate(ItemReader& reader) {
  const std::string value = HeaderValue(reader.ReadItem());
  return reader.AtThisLine([&] { return FileDate::From(value); });
}

void ReadNewStyleHeader(ItemReader& reader, const std::string& firstItem, CalFileInfo& row) {
  row.ModelNumber = HeaderValue(firstItem);
  row.SerialNumber = HeaderValue(reader.ReadItem());
  const FileDate calDate = ReadDate(reader);
  row.CalYear = calDate.year;
  row.CalMonth = calDate.month;
  row.CalDay = calDate.day;
  row.CalibrationNumber = HeaderValue(reader.ReadItem());
  const FileDate dueDate = ReadDate(reader);
  row.DueYear = dueDate.year;
  row.DueMonth = dueDate.month;
  row.DueDay = dueDate.day;
  row.Comment = HeaderValue(reader.ReadItem());
}

/// Files from before the header lines: maker and model, serial number, calibration date
/// (DDMMMYYYY). They are due one year later.
void ReadOldStyleHeader(ItemReader& reader, std::string_view firstItem, CalFileInfo& row) {
  static constexpr std::string_view kMaker = "QZ";
  static constexpr std::string_view kOption = "Opt001";
  std::string_view model = Trim(firstItem);
  if (model.substr(0, kMaker.size()) == kMaker) {
    model = Trim(model.substr(kMaker.size()));
  }
  if (LastCharacters(model, kOption.size()) == kOption) {
    model = Trim(FirstCharacters(model, 6));
    row.Option = "001";
  }
  row.ModelNumber = model;
  row.SerialNumber = Trim(reader.ReadItem());
  const std::string date = reader.ReadItem();
  reader.AtThisLine([&] {
    row.CalDay = NumericInt16(FirstCharacters(date, 2));
    row.CalMonth = MonthToNumber(FirstCharacters(WithoutFirst(date, 2), 3));
    row.CalYear = NumericInt16(LastCharacters(date, 4));
    row.DueYear = ToInt16(row.CalYear + 1.0);
  });
  row.DueMonth = row.CalMonth;
  row.DueDay = row.CalDay;
}

/// Reads one file's header; nothing when the file is none of the two styles.
std::optional<CalFileInfo> ReadHeader(const std::filesystem::path& native,
                                      const std::string& path) {
  CalFileInfo row;
  row.FilePath = path;
  ItemReader reader(native, path);
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
    if (count_ <= kMostNamed) {
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

  /// Throws `error`, which ended the reading, together with them.
  [[noreturn]] void ReportWith(const Error& error) const {
    throw Error(error.Kind(), count_ == 0 ? error.Text() : error.Text() + "\n\n" + Text(),
                error.Path(), error.Line());
  }

 private:
  // As many as a message has room for on a small screen.
  static constexpr std::size_t kMostNamed = 5;

  [[nodiscard]] std::string Text() const {
    const std::string subject = count_ == 1 ? "One entry" : std::to_string(count_) + " entries";
    const std::string others = count_ > kMostNamed
                                   ? "\n\n... and " + std::to_string(count_ - kMostNamed) + " more."
                                   : std::string();
    return subject + " of the folder cannot be read as a data file:" + list_ + others;
  }

  std::size_t count_ = 0;
  std::optional<Error> first_;
  std::string list_;
};

/// As ReadHeader; a file that cannot be read joins `unreadable`.
std::optional<CalFileInfo> TryReadHeader(const std::filesystem::path& native,
                                         const std::string& path, UnreadableEntries& unreadable) {
  try {
    return ReadHeader(native, path);
  } catch (const Error& error) {
    // It must not hide the data sets after it: all are reported together.
    unreadable.Add(std::string(LastNameOf(path)), error);
    return std::nullopt;
  }
}

Error TooManyFiles(const std::string& folder) {
  return {ErrorKind::Index,
          "The folder holds more than 51 data files; only the first 51 are listed. "
          "Move those of instruments that are no longer used to another folder.",
          folder};
}

}  // namespace

bool ListModelFolders(const std::string& root, std::vector<std::string>& names) {
  const std::filesystem::path native = NativePath(root);
  std::vector<std::string> entries;
  bool tooMany = false;
  const std::error_code code = CurrentPlatform().Search(native, SearchKind::NamesWithoutDot,
                                                        [&](const std::string& name, EntryKind) {
                                                          tooMany = entries.size() == kMostEntries;
                                                          if (!tooMany) {
                                                            entries.push_back(name);
                                                          }
                                                          return !tooMany;
                                                        });
  names.clear();
  for (const std::string& entry : entries) {
    names.push_back(HoldsEntries(native / entry) ? ToUpper(entry) : "*");
  }
  if (names.empty()) {
    names.emplace_back("*");
  }
  names.emplace_back();
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "list the folder", root);
  }
  if (tooMany) {
    throw Error(ErrorKind::Index,
                "The folder holds more than 256 entries; only the first 256 are listed. Move "
                "what does not belong there to another folder.",
                root);
  }
  return true;
}

std::vector<std::string> ModelsWithData(std::vector<std::string> names) {
  std::erase_if(names, [](const std::string& name) { return name == "*" || name.empty(); });
  return names;
}

std::size_t ReadHeadersIn(const std::string& modelFolder, std::span<CalFileInfo> rows,
                          const std::function<void(const CalFileInfo& row)>& rowRead) {
  const std::filesystem::path native = NativePath(modelFolder);
  std::size_t count = 0;
  UnreadableEntries unreadable;
  const std::error_code code = CurrentPlatform().Search(
      native, SearchKind::NamesWithoutDot, [&](const std::string& name, EntryKind) {
        if (!IsDataFileName(name)) {
          return true;
        }
        if (count == rows.size()) {
          unreadable.ReportWith(TooManyFiles(modelFolder));
        }
        std::optional<CalFileInfo> row =
            TryReadHeader(native / name, Joined(modelFolder, name), unreadable);
        if (row) {
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

std::optional<CalFileInfo> ReadCalFileHeader(const std::string& path) {
  return ReadHeader(NativePath(path), path);
}

}  // namespace tarvell
