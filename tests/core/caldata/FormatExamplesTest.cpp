// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The examples of docs/file-formats.md: each is read whole and without a notice, and is written
// back byte for byte.

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

}  // namespace

TEST(FormatExamples, DataFilesAreOpenedWithoutNoticeAndWrittenBackByteForByte) {
  for (const Model& model : kModels) {
    const TestTree tree;
    const std::string code(model.code);
    SCOPED_TRACE(code);
    const std::string folder = "c:\\calfactors\\" + code;
    tree.MakeFolders(folder);
    const std::vector<std::filesystem::path> files = FilesIn(Example(code));
    ASSERT_EQ(files.size(), 1U);
    const std::string name = files.front().filename().string();
    const std::string copy = folder + "\\" + name;
    if (model.create == nullptr) {
      CopyTestKitFile(files.front(), folder);
    } else {
      tree.InstallTemplate(code);
      CalFileInfo listed;
      listed.FilePath = files.front().string();
      const OpenedDataSet opened = OpenDataSet(model, listed);
      EXPECT_EQ(opened.notices, std::vector<std::string>());
      EXPECT_TRUE(opened.isNamedBySerial);
      // Without a template it has no notices, either.
      const std::unique_ptr<cifCaldata> data = model.create();
      data->LoadCalibrationDataFromFile(files.front().string());
      EXPECT_EQ(data->LoadNotices(), std::vector<std::string>());
      EXPECT_EQ(data->ModelNumber(), code);
      EXPECT_EQ(DataFileName(data->SerialNumber()), name);
      data->SaveCalibrationDataToFile(copy);
    }
    EXPECT_EQ(tree.Names(folder), std::vector<std::string>{name});
    EXPECT_EQ(tree.Read(copy), ReadNative(files.front()));
  }
}

TEST(FormatExamples, FilesOfStationsAndSettingsAreWrittenBackByteForByte) {
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

  const std::string example = ReadNative(Example("tarvell.ini"));
  tree.Write("c:\\windows\\tarvell.ini", example);
  std::string calibrationDir;
  std::string stationDir;
  ReadProfile(calibrationDir, stationDir);
  std::filesystem::remove(tree.Native("c:\\windows\\tarvell.ini"));
  WriteProfile(calibrationDir, stationDir);
  EXPECT_EQ(tree.Read("c:\\windows\\tarvell.ini"), example);
}

}  // namespace tarvell::test
