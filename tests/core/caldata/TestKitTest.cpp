// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <utility>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/platform/ForwardingPlatform.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::LockedFolder;
using test::OrdinaryUser;
using test::TestTree;

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
  void WriteSource(std::string_view bytes) const { test::WriteNative(Source(), bytes); }
  [[nodiscard]] fs::path Source() const { return tree_.Root() / "kit.dat"; }

  void Copy() const { CopyTestKitFile(Source().string(), kFolder); }

  /// Taking in these bytes makes this data file, equal to them, and nothing else.
  void ExpectCopy(std::string_view bytes, const std::string& name) const {
    fs::remove_all(tree_.Native(kFolder));
    tree_.MakeFolders(kFolder);
    WriteSource(bytes);
    Copy();
    ASSERT_EQ(tree_.Names(kFolder), Names{name});
    EXPECT_TRUE(tree_.Read(std::string(kFolder) + "\\" + name) == bytes);
    EXPECT_TRUE(test::ReadNative(Source()) == bytes);
  }

  /// An error of this kind and path, whose text tells `what`; the folder is as it was.
  void ExpectRefusal(const fs::path& source, ErrorKind kind, const std::string& path,
                     const std::vector<std::string>& what) const {
    const Names before = tree_.Names(kFolder);
    const Error error = ErrorOf([&] { CopyTestKitFile(source.string(), kFolder); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_EQ(error.Path(), path);
    for (const std::string& part : what) {
      EXPECT_TRUE(Contains(error.Text(), part)) << part << " is missing in: " << error.Text();
    }
    EXPECT_TRUE(Contains(error.what(), path)) << error.what();
    EXPECT_EQ(tree_.Names(kFolder), before);
  }

  /// The same of a source that holds these bytes.
  void ExpectRefusal(std::string_view bytes, ErrorKind kind,
                     const std::vector<std::string>& what) const {
    WriteSource(bytes);
    ExpectRefusal(Source(), kind, Source().string(), what);
    EXPECT_EQ(test::ReadNative(Source()), bytes);
  }

  TestTree tree_;
};

// The copy.

TEST_F(TestKit, CopiesAFileByteForByte) {
  ExpectCopy(kKit, "SN12345");
}

TEST_F(TestKit, CopiesEveryByteAndEveryLineEnd) {
  std::string bytes = "first\n3318A12345\r";
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  bytes += "\r\n\r\r\n\n\n\r,\",\"\"";
  ExpectCopy(bytes, "SN12345");
}

TEST_F(TestKit, CopiesAFileOfAnyLength) {
  std::string large(kKit);
  while (large.size() < 1000000) {
    large += "line " + std::to_string(large.size()) + "\r\n";
  }
  ExpectCopy(large, "SN12345");
  ExpectCopy("a\r\nb", "SNb");
}

TEST_F(TestKit, KeepsTheSourceAsItIs) {
  WriteSource(kKit);
  const auto time = fs::file_time_type::clock::now() - std::chrono::hours(24 * 365);
  fs::last_write_time(Source(), time);
  fs::permissions(Source(), fs::perms(0444));
  const auto before = fs::last_write_time(Source());
  Copy();
  EXPECT_EQ(test::ReadNative(Source()), kKit);
  EXPECT_EQ(fs::last_write_time(Source()), before);
  EXPECT_EQ(fs::status(Source()).permissions(), fs::perms(0444));
  EXPECT_FALSE(fs::equivalent(Source(), tree_.Native(kTarget)));
}

TEST_F(TestKit, ReplacesAnEarlierFileAndLeavesTheOthers) {
  tree_.Write(kTarget, kOld);
  tree_.Write(R"(c:\calfactors\RT410A\SN54321)", "other");
  WriteSource(kKit);
  Copy();
  EXPECT_EQ(tree_.Names(kFolder), (Names{"SN12345", "SN54321"}));
  EXPECT_EQ(tree_.Read(kTarget), kKit);
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT410A\SN54321)"), "other");
}

TEST_F(TestKit, ReplacesAnEarlierFileOfAnotherCase) {
  tree_.Write(R"(c:\calfactors\RT410A\sn12345)", kOld);
  WriteSource(kKit);
  CopyTestKitFile(Source().string(), R"(C:\CALFACTORS\rt410a)");
  EXPECT_EQ(tree_.Names(kFolder), Names{"sn12345"});
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT410A\sn12345)"), kKit);
  EXPECT_EQ(tree_.Names("c:\\"), Names{"calfactors"});
}

