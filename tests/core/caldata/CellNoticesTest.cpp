// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CellNotices.h"
#include "core/caldata/ValuesToEnter.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "core/caldata/cInstrRT730A.h"
#include "support/ErrorOf.h"

namespace tarvell::test {
namespace {

TEST(CellNotices, ACellIsTakenApartAroundItsNumber) {
  using Parts = std::array<std::string, 3>;
  const std::vector<std::pair<const char*, Parts>> cells = {{"-0.5000", {"", "-0.5000", ""}},
                                                            {"12.346 ppm", {"", "12.346", " ppm"}},
                                                            {"Ls/-0.5 nH", {"Ls/", "-0.5", " nH"}},
                                                            {"-.05 %", {"", "-.05", " %"}},
                                                            {"pF", {"pF", "", ""}}};
  for (const auto& [text, expected] : cells) {
    const CellParts parts = PartsOfCell(text);
    EXPECT_EQ(
        (Parts{std::string(parts.before), std::string(parts.number), std::string(parts.after)}),
        expected);
  }
}

/// What was typed, and what the cell stores.
using TypedCells = std::vector<std::pair<const char*, const char*>>;

TEST(CellNotices, ANumberThatIsRoundedToTheDigitsOfItsCellIsNotReported) {
  const TypedCells cells = {// typed, stored
                            {"98.57", "98.6"},    {"98.55", "98.6"},
                            {" 98.5 ", "98.5"},   {"98.5\r\n", "98.5"},
                            {"9.85E1", "98.5"},   {"+5", "5.0"},
                            {"-5", "-5.0"},       {"0", "0.0"},
                            {"0.0", "-0.0"},      {"1.5pF", "1.50000pF"},
                            {"12 ppm", "12 ppm"}, {"0.1%", "0.1000 %"},
                            {"Ls/5", "Ls/5 nH"},  {"5.25 nH", "Ls/5.25 nH"},
                            {"12.5", "13 ppm"}};
  for (const auto& [typed, stored] : cells) {
    EXPECT_EQ(StoredDifferently(typed, stored), "") << typed;
  }
}

TEST(CellNotices, WhatIsStoredAsAnotherNumberIsReportedWithWhatTheCellHolds) {
  const TypedCells cells = {// typed, stored
                            {"98,57", "98.0"}, {"abc", "0.0"},    {"98.5x", "98.5"},
                            {"9 8", "98.0"},   {"", "0.0"},       {"0.0030", "0 ppm"},
                            {"-0.04", "-0.0"}, {"98.57", "98.5"}, {"1E15", "1000000000000000.0"},
                            {"5", "pF"},       {"5", ""},         {"1.5nF", "1.50000pF"}};
  for (const auto& [typed, stored] : cells) {
    const std::string notice = StoredDifferently(typed, stored);
    EXPECT_TRUE(Contains(notice, "the cell holds \"" + std::string(stored) + "\""))
        << typed << ": " << notice;
  }
  EXPECT_EQ(StoredDifferently("98,57", "98.0"),
            "\"98,57\" is not a number; the cell holds \"98.0\". Type digits with a point for the "
            "decimals.");
  EXPECT_EQ(StoredDifferently("0.0030", "0 ppm"),
            "\"0.0030\" is too small for the decimals of this cell; the cell holds \"0 ppm\".");
}

TEST(CellNotices, APointThatIsNotWhatWasTypedIsReported) {
  EXPECT_EQ(PointTakenDifferently("1.75", "1750.00"), "");
  EXPECT_EQ(PointTakenDifferently(" 5E9 ", "5.00E09"), "");
  EXPECT_EQ(PointTakenDifferently("", ""), "");
  EXPECT_EQ(PointTakenDifferently("1,75", "1000.00"),
            "\"1,75\" is not a number; \"1000.00\" was added. Type digits with a point for the "
            "decimals.");
  EXPECT_EQ(PointTakenDifferently("abc", ""),
            "\"abc\" is not a number; no point was added. Type digits with a point for the "
            "decimals.");
}

/// A cell of a set, and what the file gives back for it.
struct Stored {
  std::int16_t page;
  std::int16_t column;
  std::int16_t row;
  const char* shown;
  const char* readBack;
};

void ExpectReadBack(const cifCaldata& data, const std::vector<Stored>& cells) {
  for (const Stored& cell : cells) {
    SCOPED_TRACE(cell.shown);
    EXPECT_EQ(data.CellReadBack(cell.page, {{cell.row}, cell.column}, cell.shown), cell.readBack);
  }
}

TEST(CellNotices, ADifferenceFromTheFileIsReportedWithBothTexts) {
  EXPECT_EQ(ReadDifferently("12.000 ppm", "12.000 ppm"), "");
  EXPECT_EQ(ReadDifferently("12.346 ppm", "12.000 ppm"),
            "The cell shows \"12.346 ppm\", and will be read back as \"12.000 ppm\".");
  EXPECT_EQ(ReadDifferently("0.0030 %", "30 ppm"),
            "The cell shows \"0.0030 %\", and will be read back as \"30 ppm\", the same value.");
}

TEST(CellNotices, ACellComesBackAsTheFileOfItsModelGivesIt) {
  // Set A gives ppm back in whole ones, and long percentages as ppm.
  ExpectReadBack(cInstrRT520A(), {{0, 2, 2, "12.346 ppm", "12.000 ppm"},
                                  {0, 2, 2, "12.000 ppm", "12.000 ppm"},
                                  {0, 2, 1, "12 ppm", "12 ppm"},
                                  {0, 2, 1, "0.0050 %", "50 ppm"},
                                  {0, 2, 2, "0.005 %", "0.005 %"},
                                  {0, 2, 2, "10.005 %", "100050.000 ppm"},
                                  {0, 2, 6, "0.05 %", "0.05 %"},
                                  {0, 1, 1, "1.000012pF", "1.000012pF"},
                                  {3, 3, 8, "0.0001", "0.0001"},
                                  {0, 4, 1, "0.00002", "0.00002"},
                                  {0, 0, 1, "1000", "1000"}});
  // Set C gives every percentage back as ppm.
  ExpectReadBack(cInstrRT520C(), {{0, 2, 1, "12 ppm", "12 ppm"},
                                  {0, 2, 1, "0.0012 %", "12 ppm"},
                                  {2, 1, 3, "1.00001uF", "1.00001uF"}});
  // The resistor set gives ppm back with one decimal.
  ExpectReadBack(cInstrRT730A(), {{0, 3, 1, "0.04 ppm", "0 ppm"},
                                  {0, 3, 1, "12.35 ppm", "12.4 ppm"},
                                  {0, 3, 1, "12.3 ppm", "12.3 ppm"},
                                  {0, 3, 1, "0.12 %", "0.12 %"},
                                  {0, 3, 1, "100.25 %", "1002500 ppm"},
                                  {2, 2, 1, "12.35 ppm", "12.40 ppm"},
                                  {2, 2, 1, "0.10 %", "0.10 %"},
                                  {1, 2, 1, "0.5 nH", "0.5 nH"}});
  ExpectReadBack(cInstrPX12A(), {{0, 1, 1, "98.0", "98.0"}});
}

TEST(CellNotices, OfAHeaderValueOnlyTheFirstWordComesBack) {
  for (const char* whole : {"", "done", "C-0042", "a#b", "\u00dcber"}) {
    EXPECT_EQ(HeaderReadDifferently("Comment", whole), "") << whole;
  }
  for (const char* cut : {"done in lab", "done:x", "done,x", " done", "done "}) {
    EXPECT_EQ(HeaderReadDifferently("Comment", cut),
              "Comment: only \"done\" will be read back when the file is opened again.")
        << cut;
  }
  // Also of more words than a line has place for.
  EXPECT_EQ(HeaderReadDifferently("Comment", "a b c d e f g h i j k l m n o p q r s t u v"),
            "Comment: only \"a\" will be read back when the file is opened again.");
  EXPECT_EQ(HeaderReadDifferently("Comment", ":"),
            "Comment: only \"\" will be read back when the file is opened again.");
  EXPECT_EQ(NameReadDifferently("Calibration number", "C 1"),
            HeaderReadDifferently("Calibration number", "C 1"));
  EXPECT_EQ(NameReadDifferently("Calibration number", "C 1,2"),
            "Calibration number: the data file cannot keep a comma here. Remove it before OK.");
}

TEST(CellNotices, ADayThatDoesNotExistIsReported) {
  const std::vector<std::array<std::string, 4>> cases = {
      // day, month, year, what is reported after "Due: "
      {"28", "FEB", "2001", ""},
      {" 29 ", "FEB", "2000", ""},
      {"31", "FEB", "2001", "the day 31 FEB 2001 does not exist. It is saved unchanged."},
      {"0", "JAN", "2001", "the day 0 JAN 2001 does not exist. It is saved unchanged."},
      {"1", "", "2001", "the day 1 (no month) 2001 does not exist. It is saved unchanged."},
      // These are refused when they are saved.
      {"x", "FEB", "2001", ""},
      {"31", "FEB", "", ""},
      {"31", "FEB", "99999", ""}};
  for (const auto& [day, month, year, reported] : cases) {
    EXPECT_EQ(MissingDay("Due", day, month, year), reported.empty() ? "" : "Due: " + reported);
  }
  for (const char* year : {"20", "999", "20275", "-2001"}) {
    EXPECT_EQ(MissingDay("Due", "5", "MAY", year),
              "Due: the year " + std::string(year) +
                  " does not have four digits. Another date will be read back from the file.");
  }
}

TEST(ValuesToEnter, AreReportedInOneSentenceForEachOrigin) {
  EXPECT_EQ(RemarkOn({}), "");
  EXPECT_EQ(RemarkOn({.defaults = 1}), "1 value is a default that nobody has entered.");
  EXPECT_EQ(RemarkOn({.defaults = 18, .isCalDateDefault = true, .isDueDateDefault = true}),
            "18 values and both dates are defaults that nobody has entered.");
  EXPECT_EQ(RemarkOn({.defaults = 1, .isDueDateDefault = true}),
            "1 value and the due date are defaults that nobody has entered.");
  EXPECT_EQ(RemarkOn({.isCalDateDefault = true}),
            "The calibration date is a default that nobody has entered.");
  EXPECT_EQ(RemarkOn({.isCalDateDefault = true, .isDueDateDefault = true, .earlier = 1}),
            "Both dates are defaults that nobody has entered. 1 value is taken over, not entered.");
  EXPECT_EQ(RemarkOn({.earlier = 2}), "2 values are taken over, not entered.");
}

}  // namespace
}  // namespace tarvell::test
