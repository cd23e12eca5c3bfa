// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/files/FileIOCommonModule.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

/// Trees that were not made for the program: each gives a list or a clear message, nothing waits,
/// and nothing outside is touched.
namespace tarvell::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kModel = R"(c:\calfactors\PX12A)";
constexpr const char* kData = R"(c:\calfactors\PX12A\SN1)";
constexpr const char* kStations = "c:\\stations";
constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kWindows = "c:\\windows";
constexpr const char* kIni = R"(c:\windows\tarvell.ini)";

std::string DataOf(const std::string& serial) {
  return Lines({"#MODEL_NO : PX12A", "#SER_NO   : " + serial, "#CAL_DATE : 20010305",
                "#CAL_NO   : C-0042", "#DUE_DATE : 20020305", "#COMMENT  : factory", "!End"});
}

Names Sorted(Names names) {
  std::sort(names.begin(), names.end());
  return names;
}

class HostileTree : public testing::Test {
 protected:
  HostileTree() {
    for (const char* folder : {kModel, kStation, kWindows}) {
      tree_.MakeFolders(folder);
    }
    gCalFiles.fill(CalFileInfo());
  }
  ~HostileTree() override { gCalFiles.fill(CalFileInfo()); }
  HostileTree(const HostileTree&) = delete;
  HostileTree& operator=(const HostileTree&) = delete;

  /// Native path of an entry whose name a path of the program may be unable to hold.
  [[nodiscard]] fs::path In(const char* folder, const std::string& name) const {
    return tree_.Native(folder) / name;
  }

  /// Serial numbers of the headers in the model folder.
  static Names Serials() {
    Names serials;
    ReadCalFileHeaders(kModel,
                       [&](const CalFileInfo& row) { serials.push_back(row.SerialNumber); });
    return serials;
  }

  static void LoadData() { cInstrPX12A().LoadCalibrationDataFromFile(kData); }
  TestTree tree_;
};

// ---- Names.

const Names kOddNames = [] {
  Names names = {"a\nb",        "a\r\nb",    "\"quoted\"", "it's",
                 "a,b",         "#MODEL_NO", "*",          "-rf",
                 " blank ",     "\t",        "\x01\x7F",   "caf\u00E9 \u6E2C\u5B9A",
                 "\xE9\xFF\xC3"};
  names.emplace_back(255, 'n');
  return names;
}();

TEST_F(HostileTree, OddNamesAreListedReadFromTheirOwnFileAndDeleted) {
  Names serials;
  for (const std::string& name : kOddNames) {
    serials.push_back("SERIAL" + std::to_string(serials.size()));
    WriteNative(In(kModel, "SN" + name.substr(0, 253)), DataOf(serials.back()));
    fs::create_directory(In(kStations, name));
    WriteNative(In(kStation, name), "MODEL NUMBER x\r\n");
  }
  EXPECT_EQ(Sorted(Serials()), Sorted(serials));
  for (std::size_t row = 0; row < kOddNames.size(); ++row) {
    cInstrPX12A data;
    data.LoadCalibrationDataFromFile(gCalFiles.at(row).FilePath);
    EXPECT_EQ(data.SerialNumber(), gCalFiles.at(row).SerialNumber);
  }
  Names stations = kOddNames;
  stations.emplace_back("ST1");
  EXPECT_EQ(Sorted(ListStations(kStations)), Sorted(stations));
  EXPECT_EQ(Sorted(ListInstruments(kStation)), Sorted(kOddNames));
  DeleteAllInstrumentFiles(kStation);
  EXPECT_EQ(tree_.Names(kStation), Names{});
  for (const std::string& name : kOddNames) {
    Recycle(std::string(kStations) + "\\" + name);
  }
  EXPECT_EQ(tree_.Names(kStations), (Names{"ST1", "history.tarvell"}));
}

