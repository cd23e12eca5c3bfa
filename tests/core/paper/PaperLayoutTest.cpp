// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/paper/PaperLayout.h"
#include "core/paper/TableLayout.h"
#include "core/paper/WrappedText.h"
#include "core/text/Text.h"

/// Every place is worked out by hand, with fonts whose letters are all of one width.
namespace tarvell {
namespace {

using Texts = std::vector<std::string>;

class EvenFonts final : public PaperFonts {
 public:
  [[nodiscard]] double WidthOf(std::string_view text, PaperFont font) const override {
    const double letter = font == PaperFont::Title ? 10 : font == PaperFont::Small ? 4 : 5;
    return letter * static_cast<double>(CharacterCount(text));
  }
  [[nodiscard]] double LineHeight(PaperFont font) const override {
    return font == PaperFont::Title ? 20 : font == PaperFont::Small ? 8 : 10;
  }
};

const EvenFonts kFonts;

/// "4/28 Title" for each text, by its place.
Texts TextsOn(const PaperSheet& sheet) {
  Texts texts;
  for (const PlacedText& placed : sheet.texts) {
    std::ostringstream text;
    text << placed.x << '/' << placed.y << ' ' << placed.text;
    texts.push_back(text.str());
  }
  return texts;
}

PaperTable TableOfRows(std::size_t count) {
  PaperTable table = {.caption = "Table", .columns = {{"Point"}, {"V", true}}, .rows = {}};
  for (std::size_t row = 1; row <= count; ++row) {
    table.rows.push_back({{"p" + std::to_string(row)}, {"10.5"}});
  }
  return table;
}

/// A sheet of this height has room for parts from 28 (16, if it is not the first) to height - 16.
std::vector<PaperSheet> SheetsOf(std::vector<PaperPart> parts, double height, double width = 200) {
  return LayOut({.title = "Doc", .foot = "foot", .parts = std::move(parts)}, {width, height},
                kFonts);
}

TEST(PaperLayout, CaptionsAreRepeatedOnEachSheetOfATable) {
  PaperTable table = TableOfRows(10);
  table.rows[1][1].mark = "?";
  const std::vector<PaperSheet> sheets = SheetsOf({table}, 120);
  ASSERT_EQ(sheets.size(), 3U);
  // A row is 13 high: the fourth ends at 103, and 104 is the end. Numbers end in one line, before
  // the place for marks.
  EXPECT_EQ(TextsOn(sheets[0]), (Texts{"0/0 Doc", "0/28 Table", "4/39.5 Point", "52/39.5 V",
                                       "4/52.5 p1", "37/52.5 10.5", "4/65.5 p2", "37/65.5 10.5",
                                       "59/65.5 ?", "4/78.5 p3", "37/78.5 10.5", "4/91.5 p4",
                                       "37/91.5 10.5", "0/112 foot", "156/112 Page 1 of 3"}));
  EXPECT_EQ(
      TextsOn(sheets[1]),
      (Texts{"0/0 Doc", "0/16 Table (continued)", "4/27.5 Point", "52/27.5 V", "4/40.5 p5",
             "37/40.5 10.5", "4/53.5 p6", "37/53.5 10.5", "4/66.5 p7", "37/66.5 10.5", "4/79.5 p8",
             "37/79.5 10.5", "4/92.5 p9", "37/92.5 10.5", "0/112 foot", "156/112 Page 2 of 3"}));
  EXPECT_EQ(TextsOn(sheets[2]),
            (Texts{"0/0 Doc", "0/16 Table (continued)", "4/27.5 Point", "52/27.5 V", "4/40.5 p10",
                   "37/40.5 10.5", "0/112 foot", "156/112 Page 3 of 3"}));
  EXPECT_EQ(sheets[2].rules,
            (std::vector<PlacedRule>{{0, 39, 68, 0.75}, {0, 52, 68, 0.25}, {0, 110, 200, 0.5}}));
}

TEST(PaperLayout, ARowOfSeveralLinesIsNeverSplit) {
  PaperTable table = TableOfRows(3);
  table.rows[2][0].text = "one\ntwo\nthree";
  // Below the second row, 26 are left; the third is 33 high.
  const std::vector<PaperSheet> sheets = SheetsOf({table}, 119);
  ASSERT_EQ(sheets.size(), 2U);
  EXPECT_EQ(TextsOn(sheets[1]), (Texts{"0/0 Doc", "0/16 Table (continued)", "4/27.5 Point",
                                       "52/27.5 V", "4/40.5 one", "4/50.5 two", "4/60.5 three",
                                       "37/40.5 10.5", "0/111 foot", "156/111 Page 2 of 2"}));
}

TEST(PaperLayout, ATableBeginsWhereItsCaptionsAndItsFirstRowHaveRoom) {
  const PaperParagraph above = {"above"};
  // The paragraph and its gap end at 46; caption, captions and a row need 36.
  EXPECT_EQ(SheetsOf({above, TableOfRows(1)}, 98).size(), 1U);
  const std::vector<PaperSheet> sheets = SheetsOf({above, TableOfRows(1)}, 97);
  ASSERT_EQ(sheets.size(), 2U);
  EXPECT_EQ(TextsOn(sheets[0]),
            (Texts{"0/0 Doc", "0/28 above", "0/89 foot", "156/89 Page 1 of 2"}));
  EXPECT_EQ(TextsOn(sheets[1])[1], "0/16 Table");
}

TEST(PaperLayout, ACellThatIsHigherThanASheetIsCutOff) {
  PaperTable table = TableOfRows(1);
  table.rows[0][0].text = "1\n2\n3\n4\n5\n6";
  // Of the 54 between title and foot, caption and captions take 23: two lines and their spacing
  // are 23.
  const std::vector<PaperSheet> sheets = SheetsOf({table}, 98);
  ASSERT_EQ(sheets.size(), 1U);
  EXPECT_EQ(TextsOn(sheets[0])[4], "4/52.5 1");
  EXPECT_EQ(TextsOn(sheets[0])[5], "4/62.5 ...");
}

TEST(PaperLayout, PicturesAndLinesToWriteOnAreNotSplit) {
  const PaperPicture picture = {.caption = "Curve", .number = 0, .height = 40};
  const PaperPicture huge = {.caption = "", .number = 1, .height = 1000};
  const std::vector<PaperSheet> sheets =
      SheetsOf({picture, picture, huge, PaperBlanks{{"Name", "Date"}}}, 144);
  ASSERT_EQ(sheets.size(), 4U);
  EXPECT_EQ(sheets[0].pictures, (std::vector<PlacedPicture>{{0, 38, 200, 40, 0}}));
  EXPECT_EQ(sheets[1].pictures, (std::vector<PlacedPicture>{{0, 26, 200, 40, 0}}));
  EXPECT_EQ(sheets[2].pictures, (std::vector<PlacedPicture>{{0, 16, 200, 112, 1}}));
  EXPECT_EQ(TextsOn(sheets[3]),
            (Texts{"0/0 Doc", "0/50 Name", "100/50 Date", "0/136 foot", "156/136 Page 4 of 4"}));
  EXPECT_EQ(sheets[3].rules[0], (PlacedRule{0, 50, 88, 0.5}));
}

TEST(PaperLayout, NamesAndValuesAreSideBySide) {
  const PaperFields fields = {{"File", "short"}, {"Hash", "0123456789"}};
  // The names and their gap take 32, which leaves room for six letters.
  const std::vector<PaperSheet> sheets = SheetsOf({fields}, 200, 64);
  EXPECT_EQ(TextsOn(sheets[0]),
            (Texts{"0/0 Doc", "0/28 File", "32/28 short", "0/38 Hash", "32/38 012345", "32/48 6789",
                   "0/192 fo", "20/192 Page 1 of 1"}));
}

TEST(PaperLayout, LinesAreBrokenAtBlanksAndLongWordsInside) {
  const auto wrapped = [](std::string_view text) {
    return WrappedText(text, 25, PaperFont::Text, kFonts);
  };
  EXPECT_EQ(wrapped("one two three"), (Texts{"one", "two", "three"}));
  EXPECT_EQ(wrapped("a b c d"), (Texts{"a b c", "d"}));
  EXPECT_EQ(wrapped("a 12345678901"), (Texts{"a", "12345", "67890", "1"}));
  EXPECT_EQ(wrapped("äöüßé!"), (Texts{"äöüßé", "!"}));
  EXPECT_EQ(wrapped("x\n\ny"), (Texts{"x", "", "y"}));
  EXPECT_EQ(wrapped(""), (Texts{""}));
  // Of 4000 characters there are 800 lines.
  const Texts huge = wrapped(std::string(4001, 'x'));
  ASSERT_EQ(huge.size(), 801U);
  EXPECT_EQ(huge.back(), "...");
}

TEST(PaperLayout, NarrowColumnsKeepTheirWidth) {
  const auto shared = [](std::vector<double> wanted, double available) {
    return SharedWidths(wanted, available);
  };
  EXPECT_EQ(shared({10, 100, 50}, 200), (std::vector<double>{10, 100, 50}));
  EXPECT_EQ(shared({10, 100, 50}, 130), (std::vector<double>{10, 70, 50}));
  EXPECT_EQ(shared({10, 100, 50}, 90), (std::vector<double>{10, 40, 40}));
}

// Rules that hold for any table: every row once and in order, nothing below the end of a sheet.
TEST(PaperLayout, OfAnyTableEveryRowIsOnOneSheet) {
  std::minstd_rand random(1);
  const auto below = [&random](unsigned bound) { return random() % bound; };
  for (int turn = 0; turn < 200; ++turn) {
    PaperTable table = TableOfRows(below(60));
    for (std::vector<PaperCell>& row : table.rows) {
      row[1].text = std::string(below(120), 'x');
      row[1].mark = below(4) == 0 ? "?" : "";
    }
    const auto height = static_cast<double>(110 + below(200));
    std::size_t row = 0;
    for (const PaperSheet& sheet : SheetsOf({PaperParagraph{"above"}, table}, height, 80)) {
      for (const PlacedText& text : sheet.texts) {
        row += text.text == "p" + std::to_string(row + 1) ? 1 : 0;
        if (text.font == PaperFont::Text) {
          EXPECT_LE(text.y + 10, height - 16) << "turn " << turn;
          EXPECT_LE(text.x + kFonts.WidthOf(text.text, text.font), 80) << "turn " << turn;
        }
      }
    }
    EXPECT_EQ(row, table.rows.size()) << "turn " << turn;
  }
}

}  // namespace
}  // namespace tarvell
