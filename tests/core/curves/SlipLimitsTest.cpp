// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/curves/SlipLimits.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

const Model& Sensor() {
  return *FindModel("PX12A");
}

TEST(SlipLimits, ALaboratorySetsThoseOfAModel) {
  const SlipLimits limits = ParseSlipLimits(
      "\xEF\xBB\xBF; our sensors\r\n[px12a]\r\n\r\n Percent=0.5\t; see below\r\n"
      "percent = 0.4\nabsolute\t= 0.2\n[RT520A]\nuncertainties = 2\nuncertainty percent = 10");
  EXPECT_EQ(limits.Of(Sensor()), (SlipLimit{0.2, 0.4, 0, 0}));
  EXPECT_EQ(limits.Of(*FindModel("RT520A")), (SlipLimit{0, 0, 2, 10}));
  EXPECT_EQ(limits.Of(*FindModel("PX60G")), DefaultLimit(*FindModel("PX60G")));
  // A remark at the end of a line is part of its value.
  ASSERT_EQ(limits.problems.size(), 1U);
  EXPECT_EQ(limits.problems[0],
            "Line 4 of limits.tarvell was not used: \"Percent=0.5 ; see below\"; a limit is a "
            "number that is not below zero, with a point for the decimals.");
}

TEST(SlipLimits, ALineThatCannotBeUsedChangesNothing) {
  const std::vector<std::string> texts = {"percent = 2",
                                          "[PX99Z]\npercent = 2",
                                          "[PX12A\n[PX12A]\nper cent = 2",
                                          "[PX12A]\npercent 2",
                                          "[PX12A]\npercent = -1",
                                          "[PX12A]\npercent = 1,5",
                                          "[PX12A]\npercent = 1E999",
                                          "[PX12A]\npercent =",
                                          "]\n[\n=\n\xFF"};
  for (const std::string& text : texts) {
    const SlipLimits limits = ParseSlipLimits(text);
    EXPECT_EQ(limits.Of(Sensor()), DefaultLimit(Sensor())) << text;
    EXPECT_FALSE(limits.problems.empty()) << text;
  }
}

TEST(SlipLimits, AreInTheRootOfTheCalibrationTree) {
  const TestTree tree;
  EXPECT_EQ(LoadSlipLimits("c:\\calfactors").Of(Sensor()), DefaultLimit(Sensor()));
  EXPECT_TRUE(LoadSlipLimits("c:\\calfactors").problems.empty());
  tree.Write("c:\\calfactors\\limits.tarvell", "[PX12A]\r\npercent = 3\r\n");
  EXPECT_EQ(LoadSlipLimits("c:\\calfactors").Of(Sensor()).percent, 3);
}

TEST(SlipLimits, AFileThatCannotBeReadIsReported) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors\\limits.tarvell");
  const SlipLimits limits = LoadSlipLimits("c:\\calfactors");
  ASSERT_EQ(limits.problems.size(), 1U);
  EXPECT_TRUE(limits.problems[0].starts_with("limits.tarvell cannot be read: "));
  EXPECT_EQ(limits.Of(Sensor()), DefaultLimit(Sensor()));
}

}  // namespace
}  // namespace tarvell::test
