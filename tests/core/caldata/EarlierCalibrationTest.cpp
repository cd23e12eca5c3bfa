// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"
#include "core/history/History.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";

std::string Sensor(const std::string& calibrated, const std::string& number,
                   const std::string& factor) {
  return test::Lines(
      {"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : " + calibrated,
       "#CAL_NO   : " + number, "#DUE_DATE : 20270305", "#COMMENT  : lab", "!", "!",
       "!        :              : Reflection Coefficient",
       "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)",
       "*  50.00:     " + factor + "     :    0.0    :     0.0    :    0.0    :     0.0  ",
       "!End"});
}

class Calibrations : public testing::Test {
 protected:
  Calibrations() {
    tree_.MakeFolders(R"(c:\calfactors\PX12A)");
    for (const std::string& bytes :
         {std::string("old\r\nstyle\r\n01JAN2001\r\n"), Sensor("20240305", "C-1", "98.1"),
          std::string("#no header"), Sensor("20250305", "C-2", "98.2"),
          Sensor("20260305", "C-3", "98.3"), Sensor("20260305", "C-3", "98.4")}) {
      SaveWithHistory(kFile, bytes);
    }
  }

  [[nodiscard]] static std::vector<std::string> NumbersOf(
      const std::vector<Calibration>& calibrations) {
    std::vector<std::string> numbers;
    for (const Calibration& each : calibrations) {
      numbers.push_back(each.header.CalibrationNumber);
    }
    return numbers;
  }

  test::TestTree tree_;
};

TEST_F(Calibrations, AreListedWithTheCurrentOneFirst) {
  const std::vector<Calibration> every = EveryCalibrationOf(kFile);
  EXPECT_EQ(NumbersOf(every), (std::vector<std::string>{"C-3", "C-3", "C-2", "", "C-1", ""}));
  EXPECT_TRUE(every.at(0).isCurrent);
  EXPECT_EQ(every.at(0).header.FilePath, kFile);
  EXPECT_FALSE(every.at(1).isCurrent);
  EXPECT_EQ(NumbersOf(CalibrationsOf(kFile)),
            (std::vector<std::string>{"C-3", "C-3", "C-2", "C-1"}));
}

TEST_F(Calibrations, TheEarlierOneIsTheNewestOfAnotherDay) {
  const std::vector<Calibration> calibrations = CalibrationsOf(kFile);
  const Calibration* earlier = EarlierCalibration(calibrations, {2026, 3, 5});
  ASSERT_NE(earlier, nullptr);
  EXPECT_EQ(earlier->header.CalibrationNumber, "C-2");
  // The date of a new calibration that is not saved yet.
  EXPECT_EQ(EarlierCalibration(calibrations, {2027, 3, 5}), &calibrations.at(0));
  EXPECT_EQ(EarlierCalibration({}, {2026, 3, 5}), nullptr);

  const auto data = LoadCalibration(*FindModel("PX12A"), *earlier);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->CalibrationNumber(), "C-2");
  tree_.Write(earlier->header.FilePath, "");
  EXPECT_EQ(LoadCalibration(*FindModel("PX12A"), *earlier), nullptr);
}

TEST_F(Calibrations, OfAHistoryThatCannotBeReadAreTheFileItself) {
  tree_.Write(R"(c:\other\history.tarvell)", "a file");
  tree_.Write(R"(c:\other\PX12A\SN12345)", Sensor("20260305", "C-3", "98.4"));
  EXPECT_EQ(NumbersOf(CalibrationsOf(R"(c:\other\PX12A\SN12345)")),
            std::vector<std::string>{"C-3"});
  const Error error =
      test::ErrorOf([] { static_cast<void>(EveryCalibrationOf(R"(c:\other\PX12A\SN12345)")); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotKept);
}

}  // namespace
}  // namespace tarvell
