// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
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
  for (const char* text : {"", "*", "px12a", "Px12A", " PX12A", "PX12A ", "PX12", "PX12AA", "12A",
                           "RT410", "RT999A"}) {
    EXPECT_EQ(FindModel(text), nullptr) << text;
  }
}

TEST(Models, ACellWithACommaIsRefusedAndTheEarlierFileKept) {
  const TestTree tree;
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    SCOPED_TRACE(model.code);
    const char* page = model.code == "RT520A"   ? "#RT521A : 1"
                       : model.code == "RT520C" ? "#RT525A : 1"
                       : model.code == "RT730A" ? "!Series,!"
                                                : "!";
    // A quoted line is read whole.
    const std::string bytes = Lines({page, "\"*50,*1 : 2 : 3\"", "!END", "!", "!End"});
    tree.Write("c:\\data\\SN1", bytes);
    const std::unique_ptr<cifCaldata> data = model.create();
    data->LoadCalibrationDataFromFile("c:\\data\\SN1");
    const Error error = ErrorOf([&] { data->SaveCalibrationDataToFile("c:\\data\\SN1"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.what(), "50,*1")) << error.what();
    EXPECT_EQ(tree.Read("c:\\data\\SN1"), bytes);
  }
}

}  // namespace
}  // namespace tarvell::test
