// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT730A.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/SaveFile.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

/// Trees that nobody meant for the program: each gives a list or a clear message, nothing waits,
/// and nothing outside is touched.
namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::Lines;
using test::OrdinaryUser;
using test::TestTree;

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kRoot = "c:\\calfactors";
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

  static Names ModelFolders() {
    Names names;
    ListModelFolders(kRoot, names);
    EXPECT_EQ(names.back(), "");
    names.pop_back();
    return names;
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

const Names kOddNames = {"a\nb",
                         "a\r\nb",
                         "\"quoted\"",
                         "it's",
                         "a,b",
                         "#MODEL_NO",
                         "*",
                         "-rf",
                         " blank ",
                         "\t",
                         "\x01\x7F",
                         "caf\u00E9 \u6E2C\u5B9A",
                         "\xE9\xFF\xC3",
                         std::string(255, 'n')};

TEST_F(HostileTree, OddNamesOfDataFilesAreReadEachFromItsOwnFile) {
  Names expected;
  for (std::size_t i = 0; i < kOddNames.size(); ++i) {
    const std::string serial = "SERIAL" + std::to_string(i);
    test::WriteNative(In(kModel, "SN" + kOddNames[i].substr(0, 253)), DataOf(serial));
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
    test::WriteNative(In(kStation, name), "MODEL NUMBER x\r\n");
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
}

TEST_F(HostileTree, ANameInTheCharactersOfAnOlderSystemIsWrittenUnchanged) {
  WriteStationIndex(kStations, {"ST1", "\xE9\xFF\xC3", "caf\u00E9"});
  EXPECT_EQ(tree_.Read(R"(c:\stations\INDEX)"), "ST1\r\n\xE9\xFF\xC3\r\ncaf\xE9\r\n");
}

TEST_F(HostileTree, NamesThatDifferOnlyInCaseAreTwoOfEach) {
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", DataOf("UPPER"));
  tree_.Write(R"(c:\calfactors\PX12A\sn1)", DataOf("lower"));
  tree_.Write(R"(c:\calfactors\px12a\SN2)", DataOf("other folder"));
  tree_.Write(R"(c:\stations\ST1\PX12A)", "UPPER");
  tree_.Write(R"(c:\stations\ST1\px12a)", "lower");
  tree_.Write(R"(c:\stations\st1\PX12A)", "other station");
  EXPECT_EQ(ModelFolders(), (Names{"PX12A", "PX12A"}));
  EXPECT_EQ(Sorted(Serials()), (Names{"UPPER", "lower"}));
  for (const auto& [name, serial] : {std::pair("SN1", "UPPER"), std::pair("sn1", "lower")}) {
    const std::int16_t row = FindCalFile(serial);
    ASSERT_LT(row, 2);
    EXPECT_EQ(gCalFiles.at(static_cast<std::size_t>(row)).FilePath,
              std::string(kModel) + "\\" + name);
  }
  EXPECT_EQ(Sorted(ListStations(kStations)), (Names{"ST1", "st1"}));
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"PX12A", "px12a"}));
  DeleteInstrumentFile(kStation, "px12a");
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  SaveFile(R"(c:\calfactors\PX12A\sn1)", "new");
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN1)"), DataOf("UPPER"));
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\sn1)"), "new");
}

