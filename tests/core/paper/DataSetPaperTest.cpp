// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "core/history/History.h"
#include "core/paper/DataSetPaper.h"
#include "core/platform/Error.h"
#include "exchange/Export.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;

std::string TextOf(const PaperTable& table) {
  std::string text = "[" + table.caption + "]";
  for (const PaperColumn& column : table.columns) {
    text += " " + column.caption + (column.isNumber ? ">" : "");
  }
  for (const std::vector<PaperCell>& row : table.rows) {
    text += "\n";
    for (const PaperCell& cell : row) {
      text += cell.text + cell.mark + "|";
    }
  }
  return text;
}

/// A text for each part of a document after its header and before its signature.
Texts PagesOf(const PaperDocument& document) {
  Texts texts;
  for (auto part = document.parts.begin() + 1; part != document.parts.end() - 1; ++part) {
    if (const auto* table = std::get_if<PaperTable>(&*part)) {
      texts.push_back(TextOf(*table));
    } else if (const auto* paragraph = std::get_if<PaperParagraph>(&*part)) {
      texts.push_back(paragraph->text);
    } else if (const auto* picture = std::get_if<PaperPicture>(&*part)) {
      texts.push_back("picture " + std::to_string(picture->number) + ": " + picture->caption);
    }
  }
  return texts;
}

std::string ValueOf(const PaperDocument& document, const std::string& name) {
  for (const PaperField& field : std::get<PaperFields>(document.parts.front())) {
    if (field.name == name) {
      return field.value;
    }
  }
  return "(no field)";
}

/// A calibration of a model, whose body is these lines.
std::unique_ptr<cifCaldata> Loaded(const std::string& model, const Texts& body) {
  Texts lines = {"#MODEL_NO : " + model, "#SER_NO   : 3318A12345", "#CAL_DATE : 20260305",
                 "#CAL_NO   : C-0042",   "#DUE_DATE : 20270305",   "#COMMENT  : certificate"};
  lines.insert(lines.end(), body.begin(), body.end());
  std::unique_ptr<cifCaldata> data = FindModel(model)->create();
  data->LoadFromBytes(Lines(lines), "SN12345");
  return data;
}

