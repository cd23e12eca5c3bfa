// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <string>
#include <string_view>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/history/KeptVersions.h"

/// Journals of a history. An input is the file of one, as a killed program or a person may leave
/// it.
namespace tarvell::fuzz {
namespace {

constexpr const char* kFile = R"(c:\data\PX12A\SN12345)";

/// A line that is taken for an event has eight fields, and is the line of that event.
void CheckLines(const Journal& journal, std::string_view bytes) {
  std::size_t lines = 0;
  for (const HistoryEvent& event : journal.events) {
    const std::string line = JournalLine(event);
    Require(bytes.find(line) != std::string_view::npos, "an event is on a line of the file");
    Require(std::ranges::count(line, '\t') == 7, "a line has eight fields");
    Require(line.find_first_of("\r\n") == std::string::npos, "an event is one line");
    Require(EventOf(line) == event, "an event is read back");
    ++lines;
  }
  Require(lines + journal.damagedLines <= bytes.size(), "no line is counted twice");
}

/// Whatever the journal holds, the history is listed, and the next save ends a line that was cut.
void CheckHistory(const std::string& bytes) {
  MemoryPlatform disk;
  disk.Put("data/PX12A/SN12345", "present");
  disk.Put("data/history.tarvell/journal.txt", bytes);
  const std::size_t before = ReadJournal(bytes).events.size();
  for (const KeptVersion& version : HistoryOf(kFile).versions) {
    Require(version.State() == VersionState::Missing, "no version is invented");
  }
  SaveWithHistory(kFile, "new");
  const std::string* after = disk.Find("data/history.tarvell/journal.txt");
  Require(after != nullptr && after->starts_with(bytes), "a journal only grows");
  const Journal journal = ReadJournal(*after);
  Require(journal.events.size() >= before + 1, "no line is lost");
  Require(journal.events.back().file == "PX12A/SN12345", "the save is in the journal");
}

}  // namespace

void Run(Input input) {
  const std::string bytes = input.Rest();
  CheckLines(ReadJournal(bytes), bytes);
  CheckHistory(bytes);
}

}  // namespace tarvell::fuzz