TEST(HostileTrees, ATreeInUpperCaseWorksAndStaysOne) {
  const TestTree tree;
  tree.Write(R"(c:\CALFACTORS\PX12A\SN1)", DataOf("3318A00001"));
  tree.Write(R"(c:\STATIONS\ST1\PX12A)", "MODEL NUMBER PX12A\r\nCOMMENT old\r\nCAL DATA\r\n");
  tree.Write(R"(c:\STATIONS\ST1\INDEX)", "old");
  tree.Write(R"(c:\STATIONS\INDEX)", "old");
  tree.Write(R"(c:\WINDOWS\TARVELL.INI)", "old");
  test::WriteNative(tree.ProgramFolder() / "TEMPPX12A", DataOf("template"));

  Names models;
  ListModelFolders("c:\\calfactors", models);
  EXPECT_EQ(models, (Names{"PX12A", ""}));
  EXPECT_EQ(ReadCalFileHeaders("c:\\calfactors\\px12a"), 1);
  EXPECT_EQ(gCalFiles[0].SerialNumber, "3318A00001");
  cInstrPX12A data;
  EXPECT_NO_THROW(data.SetInitialDefaultData());
  EXPECT_EQ(data.SerialNumber(), "template");
  data.SaveCalibrationDataToFile(R"(c:\calfactors\px12a\sn1)");
  EXPECT_EQ(ListStations("c:\\stations"), Names{"ST1"});
  StationInstrument instrument;
  StoredFile file;
  EXPECT_TRUE(LoadInstrumentFile(R"(c:\stations\st1\px12a)", instrument, file));
  EXPECT_EQ(instrument.Comment, "old");
  instrument.ModelNumber = "px12a";
  SaveInstrumentFile(R"(c:\stations\st1)", instrument, file);
  WriteStationIndex("c:\\stations", {"ST1"});
  WriteStationInstrumentIndex(R"(c:\stations\st1)", {"PX12A"});
  WriteProfile("c:\\calfactors", "c:\\stations");

  EXPECT_EQ(tree.Names("c:\\"), (Names{"CALFACTORS", "STATIONS", "WINDOWS"}));
  EXPECT_EQ(tree.Names("c:\\CALFACTORS"), Names{"PX12A"});
  EXPECT_EQ(tree.Names("c:\\CALFACTORS\\PX12A"), Names{"SN1"});
  EXPECT_TRUE(Contains(tree.Read(R"(c:\CALFACTORS\PX12A\SN1)"), "#SER_NO   : template\r\n"));
  EXPECT_EQ(tree.Names("c:\\STATIONS"), (Names{"INDEX", "ST1"}));
  EXPECT_EQ(tree.Read(R"(c:\STATIONS\INDEX)"), "ST1\r\n");
  EXPECT_EQ(tree.Names("c:\\STATIONS\\ST1"), (Names{"INDEX", "PX12A"}));
  EXPECT_EQ(tree.Read(R"(c:\STATIONS\ST1\INDEX)"), "PX12A\r\nINDEX\r\n");
  EXPECT_TRUE(Contains(tree.Read(R"(c:\STATIONS\ST1\PX12A)"), "MODEL NUMBER px12a\r\n"));
  EXPECT_EQ(tree.Names("c:\\WINDOWS"), Names{"TARVELL.INI"});
  EXPECT_TRUE(Contains(tree.Read(R"(c:\WINDOWS\TARVELL.INI)"), "Dir=c:\\calfactors\r\n"));
}

// ---- What is found where a file is expected.

struct Oddity {
  const char* what;
  std::function<void(const fs::path& path)> make;
  ErrorKind reading;   ///< kind of the error of reading it
  std::string reason;  ///< part of what is reported then
  /// Part of what a save there reports; none where it succeeds.
  std::optional<std::string> savingReason;
};

void PrintTo(const Oddity& oddity, std::ostream* stream) {
  *stream << oddity.what;
}

void LinkTo(const fs::path& target, const fs::path& path) {
  fs::create_symlink(target, path);
}

const std::string kIsFolder = "it is a folder, not a file";
const std::string kIsDevice = "it is a device or a pipe, not a file";
const std::string kIsMissing = "does not exist";
const std::string kIsLoop = "a link on the way to it leads to itself";

const std::vector<Oddity> kOddities = {
    {"Folder", [](const fs::path& path) { fs::create_directory(path); }, ErrorKind::NotAFile,
     kIsFolder, kIsFolder},
    {"Pipe", [](const fs::path& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); },
     ErrorKind::NotAFile, kIsDevice, kIsDevice},
    {"DeviceWithoutEnd", [](const fs::path& path) { LinkTo("/dev/zero", path); },
     ErrorKind::NotAFile, kIsDevice, std::nullopt},
    {"FullDevice", [](const fs::path& path) { LinkTo("/dev/full", path); }, ErrorKind::NotAFile,
     kIsDevice, "the disk is full"},
    {"LinkToNowhere", [](const fs::path& path) { LinkTo("nowhere/file", path); },
     ErrorKind::NotFound, kIsMissing, kIsMissing},
    {"LinkToItself", [](const fs::path& path) { LinkTo(path.filename(), path); },
     ErrorKind::NotAFile, kIsLoop, kIsLoop},
};

class HostileEntry : public HostileTree, public testing::WithParamInterface<Oddity> {
 protected:
  static void ExpectUnreadable(const std::function<void()>& read, const std::string& path) {
    const Error error = ErrorOf(read);
    EXPECT_EQ(error.Kind(), GetParam().reading) << error.what();
    EXPECT_EQ(error.Path(), path);
    EXPECT_TRUE(Contains(error.Text(), "Cannot read the file: ")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), GetParam().reason)) << error.Text();
  }
};

TEST_P(HostileEntry, InPlaceOfADataFileIsReported) {
  GetParam().make(tree_.Native(kData));
  ExpectUnreadable([] { Serials(); }, kData);
  ExpectUnreadable(&LoadData, kData);
  const std::string native = tree_.Native(kData).string();
  ExpectUnreadable([&] { CopyTestKitFile(native, kModel); }, native);
}

