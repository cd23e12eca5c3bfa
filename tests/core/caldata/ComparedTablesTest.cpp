// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/caldata/ComparedTables.h"

namespace tarvell {
namespace {

/// The rows of both tables, as "earlier|later" of their values.
std::vector<std::string> Compared(const TableRowList& earlier, const TableRowList& later,
                                  std::size_t keys) {
  std::vector<std::string> rows;
  for (const auto& [old, now] : ComparedRows(earlier, later, keys)) {
    rows.push_back((old.empty() ? "" : old.back()) + "|" + (now.empty() ? "" : now.back()));
  }
  return rows;
}

TEST(ComparedTables, AreAlignedByTheirPoints) {
  const TableRow captions = {"Frequency", "Factor"};
  const TableRowList earlier = {
      captions, {"10.00", "a"}, {"20.00", "b"}, {"30.00", "c"}, {"50", "e"}};
  const TableRowList later = {captions, {"10.0", "A"}, {"15.00", "N"}, {"30.00", "C"}, {"60", "F"}};
  EXPECT_EQ(Compared(earlier, later, 1),
            (std::vector<std::string>{"a|A", "|N", "b|", "c|C", "|F", "e|"}));
  EXPECT_EQ(Compared({}, later, 1), (std::vector<std::string>{"|A", "|N", "|C", "|F"}));
}

TEST(ComparedTables, OfAttenuatorsAreAlignedBySettingAndFrequency) {
  const TableRow captions = {"Setting", "Frequency", "Value"};
  EXPECT_EQ(Compared({captions, {"10", "1.0", "a"}, {"10", "2.0", "b"}},
                     {captions, {"10", "2.0", "B"}, {"20", "2.0", "C"}}, 2),
            (std::vector<std::string>{"a|", "b|B", "|C"}));
}

TEST(ComparedTables, GiveTheDifferenceOfTheNumbersInACell) {
  EXPECT_EQ(CellDifference("98.0", "98.80"), "+0.80");
  EXPECT_EQ(CellDifference("1.00002pF", "1.00001pF"), "-0.00001pF");
  EXPECT_EQ(CellDifference("-0.5 ppm", "0.5 ppm"), "+1.0 ppm");
  EXPECT_EQ(CellDifference("98.0", "98.0"), "");
  EXPECT_EQ(CellDifference("950 ppm", "0.1 %"), "+0.005 %");
  EXPECT_EQ(CellDifference("0.1 %", "950 ppm"), "-50 ppm");
  EXPECT_EQ(CellDifference("10 ppm", "10 pF"), "");
  EXPECT_EQ(CellDifference("", "98.0"), "");
  EXPECT_EQ(CellDifference("none", "98.0"), "");
}

}  // namespace
}  // namespace tarvell
