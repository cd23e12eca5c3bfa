// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_JOURNAL_H
#define TARVELL_CORE_HISTORY_JOURNAL_H

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The journal of a tree: a text file with one line for each change of one of its files.
namespace tarvell {

// What was done.
inline constexpr std::string_view kSaved = "saved";
inline constexpr std::string_view kPutBack = "put back";
inline constexpr std::string_view kDeleted = "deleted";

/// A change of a file, in the order of the fields on its line.
struct HistoryEvent {
  std::time_t time = 0;  ///< seconds since the beginning of 1970, UTC
  std::string user;
  std::string host;
  std::string done;    ///< one of those above; a later version may have others
  std::string file;    ///< its folder and its name, "PX12A/SN12345"
  std::string kept;    ///< name of the kept file, "" if there was nothing to keep
  std::string before;  ///< SHA-256 of the content until then, "" if there was no file
  std::string after;   ///< SHA-256 of the content since then, "" if the file was deleted

  bool operator==(const HistoryEvent&) const = default;
};

/// The line of an event, without a line end.
[[nodiscard]] std::string JournalLine(const HistoryEvent& event);

/// The event of a line without its end; nothing for a line that is damaged or cut off.
[[nodiscard]] std::optional<HistoryEvent> EventOf(std::string_view line);

struct Journal {
  std::vector<HistoryEvent> events;  ///< in the order of the file
  std::size_t damagedLines = 0;      ///< that hold no event, perhaps because they were cut off
};

/// What the bytes of a journal say about `file`, or about every file for "". Upper and lower case
/// of names do not matter. A damaged line is left out only if it clearly is about another file.
[[nodiscard]] Journal ReadJournal(std::string_view bytes, std::string_view file = {});

/// A time as the journal has it, "2026-03-05T14:03:07Z".
[[nodiscard]] std::string UtcText(std::time_t time);
/// The time of such a text; nothing for any other text.
[[nodiscard]] std::optional<std::time_t> UtcTimeOf(std::string_view text);

}  // namespace tarvell

#endif
