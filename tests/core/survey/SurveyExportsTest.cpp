// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "core/survey/DueCalendar.h"
#include "core/survey/ExportFile.h"
#include "core/survey/SurveyTable.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Lines;

constexpr std::time_t kNow = 1795329121;  // 22 NOV 2026 06:32:01 UTC

SurveyRow Row(const std::string& model, const std::string& serial, const FileDate& due) {
  SurveyRow row;
  row.path = "c:\\calfactors\\" + model + "\\SN" + serial.substr(serial.size() - 5);
  row.model = model;
  row.serialNumber = serial;
  row.due = due;
  row.daysLeft = 100;
  return row;
}

std::string Calendar(const std::vector<std::string>& entries) {
  std::vector<std::string> lines = {"BEGIN:VCALENDAR", "VERSION:2.0",
                                    "PRODID:-//Tarvell//Due dates//EN"};
  lines.insert(lines.end(), entries.begin(), entries.end());
  lines.emplace_back("END:VCALENDAR");
  return Lines(lines);
}

TEST(DueCalendarFile, HasADayForEachDueDate) {
  SurveyRow row = Row("PX12A", "3318A12345", {2027, 3, 5});
  row.calibrationNumber = "C-0042";
  row.calibrated = {2026, 3, 5};
  row.comment = "Prüflabor; a, b\\c";
  row.stations = {"BENCH1", "BENCH2"};
  // 75 bytes to a line, those after the first with a blank; "ü" has two bytes.
  EXPECT_EQ(
      DueCalendar(std::vector{row}, kNow),
      Calendar({"BEGIN:VEVENT", "UID:data-set_PX12A_SN12345@tarvell", "DTSTAMP:20261122T063201Z",
                "DTSTART;VALUE=DATE:20270305", "SUMMARY:Calibration due: PX12A 3318A12345",
                "DESCRIPTION:Calibration number: C-0042\\nCalibrated: 5 MAR 2026\\nComment: "
                "Pr",
                " üflabor\\; a\\, b\\\\c\\nStations: BENCH1\\, BENCH2", "TRANSP:TRANSPARENT",
                "END:VEVENT"}));
}

TEST(DueCalendarFile, TakesNamesThatAreNotUtf8AsCharactersOfTheFiles) {
  SurveyRow row = Row("PX12A", "3318A12345", {2027, 3, 5});
  row.stations = {"B\xC4NK", "\xED\xA0\x80"};  // half of a pair of UTF-16
  row.comment = "Prüfung";
  const std::string text = DueCalendar(std::vector{row}, kNow);
  EXPECT_NE(text.find("Comment: Prüfung\\nStations: BÄNK\\, í\u00A0€\r\n"), std::string::npos)
      << text;
}

TEST(DueCalendarFile, LeavesOutCopiesAndDatesThatDoNotExist) {
  SurveyRow copy = Row("PX12A", "3318A12345", {2027, 3, 5});
  copy.kind = SurveyRow::Kind::Instrument;
  copy.isCopy = true;
  SurveyRow none = Row("PX12A", "3318A12346", {});
  none.daysLeft.reset();
  EXPECT_EQ(DueCalendar(std::vector{copy, none}, kNow), Calendar({}));
}

TEST(DueCalendarFile, HasTheDueDateOfADataSetWithoutACalibrationDate) {
  SurveyRow row = Row("PX12A", "3318A12345", {2027, 3, 5});
  row.Add(FindingKind::NoSuchDate, "The calibration date does not exist.");
  EXPECT_NE(DueCalendar(std::vector{row}, kNow).find("\r\nDTSTART;VALUE=DATE:20270305\r\n"),
            std::string::npos);
}

/// The lines of a calendar that begin with this keyword, each with a line feed.
std::string LinesOf(const std::vector<SurveyRow>& rows, const std::string& keyword) {
  const std::string text = DueCalendar(rows, kNow);
  std::string lines;
  for (std::size_t place = text.find(keyword); place != std::string::npos;
       place = text.find(keyword, place + 1)) {
    lines += text.substr(place, text.find('\r', place) - place) + "\n";
  }
  return lines;
}

/// The row of an instrument that a station has, without a data set.
SurveyRow AtStation(const std::string& station, const std::string& serial, const FileDate& due) {
  SurveyRow row = Row("PX12A", serial, due);
  row.kind = SurveyRow::Kind::Instrument;
  row.path = "c:\\stations\\" + station + "\\PX12A";
  row.stations = {station};
  row.daysLeft = due.day;
  return row;
}

TEST(DueCalendarFile, NamesAnInstrumentAsTheDataSetThatItShouldHave) {
  const std::string uid = "UID:data-set_PX12A_SN12345@tarvell\n";
  EXPECT_EQ(LinesOf({AtStation("BENCH1", "3318A12345", {2027, 3, 5})}, "UID:"), uid);
  SurveyRow kit = AtStation("BENCH1", "3318A12345", {2027, 3, 5});
  kit.dataSet = R"(c:\calfactors\px12a\sn12345)";
  EXPECT_EQ(LinesOf({kit}, "UID:"), "UID:data-set_px12a_sn12345@tarvell\n")
      << "the data set has no date yet";
  SurveyRow nameless = AtStation("BENCH1", "3318A12345", {2027, 3, 5});
  nameless.serialNumber.clear();
  EXPECT_EQ(LinesOf({nameless}, "UID:"), "UID:instrument_BENCH1_PX12A@tarvell\n");
}