TEST_P(HostileEntry, InPlaceOfAFileThatIsSavedIsReportedAndStays) {
  const fs::path native = tree_.Native(kData);
  GetParam().make(native);
  const fs::file_type type = fs::symlink_status(native).type();
  if (GetParam().savingReason) {
    const Error error = ErrorOf([] { SaveFile(kData, "new"); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kData);
    EXPECT_TRUE(Contains(error.Text(), *GetParam().savingReason)) << error.Text();
  } else {
    EXPECT_NO_THROW(SaveFile(kData, "new"));
  }
  EXPECT_EQ(fs::symlink_status(native).type(), type);
  EXPECT_EQ(tree_.Names(kModel), Names{"SN1"});
}

TEST_P(HostileEntry, IsDeletedItselfAndNothingElse) {
  GetParam().make(tree_.Native(kInstrument));
  test::WriteNative(In(kStation, "other"), "kept");
  const bool isFolder =
      fs::symlink_status(tree_.Native(kInstrument)).type() == fs::file_type::directory;
  DeleteAllInstrumentFiles(kStation);
  // Clearing removes only ordinary files.
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  if (!isFolder) {
    DeleteInstrumentFile(kStation, "PX12A");
    EXPECT_EQ(tree_.Names(kStation), Names{});
  }
  EXPECT_TRUE(fs::exists("/dev/zero") && fs::exists("/dev/full"));
}

INSTANTIATE_TEST_SUITE_P(Of, HostileEntry, testing::ValuesIn(kOddities),
                         [](const auto& test) { return std::string(test.param.what); });

TEST_F(HostileTree, DeletingFollowsNoLinkOutOfTheTree) {
  tree_.Write(R"(c:\outside\file)", "kept");
  tree_.Write(R"(c:\outside\folder\file)", "kept too");
  const fs::path outside = tree_.Native(R"(c:\outside)");
  const auto expectOutside = [&] {
    EXPECT_EQ(tree_.Read(R"(c:\outside\file)"), "kept");
    EXPECT_EQ(tree_.Read(R"(c:\outside\folder\file)"), "kept too");
    EXPECT_EQ(tree_.Names(R"(c:\outside)"), (Names{"file", "folder"}));
  };
  const auto makeLinks = [&] {
    LinkTo(outside / "file", In(kStation, "file"));
    LinkTo("../../outside/file", In(kStation, "relative"));
    LinkTo(outside / "folder", In(kStation, "folder"));
    fs::create_directory(In(kStation, "deep"));
    LinkTo(outside, In(kStation, "deep") / "all");
  };
  makeLinks();
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"file", "relative"}));
  DeleteAllInstrumentFiles(kStation);
  expectOutside();
  EXPECT_EQ(tree_.Names(kStation), (Names{"deep", "folder"}));
  DeleteInstrumentFile(kStation, "folder");
  expectOutside();
  EXPECT_EQ(tree_.Names(kStation), Names{"deep"});
  Recycle(R"(c:\stations\ST1\deep)");
  expectOutside();

  makeLinks();
  Recycle(kStation);
  expectOutside();
  EXPECT_EQ(tree_.Names(kStations), Names{});

  LinkTo(outside, In(kStations, "ST2"));
  Recycle(R"(c:\stations\ST2)");
  expectOutside();
  LinkTo(outside / "file", tree_.Native(kData));
  Recycle(kData);
  expectOutside();
  EXPECT_EQ(tree_.Names(kModel), Names{});
}