TEST_F(TestKit, CopiesWhatALinkLeadsTo) {
  WriteSource(kKit);
  const fs::path link = tree_.Root() / "link.dat";
  fs::create_symlink(Source(), link);
  CopyTestKitFile(link.string(), kFolder);
  EXPECT_FALSE(fs::is_symlink(tree_.Native(kTarget)));
  EXPECT_EQ(tree_.Read(kTarget), kKit);
  EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(TestKit, CopiesASourceOfAnyName) {
  for (const char* name : {"no extension", "back\\slash.dat", "SN12345", "caf\xE9.dat", "c:"}) {
    const fs::path source = tree_.Root() / name;
    test::WriteNative(source, kKit);
    fs::remove(tree_.Native(kTarget));
    CopyTestKitFile(source.string(), kFolder);
    EXPECT_EQ(tree_.Read(kTarget), kKit) << name;
  }
}

// The target's name.

TEST_F(TestKit, NamesTheFileByTheLastFiveCharactersOfTheSecondItem) {
  ExpectCopy("kit\r\n3318A12345\r\n", "SN12345");
  ExpectCopy("kit\r\nABCDEFGHIJ\r\n", "SNFGHIJ");
  ExpectCopy("kit\r\n12345\r\n", "SN12345");
  ExpectCopy("kit\r\n123456\r\n", "SN23456");
}

TEST_F(TestKit, AShorterSerialNumberIsUsedWhole) {
  ExpectCopy("kit\r\nABC\r\n", "SNABC");
  ExpectCopy("kit\r\n7\r\n", "SN7");
  ExpectCopy("kit\r\n1234", "SN1234");
}

TEST_F(TestKit, ACommaInTheFirstLineMakesTheTextBehindItTheSecondItem) {
  ExpectCopy("RT410A, 3318A54321 \r\n3318A12345\r\n", "SN54321");
  ExpectCopy("RT410A,3318A54321,3318A99999\r\n3318A12345\r\n", "SN54321");
}

TEST_F(TestKit, ACommaInTheSecondLineEndsTheSecondItem) {
  ExpectCopy("RT410A\r\n3318A54321,3318A99999\r\n", "SN54321");
}

TEST_F(TestKit, AnEmptyFirstLineIsAnItem) {
  ExpectCopy("\r\n3318A12345\r\n3318A99999\r\n", "SN12345");
  ExpectCopy(",3318A12345\r\n3318A99999\r\n", "SN12345");
}

TEST_F(TestKit, QuotesAreNoPartOfAnItem) {
  ExpectCopy("\"RT410A, kit\"\r\n\"3318,12345\"\r\n", "SN12345");
  ExpectCopy("\"RT410A\r\nsecond line\"\r\n3318A12345\r\n", "SN12345");
  ExpectCopy("RT410A\r\n\"  3318A12345  \" passed over\r\n", "SN12345");
}

TEST_F(TestKit, AnItemEndsAtItsFirstNul) {
  ExpectCopy(std::string("kit\r\n3318A12345\0junk\r\n", 22), "SN12345");
  ExpectCopy(std::string("kit\r\nABC  \0 99999\r\n", 19), "SNABC");
}

TEST_F(TestKit, BlanksAroundAnItemAreNoPartOfIt) {
  ExpectCopy("kit\r\n   3318A12345   \r\n", "SN12345");
  ExpectCopy("kit\r\n\t ABC \t\r\n", "SNABC");
  ExpectCopy("kit\r\n3318 123 5\r\n", "SN123 5");
}

TEST_F(TestKit, EveryKindOfLineEndEndsAnItem) {
  ExpectCopy("kit\n3318A12345\n", "SN12345");
  ExpectCopy("kit\r3318A12345\r", "SN12345");
  ExpectCopy("kit\n3318A12345\r\nmore", "SN12345");
}

TEST_F(TestKit, CharactersAreCountedNotBytes) {
  // Byte C9 of the file is one character, two bytes of the name.
  ExpectCopy("kit\r\n123456789\xC9\r\n", "SN6789\xC3\x89");
}

// What cannot be taken in.

TEST_F(TestKit, AFileOfFewerThanTwoItemsIsRefused) {
  for (const std::string_view bytes :
       {"", "3318A12345", "3318A12345\r\n", "3318A12345,", "\r\n", "\"3318A12345\r\n12345\r\n"}) {
    ExpectRefusal(bytes, ErrorKind::InputPastEnd, {"ends too early"});
  }
}

TEST_F(TestKit, AnEmptySerialNumberIsRefused) {
  for (const std::string_view bytes :
       {std::string_view("kit\r\n\r\n3318A12345\r\n"), std::string_view("kit\r\n   \r\nmore"),
        std::string_view("kit\r\n\"\"\r\n"), std::string_view("kit\r\n\"  \"\r\n"),
        std::string_view("kit,,12345\r\n"),
        std::string_view("kit\r\n\0"
                         "123\r\n",
                         11)}) {
    ExpectRefusal(bytes, ErrorKind::Name, {"serial number"});
  }
}

TEST_F(TestKit, ASerialNumberThatMakesNoFileNameIsRefused) {
  const std::vector<std::pair<std::string, std::string>> table = {
      {"3318A1/345", "\"/\""},
      {"3318A1\\345", "\"\\\""},
      {"3318A1:345", "\":\""},
      {"3318A1*345", "\"*\""},
      {"3318A1?345", "\"?\""},
      {"3318A1<345", "\"<\""},
      {"3318A1>345", "\">\""},
      {"3318A1|345", "\"|\""},
      {"3318A1\"345", "\" (double quote)"},
      {"3318A1.345", "\".\""},
      {"3318A1234.", "\".\""},
      {".", "\".\""},
      {"..", "\".\""},
      {"../..", "\".\""},
      {"1234\x01", "control character"},
      {"12\t34", "control character"},
      {"1234\x7F", "control character"}};
  for (const auto& [serial, character] : table) {
    SCOPED_TRACE(serial);
    WriteSource("kit\r\n" + serial + "\r\n");
    ExpectRefusal(Source(), ErrorKind::Name, Source().string(), {character});
    EXPECT_EQ(ErrorOf([&] { Copy(); }).Line(), 2);
    EXPECT_FALSE(tree_.Exists("c:\\calfactors\\345"));
    EXPECT_EQ(tree_.Names("c:\\calfactors"), Names{"RT410A"});
  }
}

TEST_F(TestKit, SuchACharacterInFrontOfTheLastFiveDoesNoHarm) {
  ExpectCopy("kit\r\n3.3/18:A*12345\r\n", "SN12345");
}

TEST_F(TestKit, AMissingSourceIsRefused) {
  ExpectRefusal(Source(), ErrorKind::NotFound, Source().string(), {"read", "does not exist"});
}

TEST_F(TestKit, AnUnreadableSourceIsRefused) {
  WriteSource(kKit);
  fs::permissions(Source(), fs::perms(0));
  const OrdinaryUser user(tree_.Root());
  ExpectRefusal(Source(), ErrorKind::NoPermission, Source().string(), {"read", "permission"});
  fs::permissions(Source(), fs::perms(0600));
  EXPECT_EQ(test::ReadNative(Source()), kKit);
}

TEST_F(TestKit, AFolderIsRefused) {
  fs::create_directory(Source());
  ExpectRefusal(Source(), ErrorKind::NotAFile, Source().string(), {"read", "folder"});
}

TEST_F(TestKit, APipeIsRefusedAndNotWaitedFor) {
  ASSERT_EQ(::mkfifo(Source().c_str(), 0600), 0);
  ExpectRefusal(Source(), ErrorKind::NotAFile, Source().string(), {"read", "pipe"});
}

TEST_F(TestKit, ADeviceIsRefused) {
  ExpectRefusal("/dev/zero", ErrorKind::NotAFile, "/dev/zero", {"read", "device"});
}

// The source is the data file itself.

TEST_F(TestKit, TheDataFileItselfIsRefused) {
  tree_.Write(kTarget, kKit);
  const auto before = fs::last_write_time(tree_.Native(kTarget));
  ExpectRefusal(tree_.Native(kTarget), ErrorKind::Name, kTarget, {"itself", "Nothing was changed"});
  EXPECT_EQ(tree_.Read(kTarget), kKit);
  EXPECT_EQ(fs::last_write_time(tree_.Native(kTarget)), before);
}

TEST_F(TestKit, TheDataFileItselfIsRefusedThroughALink) {
  tree_.Write(kTarget, kKit);
  const fs::path symbolic = tree_.Root() / "symbolic.dat";
  const fs::path hard = tree_.Root() / "hard.dat";
  fs::create_symlink(tree_.Native(kTarget), symbolic);
  fs::create_hard_link(tree_.Native(kTarget), hard);
  for (const fs::path& source : {symbolic, hard}) {
    ExpectRefusal(source, ErrorKind::Name, kTarget, {"itself"});
    EXPECT_EQ(tree_.Read(kTarget), kKit);
  }
  EXPECT_TRUE(fs::is_symlink(symbolic));
}

TEST_F(TestKit, TheDataFileItselfIsRefusedWhenItIsALinkToTheSource) {
  WriteSource(kKit);
  fs::create_symlink(Source(), tree_.Native(kTarget));
  ExpectRefusal(Source(), ErrorKind::Name, kTarget, {"itself"});
  EXPECT_TRUE(fs::is_symlink(tree_.Native(kTarget)));
  EXPECT_EQ(test::ReadNative(Source()), kKit);
}

TEST_F(TestKit, TheDataFileItselfIsRefusedInAnotherCase) {
  tree_.Write(R"(c:\calfactors\RT410A\sn12345)", kKit);
  const fs::path native = tree_.Native(R"(c:\calfactors\RT410A\sn12345)");
  const Error error = ErrorOf([&] { CopyTestKitFile(native.string(), R"(C:\CalFactors\rt410a)"); });
  EXPECT_EQ(error.Kind(), ErrorKind::Name);
  EXPECT_TRUE(Contains(error.Text(), "itself")) << error.Text();
  EXPECT_EQ(tree_.Names(kFolder), Names{"sn12345"});
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT410A\sn12345)"), kKit);
}

