// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/files/FileIOCommonModule.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
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
constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";
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
  static void LoadInstrument() {
    StationInstrument instrument;
    StoredFile file;
    LoadInstrumentFile(kInstrument, instrument, file);
  }

  /// Whether the INI file gives the directories that hold without one.
  static bool ProfileIsDefault() {
    std::string calibrationDir;
    std::string stationDir;
    ReadProfile(calibrationDir, stationDir);
    return calibrationDir == "c:\\calfactors" && stationDir == "c:\\stations";
  }

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

TEST_F(HostileTree, OddNamesOfDataFilesAreReadEachFromItsOwnFile) {
  Names expected;
  for (std::size_t i = 0; i < kOddNames.size(); ++i) {
    const std::string serial = "SERIAL" + std::to_string(i);
    WriteNative(In(kModel, "SN" + kOddNames[i].substr(0, 253)), DataOf(serial));
    expected.push_back(serial);
  }
  EXPECT_EQ(Sorted(Serials()), Sorted(expected));
  for (std::size_t row = 0; row < kOddNames.size(); ++row) {
    cInstrPX12A data;
    data.LoadCalibrationDataFromFile(gCalFiles.at(row).FilePath);
    EXPECT_EQ(data.SerialNumber(), gCalFiles.at(row).SerialNumber);
  }
}

