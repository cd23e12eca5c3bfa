// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "core/survey/StationUpdate.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::Lines;

constexpr const char* kDataSet = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kInstrument = R"(c:\stations\BENCH1\PX12A)";

std::string DataSet(const std::string& due, const std::string& comment) {
  return Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : 20260305",
                "#CAL_NO   : C-0042", "#DUE_DATE : " + due, "#COMMENT  : " + comment, "!End"});
}

std::string Instrument(const std::string& due, const std::string& comment) {
  return Lines({"MODEL NUMBER PX12A", "SERIAL NUMBER 3318A12345", "ADDRESS TYPE GP-IB",
                "ADDRESS 713", "STATION BENCH1", "OPTIONS H69", "AVAILABILITY YES",
                "CAL DUE DATE " + due, "ASSET LAB-0193", "TRACE ", "COMMENT " + comment,
                "CAL DATA own file"});
}

class StationUpdates : public testing::Test {
 protected:
  const test::TestTree tree_;
};

TEST_F(StationUpdates, TakeDueDateAndCommentAndKeepEveryOtherLine) {
  tree_.Write(kDataSet, DataSet("20270305", "new certificate"));
  tree_.Write(kInstrument, Instrument("5 MAR 2026", "factory"));
  StationUpdate update(kInstrument, kDataSet);
  const std::vector<ChangedLine> lines = {{"CAL DUE DATE 5 MAR 2026", "CAL DUE DATE 5 MAR 2027"},
                                          {"COMMENT factory", "COMMENT new certificate"}};
  EXPECT_EQ(update.Lines(), lines);
  EXPECT_EQ(tree_.Read(kInstrument), Instrument("5 MAR 2026", "factory")) << "nothing is saved yet";
  update.Save();
  EXPECT_EQ(tree_.Read(kInstrument), Instrument("5 MAR 2027", "new certificate"));
}

TEST_F(StationUpdates, ShowTheLinesThatASaveWouldAddOrRemove) {
  tree_.Write(kDataSet, DataSet("20270305", ""));
  tree_.Write(kInstrument,
              Lines({"MODEL NUMBER PX12A", "SERIAL NUMBER 3318A12345", "ADDRESS TYPE NONE",
                     "ADDRESS ", "STATION ", "OPTIONS ", "AVAILABILITY ", "OWNER Smith",
                     "CAL DUE DATE 5 MAR 2026", "ASSET ", "COMMENT ", "CAL DATA "}));
  const std::vector<ChangedLine> lines = {
      {"OWNER Smith", ""}, {"CAL DUE DATE 5 MAR 2026", "CAL DUE DATE 5 MAR 2027"}, {"", "TRACE "}};
  EXPECT_EQ(StationUpdate(kInstrument, kDataSet).Lines(), lines);
}

TEST_F(StationUpdates, DoNotMakeAFileThatWasCutOffLookWhole) {
  tree_.Write(kDataSet, DataSet("20270305", ""));
  tree_.Write(kInstrument, Lines({"MODEL NUMBER PX12A", "SERIAL NUMBER 3318A12345",
                                  "ADDRESS TYPE NONE", "ADDRESS ", "STATION BENCH1"}));
  EXPECT_EQ(
      ErrorOf([] { StationUpdate(kInstrument, kDataSet); }).Text(),
      "The file was cut off: its end is missing. Select it at the station, compare it with the "
      "instrument, and save it first.");
}

TEST(ChangedLinesOfAFile, AreAlsoThoseWithAnotherPlaceOrEnd) {
  const std::string after = "TRACE a\r\nCOMMENT new\r\nASSET 7\r\n";
  const std::vector<ChangedLine> ends = {
      {"TRACE a (line end LF)", "TRACE a (line end CR LF)"},
      {"COMMENT old (line end CR)", "COMMENT new (line end CR LF)"},
      {"ASSET 7 (no line end)", "ASSET 7 (line end CR LF)"}};
  EXPECT_EQ(ChangedLines("TRACE a\nCOMMENT old\rASSET 7", after), ends);

  const std::vector<ChangedLine> places = {{"COMMENT older", ""},
                                           {"ASSET 7", ""},
                                           {"(empty line)", ""},
                                           {"COMMENT old", "COMMENT new"},
                                           {"", "ASSET 7"}};
  EXPECT_EQ(ChangedLines("COMMENT older\r\nASSET 7\r\n\r\nTRACE a\r\nCOMMENT old\r\n", after),
            places);
}