TEST_F(TestKit, AnotherDataFileOfTheFolderCanBeTheSource) {
  tree_.Write(R"(c:\calfactors\RT410A\SN99999)", kKit);
  CopyTestKitFile(tree_.Native(R"(c:\calfactors\RT410A\SN99999)").string(), kFolder);
  EXPECT_EQ(tree_.Names(kFolder), (Names{"SN12345", "SN99999"}));
  EXPECT_EQ(tree_.Read(kTarget), kKit);
}

// A target that cannot be written.

TEST_F(TestKit, AMissingFolderIsAnErrorAndIsNotMade) {
  WriteSource(kKit);
  const Error error =
      ErrorOf([&] { CopyTestKitFile(Source().string(), "c:\\calfactors\\RT410B"); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), R"(c:\calfactors\RT410B\SN12345)");
  EXPECT_TRUE(Contains(error.Text(), "save")) << error.Text();
  EXPECT_EQ(tree_.Names("c:\\calfactors"), Names{"RT410A"});
  EXPECT_EQ(test::ReadNative(Source()), kKit);
}

TEST_F(TestKit, AFolderThatTakesNoNewFileIsAnError) {
  WriteSource(kKit);
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kFolder));
  ExpectRefusal(Source(), ErrorKind::WriteFailed, kTarget, {"save", "permission"});
}