std::unique_ptr<cifCaldata> Sensor(const Texts& frequencies, const Texts& factors) {
  Texts lines = {"!", "!", "!        :              : Reflection Coefficient",
                 "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
  for (std::size_t i = 0; i < factors.size(); ++i) {
    lines.push_back("*  " + frequencies[i] + " : " + factors[i] + " : 0.0 : 0.0 : 0.0 : 0.0");
  }
  lines.emplace_back("!End");
  return Loaded("PX12A", lines);
}

std::function<bool(std::int16_t, MemoryGrid&)> Filling(const cifCaldata& data) {
  return [&data](std::int16_t page, MemoryGrid& grid) {
    data.GetCalData(page, grid);
    return true;
  };
}

class DataSetPaperTest : public testing::Test {
 protected:
  DataSetPaperTest() { tree_.MakeFolders(R"(c:\calfactors\PX12A)"); }

  TestTree tree_;
};

TEST_F(DataSetPaperTest, HasTheChangesAndTheMarksBesideTheValues) {
  const auto now = Sensor({"50.00", "100.00", "300.00"}, {"100.0", "89.5", "97.0"});
  const auto before = Sensor({"50.00", "100.00", "500.00"}, {"100.0", "98.5", "95.0"});
  const Model& model = *FindModel("PX12A");
  EditorState state = StateOf(model, *now);
  // As the table of the editor has it.
  for (std::vector<std::string>& row : state.pages[0].rows) {
    row.resize(2);
  }
  state.pages[0].origins = {{{{1}, 1}, Origin::Earlier}, {{{3}, 1}, Origin::Template}};
  state.pages[0].notes = {{{{1}, 1}, "Will be read back as 99."}};
  const DataSetPaper paper = PaperOf({.model = model,
                                      .data = *now,
                                      .state = state,
                                      .isDueDateDefault = true,
                                      .earlierName = "5 MAR 2025",
                                      .fillEarlier = Filling(*before),
                                      .limit = {.percent = 1},
                                      .file = {{{"File", "x"}}, "foot"}});
  const PaperDocument& document = paper.document;
  EXPECT_EQ(document.title, "Calibration data of PX12A 3318A12345");
  EXPECT_EQ(document.foot, "foot");
  EXPECT_EQ(ValueOf(document, "Calibrated"), "5 MAR 2026");
  EXPECT_EQ(ValueOf(document, "Due"), "5 MAR 2027 (not entered yet)");
  EXPECT_EQ(ValueOf(document, "Compared with"), "the calibration of 5 MAR 2025");
  EXPECT_EQ(ValueOf(document, "File"), "x");
  EXPECT_EQ(
      PagesOf(document),
      (Texts{"[] Frequency [MHz]> Calibration factor [%]> Earlier> Change>\n"
             "50.00|100.0=!|100.0|0.0|\n100.00|89.5?|98.5|-9.0|\n300.00|97.0*|||",
             "Only this calibration has 300 MHz. Only the earlier calibration has 500 MHz.",
             "? 100 MHz, Calibration factor: The earlier calibration has 98.5, a change of -9.0; "
             "the limit is 0.99.\n! 50 MHz, Calibration factor: Will be read back as 99.",
             "*  default of the program, which nobody has entered;  =  taken over from an earlier "
             "calibration, not entered;  ?  may be a slip of typing;  !  see the note",
             "picture 0: Calibration factor"}));
  ASSERT_EQ(paper.pictures.size(), 1U);
  EXPECT_EQ(paper.pictures[0].now.at(0).points.size(), 3U);
  EXPECT_EQ(paper.pictures[0].earlier.at(0).points.size(), 3U);
  EXPECT_EQ(document.parts.back(),
            PaperPart((PaperBlanks{{"Checked by (name)", "Date", "Signature"}})));
}

TEST_F(DataSetPaperTest, HasTheChangesOfASetInTablesOfTheirOwn) {
  const auto set = [](const std::string& capacitance) {
    Texts lines = {"!", "!Frequency : Capacitance(pF) : Unc.(%) : Dissipation Factor : Unc.(%)",
                   "!"};
    for (const char* page : {"RT521A", "RT522A", "RT523A", "RT524A"}) {
      lines.insert(lines.end(),
                   {std::string("#") + page + " : 77",
                    "* 1000 : " + capacitance + "pF : 0.0200 : 0.00009 : 0.00010", "!END", "!"});
    }
    lines.emplace_back("!End");
    return Loaded("RT520A", lines);
  };
  const auto now = set("1.00002");
  const auto before = set("1.00001");
  const Model& model = *FindModel("RT520A");
  const EditorState state = StateOf(model, *now);
  const DataSetPaper paper = PaperOf({.model = model,
                                      .data = *now,
                                      .state = state,
                                      .earlierName = "5 MAR 2025",
                                      .fillEarlier = Filling(*before),
                                      .limit = {.percent = 1, .uncertaintyPercent = 1}});
  const Texts pages = PagesOf(paper.document);
  ASSERT_EQ(pages.size(), 8U);
  EXPECT_EQ(pages[2],
            "[RT522A, serial number 77] Frequency [Hz]> Capacitance [pF]> Unc. of Capacitance> "
            "Disspation Factor> Unc. of Disspation Factor>\n1000|1.00002pF|200 ppm|0.00009|"
            "0.00010|");
  EXPECT_EQ(pages[3],
            "[RT522A, serial number 77, changes since 5 MAR 2025] Frequency [Hz]> Earlier "
            "Capacitance> Change> Earlier Unc. of Capacitance> Change> Earlier Disspation Factor> "
            "Change> Earlier Unc. of Disspation Factor> Change>\n1000|1.00001pF|+0.00001 pF|200 "
            "ppm|0 ppm|0.00009|0.00000|0.00010|0.00000|");
  // One point is no curve.
  EXPECT_TRUE(paper.pictures.empty());
}

TEST_F(DataSetPaperTest, SaysWhetherTheFileHoldsThePrintedData) {
  constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  // The example of FIPS 180-4.
  const std::string hash = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
  const std::string empty = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
  const auto abc = [] { return std::string("abc"); };
  tree_.Write(kPath, "abc");
  const FileOnPaper saved = EditedFileOnPaper(kPath, abc);
  EXPECT_EQ(saved.fields, (PaperFields{{"File", kPath},
                                       {"State", "Saved: the file holds exactly these data."},
                                       {"SHA-256", hash}}));
  EXPECT_EQ(saved.foot, std::string(kPath) + ", SHA-256 ba7816bf8f01cfea...");
  const FileOnPaper other = EditedFileOnPaper(kPath, [] { return std::string(); });
  EXPECT_EQ(other.fields,
            (PaperFields{{"File", kPath},
                         {"State", "NOT SAVED. The file holds other data than those printed here."},
                         {"SHA-256 if saved", empty},
                         {"SHA-256 of the file", hash}}));
  EXPECT_EQ(other.foot, "NOT SAVED, " + std::string(kPath) + ", SHA-256 e3b0c44298fc1c14...");
  EXPECT_EQ(EditedFileOnPaper("", abc).fields,
            (PaperFields{{"File", "(none)"},
                         {"State", "NOT SAVED. These data have no file yet."},
                         {"SHA-256 if saved", hash}}));
  const FileOnPaper refused = EditedFileOnPaper(
      kPath, []() -> std::string { throw Error(ErrorKind::Character, "It holds a comma."); });
  EXPECT_EQ(refused.fields[2],
            (PaperField{"SHA-256 if saved",
                        "none, because these data cannot be saved. It holds a comma."}));
  EXPECT_EQ(refused.foot, "NOT SAVED, " + std::string(kPath));
  EXPECT_EQ(EditedFileOnPaper(R"(c:\calfactors\none)", abc).fields[1].value,
            "NOT SAVED. Cannot read the file: it, or the folder it belongs in, does not exist (any "
            "more). Check the folder, then try again.");
}

TEST_F(DataSetPaperTest, NamesTheTimeAndTheUserOfAVersion) {
  ::setenv("TZ", "UTC", 1);
  ::tzset();
  constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  SaveWithHistory(kPath, "abc");
  SaveWithHistory(kPath, "");
  const std::vector<Calibration> versions = EveryCalibrationOf(kPath);
  ASSERT_EQ(versions.size(), 2U);
  EXPECT_EQ(VersionOnPaper(kPath, versions[0]).fields[1].value,
            "the present file, saved 5 MAR 2026 14:03:07 by anna on bench3");
  const FileOnPaper earlier = VersionOnPaper(kPath, versions[1]);
  EXPECT_EQ(earlier.fields[0].value, kPath);
  EXPECT_EQ(earlier.fields[1].value, "replaced 5 MAR 2026 14:03:07 by anna on bench3");
  EXPECT_EQ(earlier.fields[2].value, "As saved.");
  EXPECT_EQ(earlier.fields[3].value,
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(PrintedNow(), "5 MAR 2026 14:03:07 by anna on bench3, Morrand Tarvell A.02.61");
  tree_.Write(versions[1].header.FilePath, "abd");
  EXPECT_EQ(VersionOnPaper(kPath, EveryCalibrationOf(kPath)[1]).fields[2].value,
            "Changed by hand: it is not what the program saved.");
  Calibration missing = versions[1];
  missing.header.FilePath = R"(c:\calfactors\none)";
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(VersionOnPaper(kPath, missing)); }).Kind(),
            ErrorKind::NotFound);
}

TEST_F(DataSetPaperTest, HasTheLinesOfAFileThatCannotBeRead) {
  const ReadableData lines = {{{.name = "", .rows = {{"Line"}, {"a"}, {"b"}}, .keys = 1}},
                              "The lines are shown."};
  const PaperDocument document = PaperOfText("PX99", {}, lines, {});
  EXPECT_EQ(document.title, "Calibration data of PX99");
  EXPECT_EQ(ValueOf(document, "Calibrated"), "(none)");
  EXPECT_EQ(PagesOf(document), (Texts{"The lines are shown.", "[] Line\na|\nb|"}));
  const ReadableData many = {{{.name = "", .rows = TableRowList(1003, {"x"}), .keys = 1}}, ""};
  const Texts pages = PagesOf(PaperOfText("PX99", {}, many, {}));
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages[1], "... and 2 more lines, which are not printed.");
}

}  // namespace
}  // namespace tarvell::test
