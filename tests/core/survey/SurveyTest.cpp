// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

#include "core/history/History.h"
#include "core/platform/ForwardingPlatform.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/Survey.h"
#include "core/survey/SurveyTable.h"
#include "support/CountingPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Lines;
using test::TestTree;
using Texts = std::vector<std::string>;

constexpr const char* kData = "c:\\calfactors\\";
constexpr const char* kSensor = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kAtPoint = R"(c:\stations\BENCH1\PX12A)";
constexpr const char* kIndex = R"(c:\stations\BENCH1\INDEX)";

const Texts kSensorLines = {
    "#MODEL_NO : PX12A",
    "#SER_NO   : 3318A12345",
    "#CAL_DATE : 20260305",
    "#CAL_NO   : C-0042",
    "#DUE_DATE : 20270305",
    "#COMMENT  : certificate",
    "!",
    "!",
    "!        :              : Reflection Coefficient",
    "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)",
    "*      50:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  ",
    "*     100:     99.8     :    0.0    :     0.0    :    0.0    :     0.0  ",
    "!End"};

const Texts kAttenuatorLines = {"#MODEL_NO : PX60G",
                                "#SER_NO   : 2908A01106",
                                "#CAL_DATE : 20260122",
                                "#CAL_NO   : C-0043",
                                "#DUE_DATE : 20280122",
                                "#COMMENT  : ",
                                "!",
                                "! Setting  /  Freq  /  CalData ",
                                "*  0  :   5.00E07   :   0.0105",
                                "!End"};

Texts InstrumentLines(const std::string& model, const std::string& serial,
                      const std::string& address, const std::string& due,
                      const std::string& comment) {
  return {"MODEL NUMBER " + model,
          "SERIAL NUMBER " + serial,
          "ADDRESS TYPE GP-IB",
          "ADDRESS " + address,
          "STATION rack 2",
          "OPTIONS ",
          "AVAILABILITY YES",
          "CAL DUE DATE " + due,
          "ASSET ",
          "TRACE ",
          "COMMENT " + comment,
          "CAL DATA own file"};
}

const Texts kSensorAtStation =
    InstrumentLines("PX12A", "3318A12345", "713", "5 MAR 2027", "certificate");
const std::string kSerialAtStation = "SERIAL NUMBER 3318A12345";
const Texts kAttenuatorAtStation = InstrumentLines("PX60G", "2908A01106", "728", "22 JAN 2028", "");

/// `lines` with another text in the place of one line.
Texts With(Texts lines, const std::string& line, const std::string& other) {
  const auto place = std::ranges::find(lines, line);
  EXPECT_NE(place, lines.end()) << line;
  *place = other;
  return lines;
}

/// `text` with another part in the place of one.
std::string Replaced(std::string text, const std::string& part, const std::string& other) {
  const std::size_t place = text.find(part);
  EXPECT_NE(place, std::string::npos) << part;
  return text.replace(place, part.size(), other);
}

Texts Without(Texts lines, const std::string& line) {
  EXPECT_EQ(std::erase(lines, line), 1U) << line;
  return lines;
}

std::string WithoutLastEnd(const Texts& lines) {
  const std::string bytes = Lines(lines);
  return bytes.substr(0, bytes.size() - 2);
}

/// Two data sets, and a station that uses both, without any fault on 22 NOV 2026.
class Laboratory {
 public:
  Laboratory() {
    tree.Write(kSensor, Lines(kSensorLines));
    tree.Write(R"(c:\calfactors\PX60G\SN01106)", Lines(kAttenuatorLines));
    tree.Write(R"(c:\stations\INDEX)", Lines({"BENCH1"}));
    tree.Write(kIndex, Lines({"PX12A", "PX60G", "INDEX"}));
    tree.Write(kAtPoint, Lines(kSensorAtStation));
    tree.Write(R"(c:\stations\BENCH1\PX60G)", Lines(kAttenuatorAtStation));
  }

  const TestTree tree;
  SurveyOrder order = {
      .calibrationDir = "c:\\calfactors", .stationDir = "c:\\stations", .today = {2026, 11, 22}};
};

Survey Surveyed(const Laboratory& laboratory) {
  Survey survey(laboratory.order);
  while (survey.Step()) {
  }
  return survey;
}