TEST_F(TestKit, AFolderInTheDataFilesPlaceIsAnError) {
  WriteSource(kKit);
  tree_.MakeFolders(kTarget);
  ExpectRefusal(Source(), ErrorKind::WriteFailed, kTarget, {"save", "folder"});
  EXPECT_TRUE(fs::is_directory(tree_.Native(kTarget)));
}

/// The system, but for reads that fail behind so many bytes.
class FailingPlatform : public ForwardingPlatform {
 public:
  std::size_t readable = 0;

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path, EntryKind kind,
                                               std::unique_ptr<InputFile>& file) override {
    const std::error_code code = ForwardingPlatform::OpenForReading(path, kind, file);
    if (file) {
      file = std::make_unique<Input>(*this, std::move(file));
    }
    return code;
  }

 private:
  class Input : public InputFile {
   public:
    Input(FailingPlatform& platform, std::unique_ptr<InputFile> file)
        : platform_(platform), file_(std::move(file)) {}

    [[nodiscard]] std::error_code Read(char* buffer, std::size_t size,
                                       std::size_t& count) override {
      if (read_ >= platform_.readable) {
        count = 0;
        return std::make_error_code(std::errc::io_error);
      }
      const std::error_code code =
          file_->Read(buffer, std::min(size, platform_.readable - read_), count);
      read_ += count;
      return code;
    }

   private:
    FailingPlatform& platform_;
    std::unique_ptr<InputFile> file_;
    std::size_t read_ = 0;
  };
};

class TestKitFaults : public TestKit {
 public:
  TestKitFaults() : before_(SetCurrentPlatform(&platform_)) { WriteSource(kKit); }
  ~TestKitFaults() override { SetCurrentPlatform(before_); }
  TestKitFaults(const TestKitFaults&) = delete;
  TestKitFaults& operator=(const TestKitFaults&) = delete;

 protected:
  FailingPlatform platform_;

 private:
  Platform* before_;
};

TEST_F(TestKitFaults, ASourceThatCannotBeReadToItsEndIsRefused) {
  tree_.Write(kTarget, kOld);
  for (std::size_t byte = 0; byte < kKit.size(); ++byte) {
    SCOPED_TRACE(byte);
    platform_.readable = byte;
    ExpectRefusal(Source(), ErrorKind::System, Source().string(), {"read"});
    EXPECT_EQ(tree_.Read(kTarget), kOld);
  }
}

}  // namespace
}  // namespace tarvell
