// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/caldata/PastedTable.h"
#include "core/caldata/TableRows.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using Lines = std::vector<std::string>;

/// The rows of a table after a paste: the cells before and after it, and the sign of the change.
Lines Shown(const PastedTable& table) {
  static constexpr std::string_view kSigns = "=*+?";
  Lines lines;
  for (const PastedRow& row : table.rows) {
    std::string line(1, kSigns[static_cast<std::size_t>(row.change)]);
    for (const std::string& cell : row.after) {
      line += " " + cell;
    }
    lines.push_back(line + (row.before.empty() ? "" : " <- " + row.before.back()));
  }
  return lines;
}

/// A table of points, and the rules of its model.
class PastingTables : public testing::Test {
 protected:
  void Use(std::string_view model, const std::vector<std::vector<std::string>>& rows) {
    const Model* found = FindModel(model);
    columns_ = {found->frequencyUnit};
    data_ = found->create();
    grid_.Clear(static_cast<std::int16_t>(columns_.Count()));
    for (const auto& row : rows) {
      grid_.InsertRow(EndOf(grid_), row);
    }
  }
  void UseSensorInGHz() {
    Use("PX13A", {{"0.0500", "100.0"}, {"1.0000", "99.0"}, {"12.4000", "98.84"}});
  }

  PastedTable Paste(std::string_view text, std::optional<DecimalSign> sign = std::nullopt) {
    const auto value = static_cast<std::int16_t>(columns_.Count() - 1);
    return PastedTableFrom(
        grid_, text, columns_,
        [&](const std::string& number) {
          return data_->SetCalibrationDataFormat(0, value, 0, number, "None");
        },
        sign);
  }
  void ExpectRefused(std::string_view text, const Lines& parts) {
    SCOPED_TRACE(text);
    const Error error = ErrorOf([&] { (void)Paste(text); });
    for (const std::string& part : parts) {
      EXPECT_TRUE(Contains(error.Text(), part)) << part << " is missing in: " << error.Text();
    }
  }

  PointColumns columns_;
  std::unique_ptr<cifCaldata> data_;
  MemoryGrid grid_;
};

TEST_F(PastingTables, AreToldFromBlocksByTheirColumns) {
  EXPECT_TRUE(IsPointTable("50\t100"));
  EXPECT_TRUE(IsPointTable("Title\n50\t100\n"));
  EXPECT_TRUE(IsPointTable("10\t5E7\t10.01"));
  EXPECT_TRUE(IsPointTable("50;100\n"));
  EXPECT_FALSE(IsPointTable("100\n99\n"));
  EXPECT_FALSE(IsPointTable("100\t \n99\t\n"));
  EXPECT_FALSE(IsPointTable(""));
}

TEST_F(PastingTables, HaveTheColumnsOfAPoint) {
  UseSensorInGHz();
  EXPECT_EQ(Shown(Paste("GHz;%\n0,05;99,5\n2;98,5\n")),
            (Lines{"* 0.0500 99.5 <- 100.0", "? 1.0000 99.0 <- 99.0", "+ 2.0000 98.5",
                   "? 12.4000 98.84 <- 98.84"}));
  ExpectRefused("0.05\t100\t0.6\n1\t99\t0.7\t0.8",
                {"have 4 columns. Copy only those of the frequency and the factor."});
  Use("PX60H", {});
  ExpectRefused("5E7\t10.01", {"have 2 columns: one is missing. Copy those of the setting, the "
                               "frequency and the value, or only the values."});
  ExpectRefused("10\t5E7\t10.01\t0.1", {"Copy only those of the setting, the frequency and the"});
}

TEST_F(PastingTables, PutEachPointInItsPlaceInAnyOrder) {
  UseSensorInGHz();
  // The reference is first, as on many certificates, and once more among the others.
  const PastedTable table =
      Paste("0.05 (Ref.)\t100\r\n18\t97.26\r\n0.01\t99.9\r\n0.05\t100.0\r\n12.4\t98.84\r\n");
  EXPECT_EQ(Shown(table),
            (Lines{"+ 0.0100 99.9", "= 0.0500 100.0 <- 100.0", "? 1.0000 99.0 <- 99.0",
                   "= 12.4000 98.84 <- 98.84", "+ 18.0000 97.3"}));
  EXPECT_EQ(table.Count(PastedRow::Change::Added), 2U);
  EXPECT_EQ(table.Count(PastedRow::Change::Unchanged), 2U);
  EXPECT_EQ(table.Count(PastedRow::Change::Missing), 1U);
  EXPECT_FALSE(table.isUnitNamed);
  EXPECT_EQ(table.frequencyUnit, "GHz");
  // A point that its row would round to another one is that point; its text stays.
  EXPECT_EQ(Shown(Paste("0.050004\t99")).front(), "* 0.0500 99.0 <- 100.0");
  // A table that is not sorted holds a point only once, too.
  Use("PX13A", {{"0.0500", "100.0"}, {"0.0100", "99.0"}});
  EXPECT_EQ(Shown(Paste("0.01\t98")), (Lines{"? 0.0500 100.0 <- 100.0", "* 0.0100 98.0 <- 99.0"}));
}

