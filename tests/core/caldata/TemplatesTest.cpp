// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "support/Dates.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

/// A shipped template, loaded into a new object of its model.
class ShippedTemplate {
 public:
  explicit ShippedTemplate(const std::string& code) : data_(FindModel(code)->create()) {
    tree_.InstallTemplate(code);
    EXPECT_EQ(data_->LoadCalibrationDataFromFile("NEW"), 0);
  }

 protected:
  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
};

// All of them.

class EveryTemplate : public testing::TestWithParam<const char*>, public ShippedTemplate {
 protected:
  EveryTemplate() : ShippedTemplate(GetParam()) {}
};

TEST_P(EveryTemplate, IsWrittenBackByteForByte) {
  tree_.MakeFolders("c:\\out");
  EXPECT_EQ(data_->SaveCalibrationDataToFile("c:\\out\\SN1"), 0);
  EXPECT_EQ(tree_.Read("c:\\out\\SN1"),
            test::ReadNative(tree_.ProgramFolder() / (std::string("Temp") + GetParam())));
}

TEST_P(EveryTemplate, HoldsTheModelAndTheStartDatesInItsHeader) {
  EXPECT_EQ(data_->ModelNumber(), GetParam());
  EXPECT_EQ(data_->CalibrationNumber(), "");
  EXPECT_EQ(data_->Comment(), "");
  EXPECT_EQ(test::CalDateOf(*data_), (test::Date{2000, "JAN", 1}));
  EXPECT_EQ(test::DueDateOf(*data_), (test::Date{2001, "JAN", 1}));
}

INSTANTIATE_TEST_SUITE_P(Shipped, EveryTemplate,
                         testing::Values("RT520A", "RT520C", "RT730A", "PX11A", "PX11D", "PX12A",
                                         "PX13A", "PX60G", "PX60H"),
                         [](const auto& test) { return std::string(test.param); });

// Power sensors.

struct SensorTemplate {
  const char* code;
  double first;
  double last;
  double reference;
};

void PrintTo(const SensorTemplate& sensor, std::ostream* stream) {
  *stream << sensor.code;
}

class SensorTemplates : public testing::TestWithParam<SensorTemplate>, public ShippedTemplate {
 protected:
  SensorTemplates() : ShippedTemplate(GetParam().code) {}

  void SetUp() override {
    data_->GetCalData(0, grid_);
    ASSERT_GE(grid_.RowCount(), 2);
  }

  [[nodiscard]] double Frequency(std::int16_t row) const {
    return std::strtod(grid_.CellText(row, 0).c_str(), nullptr);
  }

  MemoryGrid grid_;
};

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

INSTANTIATE_TEST_SUITE_P(Shipped, SensorTemplates,
                         testing::Values(SensorTemplate{"PX11A", 0.1, 18000, 50},
                                         SensorTemplate{"PX11D", 0.1, 18000, 50},
                                         SensorTemplate{"PX12A", 0.1, 4200, 50},
                                         SensorTemplate{"PX13A", 0.0001, 26.5, 0.05}),
                         [](const auto& test) { return std::string(test.param.code); });

// Step attenuators.

class AttenuatorTemplates : public testing::TestWithParam<const char*>, public ShippedTemplate {
 protected:
  AttenuatorTemplates() : ShippedTemplate(GetParam()) {}

  void SetUp() override {
    data_->GetCalData(0, grid_);
    ASSERT_GE(grid_.RowCount(), 2);
  }

  [[nodiscard]] double Number(std::int16_t row, std::int16_t column) const {
    return std::strtod(grid_.CellText(row, column).c_str(), nullptr);
  }

  MemoryGrid grid_;
};

