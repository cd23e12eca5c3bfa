// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_REPLACEMENT_H
#define TARVELL_CORE_HISTORY_REPLACEMENT_H

#include <cstddef>
#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/history/StoredFile.h"

/// What a save would replace that the user has not seen, and the question that is asked about it.
namespace tarvell {

/// The content of a file. Its fields have the names that the screens use.
struct FileSummary {
  struct Field {
    std::string name;
    std::string value;

    bool operator==(const Field&) const = default;
  };

  std::string serialNumber;
  std::vector<Field> fields;                   ///< of its header, including the serial number
  std::vector<std::vector<std::string>> rows;  ///< the cells of its tables
};

/// Makes the summary of a file from its bytes, whatever they are.
using Summarise = std::function<FileSummary(std::string_view bytes)>;

struct Replacement {
  enum class Kind {
    None,                 ///< no question is needed
    AnotherSerialNumber,  ///< the file holds the data of another instrument
    ReadInPart,           ///< a part of the file was not read, and would be lost
    Changed,              ///< the file has changed since it was read
    NotOpened             ///< the file holds the same serial number, and was not opened
  };

  Kind kind = Kind::None;
  std::string path;
  std::time_t modified = 0;
  std::string bytes;  ///< what the file holds, see UnseenFile
  FileSummary file;   ///< the summary of `bytes`
  /// What would be lost: the fields whose value differs from that in the data set, and the number
  /// of cells that differ. If the file was read before, only changes since then count.
  std::vector<FileSummary::Field> fields;
  std::size_t cells = 0;
};

/// What saving `bytes` at `path` would replace. `file` is that of the data set. Throws as
/// StoredFile::Unseen does.
[[nodiscard]] Replacement ReplacementBy(const StoredFile& file, const std::string& path,
                                        std::string_view bytes, const Summarise& summarise);

/// The question about a replacement, to be answered yes or no; no is the default.
struct ReplacementQuestion {
  std::string text;
  std::string detail;
};
[[nodiscard]] ReplacementQuestion QuestionOf(const Replacement& replacement);

/// Whether a save may go on. `look` finds what it would replace, `agrees` asks the user about it.
/// If the file changes while the question is open, the user is asked again.
///
/// `agreed` is the content that the user has agreed to replace, and about which nobody asks again.
[[nodiscard]] bool MayReplace(const std::function<Replacement()>& look,
                              const std::function<bool(const Replacement&)>& agrees,
                              std::optional<std::string>& agreed);
[[nodiscard]] bool MayReplace(const std::function<Replacement()>& look,
                              const std::function<bool(const Replacement&)>& agrees);

/// A file as questions name it: with the folder of its model or station, because many folders have
/// a file of one name.
[[nodiscard]] std::string NameWithFolder(std::string_view path);

/// "5 MAR 2026 14:03:07" in local time, "(unknown)" for 0.
[[nodiscard]] std::string LocalTimeText(std::time_t time);

}  // namespace tarvell

#endif
