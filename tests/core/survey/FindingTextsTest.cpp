// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/survey/FileCheck.h"
#include "core/survey/GoneFiles.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Lines;

constexpr const char* kSensor = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kInstrument = R"(c:\stations\BENCH1\PX12A)";

SurveyRow SensorRow(const std::string& model, const std::string& calibrated,
                    const std::string& due) {
  return DataSetRow(
      "PX12A", kSensor,
      Lines({"#MODEL_NO : " + model, "#SER_NO   : 3318A12345", "#CAL_DATE : " + calibrated,
             "#CAL_NO   : C-0042", "#DUE_DATE : " + due, "#COMMENT  : ", "!End"}),
      SlipLimits(), {});
}

SurveyRow AtStation(const std::string& model, const std::string& due) {
  return InstrumentRow("BENCH1", kInstrument,
                       Lines({"MODEL NUMBER " + model, "SERIAL NUMBER 3318A12345",
                              "CAL DUE DATE " + due, "CAL DATA "}));
}

/// What is said about a state, "" without it.
std::string TextOf(const SurveyRow& row, FindingKind kind) {
  const auto found = std::ranges::find(row.findings, kind, &Finding::kind);
  return found == row.findings.end() ? std::string() : found->text;
}

TEST(ADateInAFile, IsReportedAsItIsThereAndNeverCompleted) {
  const std::string digits =
      " is not complete: it should have eight digits, such as 20270305. Open the data set and "
      "correct it.";
  for (const std::string due : {"202703", "2027", "270305", "2027-03-05"}) {
    const SurveyRow row = SensorRow("PX12A", "20260305", due);
    EXPECT_EQ(TextOf(row, FindingKind::NoSuchDate), "The due date \"" + due + "\"" + digits);
    EXPECT_EQ(row.due, FileDate()) << due;
  }
  const SurveyRow calibrated = SensorRow("PX12A", "202603", "20270305");
  EXPECT_EQ(TextOf(calibrated, FindingKind::NoSuchDate),
            "The calibration date \"202603\"" + digits);
  EXPECT_EQ(calibrated.due, (FileDate{2027, 3, 5}));
  EXPECT_EQ(TextOf(SensorRow("PX12A", "20260305", "20270229"), FindingKind::NoSuchDate),
            "The due date 2027-02-29 does not exist. Open the data set and correct it.");
  EXPECT_EQ(TextOf(SensorRow("PX12A", "20260305", ""), FindingKind::NoSuchDate),
            "The due date is missing. Open the data set and correct it.");

  EXPECT_EQ(TextOf(AtStation("PX12A", "5 MAR"), FindingKind::NoSuchDate),
            "The due date \"5 MAR\" is not complete. Correct it at the station.");
  EXPECT_EQ(AtStation("PX12A", "5 MAR").due, FileDate());
  EXPECT_EQ(TextOf(AtStation("PX12A", "29 FEB 2027"), FindingKind::NoSuchDate),
            "The due date \"29 FEB 2027\" does not exist. Correct it at the station.");
}

TEST(AnotherModelInAFile, IsNamedBesideTheFileAndWhatToDoAboutIt) {
  const SurveyRow instrument = AtStation("PX13A", "5 MAR 2027");
  EXPECT_EQ(instrument.model, "PX12A") << "the name that the list of the station shows";
  EXPECT_EQ(TextOf(instrument, FindingKind::OtherModel),
            "The file is called \"PX12A\", but the MODEL NUMBER in it is \"PX13A\". Select "
            "\"PX12A\" at the station. If that is the model, enter it as MODEL NUMBER, and save. "
            "If not, save it as it is, then enter \"PX12A\" as MODEL NUMBER and delete that "
            "instrument.");
  EXPECT_EQ(TextOf(SensorRow("PX11A", "20260305", "20270305"), FindingKind::OtherModel),
            "The file SN12345 is in the folder \"PX12A\", but holds data of the model \"PX11A\". "
            "Move it to the folder of its model. If the folder is right, correct the file's model "
            "line, as OK in the editor does.");
}

TEST(AnotherModelInAFile, IsNamedInCharactersWhateverTheBytes) {
  const SurveyRow row =
      DataSetRow("ZZ1", "c:\\calfactors\\ZZ1\\SN\xC4",
                 Lines({"#MODEL_NO : \xD6L1", "#SER_NO   : 1", "#CAL_DATE : 20260305",
                        "#CAL_NO   : ", "#DUE_DATE : 20270305", "#COMMENT  : ", "!End"}),
                 SlipLimits(), {});
  EXPECT_EQ(
      TextOf(row, FindingKind::OtherModel),
      "The file SNÄ is in the folder \"ZZ1\", but holds data of the model \"ÖL1\". Move it to "
      "the folder of its model. If the folder is right, correct the file's model line, as OK "
      "in the editor does.");
}

TEST(FilesThatAreGone, AreFoundByTheFoldersOfTheirRows) {
  const test::TestTree tree;
  std::vector<SurveyRow> rows = {SensorRow("PX12A", "20260305", "20270305"),
                                 AtStation("PX12A", "5 MAR 2027")};
  SurveyRow& list = rows.emplace_back();
  list.kind = SurveyRow::Kind::Place;
  list.path = R"(c:\stations\BENCH1\INDEX)";
  tree.Write(kSensor, "x");
  tree.Write(kInstrument, "x");
  EXPECT_EQ(FoldersWithGoneFiles(rows), std::set<std::string>()) << "an INDEX may be missing";
  std::filesystem::remove(tree.Native(kInstrument));
  EXPECT_EQ(FoldersWithGoneFiles(rows), std::set<std::string>{R"(c:\stations\BENCH1)"});
  std::filesystem::remove_all(tree.Native(R"(c:\calfactors\PX12A)"));
  EXPECT_EQ(FoldersWithGoneFiles(rows),
            (std::set<std::string>{R"(c:\calfactors\PX12A)", R"(c:\stations\BENCH1)"}));
}

}  // namespace
}  // namespace tarvell
