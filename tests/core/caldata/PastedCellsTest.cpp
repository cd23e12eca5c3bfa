// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/PastedCells.h"
#include "support/ErrorOf.h"

namespace tarvell {

void PrintTo(const PastedCell& cell, std::ostream* stream) {
  *stream << cell.cell.row.number << ", " << cell.cell.column << ": " << cell.text;
}

namespace {

using test::Contains;
using test::ErrorOf;
using Cells = std::vector<PastedCell>;
using namespace std::string_view_literals;

/// A table of four rows: a column that cannot be edited, one in pF, one in nH after "Ls/", and
/// one that takes no values.
class Pasting : public testing::Test {
 protected:
  Pasting() : grid_(4) {
    grid_.SetCellText(0, 0, "Frequency");
    grid_.SetRowCount(5);
  }

  Cells Paste(std::string_view text, std::int16_t row = 1, std::int16_t column = 1) {
    return PastedCells(grid_, {{{row}, column}, 1}, text,
                       {.affixes = &Affixes,
                        .store =
                            [](Cell cell, const std::string& number) {
                              const CellAffixes affixes = *Affixes(cell);
                              return std::string(affixes.before) + number +
                                     std::string(affixes.after);
                            }},
                       line_);
  }

  static std::optional<CellAffixes> Affixes(Cell cell) {
    switch (cell.column) {
      case 1:
        return CellAffixes{"", "pF"};
      case 2:
        return CellAffixes{"Ls/", " nH"};
      default:
        return std::nullopt;
    }
  }

  /// The error has this kind, is about this line, and its text holds these parts.
  void ExpectRefused(std::string_view text, ErrorKind kind, std::size_t line,
                     const std::vector<std::string>& parts, std::int16_t row = 1,
                     std::int16_t column = 1) {
    SCOPED_TRACE(text);
    line_ = 99;
    const Error error = ErrorOf([&] { (void)Paste(text, row, column); });
    EXPECT_EQ(error.Kind(), kind);
    EXPECT_EQ(line_, line);
    for (const std::string& part : parts) {
      EXPECT_TRUE(Contains(error.Text(), part)) << part << " is missing in: " << error.Text();
    }
  }

  MemoryGrid grid_;
  std::size_t line_ = 99;
};

TEST_F(Pasting, PutsOneLineIntoEachRowDownwards) {
  const Cells expected = {{{{2}, 1}, "1pF"}, {{{3}, 1}, "-2.5pF"}, {{{4}, 1}, "3E2pF"}};
  for (const std::string_view text :
       {"1\n-2.5\n3E2"sv, "1\n-2.5\n3E2\n"sv, "1\r\n-2.5\r\n3E2\r\n"sv, "1\r\n-2.5\n3E2"sv}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Paste(text, 2), expected);
    EXPECT_EQ(line_, 0U);
  }
}

TEST_F(Pasting, LeavesOutBlanksAndUnitsAndPutsFurtherColumnsToTheRight) {
  EXPECT_EQ(Paste(" 1 \t2\n2pF\tLs/5.2 nH\n3 pF\t5.4nH"), (Cells{{{{1}, 1}, "1pF"},
                                                                 {{{1}, 2}, "Ls/2 nH"},
                                                                 {{{2}, 1}, "2pF"},
                                                                 {{{2}, 2}, "Ls/5.2 nH"},
                                                                 {{{3}, 1}, "3pF"},
                                                                 {{{3}, 2}, "Ls/5.4 nH"}}));
}

TEST_F(Pasting, RefusesWhatIsNoNumberAndNamesTheLineAndTheValue) {
  for (const std::string value :
       {"abc", "12,5", "1 000", "12 nH", "pF", "12%", "1E", "-", "1\r2"}) {
    ExpectRefused("7\n8\n" + value + "\n9", ErrorKind::Type, 3, {"is not a number (in pF)"});
  }
  ExpectRefused("7\n12,5", ErrorKind::Type, 2, {"\"12,5\""});
  ExpectRefused("Capacitance\n1", ErrorKind::Type, 1,
                {"\"Capacitance\" is not a number (in pF). If it is a caption, copy only the "
                 "values below it."});
  ExpectRefused("1\n2 98.5", ErrorKind::Type, 2, {"Copy several columns from a spreadsheet"});
  ExpectRefused("1\0"sv, ErrorKind::Type, 1, {"\"1 \""});
  // The beginning of a long value is shown.
  ExpectRefused(std::string(1000, 'x'), ErrorKind::Type, 1,
                {"\"" + std::string(40, 'x') + "...\""});
}

TEST_F(Pasting, RefusesAGapOtherCharactersAndANumberThatIsTooLarge) {
  ExpectRefused("1\n\n3", ErrorKind::Type, 2, {"no value"});
  ExpectRefused("1\n  \n3", ErrorKind::Type, 2, {"no value"});
  ExpectRefused("1\n2\n\n", ErrorKind::Type, 3, {"no value"});
  ExpectRefused("1\t", ErrorKind::Type, 1, {"no value"});
  ExpectRefused("1\n\u22122", ErrorKind::Character, 2, {"\u2212", "cannot be stored"});
  // One that the files can hold is no part of a number all the same.
  ExpectRefused("1\n\u00b52", ErrorKind::Type, 2, {"is not a number", "\u00b52"});
  ExpectRefused("1\n2\n9E999", ErrorKind::Type, 3, {"\"9E999\"", "too large"});
}

TEST_F(Pasting, RefusesAValueThatWouldBeStoredAsZero) {
  const PasteRules wholePpm = {.affixes =
                                   [](Cell /*cell*/) {
                                     return CellAffixes{"", " ppm"};
                                   },
                               .store =
                                   [](Cell /*cell*/, const std::string& number) {
                                     return (number == "0.003" || number == "0.0" ? "0" : number) +
                                            " ppm";
                                   }};
  const Error error = ErrorOf([&] {
    (void)PastedCells(grid_, {{{1}, 1}, 1}, "7\n0.003", wholePpm, line_);
  });
  EXPECT_EQ(error.Kind(), ErrorKind::Type);
  EXPECT_EQ(line_, 2U);
  EXPECT_TRUE(Contains(error.Text(), "\"0.003\" would be stored as \"0 ppm\"")) << error.Text();
  EXPECT_EQ(PastedCells(grid_, {{{1}, 1}, 1}, "0.0", wholePpm, line_),
            (Cells{{{{1}, 1}, "0 ppm"}}));
}

TEST_F(Pasting, RefusesWhatDoesNotFitTheTable) {
  ExpectRefused("1\n2\n3", ErrorKind::Index, 0, {"3 lines", "2 rows"}, 3);
  EXPECT_EQ(Paste("1\n2\n", 3).size(), 2U);
  ExpectRefused("1\n1\t2\t3", ErrorKind::Index, 2, {"3 columns", "2 from"}, 1, 2);
  ExpectRefused("1", ErrorKind::Index, 0, {"\"Frequency\"", "cannot be edited"}, 1, 0);
  ExpectRefused("1", ErrorKind::Index, 1, {"no value in this place"}, 1, 3);
  ExpectRefused("1\t2\t3", ErrorKind::Index, 1, {"no value in this place"});
  ExpectRefused("", ErrorKind::Type, 0, {"no text"});
  grid_.SetRowCount(1);
  ExpectRefused("1", ErrorKind::Index, 0, {"no current cell"});
  ExpectRefused("1", ErrorKind::Index, 0, {"no current cell"}, 0);
}

}  // namespace
}  // namespace tarvell