TEST_F(HostileTree, WhatMayNotBeReadIsReported) {
  tree_.Write(kData, DataOf("1"));
  tree_.Write(kInstrument, "MODEL NUMBER x\r\n");
  tree_.Write(kIni, Lines(Names(11, "Dir=c:\\elsewhere")));
  tree_.MakeFolders(R"(c:\calfactors\LOCKED)");
  const OrdinaryUser user(tree_.Root());
  for (const char* path : {kData, kInstrument, kIni, R"(c:\calfactors\LOCKED)"}) {
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
  EXPECT_EQ(Sorted(ModelFolders()), (Names{"LOCKED", "PX12A"}));
  fs::permissions(tree_.Native(R"(c:\calfactors\LOCKED)"), fs::perms::owner_all);
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
  // Behind the last item that is read it does no harm.
  Make(kIni, lines + "Dir=c:\\elsewhere\r\n");
  std::string calibrationDir;
  std::string stationDir;
  ReadProfile(calibrationDir, stationDir);
  EXPECT_EQ(calibrationDir, "c:\\elsewhere");
  EXPECT_EQ(stationDir, "c:\\elsewhere");
}

/// This, over and over, until it is larger than any data file.
std::string Repeated(const std::string& text) {
  std::string bytes;
  while (bytes.size() <= 4194304) {
    bytes += text;
  }
  return bytes;
}

// A line as long as most, so that what is read item by item holds not all too many of them.
const std::string kLongLine = std::string(200, 'x') + "\n";

TEST_F(HugeFile, OfShortItemsIsNoDataFileOfAnyModel) {
  const std::string line = "a line of nothing that is known,\r\n" + kLongLine;
  tree_.Write(kData, DataOf("3318A12345") + Repeated(line));
  for (const Model& model : kModels) {
    if (model.create != nullptr) {
      SCOPED_TRACE(model.code);
      ExpectRefusal([&] { model.create()->LoadCalibrationDataFromFile(kData); }, kData);
    }
  }
  // Within a page of a set, where lines without a value are passed over.
  const std::string blanks(200, ' ');
  tree_.Write(kData, "#RT521A 1\r\n" + Repeated(" ,\r\n" + blanks));
  ExpectRefusal([] { cInstrRT520A().LoadCalibrationDataFromFile(kData); }, kData);
  tree_.Write(kData, "!DC\r\n!\r\n" + Repeated("*,\r\n" + blanks));
  ExpectRefusal([] { cInstrRT730A().LoadCalibrationDataFromFile(kData); }, kData);
}

// Only what identifies a kit's file is limited.
TEST_F(HugeFile, IsTakenInAsAKitsFileWhenItsSerialNumberIsFound) {
  const std::string source = R"(c:\kit.dat)";
  const fs::path native = tree_.Native(source);
  const std::string target = std::string(kModel) + "\\SN12345";
  const auto copy = [&] { CopyTestKitFile(native.string(), kModel); };
  tree_.Write(target, "earlier");
  for (const char* beginning : {"", "QZ RT410A\r\n", "QZ RT410A\r\n\"3318A12345"}) {
    Make(source.c_str(), beginning);
    ExpectRefusal(copy, native.string());
  }
  EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  EXPECT_EQ(tree_.Read(target), "earlier");

  const std::string kit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\n" + Repeated("\n\0\"x,");
  tree_.Write(source, kit);
  copy();
  EXPECT_TRUE(tree_.Read(target) == kit);
  EXPECT_EQ(tree_.Names(kModel), Names{"SN12345"});
  EXPECT_EQ(Serials(), Names{"3318A12345"});
  // It takes the place of one as large.
  tree_.Write(source, kit + "x");
  copy();
  EXPECT_TRUE(tree_.Read(target) == kit + "x");
}

// ---- Very many entries.

TEST_F(HostileTree, ThousandsOfEntriesAreListedOrReportedAndDeleted) {
  constexpr std::size_t kMany = 3000;
  constexpr std::size_t kLinks = 1000;  // to one file: every disk allows so many
  const fs::path folder = tree_.Native(kStation);
  Names expected;
  fs::path file;
  for (std::size_t i = 0; i < kMany; ++i) {
    const std::string number = std::to_string(i);
    expected.push_back("SN" + std::string(5 - number.size(), '0') + number);
    if (i % kLinks == 0) {
      file = folder / expected.back();
      test::WriteNative(file, DataOf("3318A" + number));
    } else {
      fs::create_hard_link(file, folder / expected.back());
    }
  }
  // One folder serves for each kind.
  EXPECT_TRUE(Sorted(ListInstruments(kStation)) == expected);
  EXPECT_TRUE(Sorted(ListStations(kStation)) == expected);
  Names models;
  Error error = ErrorOf([&] { ListModelFolders(kStation, models); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_TRUE(Contains(error.Text(), "more than 256 entries")) << error.Text();
  EXPECT_EQ(models.size(), 257U);
  int rows = 0;
  error = ErrorOf([&] { ReadCalFileHeaders(kStation, [&](const CalFileInfo&) { ++rows; }); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_TRUE(Contains(error.Text(), "more than 51 data files")) << error.Text();
  EXPECT_EQ(rows, 51);
  // A name of another case is found among them.
  cInstrPX12A data;
  data.LoadCalibrationDataFromFile(R"(c:\stations\st1\sn02000)");
  EXPECT_EQ(data.SerialNumber(), "3318A2000");

  WriteStationInstrumentIndex(kStation, ListInstruments(kStation));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\INDEX)").size(), kMany * 9 + 7);
  DeleteAllInstrumentFiles(kStation);
  EXPECT_EQ(tree_.Names(kStation), Names{});
}

}  // namespace
}  // namespace tarvell