TEST_F(HostileTree, OddNamesOfStationsAndInstrumentsAreListedAndDeleted) {
  for (const std::string& name : kOddNames) {
    fs::create_directory(In(kStations, name));
    WriteNative(In(kStation, name), "MODEL NUMBER x\r\n");
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
  EXPECT_EQ(tree_.Names(kStations), Names{"ST1"});
}

TEST_F(HostileTree, ANameThatAnIndexLineCannotHoldIsReportedAndTheEarlierIndexStays) {
  const std::string rootIndex = R"(c:\stations\INDEX)";
  const std::string index = R"(c:\stations\ST1\INDEX)";
  tree_.Write(rootIndex, "ST1\r\n");
  tree_.Write(index, "INDEX\r\n");
  for (const std::string name : {"a\nb", "a\rb", "\u6E2C\u5B9A"}) {
    SCOPED_TRACE(name);
    const std::vector<std::pair<std::string, std::function<void()>>> writers = {
        {rootIndex,
         [&] {
           WriteStationIndex(kStations, {"ST1", name});
         }},
        {index, [&] {
           WriteStationInstrumentIndex(kStation, {"PX12A", name});
         }}};
    for (const auto& [path, write] : writers) {
      const Error error = ErrorOf(write);
      EXPECT_EQ(error.Kind(), ErrorKind::Character);
      EXPECT_EQ(error.Path(), path);
      EXPECT_TRUE(Contains(error.Text(), "\"" + name + "\"")) << error.Text();
      EXPECT_TRUE(Contains(error.Text(), "Rename")) << error.Text();
    }
  }
  EXPECT_EQ(tree_.Read(rootIndex), "ST1\r\n");
  EXPECT_EQ(tree_.Read(index), "INDEX\r\n");
  // A name in the characters of an older system is written unchanged.
  WriteStationIndex(kStations, {"ST1", "\xE9\xFF\xC3", "caf\u00E9"});
  EXPECT_EQ(tree_.Read(rootIndex), "ST1\r\n\xE9\xFF\xC3\r\ncaf\xE9\r\n");
}

TEST_F(HostileTree, ATreeInUpperCaseWorksAndStaysOne) {
  fs::remove_all(tree_.Native("c:\\"));
  tree_.Write(R"(c:\STATIONS\ST1\PX12A)", "MODEL NUMBER PX12A\r\nCOMMENT old\r\nCAL DATA\r\n");
  tree_.Write(R"(c:\STATIONS\ST1\INDEX)", "old");
  tree_.Write(R"(c:\STATIONS\INDEX)", "old");
  tree_.Write(R"(c:\WINDOWS\TARVELL.INI)", "old");
  WriteNative(tree_.ProgramFolder() / "TEMPPX12A", DataOf("template"));

  cInstrPX12A data;
  EXPECT_NO_THROW(data.SetInitialDefaultData());
  EXPECT_EQ(data.SerialNumber(), "template");
  StationInstrument instrument;
  StoredFile file;
  EXPECT_TRUE(LoadInstrumentFile(R"(c:\stations\st1\px12a)", instrument, file));
  instrument.ModelNumber = "px12a";
  SaveInstrumentFile(R"(c:\stations\st1)", instrument, file);
  WriteStationIndex("c:\\stations", {"ST1"});
  WriteStationInstrumentIndex(R"(c:\stations\st1)", {"PX12A"});
  WriteProfile("c:\\calfactors", "c:\\stations");

  EXPECT_EQ(tree_.Names("c:\\"), (Names{"STATIONS", "WINDOWS"}));
  EXPECT_EQ(tree_.Names("c:\\STATIONS"), (Names{"INDEX", "ST1"}));
  EXPECT_EQ(tree_.Read(R"(c:\STATIONS\INDEX)"), "ST1\r\n");
  EXPECT_EQ(tree_.Names("c:\\STATIONS\\ST1"), (Names{"INDEX", "PX12A"}));
  EXPECT_EQ(tree_.Read(R"(c:\STATIONS\ST1\INDEX)"), "PX12A\r\nINDEX\r\n");
  EXPECT_TRUE(Contains(tree_.Read(R"(c:\STATIONS\ST1\PX12A)"), "MODEL NUMBER px12a\r\n"));
  EXPECT_EQ(tree_.Names("c:\\WINDOWS"), Names{"TARVELL.INI"});
  EXPECT_TRUE(Contains(tree_.Read(R"(c:\WINDOWS\TARVELL.INI)"), "Dir=c:\\calfactors\r\n"));
}

// ---- What is found where a file is expected.

TEST_F(HostileTree, WhatIsNoFileIsReportedInPlaceOfADataFile) {
  struct Oddity {
    const char* target;  ///< of a link; none for a folder
    ErrorKind kind;
    const char* reason;
  };
  const fs::path native = tree_.Native(kData);
  // Opening a pipe without a writer must not make the program wait.
  ASSERT_EQ(::mkfifo((tree_.Root() / "pipe").c_str(), 0600), 0);
  for (const Oddity& oddity :
       {Oddity{"", ErrorKind::NotAFile, "it is a folder, not a file"},
        Oddity{"/dev/zero", ErrorKind::NotAFile, "it is a device or a pipe, not a file"},
        Oddity{"../../../../pipe", ErrorKind::NotAFile, "it is a device or a pipe, not a file"},
        Oddity{"nowhere/file", ErrorKind::NotFound, "does not exist"},
        Oddity{"SN1", ErrorKind::NotAFile, "a link on the way to it leads to itself"}}) {
    SCOPED_TRACE(oddity.reason);
    fs::remove(native);
    if (std::string_view(oddity.target).empty()) {
      fs::create_directory(native);
    } else {
      fs::create_symlink(oddity.target, native);
    }
    for (const auto& [read, path] :
         {std::pair(std::function<void()>([] { Serials(); }), std::string(kData)),
          std::pair(std::function<void()>(&LoadData), std::string(kData)),
          std::pair(std::function<void()>([&] { CopyTestKitFile(native.string(), kModel); }),
                    native.string())}) {
      const Error error = ErrorOf(read);
      EXPECT_EQ(error.Kind(), oddity.kind);
      EXPECT_EQ(error.Path(), path);
      EXPECT_TRUE(Contains(error.Text(), "Cannot read the file: ")) << error.Text();
      EXPECT_TRUE(Contains(error.Text(), oddity.reason)) << error.Text();
    }
  }
}

TEST_F(HostileTree, WhatMayNotBeReadIsReported) {
  tree_.Write(kData, DataOf("1"));
  tree_.Write(kInstrument, "MODEL NUMBER x\r\n");
  tree_.Write(kIni, Lines(Names(11, "Dir=c:\\elsewhere")));
  const OrdinaryUser user(tree_.Root());
  for (const char* path : {kData, kInstrument, kIni}) {
    fs::permissions(tree_.Native(path), fs::perms::none);
  }
  for (const auto& [read, path] :
       {std::pair(std::function<void()>([] { Serials(); }), kData),
        std::pair(std::function<void()>(&LoadData), kData),
        std::pair(std::function<void()>(&LoadInstrument), kInstrument)}) {
    const Error error = ErrorOf(read);
    EXPECT_EQ(error.Kind(), ErrorKind::NoPermission);
    EXPECT_EQ(error.Path(), path);
    EXPECT_TRUE(Contains(error.Text(), "you have no permission")) << error.Text();
  }
  EXPECT_TRUE(ProfileIsDefault());
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
  for (const std::string& beginning : {std::string(), lines}) {
    Make(kIni, beginning);
    EXPECT_TRUE(ProfileIsDefault());
  }
  // After the last item that is read it does no harm.
  Make(kIni, lines + "Dir=c:\\elsewhere\r\n");
  std::string calibrationDir;
  std::string stationDir;
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
    ExpectRefusal([&] { CopyTestKitFile(native.string(), kModel); }, native.string());
  }
  EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  EXPECT_EQ(tree_.Read(target), "earlier");

  std::string kit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\n" + std::string(4194304, 'x');
  // It then takes the place of one as large.
  for (int i = 0; i < 2; ++i) {
    kit += '\n';
    tree_.Write(source, kit);
    CopyTestKitFile(native.string(), kModel);
    EXPECT_TRUE(tree_.Read(target) == kit);
    EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  }
  EXPECT_EQ(Serials(), Names{"3318A12345"});
}

// ---- Very many entries.

TEST_F(HostileTree, ThousandsOfEntriesAreListedAndDeleted) {
  constexpr std::size_t kMany = 3000;
  for (std::size_t i = 0; i < kMany; ++i) {
    WriteNative(In(kStation, "M" + std::to_string(i)), "");
  }
  EXPECT_EQ(ListInstruments(kStation).size(), kMany);
  EXPECT_EQ(ListStations(kStation).size(), kMany);
  DeleteAllInstrumentFiles(kStation);
  EXPECT_EQ(tree_.Names(kStation), Names{});
}

}  // namespace
}  // namespace tarvell::test
