// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Models.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

TEST(Models, TheElevenCodesStandInTheOrderOfTheAddMenu) {
  std::vector<std::string_view> codes;
  codes.reserve(kModels.size());
  for (const Model& model : kModels) {
    codes.push_back(model.code);
  }
  EXPECT_EQ(codes,
            (std::vector<std::string_view>{"RT410A", "RT410B", "RT520A", "RT520C", "RT730A",
                                           "PX11D", "PX12A", "PX13A", "PX11A", "PX60G", "PX60H"}));
}

TEST(Models, EveryModelHasItsFamily) {
  const std::vector<ModelFamily> expected = {
      ModelFamily::TestKit,        ModelFamily::TestKit,       ModelFamily::CapacitorSet,
      ModelFamily::CapacitorSet,   ModelFamily::ResistorSet,   ModelFamily::PowerSensor,
      ModelFamily::PowerSensor,    ModelFamily::PowerSensor,   ModelFamily::PowerSensor,
      ModelFamily::StepAttenuator, ModelFamily::StepAttenuator};
  std::vector<ModelFamily> families;
  families.reserve(kModels.size());
  for (const Model& model : kModels) {
    families.push_back(model.family);
  }
  EXPECT_EQ(families, expected);
}

TEST(Models, OnlyPowerSensorsHaveAFrequencyUnit) {
  std::vector<std::string_view> units;
  units.reserve(kModels.size());
  for (const Model& model : kModels) {
    units.push_back(model.frequencyUnit);
  }
  EXPECT_EQ(units, (std::vector<std::string_view>{"", "", "", "", "", "MHz", "MHz", "GHz", "MHz",
                                                  "", ""}));
}

TEST(Models, OnlyStepAttenuatorsHaveAPresetFrequency) {
  std::vector<std::string_view> frequencies;
  frequencies.reserve(kModels.size());
  for (const Model& model : kModels) {
    frequencies.push_back(model.presetFrequency);
  }
  EXPECT_EQ(frequencies, (std::vector<std::string_view>{"", "", "", "", "", "", "", "", "",
                                                        "1.00E05", "5.00E07"}));
}

TEST(Models, AModelIsFoundByExactlyItsCode) {
  for (const Model& model : kModels) {
    EXPECT_EQ(FindModel(model.code), &model) << model.code;
  }
}

TEST(Models, NoModelIsFoundByAnotherText) {
  for (const char* text : {"", "*", "px12a", "Px12A", " PX12A", "PX12A ", "PX12", "PX12AA", "12A",
                           "RT410", "RT999A"}) {
    EXPECT_EQ(FindModel(text), nullptr) << text;
  }
}

TEST(Models, TestKitsAloneHaveNoClass) {
  for (const Model& model : kModels) {
    EXPECT_EQ(model.create == nullptr, model.family == ModelFamily::TestKit) << model.code;
  }
}

TEST(Models, EveryModelCanBeAdded) {
  for (const Model& model : kModels) {
    EXPECT_TRUE(CanAdd(model)) << model.code;
  }
}

TEST(Models, SetsAloneAreEditedPageByPage) {
  std::vector<std::string_view> codes;
  for (const Model& model : kModels) {
    if (HasPages(model)) {
      codes.push_back(model.code);
    }
  }
  EXPECT_EQ(codes, (std::vector<std::string_view>{"RT520A", "RT520C", "RT730A"}));
}

TEST(Models, ACellWithACommaIsRefusedAndTheEarlierFileKept) {
  const test::TestTree tree;
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
    const std::string bytes = test::Lines({page, "\"*50,*1 : 2 : 3\"", "!END", "!", "!End"});
    tree.Write("c:\\data\\SN1", bytes);
    const std::unique_ptr<cifCaldata> data = model.create();
    data->LoadCalibrationDataFromFile("c:\\data\\SN1");
    const Error error = test::ErrorOf([&] { data->SaveCalibrationDataToFile("c:\\data\\SN1"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(test::Contains(error.what(), "50,*1")) << error.what();
    EXPECT_EQ(tree.Read("c:\\data\\SN1"), bytes);
  }
}

}  // namespace
}  // namespace tarvell
