// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_REPLACEMENT_H
#define TARVELL_CORE_FILES_REPLACEMENT_H

#include <cstddef>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/StoredFile.h"

/// What a save would replace although its user has not seen it, and what the user is asked then.
namespace tarvell {

/// What a file says, as the screens call it.
struct FileSummary {
  struct Field {
    std::string name;
    std::string value;

    bool operator==(const Field&) const = default;
  };

  std::string serialNumber;
  std::vector<Field> fields;                   ///< of its header, the serial number among them
  std::vector<std::vector<std::string>> rows;  ///< the cells of its tables
};

/// Makes the summary of a file's bytes; any bytes give one.
using Summarise = std::function<FileSummary(std::string_view bytes)>;

struct Replacement {
  enum class Kind {
    None,                 ///< nobody needs to be asked
    AnotherSerialNumber,  ///< the file holds the data of another instrument
    Changed,              ///< the file has changed since it was read
    NotOpened             ///< the file holds the same serial number, and was never read
  };

  Kind kind = Kind::None;
  std::string path;
  std::time_t modified = 0;
  std::string bytes;  ///< what the file holds, see UnseenFile
  FileSummary file;   ///< what the file says
  /// What of it would be lost: the fields of the file that the data set does not have so, and how
  /// many cells differ. Where the file was read before, only what has changed since then.
  std::vector<FileSummary::Field> fields;
  std::size_t cells = 0;
};

/// What saving `bytes` at `path` would replace, for the data set that `file` is of. Throws as
/// StoredFile::Unseen does.
[[nodiscard]] Replacement ReplacementBy(const StoredFile& file, const std::string& path,
                                        std::string_view bytes, const Summarise& summarise);

/// What the user is asked about a replacement: yes or no, no by default.
struct ReplacementQuestion {
  std::string text;
  std::string detail;
};
[[nodiscard]] ReplacementQuestion QuestionOf(const Replacement& replacement);

/// Whether a save may go on: `look` says what it would replace, `agrees` asks about that. What has
/// changed again while the user was asked is asked about again.
[[nodiscard]] bool MayReplace(const std::function<Replacement()>& look,
                              const std::function<bool(const Replacement&)>& agrees);

/// "5 MAR 2026 14:03:07", in the time of this place; "(unknown)" for 0.
[[nodiscard]] std::string LocalTimeText(std::time_t time);

}  // namespace tarvell

#endif
