// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "caldata/MemoryGrid.h"
#include "caldata/Models.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

struct SensorTemplate {
  const char* code;
  double first;
  double last;
  double reference;
};

void PrintTo(const SensorTemplate& sensor, std::ostream* stream) {
  *stream << sensor.code;
}

/// A shipped template, loaded.
class SensorTemplates : public testing::TestWithParam<SensorTemplate> {
 protected:
  void SetUp() override {
    tree_.InstallTemplate(GetParam().code);
    const Model* model = FindModel(GetParam().code);
    ASSERT_NE(model, nullptr);
    ASSERT_NE(model->create, nullptr);
    data_ = model->create();
    ASSERT_EQ(data_->LoadCalibrationDataFromFile("NEW"), 0);
    data_->GetCalData(0, grid_);
    ASSERT_GE(grid_.RowCount(), 2);
  }

  [[nodiscard]] double Frequency(std::int16_t row) const {
    return std::strtod(grid_.CellText(row, 0).c_str(), nullptr);
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
  MemoryGrid grid_;
};

TEST_P(SensorTemplates, IsWrittenBackByteForByte) {
  tree_.MakeFolders("c:\\out");
  EXPECT_EQ(data_->SaveCalibrationDataToFile("c:\\out\\SN1"), 0);
  EXPECT_EQ(tree_.Read("c:\\out\\SN1"),
            test::ReadNative(tree_.ProgramFolder() / (std::string("Temp") + GetParam().code)));
}

TEST_P(SensorTemplates, HoldsTheModelAndTheStartDatesAndNothingElseInItsHeader) {
  EXPECT_EQ(data_->ModelNumber(), GetParam().code);
  EXPECT_EQ(data_->SerialNumber(), "");
  EXPECT_EQ(data_->CalibrationNumber(), "");
  EXPECT_EQ(data_->Comment(), "");
  std::int16_t year = 0;
  std::string month;
  std::int16_t day = 0;
  data_->GetCalDate(year, month, day);
  EXPECT_EQ(year, 2000);
  EXPECT_EQ(month, "JAN");
  EXPECT_EQ(day, 1);
  data_->GetDueDate(year, month, day);
  EXPECT_EQ(year, 2001);
  EXPECT_EQ(month, "JAN");
  EXPECT_EQ(day, 1);
}

TEST_P(SensorTemplates, IsSortedUpwardOverTheRangeOfTheSensor) {
  EXPECT_EQ(Frequency(1), GetParam().first);
  for (std::int16_t row = 2; row < grid_.RowCount(); ++row) {
    EXPECT_GT(Frequency(row), Frequency(static_cast<std::int16_t>(row - 1))) << "row " << row;
  }
  EXPECT_EQ(Frequency(static_cast<std::int16_t>(grid_.RowCount() - 1)), GetParam().last);
}

TEST_P(SensorTemplates, HasTheReferencePointOnceAndEveryFactorAt100) {
  int references = 0;
  for (std::int16_t row = 1; row < grid_.RowCount(); ++row) {
    references += Frequency(row) == GetParam().reference ? 1 : 0;
    EXPECT_EQ(grid_.CellText(row, 1), "100.0") << "row " << row;
  }
  EXPECT_EQ(references, 1);
}

TEST_P(SensorTemplates, LeavesRoomForFurtherPoints) {
  EXPECT_LE(grid_.RowCount(), 1 + 30);
}

INSTANTIATE_TEST_SUITE_P(Shipped, SensorTemplates,
                         testing::Values(SensorTemplate{"PX11A", 0.1, 18000, 50},
                                         SensorTemplate{"PX11D", 0.1, 18000, 50},
                                         SensorTemplate{"PX12A", 0.1, 4200, 50},
                                         SensorTemplate{"PX13A", 0.0001, 26.5, 0.05}),
                         [](const auto& test) { return std::string(test.param.code); });

struct AttenuatorTemplate {
  const char* code;
  int lastSetting;
  std::vector<std::string> mainFrequencies;  ///< among those of every setting
};

void PrintTo(const AttenuatorTemplate& attenuator, std::ostream* stream) {
  *stream << attenuator.code;
}

/// A shipped template of a step attenuator, loaded.
class AttenuatorTemplates : public testing::TestWithParam<AttenuatorTemplate> {
 protected:
  void SetUp() override {
    tree_.InstallTemplate(GetParam().code);
    const Model* model = FindModel(GetParam().code);
    ASSERT_NE(model, nullptr);
    ASSERT_NE(model->create, nullptr);
    data_ = model->create();
    ASSERT_EQ(data_->LoadCalibrationDataFromFile("NEW"), 0);
    data_->GetCalData(0, grid_);
    ASSERT_GE(grid_.RowCount(), 2);
  }

