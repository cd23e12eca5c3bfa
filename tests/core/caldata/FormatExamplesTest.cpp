// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The examples of docs/file-formats.md: each is read for what the document says of it, whole and
// without a notice, and is written back byte for byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/caldata/TestKit.h"
#include "core/files/FileNames.h"
#include "core/session/Profiles.h"
#include "core/station/StationFiles.h"
#include "support/SetStage.h"
#include "support/TestTree.h"

namespace tarvell::test {

namespace {

std::filesystem::path Example(std::string_view name) {
  return std::filesystem::path(TARVELL_EXAMPLE_FOLDER) / name;
}

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  return files;
}

/// The models that the program edits, or the test kits.
std::vector<std::string> Models(bool areEdited) {
  std::vector<std::string> models;
  for (const Model& model : kModels) {
    if ((model.create != nullptr) == areEdited) {
      models.emplace_back(model.code);
    }
  }
  return models;
}

std::unique_ptr<cifCaldata> Loaded(std::string_view code, const std::string& file) {
  std::unique_ptr<cifCaldata> data = FindModel(code)->create();
  data->LoadCalibrationDataFromFile(Example(std::string(code) + "/" + file).string());
  return data;
}

}  // namespace

class DataFileExample : public testing::TestWithParam<std::string> {};

TEST_P(DataFileExample, IsOpenedWithoutNoticeAndWrittenBackByteForByte) {
  const TestTree tree;
  const std::string& code = GetParam();
  const std::vector<std::filesystem::path> files = FilesIn(Example(code));
  ASSERT_EQ(files.size(), 1U);
  tree.InstallTemplate(code);
  CalFileInfo listed;
  listed.FilePath = files.front().string();
  const OpenedDataSet opened = OpenDataSet(*FindModel(code), listed);
  EXPECT_EQ(opened.notices, std::vector<std::string>());
  EXPECT_TRUE(opened.isNamedBySerial);

  // Without a template it has no notices, either.
  const std::unique_ptr<cifCaldata> data = Loaded(code, files.front().filename().string());
  EXPECT_EQ(data->LoadNotices(), std::vector<std::string>());
  EXPECT_EQ(data->ModelNumber(), code);
  EXPECT_EQ(DataFileName(data->SerialNumber()), files.front().filename().string());
  tree.MakeFolders("c:\\calfactors");
  data->SaveCalibrationDataToFile("c:\\calfactors\\copy");
  EXPECT_EQ(tree.Read("c:\\calfactors\\copy"), ReadNative(files.front()));
}

INSTANTIATE_TEST_SUITE_P(Formats, DataFileExample, testing::ValuesIn(Models(true)),
                         [](const auto& example) { return example.param; });

TEST(FormatExamples, HaveTheCellsThatTheDocumentDescribes) {
  EXPECT_EQ(Loaded("PX11A", "SN00417")->Comment(), "Pr\u00FCflabor");
  EXPECT_EQ(RowsOf(*Loaded("PX12A", "SN12345"), 0).at(2), "50|100.0");
  EXPECT_EQ(RowsOf(*Loaded("PX60H", "SN00562"), 0).at(2), "0|6.9925E09|0.0512");
  EXPECT_EQ(RowsOf(*Loaded("RT520A", "SN00217"), 0).at(0),
            "1000|1.000214pF|50 ppm|0.00002|0.00010");
  EXPECT_EQ(RowsOf(*Loaded("RT520A", "SN00217"), 0).at(1),
            "10000|1.00019pF|0.010 %|0.00002|0.00010");
  EXPECT_EQ(RowsOf(*Loaded("RT520C", "SN00093"), 3).at(0), "100|10.0041uF|200 ppm|0.00012|0.00010");
  EXPECT_EQ(RowsOf(*Loaded("RT730A", "SN00154"), 0).at(5), "RT736A|100 ohm|100.003 ohm|80 ppm|");
  EXPECT_EQ(RowsOf(*Loaded("RT730A", "SN00154"), 2).at(2),
            "5|10.002 ohm|950.00 ppm|0.153 ohm|0.010 ohm");
}

class KitFileExample : public testing::TestWithParam<std::string> {};

TEST_P(KitFileExample, IsCopiedUnderTheSerialNumberOnItsSecondLine) {
  const TestTree tree;
  const std::string folder = "c:\\calfactors\\" + GetParam();
  tree.MakeFolders(folder);
  const std::vector<std::filesystem::path> files = FilesIn(Example(GetParam()));
  ASSERT_EQ(files.size(), 1U);
  const std::string name = files.front().filename().string();
  CopyTestKitFile(files.front().string(), folder);
  EXPECT_EQ(tree.Names(folder), std::vector<std::string>{name});
  EXPECT_EQ(tree.Read(folder + "\\" + name), ReadNative(files.front()));
}

INSTANTIATE_TEST_SUITE_P(FormatExamples, KitFileExample, testing::ValuesIn(Models(false)),
                         [](const auto& example) { return example.param; });

TEST(FormatExamples, InstrumentAndIndexFilesAreWrittenByteForByte) {
  const TestTree tree;
  tree.MakeFolders("c:\\stations\\BENCH1");
  for (const std::string model : {"PX12A", "PX60H"}) {
    const std::filesystem::path example = Example("stations/BENCH1/" + model);
    StationInstrument instrument;
    StoredFile file;
    ASSERT_TRUE(LoadInstrumentFile(example.string(), instrument, file));
    EXPECT_TRUE(HasValidDueDate(instrument));
    StoredFile copy;
    SaveInstrumentFile("c:\\stations\\BENCH1", instrument, copy);
    EXPECT_EQ(tree.Read("c:\\stations\\BENCH1\\" + model), ReadNative(example));
  }
  WriteStationIndex("c:\\stations", {"BENCH1", "BENCH2"});
  EXPECT_EQ(tree.Read("c:\\stations\\INDEX"), ReadNative(Example("stations/INDEX")));
  WriteStationInstrumentIndex("c:\\stations\\BENCH1", {"PX12A", "PX60H"});
  EXPECT_EQ(tree.Read("c:\\stations\\BENCH1\\INDEX"), ReadNative(Example("stations/BENCH1/INDEX")));
}

TEST(FormatExamples, IniFileIsWrittenBackByteForByte) {
  const TestTree tree;
  const std::string example = ReadNative(Example("tarvell.ini"));
  tree.Write("c:\\windows\\tarvell.ini", example);
  std::string calibrationDir;
  std::string stationDir;
  ReadProfile(calibrationDir, stationDir);
  EXPECT_EQ(calibrationDir, "c:\\calfactors");
  EXPECT_EQ(stationDir, "c:\\stations");
  std::filesystem::remove(tree.Native("c:\\windows\\tarvell.ini"));
  WriteProfile(calibrationDir, stationDir);
  EXPECT_EQ(tree.Read("c:\\windows\\tarvell.ini"), example);
}

}  // namespace tarvell::test
