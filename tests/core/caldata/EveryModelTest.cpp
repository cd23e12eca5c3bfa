// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
#include "support/Dates.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

/// What every model that the program edits has in common, whatever its tables.
namespace tarvell {
namespace {

using test::CalDateOf;
using test::Contains;
using test::Date;
using test::DueDateOf;
using test::ErrorOf;
using test::Lines;

constexpr const char* kFile = "c:\\data\\SN12345";

std::vector<std::string> EditedModels() {
  std::vector<std::string> codes;
  for (const Model& model : kModels) {
    if (model.create != nullptr) {
      codes.emplace_back(model.code);
    }
  }
  return codes;
}

class EveryModel : public testing::TestWithParam<std::string> {
 protected:
  EveryModel() { tree_.MakeFolders("c:\\data"); }

  [[nodiscard]] static std::unique_ptr<cifCaldata> Create() {
    return FindModel(GetParam())->create();
  }

  [[nodiscard]] std::filesystem::path Template() const {
    return tree_.ProgramFolder() / ("Temp" + GetParam());
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_ = Create();
};

// Its header.

TEST_P(EveryModel, ReadsTheHeaderLinesInAnyCaseAndTheFirstWordOfEach) {
  tree_.Write(kFile, Lines({"#model_no : other", "#ser_no : 3318A12345", "#Cal_Date : 20010305",
                            "#CAL_NO : C-0042", "#due_DATE : 20020425", "#comment : done in lab",
                            "#OTHER : x", "!End"}));
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(data_->ModelNumber(), GetParam());
  EXPECT_EQ(data_->SerialNumber(), "3318A12345");
  EXPECT_EQ(data_->CalibrationNumber(), "C-0042");
  EXPECT_EQ(data_->Comment(), "done");
  EXPECT_EQ(CalDateOf(*data_), (Date{2001, "MAR", 5}));
  EXPECT_EQ(DueDateOf(*data_), (Date{2002, "APR", 25}));
}

// Files that cannot be read or written.

TEST_P(EveryModel, RefusesAMissingFileWithItsPath) {
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile("c:\\data\\SN99999"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\data\\SN99999");
}

// Its template.

TEST_P(EveryModel, LoadsItsTemplateForTheNameNewInAnyCase) {
  tree_.InstallTemplate(GetParam());
  const std::string bytes = test::ReadNative(Template());
  for (const char* name : {"new", "NEW", "New", "nEw"}) {
    data_ = Create();
    EXPECT_EQ(data_->LoadCalibrationDataFromFile(name), 0) << name;
    EXPECT_EQ(data_->ModelNumber(), GetParam()) << name;
    EXPECT_EQ(CalDateOf(*data_), (Date{2000, "JAN", 1})) << name;
  }
  data_ = Create();
  EXPECT_EQ(data_->SetInitialDefaultData(), 0);
  EXPECT_EQ(data_->ModelNumber(), GetParam());
  EXPECT_EQ(CalDateOf(*data_), (Date{2000, "JAN", 1}));
  EXPECT_EQ(test::ReadNative(Template()), bytes);
}

TEST_P(EveryModel, NamesAMissingTemplate) {
  for (const Error& error : {ErrorOf([&] { data_->SetInitialDefaultData(); }),
                             ErrorOf([&] { data_->LoadCalibrationDataFromFile("NEW"); })}) {
    EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
    EXPECT_EQ(error.Path(), Template().string());
    EXPECT_TRUE(Contains(error.Text(), "template")) << error.Text();
    EXPECT_TRUE(Contains(error.what(), "Temp" + GetParam())) << error.what();
  }
}

// Its pages.

TEST_P(EveryModel, HasOnePageWithoutNameAndSerialNumberUnlessItIsASet) {
  if (HasPages(*FindModel(GetParam()))) {
    EXPECT_GT(data_->GetCalPageCount(), 1);
    EXPECT_NE(data_->GetCalPageName(0), "");
    return;
  }
  EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
  const std::string empty = tree_.Read(kFile);
  EXPECT_EQ(data_->GetCalPageCount(), 1);
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{1}}) {
    data_->SetCalPageSerial(page, "page serial");
    EXPECT_EQ(data_->GetCalPageName(page), "") << page;
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
  }
  EXPECT_EQ(data_->SerialNumber(), "");
  EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
  EXPECT_EQ(tree_.Read(kFile), empty);
}

INSTANTIATE_TEST_SUITE_P(Models, EveryModel, testing::ValuesIn(EditedModels()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace tarvell
