// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/EditedCell.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/caldata/SetPages.h"
#include "support/Dates.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

constexpr const char* kFile = "c:\\data\\SN12345";

Texts Header(const std::string& code) {
  return {"#MODEL_NO : " + code, "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
          "#CAL_NO   : C-0042",  "#DUE_DATE : 20020305",   "#COMMENT  : factory"};
}

CalFileInfo Listed(const std::string& serial = "3318A12345") {
  CalFileInfo listed;
  listed.FilePath = kFile;
  listed.SerialNumber = serial;
  return listed;
}

/// For each row of a page, the columns whose values come from the template.
Texts FromTemplate(const OpenedDataSet& opened, std::int16_t page) {
  Texts rows;
  MemoryGrid grid(5);
  opened.data->GetCalData(page, grid);
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    rows.emplace_back();
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      const Origin origin = opened.data->OriginOfLoad(page, {row, column});
      const bool isShown = !grid.TextOf({row, column}).empty();
      rows.back() += isShown && origin == Origin::Template ? std::to_string(column) : "";
    }
  }
  return rows;
}

/// A page of a set's file.
Texts PageOf(const SetModel& set, std::size_t page, const Texts& rows) {
  return Joined({set.openings.at(page), rows, set.closing});
}

/// All pages of a set's file, each with these rows.
Texts PagesOf(const SetModel& set, const Texts& rows) {
  Texts pages;
  for (std::size_t page = 0; page < set.pages.size(); ++page) {
    pages = Joined({pages, PageOf(set, page, rows)});
  }
  return pages;
}

class OpenedFile : public testing::Test {
 protected:
  OpenedDataSet Open(const std::string& code, const Texts& lines,
                     const CalFileInfo& listed = Listed()) {
    tree_.Write(kFile, Lines(lines));
    return OpenDataSet(*FindModel(code), listed);
  }

  TestTree tree_;
};

TEST_F(OpenedFile, OfASetHasNothingOfATemplateThatIsRefusedAndSaysSo) {
  const SetModel& set = CapacitorSetA();
  const std::string path = (tree_.ProgramFolder() / "TempRT520A").string();
  // There is none, one that is cut off, one of another model, and one with too many rows.
  const Texts pages = PagesOf(set, {FullLine("t1"), FullLine("t2")});
  const std::string whole = Lines(Joined({Header(set.code), pages}));
  for (const std::string& bytes :
       {std::string(), whole.substr(0, whole.find("t2")), Lines(Joined({Header("PX12A"), pages})),
        Lines(Joined({Header(set.code), set.openings[0], ManyLines(52)}))}) {
    SCOPED_TRACE(bytes);
    if (!bytes.empty()) {
      WriteNative(path, bytes);
    }
    // Without a calibration date, with one row on the first page, and without the second page.
    const OpenedDataSet opened =
        Open(set.code, Joined({{"#MODEL_NO : RT520A", "#SER_NO   : 3318A12345"},
                               PageOf(set, 0, {FullLine("f1")}),
                               PageOf(set, 2, {FullLine("f2")})}));
    EXPECT_EQ(opened.data->SerialNumber(), "3318A12345");
    EXPECT_TRUE(opened.isNamedBySerial);
    EXPECT_EQ(CalDateOf(*opened.data), (Date{0, "", 0}));
    EXPECT_EQ(RowsOf(*opened.data).size(), 1U);
    EXPECT_EQ(RowsOf(*opened.data, 1), Texts{"||||"});
    EXPECT_EQ(opened.data->GetCalPageSerial(1), "");
    ASSERT_GE(opened.notices.size(), 2U);
    EXPECT_TRUE(Contains(opened.notices[0], "The template of the model was not used"));
    EXPECT_TRUE(Contains(opened.notices[0], "TempRT520A")) << opened.notices[0];
    EXPECT_TRUE(Contains(opened.notices[1], "no page RT522A. It is empty.")) << opened.notices[1];
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(NewDataSet(*FindModel("RT520A"))); }).Path(), path);
  }
}