TEST_P(AttenuatorTemplates, IsSortedBySettingAndThenByFrequency) {
  for (std::int16_t row = 2; row < grid_.RowCount(); ++row) {
    const auto before = static_cast<std::int16_t>(row - 1);
    EXPECT_LT(std::make_pair(Number(before, 0), Number(before, 1)),
              std::make_pair(Number(row, 0), Number(row, 1)))
        << "row " << row;
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

INSTANTIATE_TEST_SUITE_P(Shipped, AttenuatorTemplates, testing::Values("PX60G", "PX60H"),
                         [](const auto& test) { return std::string(test.param); });

// Sets of standards.

struct SetTemplate {
  const char* code;
  std::vector<std::string> pages;
  std::vector<std::int16_t> rows;  ///< of each page
};

void PrintTo(const SetTemplate& set, std::ostream* stream) {
  *stream << set.code;
}

class SetTemplates : public testing::TestWithParam<SetTemplate>, public ShippedTemplate {
 protected:
  SetTemplates() : ShippedTemplate(GetParam().code) {}

  void SetUp() override {
    ASSERT_EQ(static_cast<std::size_t>(data_->GetCalPageCount()), GetParam().pages.size());
    for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
      grids_.push_back(std::make_unique<MemoryGrid>(std::int16_t{5}));
      data_->GetCalData(page, *grids_.back());
    }
  }

  [[nodiscard]] const MemoryGrid& Grid(std::int16_t page) const {
    return *grids_.at(static_cast<std::size_t>(page));
  }

  [[nodiscard]] double Number(std::int16_t page, std::int16_t row, std::int16_t column) const {
    return std::strtod(Grid(page).CellText(row, column).c_str(), nullptr);
  }

  [[nodiscard]] static bool IsResistorSet() { return std::string(GetParam().code) == "RT730A"; }

  std::vector<std::unique_ptr<MemoryGrid>> grids_;
};

TEST_P(SetTemplates, HasTheRowsOfEachPage) {
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    const auto index = static_cast<std::size_t>(page);
    EXPECT_EQ(data_->GetCalPageName(page), GetParam().pages[index]);
    EXPECT_EQ(Grid(page).RowCount() - 1, GetParam().rows[index]) << GetParam().pages[index];
  }
}

TEST_P(SetTemplates, IsSortedUpwardByFrequency) {
  for (std::int16_t page = IsResistorSet() ? 2 : 0; page < data_->GetCalPageCount(); ++page) {
    EXPECT_GT(Number(page, 1, 0), 0) << page;
    for (std::int16_t row = 2; row < Grid(page).RowCount(); ++row) {
      EXPECT_GT(Number(page, row, 0), Number(page, static_cast<std::int16_t>(row - 1), 0))
          << page << ", row " << row;
    }
  }
}

TEST_P(SetTemplates, HoldsEveryCellAsItsEditorWouldStoreIt) {
  int cells = 0;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    for (std::int16_t row = 1; row < Grid(page).RowCount(); ++row) {
      const std::int16_t columns =
          IsResistorSet() && page < 2 ? static_cast<std::int16_t>(4 - page) : std::int16_t{5};
      for (std::int16_t column = 1; column < columns; ++column) {
        const std::string cell = Grid(page).CellText(row, column);
        EXPECT_NE(cell, "") << page << ", row " << row << ", column " << column;
        std::string unit;
        const std::string edited = data_->GetCalibrationDataFormat(page, column, row, cell, unit);
        EXPECT_EQ(data_->SetCalibrationDataFormat(page, column, row, edited, unit), cell)
            << page << ", row " << row << ", column " << column;
        ++cells;
      }
    }
  }
  EXPECT_GT(cells, 70);
}

INSTANTIATE_TEST_SUITE_P(
    Shipped, SetTemplates,
    testing::Values(SetTemplate{"RT520A", {"RT521A", "RT522A", "RT523A", "RT524A"}, {8, 8, 8, 8}},
                    // With option 001.
                    SetTemplate{"RT520C", {"RT525A", "RT526A", "RT527A", "RT528A"}, {5, 5, 5, 5}},
                    SetTemplate{"RT730A",
                                {"DC Registance", "Indactance / Parallel Capacitance",
                                 "HF Calibration at 10ohm", "HF Calibration at 100ohm",
                                 "HF Calibration at 1kohm", "HF Calibration at 10kohm",
                                 "HF Calibration at 100kohm"},
                                {9, 6, 7, 7, 8, 8, 8}}),
    [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