  [[nodiscard]] double Number(std::int16_t row, std::int16_t column) const {
    return std::strtod(grid_.CellText(row, column).c_str(), nullptr);
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
  MemoryGrid grid_;
};

TEST_P(AttenuatorTemplates, IsWrittenBackByteForByte) {
  tree_.MakeFolders("c:\\out");
  EXPECT_EQ(data_->SaveCalibrationDataToFile("c:\\out\\SN1"), 0);
  EXPECT_EQ(tree_.Read("c:\\out\\SN1"),
            test::ReadNative(tree_.ProgramFolder() / (std::string("Temp") + GetParam().code)));
}

TEST_P(AttenuatorTemplates, HoldsTheModelAndTheStartDatesAndNothingElseInItsHeader) {
  EXPECT_EQ(data_->ModelNumber(), GetParam().code);
  EXPECT_EQ(data_->SerialNumber(), "");
  EXPECT_EQ(data_->CalibrationNumber(), "");
  EXPECT_EQ(data_->Comment(), "");
  std::int16_t year = 0;
  std::string month;
  std::int16_t day = 0;
  data_->GetCalDate(year, month, day);
  EXPECT_EQ(year, 2000);
  EXPECT_EQ(month, "JAN");
  EXPECT_EQ(day, 1);
  data_->GetDueDate(year, month, day);
  EXPECT_EQ(year, 2001);
  EXPECT_EQ(month, "JAN");
  EXPECT_EQ(day, 1);
}

TEST_P(AttenuatorTemplates, IsSortedBySettingAndThenByFrequency) {
  for (std::int16_t row = 2; row < grid_.RowCount(); ++row) {
    const auto before = static_cast<std::int16_t>(row - 1);
    EXPECT_LT(std::make_pair(Number(before, 0), Number(before, 1)),
              std::make_pair(Number(row, 0), Number(row, 1)))
        << "row " << row;
  }
}

TEST_P(AttenuatorTemplates, HasTheSameFrequenciesAtEverySettingInSteps) {
  std::set<std::pair<std::string, std::string>> points;
  std::set<std::string> frequencies;
  for (std::int16_t row = 1; row < grid_.RowCount(); ++row) {
    points.emplace(grid_.CellText(row, 0), grid_.CellText(row, 1));
    frequencies.insert(grid_.CellText(row, 1));
  }
  std::set<std::pair<std::string, std::string>> expected;
  for (int setting = 0; setting <= GetParam().lastSetting; setting += 10) {
    for (const std::string& frequency : frequencies) {
      expected.emplace(std::to_string(setting), frequency);
    }
  }
  EXPECT_EQ(points, expected);
  for (const std::string& frequency : GetParam().mainFrequencies) {
    EXPECT_EQ(frequencies.count(frequency), 1U) << frequency;
  }
}

TEST_P(AttenuatorTemplates, HasOnlyFrequenciesThatThePointDialogOffers) {
  const std::set<std::string> offered = {"1.00E05", "3.00E05", "1.00E06", "1.00E07",  "5.00E07",
                                         "1.00E08", "1.00E09", "3.00E09", "6.9925E09"};
  for (std::int16_t row = 1; row < grid_.RowCount(); ++row) {
    EXPECT_EQ(offered.count(grid_.CellText(row, 1)), 1U) << grid_.CellText(row, 1);
  }
}

TEST_P(AttenuatorTemplates, HasTheSettingWithFourDecimalsAsEveryValue) {
  for (std::int16_t row = 1; row < grid_.RowCount(); ++row) {
    EXPECT_EQ(grid_.CellText(row, 2), grid_.CellText(row, 0) + ".0000") << "row " << row;
  }
}

TEST_P(AttenuatorTemplates, FitsIntoTheTable) {
  EXPECT_LE(grid_.RowCount(), 1 + 51);
}

INSTANTIATE_TEST_SUITE_P(Shipped, AttenuatorTemplates,
                         testing::Values(AttenuatorTemplate{"PX60G", 110, {"1.00E05"}},
                                         AttenuatorTemplate{"PX60H", 120, {"5.00E07", "1.00E09"}}),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