TEST_F(OpenedFile, OfASetNamesWhatComesFromItsTemplate) {
  tree_.InstallTemplate("RT520A");
  const std::string row = "*1000 : 1.5pF : 0.5 : 0.1 : 0.2";
  const SetModel& set = CapacitorSetA();
  const OpenedDataSet opened =
      Open("RT520A",
           Joined({{"#MODEL_NO : RT520A", "#SER_NO   : 3318A12345", "#DUE_DATE : 20020305", "!"},
                   PageOf(set, 0, {row, row}),
                   PageOf(set, 2, Texts(8, row)),
                   PageOf(set, 3, {})}));
  EXPECT_EQ(opened.notices,
            (Texts{"The page RT521A shows rows that the file does not hold. They come from the "
                   "template, and would be saved: rows 3 to 8.",
                   "The file holds no page RT522A. The default data are shown for it.",
                   "The page RT524A shows rows that the file does not hold. They come from the "
                   "template, and would be saved: rows 1 to 8.",
                   "The file lacks header lines. The values shown for them come from the "
                   "template, and would be saved: #CAL_DATE, #CAL_NO, #COMMENT."}));
  EXPECT_TRUE(opened.data->HeaderOfLoad().lacksCalDate);
  EXPECT_FALSE(opened.data->HeaderOfLoad().lacksDueDate);
  const std::string all = "01234";
  EXPECT_EQ(FromTemplate(opened, 0), (Texts{"", "", all, all, all, all, all, all}));
  EXPECT_EQ(FromTemplate(opened, 1), Texts(8, all));
  EXPECT_EQ(FromTemplate(opened, 2), Texts(8));
  EXPECT_EQ(FromTemplate(NewDataSet(*FindModel("RT520A")), 2), Texts(8, all));
}

TEST_F(OpenedFile, ThatIsOnlyLookedAtHasNothingOfTheTemplate) {
  tree_.InstallTemplate("RT520A");
  const std::string row = "*1000 : 1.5pF : 0.5 : 0.1 : 0.2";
  tree_.Write(kFile, Lines(Joined({Header("RT520A"), PageOf(CapacitorSetA(), 0, {row, row})})));
  const Calibration version = {.header = Listed()};
  const ReadableData shown = Readable(FindModel("RT520A"), version);
  ASSERT_EQ(shown.pages.size(), 4U);
  EXPECT_EQ(shown.pages[0].rows.size(), 3U) << "the captions and two rows";
  EXPECT_EQ(shown.pages[1].rows.at(1), Texts(5));
  EXPECT_FALSE(shown.isLines);
  EXPECT_TRUE(Contains(shown.notice, "no page RT522A. It is empty.")) << shown.notice;
  const auto earlier = LoadCalibration(*FindModel("RT520A"), version);
  EXPECT_EQ(RowsOf(*earlier, 0).size(), 2U);
  EXPECT_EQ(RowsOf(*earlier, 1), Texts{"||||"});
}

TEST_F(OpenedFile, OfAResistorSetNamesTheRowsOfTheTemplatesCells) {
  const SetModel& set = ResistorSet();
  const Texts header = Header("RT730A");
  WriteNative(tree_.ProgramFolder() / "TempRT730A",
              Lines(Joined({header, PagesOf(set, {FullLine("t1"), FullLine("t2")})})));
  // The value after the gap is not read. The third row has none of the template below it.
  Texts lines = Joined({header, PageOf(set, 0, {"*a : 9", "*b : : 9 : 0.5 %", "*c : 9"})});
  for (std::size_t page = 1; page < set.pages.size(); ++page) {
    lines = Joined({lines, PageOf(set, page, {FullLine("a"), FullLine("b")})});
  }
  const OpenedDataSet opened = Open("RT730A", lines);
  EXPECT_EQ(RowsOf(*opened.data), (Texts{"a|9|2|0 %|4", "b|1|2|0 %|4", "c|9|||"}));
  EXPECT_EQ(FromTemplate(opened, 0), (Texts{"234", "1234", ""}));
  EXPECT_EQ(opened.notices,
            (Texts{"The section \"DC Registance\" shows cells that the file does not hold. They "
                   "come from the template, and would be saved: rows 1 and 2.",
                   "The section \"DC Registance\" has rows with an empty field in the file. The "
                   "values after it were not read: row 2.",
                   "The section \"DC Registance\" has rows with too few values in the file. Their "
                   "cells are empty; an uncertainty in ppm or % would be saved as 0: row 3."}));
}

