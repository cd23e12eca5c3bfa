// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/history/Journal.h"

namespace tarvell {
namespace {

const std::string kEmptyHash = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
const std::string kAbcHash = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

HistoryEvent Sample() {
  return {.time = 1772719387,
          .user = "anna",
          .host = "bench3",
          .done = "saved",
          .file = "PX12A/SN12345",
          .kept = "20260305T140307Z-anna",
          .before = kEmptyHash,
          .after = kAbcHash};
}

const std::string kSampleLine =
    "2026-03-05T14:03:07Z\tanna\tbench3\tsaved\tPX12A/SN12345\t20260305T140307Z-anna\t" +
    kEmptyHash + "\t" + kAbcHash;

TEST(AJournalLine, HasEightFields) {
  EXPECT_EQ(JournalLine(Sample()), kSampleLine);
  EXPECT_EQ(EventOf(kSampleLine), Sample());
}

TEST(AJournalLine, StaysOneLineWhateverItsTextsHold) {
  HistoryEvent event = Sample();
  event.user = "a\tb\r\nc%d\x7F";
  event.host = "-";
  event.done = "";
  event.kept = "";
  event.before = "";
  event.after = "";
  const std::string line = JournalLine(event);
  EXPECT_EQ(line, "2026-03-05T14:03:07Z\ta%09b%0D%0Ac%25d%7F\t%2D\t-\tPX12A/SN12345\t-\t-\t-");
  EXPECT_EQ(EventOf(line), event);
}

TEST(AJournalLine, ThatIsCutOffOrDamagedHoldsNoEvent) {
  for (std::size_t length = 0; length < kSampleLine.size(); ++length) {
    EXPECT_FALSE(EventOf(kSampleLine.substr(0, length))) << length;
  }
  EXPECT_FALSE(EventOf(kSampleLine + "\t"));
  const auto with = [](std::string_view part, const std::string& other) {
    std::string line = kSampleLine;
    return line.replace(line.find(part), part.size(), other);
  };
  for (const auto& [part, other] :
       std::vector<std::pair<std::string, std::string>>{{"2026-03-05", "2026-02-30"},
                                                        {"14:03:07Z", "24:03:07Z"},
                                                        {"14:03:07Z", "14:03:7Z"},
                                                        {"anna", ""},
                                                        {"anna", "an%na"},
                                                        {"anna", "an%6Ea"},
                                                        {"PX12A/SN12345", "-"},
                                                        {"20260305T140307Z-anna", ".."},
                                                        {"20260305T140307Z-anna", "../a"},
                                                        {"e3b0", "E3B0"}}) {
    EXPECT_FALSE(EventOf(with(part, other))) << other;
  }
}

TEST(AJournal, GivesTheEventsOfAFileAndCountsDamagedLines) {
  HistoryEvent other = Sample();
  other.file = "PX12A/SN54321";
  const std::string bytes = kSampleLine + "\r\n" + JournalLine(other) + "\r\n2026-03-05T14:0\r\n" +
                            kSampleLine.substr(0, 120) + "\r\n\r\n" + kSampleLine;
  const Journal journal = ReadJournal(bytes, "px12a/sn12345");
  EXPECT_EQ(journal.events, (std::vector<HistoryEvent>{Sample(), Sample()}));
  EXPECT_EQ(journal.damagedLines, 2U);
  EXPECT_EQ(ReadJournal(bytes).events.size(), 3U);
}

}  // namespace
}  // namespace tarvell