TEST(DueCalendarFile, HasOneEntryForAnInstrumentOfSeveralStations) {
  const std::vector<SurveyRow> rows = {AtStation("BENCH1", "3318A12345", {2027, 3, 5}),
                                       AtStation("BENCH2", "3318A12345", {2027, 3, 4}),
                                       AtStation("BENCH3", "4419B12345", {2027, 3, 6})};
  EXPECT_EQ(LinesOf(rows, "UID:"),
            "UID:data-set_PX12A_SN12345@tarvell\nUID:instrument_BENCH3_PX12A@tarvell\n")
      << "the third is another instrument";
  EXPECT_EQ(LinesOf(rows, "DTSTART"), "DTSTART;VALUE=DATE:20270304\nDTSTART;VALUE=DATE:20270306\n");
  EXPECT_EQ(LinesOf(rows, "DESCRIPTION"),
            "DESCRIPTION:Stations: BENCH1\\, BENCH2\nDESCRIPTION:Stations: BENCH3\n");
}

TEST(DueCalendarFile, NamesEachOtherEntryByItsPlaceWhateverElseThereIs) {
  const auto uid = [](const SurveyRow& row) { return LinesOf({row}, "UID:"); };
  SurveyRow dataSet = Row("PX 12A", "3318A12345", {2027, 3, 5});
  EXPECT_EQ(uid(dataSet), "UID:data-set_PX%2012A_SN12345@tarvell\n");
  // The same serial number at two stations, whose names could be split in another way.
  SurveyRow first = dataSet;
  first.kind = SurveyRow::Kind::Instrument;
  first.path = R"(c:\stations\A_B\C)";
  first.isDataSetOfOther = true;
  SurveyRow second = first;
  second.path = R"(c:\stations\A\B_C)";
  EXPECT_EQ(uid(first), "UID:instrument_A%5FB_C@tarvell\n");
  EXPECT_EQ(uid(second), "UID:instrument_A_B%5FC@tarvell\n");
  EXPECT_EQ(LinesOf({second, dataSet, first}, "UID:"), uid(second) + uid(dataSet) + uid(first));
}

TEST(SurveyCsvFile, QuotesWhatHoldsASeparator) {
  SurveyRow row = Row("PX12A", "3318A12345", {2027, 3, 5});
  row.comment = "the \"first\"";
  row.stations = {"BENCH1", "BENCH2"};
  row.daysLeft = -3;
  row.Add(FindingKind::OtherSerial, "Rename it.");
  row.Add(FindingKind::PastDue, "Calibrate it.");
  EXPECT_EQ(SurveyCsv(std::vector{row}),
            Lines({"Kind,Model,Serial number,Calibration number,Calibrated,Due,Days left,Comment,"
                   "Stations,State,What to do,Path",
                   "data set,PX12A,3318A12345,,,2027-03-05,-3,\"the \"\"first\"\"\","
                   "\"BENCH1, BENCH2\",\"past due, other serial number\","
                   "Calibrate it. Rename it.,c:\\calfactors\\PX12A\\SN12345"}));
}

TEST(SurveyCsvFile, NamesEachKindAsTheScreenDoesAndTheFileOfARowThatCannotBeRead) {
  SurveyRow unreadable;
  unreadable.path = R"(c:\calfactors\PX12A\SN99999)";
  unreadable.model = "PX12A";
  unreadable.Add(FindingKind::Unreadable, "It is a folder.");
  SurveyRow atStation = Row("PX12A", "3318A12345", {2027, 3, 5});
  atStation.kind = SurveyRow::Kind::Instrument;
  SurveyRow list;
  list.kind = SurveyRow::Kind::Place;
  list.path = R"(c:\stations\BENCH1\INDEX)";
  list.stations = {"BENCH1"};
  list.Add(FindingKind::IndexLacksName, "Save it.");
  SurveyRow folder = list;
  folder.path = R"(c:\calfactors\INDEX)";
  folder.isFolder = true;
  folder.stations.clear();
  const auto states = [](const SurveyRow& row) {
    return SurveyCell(row, SurveyColumn::Kind) + "|" + SurveyCell(row, SurveyColumn::Model) + "|" +
           SurveyCell(row, SurveyColumn::State);
  };
  EXPECT_EQ(states(unreadable), R"(data set|PX12A|cannot be read: c:\calfactors\PX12A\SN99999)");
  EXPECT_EQ(states(atStation), "instrument|PX12A|");
  EXPECT_EQ(states(list), R"(list|INDEX|INDEX lacks a name: c:\stations\BENCH1\INDEX)");
  EXPECT_EQ(states(folder), R"(folder|INDEX|INDEX lacks a name: c:\calfactors\INDEX)");
}

TEST(AnExportedFile, NeverReplacesWhatStationsRead) {
  const test::TestTree tree;
  const std::array<std::string, 2> trees = {R"(c:\calfactors)", R"(c:\stations)"};
  for (const char* path : {R"(c:\calfactors\PX12A\SN12345)", R"(c:\stations\bench1\new.csv)",
                           R"(c:\STATIONS\index)", R"(c:\stations\..\stations\BENCH1\PX12A)"}) {
    tree.Write(path, "as it was");
    EXPECT_EQ(
        test::ErrorOf([&] { SaveExport(tree.Native(path), "new", trees); }).Text(),
        "The folder holds files that stations read, and the new file could replace one of them. "
        "Nothing was written. Choose another folder.")
        << path;
    EXPECT_EQ(tree.Read(path), "as it was");
  }
  for (const char* path : {R"(c:\due.ics)", R"(c:\stations\due.ics)", R"(c:\stations2\a\INDEX)"}) {
    tree.MakeFolders(R"(c:\stations2\a)");
    SaveExport(tree.Native(path), "new", trees);
    EXPECT_EQ(tree.Read(path), "new");
  }
}

}  // namespace
}  // namespace tarvell
