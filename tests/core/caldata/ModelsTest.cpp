// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "support/Dates.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

TEST(Models, AreInTheOrderOfTheAddMenuWithTheirProperties) {
  struct Row {
    const char* code;
    ModelFamily family;
    const char* frequencyUnit = "";
    const char* presetFrequency = "";
    bool hasOption = false;
  };
  const std::vector<Row> table = {
      {"RT410A", ModelFamily::TestKit},
      {"RT410B", ModelFamily::TestKit},
      {"RT520A", ModelFamily::CapacitorSet},
      {"RT520C", ModelFamily::CapacitorSet, "", "", true},
      {"RT730A", ModelFamily::ResistorSet},
      {"PX11D", ModelFamily::PowerSensor, "MHz"},
      {"PX12A", ModelFamily::PowerSensor, "MHz"},
      {"PX13A", ModelFamily::PowerSensor, "GHz"},
      {"PX11A", ModelFamily::PowerSensor, "MHz"},
      {"PX60G", ModelFamily::StepAttenuator, "", "1.00E05"},
      {"PX60H", ModelFamily::StepAttenuator, "", "5.00E07"},
  };
  ASSERT_EQ(kModels.size(), table.size());
  for (std::size_t i = 0; i < table.size(); ++i) {
    const Model& model = kModels[i];
    EXPECT_EQ(model.code, table[i].code);
    EXPECT_EQ(model.family, table[i].family) << model.code;
    EXPECT_EQ(model.frequencyUnit, table[i].frequencyUnit) << model.code;
    EXPECT_EQ(model.presetFrequency, table[i].presetFrequency) << model.code;
    EXPECT_EQ(model.hasOption, table[i].hasOption) << model.code;
    EXPECT_EQ(model.create == nullptr, model.family == ModelFamily::TestKit) << model.code;
    EXPECT_TRUE(CanAdd(model)) << model.code;
    EXPECT_EQ(HasPages(model), model.code.starts_with("RT5") || model.code == "RT730A");
  }
}

TEST(Models, AModelIsFoundByExactlyItsCode) {
  for (const Model& model : kModels) {
    EXPECT_EQ(FindModel(model.code), &model) << model.code;
  }
  for (const char* text : {"", "*", "px12a", " PX12A", "PX12A ", "PX12", "PX12AA", "RT999A"}) {
    EXPECT_EQ(FindModel(text), nullptr) << text;
  }
}

TEST(Models, ACellWithACommaIsRefused) {
  const TestTree tree;
  tree.MakeFolders("c:\\data");
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    const std::unique_ptr<cifCaldata> data = model.create();
    MemoryGrid grid(HasPages(model) ? 5 : 3);
    AddCells(grid, std::vector<std::string>{"50,*1", "2"});
    data->SetCalData(0, grid);
    const Error error = ErrorOf([&] { data->SaveCalibrationDataToFile("c:\\data\\SN1"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character) << model.code;
    EXPECT_TRUE(Contains(error.what(), "50,*1")) << error.what();
    EXPECT_FALSE(tree.Exists("c:\\data\\SN1"));
  }
}

/// A template that the program ships. Its pages are sorted by their first column, the resistor
/// set's from the first high-frequency page on.
struct Shipped {
  const char* code;
  std::vector<int> rows;  ///< of each page
  std::int16_t firstSortedPage = 0;
};

void PrintTo(const Shipped& shipped, std::ostream* stream) {
  *stream << shipped.code;
}

class ShippedTemplate : public testing::TestWithParam<Shipped> {
 protected:
  ShippedTemplate() : data_(FindModel(GetParam().code)->create()) {
    tree_.InstallTemplate(GetParam().code);
    EXPECT_EQ(data_->LoadCalibrationDataFromFile("NEW"), 0);
  }

  TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
};

double Number(const MemoryGrid& grid, GridRow row, std::int16_t column) {
  return std::strtod(grid.TextOf({row, column}).c_str(), nullptr);
}

TEST_P(ShippedTemplate, IsWholeAndWrittenBackByteForByte) {
  const Model& model = *FindModel(GetParam().code);
  EXPECT_EQ(data_->LoadNotices(), std::vector<std::string>());
  EXPECT_EQ(data_->ModelNumber(), model.code);
  EXPECT_EQ(data_->SerialNumber().empty(), !HasPages(model));
  EXPECT_EQ(data_->CalibrationNumber(), "");
  EXPECT_EQ(data_->Comment(), "");
  EXPECT_EQ(CalDateOf(*data_), (Date{2000, "JAN", 1}));
  EXPECT_EQ(DueDateOf(*data_), (Date{2001, "JAN", 1}));
  tree_.MakeFolders("c:\\out");
  EXPECT_EQ(data_->SaveCalibrationDataToFile("c:\\out\\SN1"), 0);
  EXPECT_EQ(tree_.Read("c:\\out\\SN1"),
            ReadNative(tree_.ProgramFolder() / (std::string("Temp") + GetParam().code)));
}

TEST_P(ShippedTemplate, HasItsRowsSortedAndEachCellAsItsEditorWouldStoreIt) {
  ASSERT_EQ(static_cast<std::size_t>(data_->GetCalPageCount()), GetParam().rows.size());
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    MemoryGrid grid(HasPages(*FindModel(GetParam().code)) ? 5 : 2);
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.RowCount() - 1, GetParam().rows.at(static_cast<std::size_t>(page))) << page;
    for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
      if (page >= GetParam().firstSortedPage && row > kFirstDataRow) {
        EXPECT_GE(Number(grid, row, 0), Number(grid, row + -1, 0)) << page << ", " << row.number;
      }
      // An attenuator's frequencies have more decimals than its editor stores.
      const bool isAttenuator = FindModel(GetParam().code)->family == ModelFamily::StepAttenuator;
      for (std::int16_t column = 1; !isAttenuator && column < grid.ColumnCount(); ++column) {
        const std::string cell = grid.TextOf({row, column});
        std::string unit;
        const std::string edited =
            data_->GetCalibrationDataFormat(page, column, row.number, cell, unit);
        EXPECT_EQ(data_->SetCalibrationDataFormat(page, column, row.number, edited, unit), cell)
            << page << ", " << row.number << ", " << column;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Every, ShippedTemplate,
                         testing::Values(Shipped{"PX11A", {29}}, Shipped{"PX11D", {29}},
                                         Shipped{"PX12A", {20}}, Shipped{"PX13A", {30}},
                                         Shipped{"PX60G", {48}}, Shipped{"PX60H", {39}},
                                         Shipped{"RT520A", {8, 8, 8, 8}},
                                         Shipped{"RT520C", {5, 5, 5, 5}},
                                         Shipped{"RT730A", {9, 6, 7, 7, 8, 8, 8}, 2}),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell::test