TEST_F(PastingTables, OfAttenuatorsHaveThreeColumns) {
  Use("PX60H", {{"0", "5.00E07", "0.0000"}, {"10", "5.00E07", "10.0100"}});
  EXPECT_EQ(Shown(Paste("Setting\tFrequency / MHz\tAttenuation [dB]\n"
                        "10 dB\t1000\t10.02\n10\t50\t10.01\n20\t1.23456789E9 Hz\t-1,020.5\n")),
            (Lines{"? 0 5.00E07 0.0000 <- 0.0000", "= 10 5.00E07 10.0100 <- 10.0100",
                   "+ 10 1.00E09 10.0200", "+ 20 1.2346E09 -1020.5000"}));
  // Once pasted, a point is known, although its row shows fewer digits.
  Use("PX60H", {{"20", "1.2346E09", "20.5000"}});
  EXPECT_EQ(Shown(Paste("20\t1.23456789E9\t20.5")), Lines{"= 20 1.2346E09 20.5000 <- 20.5000"});
  ExpectRefused(
      "10.5\t5E7\t1\n-1\t5E7\t2\n40000\t5E7\t3\n10\t-5E7\t1\n",
      {"Line 1, column 1: \"10.5\" is not a setting", "Line 2, column 1: \"-1\" is below zero",
       "Line 3, column 1: \"40000\" is not a setting", "Line 4, column 2: \"-5E7\" is below zero"});
}

TEST_F(PastingTables, HaveTheUnitsOfTheirCaptionsAndCells) {
  struct Case {
    std::string_view text;
    std::string_view point;
  };
  const std::vector<Case> cases = {
      {"f in Hz\tFactor\n2E9\t99", "2.0000"},
      {"Frequency [kHz]\tK / %\n2000000\t99", "2.0000"},
      {"\nFrequency\tFactor\nMHZ\t%\n2000\t99", "2.0000"},
      {"\"Frequency\n(\"\"GHz\"\")\"\tK at 50 MHz [%]\n2\t99", "2.0000"},
      {"Frequency\t\n2\t99", "2.0000"},
      {"MHz\t%\n2 GHz\t99.0 %", "2.0000"},
      {"2000\u202FMHz (ref)\t99%", "2.0000"}};
  for (const Case& one : cases) {
    Use("PX13A", {});
    EXPECT_EQ(Shown(Paste(one.text)), Lines{"+ " + std::string(one.point) + " 99.0"}) << one.text;
  }
  Use("PX12A", {});
  EXPECT_EQ(Shown(Paste("GHz\t%\n1.005\t99\n12.4\t98")),
            (Lines{"+ 1005.00 99.0", "+ 12400.0 98.0"}));
  EXPECT_TRUE(Paste("GHz\t%\n1\t99").isUnitNamed);
  ExpectRefused("Frequency [THz]\tFactor\n1\t99", {"Line 1, column 1", "THz"});
  ExpectRefused("Frequency [mHz]\tFactor\n1\t99", {"Line 1, column 1", "mHz"});
  EXPECT_EQ(Shown(Paste("mhz\t%\n12400\t98")), (Lines{"+ 12400.0 98.0"}));
  ExpectRefused("GHz or MHz\tFactor\n1\t99", {"Line 1, column 1", "both GHz and MHz"});
  ExpectRefused("Factor [%]\tFrequency [GHz]\n99\t1", {"Line 1, column 1", "Line 1, column 2"});
  ExpectRefused("1\t99 dB\n2 %\t98", {"Line 1, column 2: \"99 dB\" is not in %",
                                      "Line 2, column 1: \"2 %\" is not in Hz, kHz, MHz or GHz"});
}

TEST_F(PastingTables, AreReadWithTheOneDecimalSignThatFits) {
  UseSensorInGHz();
  EXPECT_EQ(Shown(Paste("1,000\t99,5\n12,400\t98\n")).back(), "* 12.4000 98.0 <- 98.84");
  EXPECT_EQ(Paste("1,000\t99,5").sign, DecimalSign::Comma);
  EXPECT_EQ(Shown(Paste("1\u202F000,5 MHz\t99")).at(2), "+ 1.0005 99.0");
  EXPECT_EQ(Shown(Paste("12.400\t98.0")).back(), "* 12.4000 98.0 <- 98.84");
  EXPECT_FALSE(ReadTwoWays("1,000\t99,5", columns_));
  EXPECT_FALSE(ReadTwoWays("1\t99\n2\t98", columns_));
  ExpectRefused("0.05\t99,5\n1,5\t98.0\n2\t97.0", {"\"99,5\" is not a number with a decimal point",
                                                   "\"1,5\" is not a number with a decimal point"});
}