TEST_F(OpenedFile, OfASingleTableNamesItsDoubtfulRows) {
  OpenedDataSet opened =
      Open("PX12A",
           Joined({Header("PX12A"),
                   {"*  10.00:    99.0     :    0.0", "*        :    98.0     :    0.0",
                    "*  30.00:             : (Ref.)", "*  40.00", "*", "*  60.00: 97.0", "!End"}}));
  EXPECT_EQ(RowsOf(*opened.data), (Texts{"10.00|99.0", "98.0|0.0", "30.00|(Ref.)", "40.00|"}));
  EXPECT_EQ(opened.notices,
            (Texts{"The table has no frequency in row 5: that row and the rows after it are not "
                   "shown, and would not be saved.",
                   "The table has rows with an empty field in the file. The values after it were "
                   "read one column too far to the left: rows 2 and 3.",
                   "The table has rows with too few values in the file. Their cells are empty, "
                   "and would be saved so: row 4."}));
  opened = Open("PX60H", Joined({Header("PX60H"), {"*   :   ", "* 50 : 1 : 2", "!End"}}));
  ASSERT_EQ(opened.notices.size(), 1U);
  EXPECT_TRUE(Contains(opened.notices[0], "no setting in row 1")) << opened.notices[0];
}

TEST_F(OpenedFile, OfACapacitorSetNamesRowsWithMissingValues) {
  tree_.InstallTemplate("RT520C");
  const Texts whole(5, "*100 : 10.0nF : 0.5 : 0.1 : 0.2");
  Texts rows = whole;
  rows[1] = "*100 : 10.0nF";
  rows[3] = "*100 : : 0.5 : 0.1 : 0.2";
  const SetModel& set = CapacitorSetC();
  EXPECT_EQ(Open("RT520C", Joined({Header("RT520C"), PageOf(set, 0, rows), PageOf(set, 1, whole),
                                   PageOf(set, 2, whole)}))
                .notices,
            (Texts{"The page RT525A has rows with an empty field in the file. The values after it "
                   "were read one column too far to the left: row 4.",
                   "The page RT525A has rows with too few values in the file. 0 is shown in their "
                   "place, and would be saved: row 2."}));
}

TEST_F(OpenedFile, NamesRowsWithoutAFormat) {
  tree_.InstallTemplate("RT730A");
  Texts lines = Header("RT730A");
  for (std::size_t page = 0; page < 7; ++page) {
    // As many rows as the template has, and on the third page one more.
    const int rows = page == 0 ? 9 : page == 1 ? 6 : page == 3 ? 7 : 8;
    lines = Joined({lines, PageOf(ResistorSet(), page, ManyLines(rows))});
  }
  EXPECT_EQ(Open("RT730A", lines).notices,
            (Texts{"The section \"HF Calibration at 10ohm\" has more rows than the program has "
                   "formats for. Their uncertainty in ppm or % was not read, and would be saved "
                   "as 0: row 8."}));
}

struct SerialCase {
  std::string line;    ///< in place of the serial number line
  std::string listed;  ///< what the list read
  std::string taken;
  bool isNamed;
  std::string notice;  ///< part of the first one
};