/// Each finding as "PX12A\SN12345 past-due".
Texts FindingsIn(const std::vector<SurveyRow>& rows) {
  Texts texts;
  for (const SurveyRow& row : rows) {
    for (const Finding& finding : row.findings) {
      texts.push_back(row.path.substr(row.path.find('\\', 3) + 1) + " " +
                      std::string(CodeOf(finding.kind)));
      EXPECT_TRUE(finding.text.ends_with(".")) << finding.text;
    }
  }
  return texts;
}

TEST(Survey, FindsNothingWhereNothingIsWrong) {
  const Laboratory laboratory;
  const Survey survey = Surveyed(laboratory);
  EXPECT_EQ(FindingsIn(survey.Rows()), Texts());
  EXPECT_TRUE(survey.CouldLook());
  EXPECT_EQ(survey.FilesRead(), 4U);
  ASSERT_EQ(survey.Rows().size(), 4U);

  const SurveyRow& sensor = survey.Rows()[0];
  EXPECT_EQ(sensor.kind, SurveyRow::Kind::DataSet);
  EXPECT_EQ(sensor.model, "PX12A");
  EXPECT_EQ(sensor.serialNumber, "3318A12345");
  EXPECT_EQ(sensor.calibrationNumber, "C-0042");
  EXPECT_EQ(IsoDate(sensor.calibrated), "2026-03-05");
  EXPECT_EQ(IsoDate(sensor.due), "2027-03-05");
  EXPECT_EQ(sensor.daysLeft, 8 + 31 + 31 + 28 + 5);
  EXPECT_EQ(sensor.comment, "certificate");
  EXPECT_EQ(sensor.stations, Texts{"BENCH1"});

  const SurveyRow& atStation = survey.Rows()[2];
  EXPECT_EQ(atStation.kind, SurveyRow::Kind::Instrument);
  EXPECT_EQ(atStation.serialNumber, "3318A12345");
  EXPECT_EQ(atStation.address, "GP-IB 713");
  EXPECT_EQ(IsoDate(atStation.due), "2027-03-05");
  EXPECT_EQ(atStation.dataSet, kSensor);
  EXPECT_TRUE(atStation.isCopy);
  EXPECT_FALSE(atStation.isDataSetOfOther);
}

TEST(Survey, KnowsWhetherADataSetIsThatOfAnotherInstrument) {
  const Laboratory laboratory;
  laboratory.tree.Write(
      kAtPoint, Lines(With(kSensorAtStation, kSerialAtStation, "SERIAL NUMBER 4419B12345")));
  const auto isOther = [&] { return Surveyed(laboratory).Rows().at(2).isDataSetOfOther; };
  EXPECT_TRUE(isOther());
  laboratory.tree.Write(kSensor, "x");
  EXPECT_FALSE(isOther()) << "nobody knows whose file it is";
}

/// A fault in the laboratory, and everything that the survey finds then.
struct Fault {
  const char* name;
  std::function<void(const TestTree&)> plant;
  Texts found;
};

std::ostream& operator<<(std::ostream& stream, const Fault& fault) {
  return stream << fault.name;
}

/// Writes a file with these lines.
std::function<void(const TestTree&)> File(const std::string& path, const Texts& lines) {
  return [=](const TestTree& tree) { tree.Write(path, Lines(lines)); };
}

const Texts& Sensor() {
  return kSensorLines;
}
const std::string kDue = "#DUE_DATE : 20270305";
const std::string kDueAtStation = "CAL DUE DATE 5 MAR 2027";

/// A sensor with 89.7 for 97.9.
Texts OddSensor() {
  Texts lines = Sensor();
  lines.erase(lines.begin() + 10, lines.end() - 1);
  for (const char* row :
       {"*    2000:     99.6", "*    4000:     99.1", "*    6000:     98.5", "*    8000:     89.7",
        "*   10000:     97.1", "*   12000:     96.4", "*   14000:     95.6"}) {
    lines.insert(lines.end() - 1,
                 std::string(row) + "     :    0.0    :     0.0    :    0.0    :     0.0  ");
  }
  return lines;
}

class OneFault : public testing::TestWithParam<Fault> {};