TEST_F(PastingTables, ThatCanBeReadInTwoWaysAreNotGuessed) {
  UseSensorInGHz();
  const std::string text = "1\t99\n12.400 GHz\t98";
  const std::optional<TwoReadings> unclear = ReadTwoWays(text, columns_);
  ASSERT_TRUE(unclear);
  EXPECT_EQ(unclear->written, "12.400");
  EXPECT_EQ(unclear->sign, DecimalSign::Point);
  EXPECT_EQ(unclear->ifDecimals, "12.4");
  EXPECT_EQ(unclear->ifThousands, "12400");
  EXPECT_EQ(ReadTwoWays("12,400\t98", columns_)->sign, DecimalSign::Comma);
  ExpectRefused(text, {"\"12.400\" can be read as 12.4 or as 12400"});
  EXPECT_EQ(Shown(Paste(text, DecimalSign::Point)).back(), "* 12.4000 98.0 <- 98.84");
  EXPECT_EQ(Shown(Paste(text, DecimalSign::Comma)).back(), "+ 12400.0000 98.0");
}

TEST_F(PastingTables, AreRefusedWholeAndNameEachCellThatCannotBeTaken) {
  UseSensorInGHz();
  ExpectRefused(
      "Point\tFactor\n\nO.05\t99.0\n1\n-1\t98\n0.00001\t98\n2\t0.01\n3\t1E999\n"
      "4\t97\n4.0\t96\n5\t97\t0.5\n1E300\t1\n6\t97.\n",
      {"Line 3, column 1: \"O.05\" is not a number", "Line 4, column 2: there is no value",
       "Line 5, column 1: \"-1\" is below zero", "Line 6, column 1: \"0.00001\" is too small",
       "Line 7, column 2: \"0.01\" would be stored as \"0.0\"",
       "Line 8, column 2: \"1E999\" is too large",
       "Line 10: line 9 has the same point with another value", "Line 11: it has 3 columns",
       "These cannot be taken either: column 1 in line 12; column 2 in line 13.",
       "copy and paste again"});
  ExpectRefused("Frequency\tFactor\n", {"no numbers to paste"});
}

// The box has room for 2,000 characters.
TEST_F(PastingTables, NameEveryWrongCellBrieflyHoweverManyThereAre) {
  UseSensorInGHz();
  std::string text;
  for (int line = 1; line <= 51; ++line) {
    text += line == 30 || line == 31 ? "x\ty\n" : line == 40 ? "1\t2\t3\n" : "1\tn. a.\n";
  }
  const std::string message = ErrorOf([&] { (void)Paste(text); }).Text();
  EXPECT_LT(message.size(), 1500U);
  EXPECT_TRUE(Contains(message, "Line 8, column 2: ")) << message;
  EXPECT_TRUE(Contains(message,
                       "These cannot be taken either: line 40; column 1 in lines 30, 31; column 2 "
                       "in lines 9 to 39, 41 to 51.\n"))
      << message;
}

TEST_F(PastingTables, FillAtMostTheRowsOfTheFile) {
  const auto points = [](std::size_t first, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
      text += std::to_string(first + i) + "\t99.5\n";
    }
    return text;
  };
  UseSensorInGHz();
  const PastedTable full = Paste(points(100, kTableRows));
  EXPECT_FALSE(full.HasPlace(false));
  EXPECT_TRUE(full.HasPlace(true));
  EXPECT_TRUE(Paste(points(100, kTableRows - 3)).HasPlace(false));
  ExpectRefused(points(100, kTableRows + 1), {"has 52 points", "room for 51"});
  ExpectRefused(points(1, 205), {"has 205 points"});
}

// What the program copies, it takes back: nothing changes, whatever texts the table holds.
TEST_F(PastingTables, OfTheTableItselfChangeNothing) {
  Use("PX13A", {{"0.05", "100"}, {"1.0000", "98.844"}, {"2E0", "1E2"}});
  EXPECT_EQ(Shown(Paste("Frequency  [GHz]\tCalibration factor[%]\n0.05\t100\n1.0000\t98.844\n"
                        "2E0\t1E2")),
            (Lines{"= 0.05 100 <- 100", "= 1.0000 98.844 <- 98.844", "= 2E0 1E2 <- 1E2"}));
}

}  // namespace
}  // namespace tarvell