TEST_F(OpenedFile, WithoutASerialNumberHasTheListsOrNone) {
  const std::vector<SerialCase> table = {
      {"#SERIAL   : 3318A12345", "3318A12345", "3318A12345", true, "\"3318A12345\", was taken"},
      {"#SER_NO   : ", "sn12345", "sn12345", true, "\"sn12345\", was taken"},
      {"!", "20010305", "20010305", false, "\"20010305\", was taken"},
      {"#SER_NO   : ", "", "", false, "has no serial number. Enter"},
      {"!", "* 10:91", "", false, "has no serial number. Enter"},
  };
  for (const char* code : {"PX12A", "RT520A"}) {
    tree_.InstallTemplate(code);
    for (const SerialCase& test : table) {
      SCOPED_TRACE(code + test.line + test.listed);
      Texts lines = Joined({Header(code), PagesOf(CapacitorSetA(), ManyLines(8))});
      lines[1] = test.line;
      const OpenedDataSet opened = Open(code, lines, Listed(test.listed));
      EXPECT_EQ(opened.data->SerialNumber(), test.taken);
      EXPECT_EQ(opened.isNamedBySerial, test.isNamed);
      ASSERT_FALSE(opened.notices.empty());
      EXPECT_TRUE(Contains(opened.notices[0], test.notice)) << opened.notices[0];
      const bool writesAnother = !test.isNamed && !test.taken.empty();
      EXPECT_EQ(opened.notices.size() > 1 &&
                    Contains(opened.notices[1], "Saving writes the file SN10305; SN12345 stays."),
                writesAnother);
      EXPECT_EQ(Contains(Lines(opened.notices), "Saving writes the file"), writesAnother);
    }
  }
}

TEST_F(OpenedFile, InTheOldStyleIsRefused) {
  for (const std::string code : {"PX12A", "RT520A"}) {
    tree_.InstallTemplate(code);
    for (const Texts& lines :
         {Texts{"QZ " + code, "3318A12345", "05MAR2001", "*10:91", "!End"},
          Texts{code + "Opt001", "3318A12345", "05MAR2001"}, Texts{"", code}, Texts{code}}) {
      const Error error = ErrorOf([&] { static_cast<void>(Open(code, lines)); });
      EXPECT_EQ(error.Kind(), ErrorKind::NotAFile) << code << lines[0];
      EXPECT_EQ(error.Path(), kFile);
      EXPECT_TRUE(Contains(error.Text(), "old style")) << error.Text();
      EXPECT_EQ(tree_.Read(kFile), Lines(lines));
    }
  }
}

TEST_F(OpenedFile, WithALineBeforeItsHeaderIsNotInTheOldStyleAndKeepsItsSerialNumber) {
  for (const char* first : {"", "Sensor of room 3", "!"}) {
    const OpenedDataSet opened =
        Open("PX12A", Joined({{first}, Header("PX12A"), {"*10:91", "!End"}}), Listed("another"));
    EXPECT_EQ(opened.data->SerialNumber(), "3318A12345") << first;
    EXPECT_TRUE(opened.isNamedBySerial);
    EXPECT_EQ(opened.notices, Texts()) << first;
  }
  EXPECT_EQ(RowsOf(*Open("PX12A", {"*10:91", "!End"}).data), Texts{"10|91"});
}

TEST_F(OpenedFile, AsANewCalibrationHasTheDayAndNoCalibrationNumber) {
  const Texts rows = {"*   50.00:     99.0     : (Ref.)    :     0.0    :    0.0    :     0.0  ",
                      "!End"};
  tree_.Write(kFile, Lines(Joined({Header("PX12A"), rows})));
  const OpenedDataSet again = NewCalibration(*FindModel("PX12A"), Listed(), {2026, 11, 22});
  EXPECT_TRUE(again.isNamedBySerial);
  EXPECT_EQ(again.fileValues, Origin::Earlier);
  EXPECT_EQ(again.notices, Texts());
  EXPECT_EQ(RowsOf(*again.data), Texts{"50.00|99.0"});
  again.data->SetCalibrationNumber("C-0043");
  EXPECT_EQ(again.data->WouldReplace(kFile).kind, Replacement::Kind::None);
  again.data->SaveCalibrationDataToFile(kFile);
  Texts saved = Header("PX12A");
  saved[2] = "#CAL_DATE : 20261122";
  saved[3] = "#CAL_NO   : C-0043";
  saved[4] = "#DUE_DATE : 20271122";
  const std::string bytes = tree_.Read(kFile);
  EXPECT_TRUE(bytes.starts_with(Lines(saved))) << bytes;
  EXPECT_TRUE(Contains(bytes, rows[0])) << bytes;
}