TEST_F(StationUpdates, LeaveAFileThatHasDueDateAndComment) {
  tree_.Write(kDataSet, DataSet("20270305", "factory"));
  std::string unixLines = Instrument("5 MAR 2027", "factory");
  std::erase(unixLines, '\r');
  tree_.Write(kInstrument, unixLines);
  EXPECT_EQ(StationUpdate(kInstrument, kDataSet).Lines(), std::vector<ChangedLine>());
}

TEST_F(StationUpdates, ReportAFileThatHasChangedSinceThePreview) {
  tree_.Write(kDataSet, DataSet("20270305", "new"));
  tree_.Write(kInstrument, Instrument("5 MAR 2026", "factory"));
  const StationUpdate update(kInstrument, kDataSet);
  EXPECT_EQ(update.WouldReplace().kind, Replacement::Kind::None);
  tree_.Write(kInstrument, Instrument("5 MAR 2026", "typed meanwhile"));
  EXPECT_EQ(update.WouldReplace().kind, Replacement::Kind::Changed);
}

TEST_F(StationUpdates, DoNotBringBackAnInstrumentThatWasDeletedSinceThePreview) {
  tree_.Write(kDataSet, DataSet("20270305", "new"));
  tree_.Write(kInstrument, Instrument("5 MAR 2026", "factory"));
  StationUpdate update(kInstrument, kDataSet);
  std::filesystem::remove(tree_.Native(kInstrument));
  EXPECT_THROW(update.Save(), Error);
  EXPECT_FALSE(std::filesystem::exists(tree_.Native(kInstrument)));
}

TEST_F(StationUpdates, RefuseADataSetOfAnotherInstrumentOrWithoutADueDate) {
  tree_.Write(kInstrument, Instrument("5 MAR 2026", "factory"));
  tree_.Write(kDataSet, DataSet("20270229", "new"));
  const auto update = [] { StationUpdate(kInstrument, kDataSet).Save(); };
  EXPECT_TRUE(Contains(ErrorOf(update).Text(), "no due date"));

  std::string other = DataSet("20270305", "new");
  other.replace(other.find("3318A12345"), 4, "4419");
  tree_.Write(kDataSet, other);
  EXPECT_TRUE(Contains(ErrorOf(update).Text(), "that of 4419A12345"));
  EXPECT_EQ(tree_.Read(kInstrument), Instrument("5 MAR 2026", "factory"));

  std::string otherModel = Instrument("5 MAR 2026", "factory");
  otherModel.replace(otherModel.find("PX12A"), 5, "PX13A");
  tree_.Write(kInstrument, otherModel);
  EXPECT_EQ(ErrorOf(update).Text(),
            "The file is called \"PX12A\", but the MODEL NUMBER in it is \"PX13A\". Select it at "
            "the station, correct the MODEL NUMBER and save it first.");
}

TEST(DataSetsOfStations, LeaveOutATestKitWithoutADueDate) {
  const auto row = [](const std::string& model, bool isCopy) {
    SurveyRow instrument;
    instrument.kind = SurveyRow::Kind::Instrument;
    instrument.path = "c:\\stations\\BENCH1\\" + model;
    instrument.dataSet = "c:\\calfactors\\" + model + "\\SN12345";
    instrument.isCopy = isCopy;
    return instrument;
  };
  using DataSets = std::map<std::string, std::string>;
  const SurveyRow sensor = row("PX12A", false);
  const SurveyRow dated = row("rt410b", true);
  SurveyRow other = row("RT410B", false);
  other.isDataSetOfOther = true;
  const std::vector<SurveyRow> all = {sensor, row("RT410A", false), dated, other};
  EXPECT_EQ(DataSetsToTakeOver(all, all), (DataSets{{sensor.path, sensor.dataSet},
                                                    {dated.path, dated.dataSet},
                                                    {other.path, other.dataSet}}));
  SurveyRow dataSet;
  dataSet.path = sensor.dataSet;
  EXPECT_EQ(DataSetsToTakeOver({dataSet}, all), (DataSets{{sensor.path, sensor.dataSet}}));
}

}  // namespace
}  // namespace tarvell