TEST_P(OneFault, IsFoundAndNothingElse) {
  const Laboratory laboratory;
  GetParam().plant(laboratory.tree);
  EXPECT_EQ(FindingsIn(Surveyed(laboratory).Rows()), GetParam().found);
}

std::vector<Fault> Faults() {
  return {
      {"PastDueAndOnTheStationToo",
       [](const TestTree& tree) {
         tree.Write(kSensor, Lines(With(Sensor(), kDue, "#DUE_DATE : 20261121")));
         tree.Write(kAtPoint,
                    Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 21 NOV 2026")));
       },
       {R"(PX12A\SN12345 past-due)"}},
      {"DueOnTheLastOfTheDays",
       [](const TestTree& tree) {
         tree.Write(kSensor, Lines(With(Sensor(), kDue, "#DUE_DATE : 20261222")));
         tree.Write(kAtPoint,
                    Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 22 DEC 2026")));
       },
       {R"(PX12A\SN12345 due-soon)"}},
      {"PastDueWithAnImpossibleCalibrationDate",
       [](const TestTree& tree) {
         tree.Write(kSensor, Lines(With(With(Sensor(), kDue, "#DUE_DATE : 20261121"),
                                        "#CAL_DATE : 20260305", "#CAL_DATE : 20260230")));
       },
       {R"(PX12A\SN12345 past-due)", R"(PX12A\SN12345 no-such-date)",
        R"(BENCH1\PX12A due-date-differs)"}},
      {"PastDueWithACalibrationDateThatCannotBeRead",
       File(kSensor, With(With(Sensor(), kDue, "#DUE_DATE : 20261121"), "#CAL_DATE : 20260305",
                          "#CAL_DATE : 9E99")),
       {R"(PX12A\SN12345 past-due)", R"(PX12A\SN12345 unreadable)"}},
      {"PastDueSinceTheLastDayOfFebruary",
       File(kSensor, With(Sensor(), kDue, "#DUE_DATE : 20260229")),
       {R"(PX12A\SN12345 past-due)", R"(PX12A\SN12345 no-such-date)"}},
      {"NoSuchDueDate",
       File(kSensor, With(Sensor(), kDue, "#DUE_DATE : 20270229")),
       {R"(PX12A\SN12345 no-such-date)"}},
      {"NoSuchMonth",
       File(kSensor, With(Sensor(), "#CAL_DATE : 20260305", "#CAL_DATE : 20261305")),
       {R"(PX12A\SN12345 no-such-date)"}},
      {"NoSuchDateAtTheStation",
       File(kAtPoint, With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 29 FEB 2027")),
       {R"(BENCH1\PX12A no-such-date)"}},
      {"OtherDueDateAtTheStation",
       File(kAtPoint, With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 5 MAR 2026")),
       {R"(BENCH1\PX12A due-date-differs)"}},
      {"NoDueDateAtTheStation",
       File(kAtPoint, With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 1 1 2000")),
       {R"(BENCH1\PX12A due-date-differs)"}},
      {"OtherSerialAtTheStation",
       File(kAtPoint, With(kSensorAtStation, kSerialAtStation, "SERIAL NUMBER 4419B12345")),
       {R"(BENCH1\PX12A serial-differs)"}},
      {"DataSetMissing",
       [](const TestTree& tree) { std::filesystem::remove(tree.Native(kSensor)); },
       {R"(BENCH1\PX12A data-set-missing)"}},
      {"DataSetMissingAndPastDue",
       [](const TestTree& tree) {
         std::filesystem::remove(tree.Native(kSensor));
         tree.Write(kAtPoint,
                    Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 21 NOV 2026")));
       },
       {R"(BENCH1\PX12A past-due)", R"(BENCH1\PX12A data-set-missing)"}},
      {"PastDueAtAStationWhereTheTestKitHasNoDate",
       [](const TestTree& tree) {
         tree.Write(R"(c:\calfactors\RT410A\SN00031)", Lines({"TEST KIT", "2705J00031", "DATA"}));
         tree.Write(R"(c:\stations\BENCH1\RT410A)",
                    Lines(InstrumentLines("RT410A", "2705J00031", "730", "21 NOV 2026", "")));
         tree.Write(kIndex, Lines({"PX12A", "PX60G", "RT410A", "INDEX"}));
       },
       {R"(BENCH1\RT410A past-due)"}},
      {"PastDueAtAStationWithAnotherInstrument",
       File(kAtPoint, With(With(kSensorAtStation, kSerialAtStation, "SERIAL NUMBER 4419B12345"),
                           kDueAtStation, "CAL DUE DATE 21 NOV 2026")),
       {R"(BENCH1\PX12A past-due)", R"(BENCH1\PX12A serial-differs)"}},
      {"PastDueAtAStationWhereTheDataSetHoldsAnotherSerial",
       [](const TestTree& tree) {
         tree.Write(kSensor,
                    Lines(With(Sensor(), "#SER_NO   : 3318A12345", "#SER_NO   : 3318A12346")));
         tree.Write(kAtPoint,
                    Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 21 NOV 2026")));
       },
       {R"(PX12A\SN12345 other-serial)", R"(BENCH1\PX12A past-due)"}},
      {"PastDueAtAStationWhereTheDataSetIsCutOff",
       [](const TestTree& tree) {
         tree.Write(kSensor, WithoutLastEnd(Without(Sensor(), "!End")));
         tree.Write(kAtPoint,
                    Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 21 NOV 2026")));
       },
       {R"(PX12A\SN12345 cut-off)", R"(BENCH1\PX12A past-due)"}},
      {"NotUsed",
       [](const TestTree& tree) {
         std::filesystem::remove(tree.Native(kAtPoint));
         tree.Write(kIndex, Lines({"PX60G", "INDEX"}));
       },
       {R"(PX12A\SN12345 not-used)"}},
      {"TwoSerialsWithOneFileName",
       File(R"(c:\calfactors\PX12A\sn12345)",
            With(Sensor(), "#SER_NO   : 3318A12345", "#SER_NO   : 4419B12345")),
       {R"(PX12A\SN12345 shared-file-name)", R"(PX12A\sn12345 not-used)",
        R"(PX12A\sn12345 shared-file-name)"}},
      {"OneAddressTwice",
       File(kAtPoint, With(kSensorAtStation, "ADDRESS 713", "ADDRESS 728")),
       {R"(BENCH1\PX12A shared-address)", R"(BENCH1\PX60G shared-address)"}},
      {"IndexLacksAnInstrument",
       File(kIndex, {"PX60G", "INDEX"}),
       {R"(BENCH1\INDEX index-lacks-name)"}},
      {"NoIndex",
       [](const TestTree& tree) { std::filesystem::remove(tree.Native(kIndex)); },
       {R"(BENCH1\INDEX index-lacks-name)"}},
      {"IndexNamesAnInstrumentThatIsGone",
       File(kIndex, {"px12a", "PX13A", "PX60G", "INDEX"}),
       {R"(BENCH1\INDEX index-names-missing)"}},
      {"IndexOfTheStationsFitsNeitherWay",
       File(R"(c:\stations\INDEX)", {"BENCH2"}),
       {"INDEX index-lacks-name", "INDEX index-names-missing"}},
      {"FolderInsteadOfAFile",
       [](const TestTree& tree) { tree.MakeFolders(R"(c:\calfactors\PX12A\SN99999)"); },
       {R"(PX12A\SN99999 unreadable)"}},
      {"LinkToNowhere",
       [](const TestTree& tree) {
         std::filesystem::remove(tree.Native(kSensor));
         std::filesystem::create_symlink("nowhere", tree.Native(kSensor));
       },
       {R"(PX12A\SN12345 unreadable)"}},
      {"TooManyRows",
       [](const TestTree& tree) {
         Texts lines = Sensor();
         lines.insert(lines.end() - 2, 50, lines[11]);
         tree.Write(kSensor, Lines(lines));
       },
       {R"(PX12A\SN12345 unreadable)"}},
      {"CutOffInTheHeader",
       File(kSensor, {Sensor().begin(), Sensor().begin() + 4}),
       {R"(PX12A\SN12345 cut-off)"}},
      {"CutOffInALine",
       [](const TestTree& tree) { tree.Write(kSensor, WithoutLastEnd(Without(Sensor(), "!End"))); },
       {R"(PX12A\SN12345 cut-off)"}},
      {"OldStyleCutOffInALine",
       [](const TestTree& tree) {
         tree.Write(kSensor,
                    Lines({"QZ PX12A", "3318A12345", "05MAR2026"}) + "  50.0  100.0\r\n 10");
       },
       {R"(PX12A\SN12345 cut-off)"}},
      {"UnknownModelCutOffInALine",
       [](const TestTree& tree) {
         tree.Write(R"(c:\calfactors\ZZ1\SN12345)",
                    WithoutLastEnd(With(Sensor(), "#MODEL_NO : PX12A", "#MODEL_NO : ZZ1")));
       },
       {R"(ZZ1\SN12345 cut-off)"}},
      {"NoEnd", File(kSensor, Without(Sensor(), "!End")), {R"(PX12A\SN12345 no-end)"}},
      {"OtherModel",
       File(kSensor, With(Sensor(), "#MODEL_NO : PX12A", "#MODEL_NO : PX11A")),
       {R"(PX12A\SN12345 other-model)"}},
      {"OtherSerial",
       File(kSensor, With(Sensor(), "#SER_NO   : 3318A12345", "#SER_NO   : 3318A12346")),
       {R"(PX12A\SN12345 other-serial)"}},
      {"ValueThatStandsOut", File(kSensor, OddSensor()), {R"(PX12A\SN12345 doubtful-value)"}},
      {"CommentOfTwoWords",
       File(kSensor, With(Sensor(), "#COMMENT  : certificate", "#COMMENT  : two words")),
       {R"(PX12A\SN12345 not-rewritten)"}},
      {"InstrumentIsEmpty", File(kAtPoint, {}), {R"(BENCH1\PX12A cut-off)"}},
      {"InstrumentIsCutOff",
       [](const TestTree& tree) { tree.Write(kAtPoint, WithoutLastEnd(kSensorAtStation)); },
       {R"(BENCH1\PX12A cut-off)"}},
      {"InstrumentLacksItsEnd",
       File(kAtPoint, Without(kSensorAtStation, "CAL DATA own file")),
       {R"(BENCH1\PX12A no-end)"}},
      {"InstrumentOfAnotherModel",
       File(kAtPoint, With(kSensorAtStation, "MODEL NUMBER PX12A", "MODEL NUMBER PX13A")),
       {R"(BENCH1\PX12A other-model)"}},
      {"InstrumentWithoutAModel",
       File(kAtPoint, With(kSensorAtStation, "MODEL NUMBER PX12A", "MODEL NUMBER ")),
       {R"(BENCH1\PX12A other-model)"}},
      {"InstrumentWithoutTheLineOfTheModel",
       File(kAtPoint, Without(kSensorAtStation, "MODEL NUMBER PX12A")),
       {R"(BENCH1\PX12A other-model)"}},
      {"NotAnInstrument",
       File(kAtPoint, {"Dear colleagues"}),
       {R"(PX12A\SN12345 not-used)", R"(BENCH1\PX12A data-set-missing)", R"(BENCH1\PX12A no-end)"}},
      {"IndexNamesAnInstrumentTwice",
       File(kIndex, {"PX12A", "px12a", "PX60G", "INDEX"}),
       {R"(BENCH1\INDEX index-names-twice)"}},
      {"IndexNamesAMissingInstrumentTwice",
       File(kIndex, {"PX12A", "PX13A", "PX13A", "PX60G", "INDEX"}),
       {R"(BENCH1\INDEX index-names-missing)"}},
      {"InstrumentWithALineOfItsOwn",
       File(kAtPoint, With(kSensorAtStation, "ASSET ", "ASSET  two  blanks")),
       {R"(BENCH1\PX12A not-rewritten)"}},
  };
}

INSTANTIATE_TEST_SUITE_P(Survey, OneFault, testing::ValuesIn(Faults()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Survey, NamesTheFolderOfAFileNameThatAnotherFolderShares) {
  const Laboratory laboratory;
  laboratory.tree.Write(R"(c:\calfactors\px12a\SN12345)", Lines(kSensorLines));
  const Survey survey = Surveyed(laboratory);
  const std::string text = survey.Rows().at(0).findings.at(0).text;
  EXPECT_EQ(text.find(R"(px12a\SN12345 holds a serial number with the same last five)"), 0U)
      << text;
}

TEST(Survey, JudgesValuesByTheEarlierCalibrationAsTheEditorsDo) {
  const Laboratory laboratory;
  const std::string now = Lines(Sensor());
  const std::string earlier = Replaced(Replaced(now, "20260305", "20250305"), "99.8", "97.8");
  laboratory.tree.Write(kSensor, earlier);
  SaveWithHistory(kSensor, Replaced(now, "certificate", "provisional"));
  SaveWithHistory(kSensor, now);
  const Survey survey = Surveyed(laboratory);
  EXPECT_EQ(FindingsIn(survey.Rows()), Texts{R"(PX12A\SN12345 doubtful-value)"});
  EXPECT_NE(survey.Rows()[0].findings.front().text.find("The earlier calibration has 97.8"),
            std::string::npos)
      << survey.Rows()[0].findings.front().text;
}

TEST(Survey, AcceptsAValueThatStandsOutIfTheEarlierCalibrationHasIt) {
  const Laboratory laboratory;
  const std::string now = Lines(OddSensor());
  laboratory.tree.Write(kSensor, Replaced(now, "20260305", "20250305"));
  SaveWithHistory(kSensor, now);
  EXPECT_EQ(FindingsIn(Surveyed(laboratory).Rows()), Texts());
}

TEST(Survey, ReadsTheJournalOnceAndOnlyTheVersionsThatItNeeds) {
  const Laboratory laboratory;
  const std::string other = R"(c:\calfactors\PX12A\SN00001)";
  const std::string now = Lines(Sensor());
  for (const char* day : {"20230305", "20240305", "20250305", "20260305"}) {
    SaveWithHistory(kSensor, Replaced(now, "20260305", day));
    SaveWithHistory(other, Replaced(Replaced(now, "20260305", day), "3318A12345", "00001"));
  }
  test::CountingPlatform platform;
  EXPECT_EQ(FindingsIn(Surveyed(laboratory).Rows()), Texts{R"(PX12A\SN00001 not-used)"});
  EXPECT_EQ(platform.opened, 8 + 1 + 2 * 2)
      << "limits, two lists and five files; the journal; twice the latest version of each sensor";
}

TEST(Survey, LooksAtModelsThatTheProgramDoesNotKnow) {
  const Laboratory laboratory;
  laboratory.tree.Write(
      std::string(kData) + "ZZ1\\SN00001",
      Lines({"#MODEL_NO : QZ ZZ1", "#SER_NO   : 00001", "#CAL_DATE : 20260305", "#CAL_NO   : 7",
             "#DUE_DATE : 20270305", "#COMMENT  : any words", "*something else"}));
  laboratory.tree.Write(std::string(kData) + "ZZ1\\SN00002",
                        Lines({"QZ ZZ2 Opt001", "00002", "05MAR2026"}));
  laboratory.tree.Write(std::string(kData) + "PX12A\\SN00003",
                        Lines({"QZ PX12A Opt001", "00003", "29FEB2028", " 50.0  100.0", "END"}));
  EXPECT_EQ(FindingsIn(Surveyed(laboratory).Rows()),
            (Texts{R"(PX12A\SN00003 not-used)", R"(ZZ1\SN00001 not-used)",
                   R"(ZZ1\SN00002 not-used)", R"(ZZ1\SN00002 other-model)"}));
}

TEST(Survey, FindsNoFaultInTheFileOfATestKit) {
  const Laboratory laboratory;
  laboratory.tree.Write(std::string(kData) + "RT410A\\SN00031",
                        Lines({"RT410A PERFORMANCE TEST KIT", "2705J00031", "CAL DATE 20251215"}) +
                            std::string(5U << 20U, ' '));
  EXPECT_EQ(FindingsIn(Surveyed(laboratory).Rows()), Texts{R"(RT410A\SN00031 not-used)"});
}

/// Deletes something when a folder has just been listed.
class Vanishing final : public ForwardingPlatform {
 public:
  Vanishing() : ForwardingPlatform(CurrentPlatform()), before_(SetCurrentPlatform(this)) {}
  Vanishing(const Vanishing&) = delete;
  Vanishing& operator=(const Vanishing&) = delete;
  ~Vanishing() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override {
    const std::error_code code = ForwardingPlatform::Search(folder, kind, visit);
    if (const auto found = deleted.find(folder); found != deleted.end()) {
      std::filesystem::remove_all(found->second);
    }
    return code;
  }

  std::map<std::filesystem::path, std::filesystem::path> deleted;  ///< by folder

 private:
  Platform* before_;
};

TEST(Survey, FindsNothingAboutWhatIsDeletedWhileItLooks) {
  const Laboratory laboratory;
  const std::string other = R"(c:\calfactors\PX12A\SN00001)";
  laboratory.tree.Write(other, Lines(Sensor()));
  laboratory.tree.Write(R"(c:\calfactors\PX13A\SN00001)", Lines(Sensor()));
  laboratory.tree.Write(R"(c:\stations\INDEX)", Lines({"BENCH1", "BENCH2"}));
  laboratory.tree.MakeFolders(R"(c:\stations\BENCH2)");
  Vanishing platform;
  const auto native = [&](const std::string& path) { return laboratory.tree.Native(path); };
  platform.deleted = {{native(R"(c:\calfactors\PX12A)"), native(other)},
                      {native(R"(c:\calfactors)"), native(R"(c:\calfactors\PX13A)")},
                      {native(R"(c:\stations)"), native(R"(c:\stations\BENCH2)")}};
  const Survey survey = Surveyed(laboratory);
  EXPECT_FALSE(laboratory.tree.Exists(other));
  EXPECT_EQ(FindingsIn(survey.Rows()), Texts());
  EXPECT_EQ(survey.FilesRead(), 4U);
}

TEST(Survey, LooksAtOneTreeWhereTheOtherIsGone) {
  Laboratory laboratory;
  laboratory.order.calibrationDir = "c:\\gone";
  const Survey survey = Surveyed(laboratory);
  EXPECT_FALSE(survey.CouldLook());
  ASSERT_EQ(survey.Rows().size(), 3U);
  EXPECT_EQ(survey.Rows()[0].path, "c:\\gone");
  EXPECT_TRUE(survey.Rows()[0].Has(FindingKind::Unreadable));
  EXPECT_TRUE(survey.Rows()[1].findings.empty()) << "no data set is known to be missing";
}

TEST(Survey, ReadsEachFileOnceAndShowsItsRowAtOnce) {
  const Laboratory laboratory;
  test::CountingPlatform platform;
  Survey survey(laboratory.order);
  double progress = survey.Progress();
  EXPECT_EQ(progress, 0);
  while (survey.Rows().empty() && survey.Step()) {
  }
  EXPECT_EQ(platform.opened, 3) << "the limits, the INDEX of the stations, the first data set";
  EXPECT_EQ(survey.Rows().size(), 1U);
  while (survey.Step()) {
    EXPECT_GE(survey.Progress(), progress);
    progress = survey.Progress();
  }
  EXPECT_EQ(survey.Progress(), 1);
  EXPECT_EQ(platform.opened, 7);
}

TEST(Survey, FindsTheSameInSeveralThreads) {
  const Laboratory laboratory;
  laboratory.tree.Write(kSensor, Lines(With(kSensorLines, kDue, "#DUE_DATE : 20261121")));
  laboratory.tree.MakeFolders(R"(c:\calfactors\PX13A\SN99999)");
  laboratory.tree.Write(kIndex, Lines({"PX12A"}));
  for (const char* station : {"BENCH2", "BENCH3", "BENCH4", "BENCH5"}) {
    laboratory.tree.Write(Joined("c:\\stations", station) + R"(\PX12A)", Lines(kSensorAtStation));
  }
  const SurveyResult inSteps = Surveyed(laboratory).TakeResult();
  double progress = 0;
  const SurveyResult inThreads = SurveyInThreads(laboratory.order, 4, [&](double done) {
    EXPECT_GE(done, progress);
    EXPECT_LT(done, 1);
    progress = done;
  });
  EXPECT_EQ(SurveyCsv(inThreads.rows), SurveyCsv(inSteps.rows));
  EXPECT_EQ(inThreads.rows.size(), 15U) << "3 data sets, 6 instruments, 6 lists";
  EXPECT_EQ(inThreads.filesRead, inSteps.filesRead);
  EXPECT_EQ(inThreads.trees.models, inSteps.trees.models);
  EXPECT_TRUE(inThreads.couldLook);
}

TEST(Survey, DoesWithoutThreadsThatTheSystemDoesNotStart) {
  const Laboratory laboratory;
  int started = 0;
  const SurveyResult result = SurveyInThreads(
      laboratory.order, 4, [](double) {},
      [&](const std::function<void()>& work) {
        if (++started > 1) {
          throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
        }
        return StartThread(work);
      });
  EXPECT_EQ(started, 2);
  EXPECT_EQ(SurveyCsv(result.rows), SurveyCsv(Surveyed(laboratory).Rows()));
}

TEST(Survey, LooksAgainAtOneFolderAndComparesAll) {
  Laboratory laboratory;
  SurveyResult result = Surveyed(laboratory).TakeResult();
  laboratory.tree.Write(kSensor, Lines(With(kSensorLines, kDue, "#DUE_DATE : 20280305")));
  laboratory.tree.Write(R"(c:\calfactors\PX12A\SN00001)",
                        Lines(With(kSensorLines, "#SER_NO   : 3318A12345", "#SER_NO   : 00001")));
  SurveyAgain(laboratory.order, {R"(c:\calfactors\PX12A)"}, result.trees, result.rows);
  EXPECT_EQ(FindingsIn(result.rows),
            (Texts{R"(PX12A\SN00001 not-used)", R"(BENCH1\PX12A due-date-differs)"}));
  EXPECT_EQ(result.rows.size(), 5U);
  EXPECT_EQ(result.rows[1].stations, Texts{"BENCH1"});

  laboratory.tree.Write(kAtPoint,
                        Lines(With(kSensorAtStation, kDueAtStation, "CAL DUE DATE 5 MAR 2028")));
  laboratory.tree.Write(kIndex, Lines({"PX12A"}));
  laboratory.order.stationDir += '\\';  // as of the root of a drive
  test::CountingPlatform platform;
  SurveyAgain(laboratory.order, {R"(c:\stations\BENCH1)"}, result.trees, result.rows);
  EXPECT_EQ(platform.opened, 4) << "the limits, the INDEX and the instruments";
  EXPECT_EQ(FindingsIn(result.rows),
            (Texts{R"(PX12A\SN00001 not-used)", R"(BENCH1\INDEX index-lacks-name)"}));
}

TEST(Survey, JudgesDueDatesAgainByAnotherNumberOfDays) {
  Laboratory laboratory;
  SurveyResult result = Surveyed(laboratory).TakeResult();
  laboratory.order.dueSoonDays = 103;  // until 5 MAR 2027
  CheckDueDates(laboratory.order, result.rows);
  EXPECT_EQ(FindingsIn(result.rows), Texts{R"(PX12A\SN12345 due-soon)"});
  laboratory.order.dueSoonDays = 102;
  CheckDueDates(laboratory.order, result.rows);
  EXPECT_EQ(FindingsIn(result.rows), Texts());
  laboratory.order.today = {2026, 11, 23};
  CheckDueDates(laboratory.order, result.rows);
  EXPECT_EQ(FindingsIn(result.rows), Texts{R"(PX12A\SN12345 due-soon)"});
  EXPECT_EQ(result.rows[0].daysLeft, 102);
}

TEST(Survey, JudgesOnlyDataSetsBeforeTheRowsAreCompared) {
  Laboratory laboratory;
  Survey survey(laboratory.order);
  while (survey.Rows().size() < 4 && survey.Step()) {
  }
  std::vector<SurveyRow> rows = survey.Rows();
  laboratory.tree.Write(R"(c:\calfactors\PX60G\SN01106)",
                        Replaced(Lines(kAttenuatorLines), "C-0043", "C-0044"));
  ReadAgain(laboratory.order, {R"(c:\calfactors\PX60G)"}, rows);
  EXPECT_EQ(rows[1].calibrationNumber, "C-0044");
  laboratory.order.today = {2029, 1, 1};
  CheckDueDates(laboratory.order, rows, Compared::No);
  EXPECT_EQ(FindingsIn(rows), (Texts{R"(PX12A\SN12345 past-due)", R"(PX60G\SN01106 past-due)"}));
}

}  // namespace
}  // namespace tarvell