TEST_F(OpenedFile, AsACopyHasThePointsAndNothingElseOfTheInstrument) {
  tree_.InstallTemplate("RT520C");
  const SetModel& set = CapacitorSetC();
  Texts header = Header("RT520C");
  header[4] = "#DUE_DATE : 20010305";
  const std::string before =
      Lines(Joined({header, PagesOf(set, Texts(8, "*100 : 10.0nF : 0.5 : 0.1 : 0.2"))}));
  tree_.Write(kFile, before);
  const Model& model = *FindModel("RT520C");
  const OpenedDataSet file = OpenDataSet(model, Listed());
  const OpenedDataSet copy = CopyOfDataSet(model, Listed(), {2026, 2, 28});
  EXPECT_FALSE(copy.isNamedBySerial);
  EXPECT_EQ(copy.fileValues, Origin::Earlier);
  EXPECT_EQ(file.fileValues, Origin::File);
  EXPECT_EQ(copy.data->SerialNumber() + copy.data->CalibrationNumber() + copy.data->Comment(), "");
  EXPECT_EQ(CalDateOf(*copy.data), (Date{2026, "FEB", 28}));
  EXPECT_EQ(DueDateOf(*copy.data), (Date{2027, "FEB", 28}));
  ASSERT_FALSE(copy.notices.empty());
  EXPECT_TRUE(copy.notices.back().starts_with("The earlier dates do not say"));
  EXPECT_EQ(copy.data->GetCalPageCount(), 4);
  for (std::int16_t page = 0; page < 4; ++page) {
    EXPECT_EQ(copy.data->GetCalPageSerial(page), "");
    EXPECT_EQ(RowsOf(*copy.data, page), RowsOf(*file.data, page));
  }
  // The member that the option hides is left out, too.
  file.data->SetCalPageSerial(kOptionPage, "C004");
  file.data->SetCalPageSerial(kOptionPage, std::string(kOptionOff));
  file.data->SaveCalibrationDataToFile(kFile);
  const OpenedDataSet hidden = CopyOfDataSet(model, Listed(), {2026, 2, 28});
  EXPECT_EQ(hidden.data->GetCalPageCount(), 3);
  hidden.data->SetCalPageSerial(kOptionPage, std::string(kOptionOn));
  EXPECT_EQ(hidden.data->GetCalPageSerial(kOptionPage), "");
  tree_.Write(kFile, before);
  // It does not replace the file that it was copied from without a question.
  copy.data->SetSerialNumber("3318A12345");
  EXPECT_EQ(copy.data->WouldReplace(kFile).kind, Replacement::Kind::NotOpened);
  EXPECT_EQ(tree_.Read(kFile), before);
}

TEST(EditedCell, KeepsANumberThatIsTooLarge) {
  struct Case {
    const char* code;
    std::int16_t page;
    std::int16_t column;
    const char* cell;
    const char* text;
    const char* unit;
  };
  const std::vector<Case> table = {
      {"PX12A", 0, 1, "1E999", "1E999", ""},
      {"PX12A", 0, 1, "98.80", "98.8", ""},
      {"PX12A", 0, 0, "1E999", "", ""},
      {"PX60H", 0, 1, "-1D+400", "-1D+400", ""},
      {"RT520A", 0, 1, "1E999pF", "1E999", "pF"},
      {"RT520A", 0, 2, "1E999 ppm", "1E999", "ppm"},
      {"RT730A", 1, 1, "Ls/.5E999 nH", ".5E999", ""},
      {"RT730A", 2, 2, "1E999 %", "1E999", "%"},
  };
  for (const Case& test : table) {
    const std::unique_ptr<cifCaldata> data = FindModel(test.code)->create();
    const EditedCell edited = EditedCellOf(*data, test.page, {{1}, test.column}, test.cell);
    EXPECT_EQ(edited.text, test.text) << test.code << test.cell;
    EXPECT_EQ(edited.unit, test.unit) << test.code << test.cell;
  }
}

}  // namespace
}  // namespace tarvell::test
