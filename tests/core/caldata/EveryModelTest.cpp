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

TEST_P(EveryModel, TakesItsOwnCodeOnLoadingWhateverTheFileSays) {
  std::vector<std::string> codes = EditedModels();
  codes.insert(codes.end(), {"another", ""});
  for (const std::string& code : codes) {
    data_ = Create();
    tree_.Write(kFile, Lines({"#MODEL_NO : " + code, "!End"}));
    EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0) << code;
    EXPECT_EQ(data_->ModelNumber(), GetParam()) << code;
  }
}

TEST_P(EveryModel, ReadsBackTheHeaderThatItWrote) {
  data_->SetSerialNumber("serial");
  data_->SetCalDate(2024, "FEB", 29);
  data_->SetCalibrationNumber("number");
  data_->SetDueDate(1904, "DEC", 31);
  data_->SetComment("comment");
  EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);

  data_ = Create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(data_->SerialNumber(), "serial");
  EXPECT_EQ(data_->CalibrationNumber(), "number");
  EXPECT_EQ(data_->Comment(), "comment");
  EXPECT_EQ(CalDateOf(*data_), (Date{2024, "FEB", 29}));
  EXPECT_EQ(DueDateOf(*data_), (Date{1904, "DEC", 31}));
}

// Files that cannot be read or written.

TEST_P(EveryModel, RefusesAMissingFileWithItsPath) {
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile("c:\\data\\SN99999"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\data\\SN99999");
}

TEST_P(EveryModel, RefusesAFolderInPlaceOfItsFileWithItsPath) {
  tree_.MakeFolders(kFile);
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotAFile);
  EXPECT_EQ(error.Path(), kFile);
}

TEST_P(EveryModel, RefusesAnEmptyFileWithItsPath) {
  tree_.Write(kFile, "");
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), ErrorKind::InputPastEnd);
  EXPECT_EQ(error.Path(), kFile);
}

TEST_P(EveryModel, IsNotSavedIntoAMissingFolderNorMakesIt) {
  const Error error = ErrorOf([&] { data_->SaveCalibrationDataToFile("c:\\none\\SN12345"); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), "c:\\none\\SN12345");
  EXPECT_TRUE(Contains(error.what(), "c:\\none\\SN12345")) << error.what();
  EXPECT_EQ(tree_.Names("c:\\"), std::vector<std::string>{"data"});
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

TEST_P(EveryModel, RefusesATemplateOfAnotherModelAndNamesBoth) {
  tree_.InstallTemplate(GetParam());
  std::string bytes = test::ReadNative(Template());
  const std::string other = GetParam() == "PX11A" ? "PX60G" : "PX11A";
  bytes.replace(0, bytes.find("\r\n"), "#MODEL_NO : " + other);
  test::WriteNative(Template(), bytes);
  const Error error = ErrorOf([&] { data_->SetInitialDefaultData(); });
  EXPECT_EQ(error.Kind(), ErrorKind::Template);
  EXPECT_EQ(error.Path(), Template().string());
  EXPECT_TRUE(Contains(error.Text(), other)) << error.Text();
  EXPECT_TRUE(Contains(error.Text(), GetParam())) << error.Text();
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