TEST_F(HostileTree, ANameThatAnIndexLineCannotHoldIsReportedAndTheEarlierIndexStays) {
  const std::string index = R"(c:\stations\INDEX)";
  tree_.Write(index, "ST1\r\n");
  for (const std::string name : {"a\nb", "a\rb", "\u6E2C\u5B9A"}) {
    SCOPED_TRACE(name);
    const Error error = ErrorOf([&] { WriteStationIndex(kStations, {"ST1", name}); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_EQ(error.Path(), index);
    EXPECT_TRUE(Contains(error.Text(), "\"" + name + "\"")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), "Rename")) << error.Text();
  }
  EXPECT_EQ(tree_.Read(index), "ST1\r\n");
  // A name in the characters of an older system is written unchanged.
  WriteStationIndex(kStations, {"ST1", "\xE9\xFF\xC3", "caf\u00E9"});
  EXPECT_EQ(tree_.Read(index), "ST1\r\n\xE9\xFF\xC3\r\ncaf\xE9\r\n");
}

// ---- A file that is no data file, and has no end in sight.

class HugeFile : public HostileTree {
 protected:
  /// A file that begins like this and is filled up with NULs, which take no room, to 1 GB.
  void Make(const char* path, std::string_view beginning) const {
    tree_.Write(path, beginning);
    fs::resize_file(tree_.Native(path), 1U << 30U);
  }

  static long PeakMemoryInKB() {
    rusage usage{};
    EXPECT_EQ(::getrusage(RUSAGE_SELF, &usage), 0);
    return usage.ru_maxrss;
  }

  /// Reading ends with an error of this file, and soon: it does not take the file into memory.
  static void ExpectRefusal(const std::function<void()>& read, const std::string& path) {
    const long before = PeakMemoryInKB();
    const Error error = ErrorOf(read);
    EXPECT_EQ(error.Kind(), ErrorKind::NotAFile) << error.what();
    EXPECT_EQ(error.Path(), path);
    EXPECT_TRUE(error.Text().starts_with(
        "Cannot read the file: it is larger than any data file. Put the right file in its place, "
        "then try again."))
        << error.Text();
    EXPECT_LT(PeakMemoryInKB() - before, 32 * 1024);
  }
};

TEST_F(HugeFile, AfterAHeaderIsListedAndIsNoDataFile) {
  Make(kData, DataOf("3318A12345"));
  EXPECT_EQ(Serials(), Names{"3318A12345"});
  ExpectRefusal(&LoadData, kData);
}

TEST_F(HugeFile, InPlaceOfTheIniFileGivesTheDefaults) {
  const std::string lines = Lines(Names(10, "Dir=c:\\elsewhere"));
  std::string calibrationDir;
  std::string stationDir;
  for (const std::string& beginning : {std::string(), lines}) {
    Make(kIni, beginning);
    ReadProfile(calibrationDir, stationDir);
    EXPECT_EQ(calibrationDir, "c:\\calfactors");
    EXPECT_EQ(stationDir, "c:\\stations");
  }
  // After the last item that is read it does no harm.
  Make(kIni, lines + "Dir=c:\\elsewhere\r\n");
  ReadProfile(calibrationDir, stationDir);
  EXPECT_EQ(calibrationDir, "c:\\elsewhere");
  EXPECT_EQ(stationDir, "c:\\elsewhere");
}

// Only what identifies a kit's file is limited.
TEST_F(HugeFile, IsTakenInAsAKitsFileWhenItsSerialNumberIsFound) {
  const std::string source = R"(c:\kit.dat)";
  const fs::path native = tree_.Native(source);
  const std::string target = std::string(kModel) + "\\SN12345";
  tree_.Write(target, "earlier");
  for (const char* beginning : {"", "QZ RT410A\r\n", "QZ RT410A\r\n\"3318A12345"}) {
    Make(source.c_str(), beginning);
    ExpectRefusal([&] { CopyTestKitFile(native, kModel); }, native.string());
  }
  EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  EXPECT_EQ(tree_.Read(target), "earlier");

  std::string kit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\n" + std::string(4194304, 'x');
  // It then takes the place of one as large.
  for (int i = 0; i < 2; ++i) {
    kit += '\n';
    tree_.Write(source, kit);
    CopyTestKitFile(native, kModel);
    EXPECT_TRUE(tree_.Read(target) == kit);
    EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  }
  EXPECT_EQ(Serials(), Names{"3318A12345"});
}

}  // namespace
}  // namespace tarvell::test
