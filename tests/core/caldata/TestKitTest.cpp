// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/files/Paths.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kFolder = "c:\\calfactors\\RT410A";
constexpr const char* kTarget = R"(c:\calfactors\RT410A\SN12345)";
constexpr std::string_view kKit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\nwhatever\r\n";
constexpr std::string_view kOld = "an earlier file, of another length than the new one\r\n\r\n\r\n";

/// A kit's folder, and a file in another one that is to be taken in.
class TestKit : public testing::Test {
 protected:
  TestKit() { tree_.MakeFolders(kFolder); }

  /// Writes the file to be taken in.
  void WriteSource(std::string_view bytes) const { WriteNative(Source(), bytes); }
  [[nodiscard]] fs::path Source() const { return tree_.Root() / "kit.dat"; }

  void Copy() const { CopyTestKitFile(Source(), kFolder); }

  /// An error of this kind and path, whose text has this part; the folder is as it was.
  void ExpectRefusal(const fs::path& source, ErrorKind kind, const std::string& path,
                     const std::string& part) const {
    const Names before = tree_.Names(kFolder);
    const Error error = ErrorOf([&] { CopyTestKitFile(source, kFolder); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_EQ(error.Path(), path);
    EXPECT_TRUE(Contains(error.Text(), part)) << error.Text();
    EXPECT_TRUE(Contains(error.what(), path)) << error.what();
    EXPECT_EQ(tree_.Names(kFolder), before);
  }

  TestTree tree_;
};

TEST_F(TestKit, CopiesEveryByteToAFileNamedByTheLastFiveCharactersOfTheSecondItem) {
  std::string everyByte = "first\n3318A12345\r";
  for (int byte = 0; byte < 256; ++byte) {
    everyByte += static_cast<char>(byte);
  }
  const std::vector<std::pair<std::string, std::string>> table = {
      {everyByte + "\r\n\r\r\n\n\n\r,\",\"\"", "SN12345"},
      {"kit\r\n123456", "SN23456"},
      {"kit\r\n7\r\n", "SN7"},
      {"kit\n3318A12345\rmore", "SN12345"},
      {"RT410A, 3318A54321 ,3318A99999\r\n3318A12345\r\n", "SN54321"},
      {"\r\n3318A12345\r\n3318A99999\r\n", "SN12345"},
      {"\"RT410A, kit\"\r\n\"  3318,12345  \" passed over\r\n", "SN12345"},
      {std::string("kit\r\nABC  \0 99999\r\n", 19), "SNABC"},
      {"kit\r\n   3318 123 5   \r\n", "SN123 5"},
      // Characters before the last five do no harm; byte C9 is one character, two in the name.
      {"kit\r\n3.3/18:A*6789\xC9\r\n", "SN6789\xC3\x89"}};
  for (const auto& [bytes, name] : table) {
    fs::remove_all(tree_.Native(kFolder));
    // It replaces an earlier file, and no other.
    tree_.Write(Joined(kFolder, name), kOld);
    tree_.Write(R"(c:\calfactors\RT410A\SN)", "other");
    WriteSource(bytes);
    Copy();
    ASSERT_EQ(tree_.Names(kFolder), (Names{"SN", name}));
    EXPECT_TRUE(tree_.Read(Joined(kFolder, name)) == bytes);
    EXPECT_TRUE(ReadNative(Source()) == bytes);
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT410A\SN)"), "other");
  }
}

TEST_F(TestKit, AFileWithoutAUsableSerialNumberIsRefused) {
  using namespace std::string_view_literals;
  struct Refused {
    ErrorKind kind;
    std::string part;
    std::vector<std::string_view> files;
  };
  const std::vector<Refused> table = {
      {ErrorKind::InputPastEnd,
       "ends too early",
       {"", "3318A12345", "3318A12345\r\n", "3318A12345,", "\r\n", "\"3318A12345\r\n12345\r\n"}},
      {ErrorKind::Name,
       "serial number",
       {"kit\r\n\r\n3318A12345\r\n", "kit\r\n   \r\nmore", "kit\r\n\"\"\r\n", "kit\r\n\"  \"\r\n",
        "kit,,12345\r\n", "kit\r\n\0 123\r\n"sv}},
      {ErrorKind::Name, "\"/\"", {"kit\r\n3318A1/345\r\n"}},
      {ErrorKind::Name, "\".\"", {"kit\r\n3318A1.345\r\n"}},
      {ErrorKind::Name, "control character", {"kit\r\n12\t34\r\n"}}};
  for (const Refused& refused : table) {
    for (const std::string_view bytes : refused.files) {
      SCOPED_TRACE(bytes);
      WriteSource(bytes);
      ExpectRefusal(Source(), refused.kind, Source().string(), refused.part);
      EXPECT_EQ(ReadNative(Source()), bytes);
    }
  }
  EXPECT_EQ(ErrorOf([&] { Copy(); }).Line(), 2);
  EXPECT_EQ(tree_.Names("c:\\calfactors"), Names{"RT410A"});
}

TEST_F(TestKit, TheDataFileItselfIsRefusedAlsoThroughALink) {
  tree_.Write(kTarget, kKit);
  const auto before = fs::last_write_time(tree_.Native(kTarget));
  const fs::path symbolic = tree_.Root() / "symbolic.dat";
  const fs::path hard = tree_.Root() / "hard.dat";
  fs::create_symlink(tree_.Native(kTarget), symbolic);
  fs::create_hard_link(tree_.Native(kTarget), hard);
  for (const fs::path& source : {tree_.Native(kTarget), symbolic, hard}) {
    ExpectRefusal(source, ErrorKind::Name, kTarget, "itself. Nothing was changed");
    EXPECT_EQ(tree_.Read(kTarget), kKit);
  }
  EXPECT_EQ(fs::last_write_time(tree_.Native(kTarget)), before);
  EXPECT_TRUE(fs::is_symlink(symbolic));
}

TEST_F(TestKit, AMissingFolderIsAnErrorAndIsNotMade) {
  WriteSource(kKit);
  const Error error = ErrorOf([&] { CopyTestKitFile(Source(), "c:\\calfactors\\RT410B"); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), R"(c:\calfactors\RT410B\SN12345)");
  EXPECT_TRUE(Contains(error.Text(), "save")) << error.Text();
  EXPECT_EQ(tree_.Names("c:\\calfactors"), Names{"RT410A"});
  EXPECT_EQ(ReadNative(Source()), kKit);
}

TEST_F(TestKit, AFailedReadIsReportedForTheSourceAndWritesNothing) {
  using Step = FaultPlatform::Step;
  WriteSource(kKit);
  tree_.Write(kTarget, kOld);
  FaultPlatform platform;
  // The source is opened for its serial number, and again to be copied: its bytes, then its end.
  for (const auto& [step, passes] :
       {std::pair(Step::OpenForReading, 0), std::pair(Step::OpenForReading, 1),
        std::pair(Step::Read, 0), std::pair(Step::Read, 1), std::pair(Step::Read, 2)}) {
    SCOPED_TRACE(testing::Message() << step << " after " << passes);
    platform.passes = passes;
    platform.Set(step);
    ExpectRefusal(Source(), ErrorKind::System, Source().string(), "Cannot read the file");
    EXPECT_EQ(platform.faults, 1) << "the step was never taken";
    EXPECT_EQ(tree_.Read(kTarget), kOld);
  }
}

}  // namespace
}  // namespace tarvell::test
