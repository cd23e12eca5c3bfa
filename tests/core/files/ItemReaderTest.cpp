// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <utility>
#include <vector>

#include "core/files/ItemReader.h"
#include "core/files/ReadFile.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using namespace std::string_view_literals;

using test::Contains;
using test::ErrorOf;
using test::FaultPlatform;
using test::TestTree;

constexpr std::size_t kBeginning = 16384;  // what one call reads
constexpr std::size_t kLimit = 4194304;    // 4 MiB
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

using Items = std::vector<std::string>;

Items ReadAll(ItemReader& reader) {
  Items items;
  while (!reader.AtEnd()) {
    items.push_back(reader.ReadItem());
  }
  return items;
}

TEST(ItemReader, SplitsAFileIntoItems) {
  const std::vector<std::pair<std::string_view, Items>> files = {
      {"", {}},
      {"a,b\r\nc,d\r\n", {"a", "b", "c", "d"}},
      {" \t a,\t\tb\r\n  c\r\n", {"a", "b", "c"}},
      {"a  ,b \r\nc   ", {"a", "b", "c"}},
      {"a  b,c\td\r\n", {"a  b", "c\td"}},
      {"a,,b\r\n", {"a", "", "b"}},
      {"a,\r\nb\r\n", {"a", "", "b"}},
      {"a\"b,c\"\r\n", {"a\"b", "c\""}},
      {"a\0b,c"sv, {std::string("a\0b", 3), "c"}},
      {"a\x1A,b", {"a\x1A", "b"}},
      {"a\r\nb\nc\rd\r\n", {"a", "b", "c", "d"}},
      {"a\n\rb", {"a", "", "b"}},
      {"a\r\r\nb", {"a", "", "b"}},
      {"\n", {""}},
      {"a", {"a"}},
      {"a,", {"a"}},
      {"a\r", {"a"}},
      {"a\r\r", {"a", ""}},
      {"a,,", {"a", ""}},
      {"\"a\",", {"a"}},
      {"\"a", {"a"}},
      {"a\r\n   \r\nb\r\n", {"a", "", "b"}},
      {"\"a,b\",c\r\n", {"a,b", "c"}},
      {"\"a\r\nb\nc\rd\",e\r\n", {"a\r\nb\nc\rd", "e"}},
      {"\"  a \t\",b\r\n", {"  a \t", "b"}},
      {" \t\"a,b\"\r\n", {"a,b"}},
      {"\"a\"  ,b\r\n", {"a", "b"}},
      {"\"a\"xyz,b\r\nc\r\n", {"a", "b", "c"}},
      {"\"a\"x\rb", {"a", "b"}},
      {"\"a\"\"b\",c\r\n", {"a", "c"}},
      {"x,\"a,b\r\nc\r\n", {"x", "a,b\r\nc\r\n"}},
      {"x,\"", {"x", ""}},
      {"\"a\"\r\n\r\nb\r\n", {"a", "", "b"}},
  };
  for (const auto& [bytes, items] : files) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    ItemReader reader = ItemReader::Of(bytes);
    EXPECT_EQ(ReadAll(reader), items);
  }
}

TEST(ItemReader, ReportsTheFileAndLineWhereItEndsTooEarly) {
  ItemReader reader = ItemReader::Of("a\r\nb,c", kPath);
  EXPECT_EQ(ReadAll(reader), (Items{"a", "b", "c"}));
  const Error error = ErrorOf([&] { (void)reader.ReadItem(); });
  EXPECT_EQ(error.Kind(), ErrorKind::InputPastEnd);
  EXPECT_EQ(error.Path(), kPath);
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(ErrorOf([&] { (void)reader.ReadItem(); }).Kind(), ErrorKind::InputPastEnd);
  std::string item;
  EXPECT_FALSE(reader.TryReadItem(item));
}

TEST(ItemReader, CountsTheLineOnWhichAnItemBegins) {
  ItemReader reader = ItemReader::Of("a,b\r\n\r\nc\nd\re,\"f\r\ng\nh\ri\",j\r\nk");
  for (const int line : {1, 1, 2, 3, 4, 5, 5, 8, 9}) {
    const std::string item = reader.ReadItem();
    EXPECT_EQ(reader.Line(), line) << item;
  }
  EXPECT_TRUE(reader.AtEnd());
}

TEST(ItemReader, AddsTheFileAndLineToAnErrorThatNamesNone) {
  ItemReader reader = ItemReader::Of("a\r\nb\r\n", kPath);
  (void)reader.ReadItem();
  (void)reader.ReadItem();
  EXPECT_EQ(reader.AtThisLine([] { return 7; }), 7);
  const Error located =
      ErrorOf([&] { reader.AtThisLine([] { throw Error(ErrorKind::Type, "Not a number."); }); });
  EXPECT_EQ(located.Kind(), ErrorKind::Type);
  EXPECT_EQ(located.Text(), "Not a number.");
  EXPECT_EQ(located.Path(), kPath);
  EXPECT_EQ(located.Line(), 2);
  const Error kept = ErrorOf([&] {
    reader.AtThisLine([] { throw Error(ErrorKind::Type, "Not a number.", "c:\\other", 5); });
  });
  EXPECT_EQ(kept.Path(), "c:\\other");
  EXPECT_EQ(kept.Line(), 5);
}

TEST(ItemReader, ReadsFilesInTheirEncoding) {
  const TestTree tree;
  tree.Write(kPath, "1 \xB5H,\x80\x81,\"\xFF\"\r\n");
  ItemReader decoded("C:/CALFACTORS/px12a/sn12345");
  EXPECT_EQ(decoded.Path(), "C:/CALFACTORS/px12a/sn12345");
  EXPECT_EQ(ReadAll(decoded), (Items{"1 \u00B5H", "\u20AC\u0081", "\u00FF"}));
  tree.Write(kPath, "Dir=\u00FCber,\"\u20AC\"\r\n");
  ItemReader plain(tree.Native(kPath), "as shown", TextEncoding::Utf8);
  EXPECT_EQ(plain.Path(), "as shown");
  EXPECT_EQ(ReadAll(plain), (Items{"Dir=\u00FCber", "\u20AC"}));
}

/// The flags with which the process has the file at `path` open.
int OpenFlags(const std::filesystem::path& path) {
  int flags = 0;
  std::error_code isGone;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    if (std::filesystem::read_symlink(entry, isGone) == path) {
      flags = ::fcntl(std::stoi(entry.path().filename()), F_GETFL);
    }
  }
  return flags;
}

// Otherwise a pipe without a writer would make the program wait for ever.
TEST(ItemReader, OpensFilesWithoutWaiting) {
  const TestTree tree;
  tree.Write(kPath, "a");
  std::unique_ptr<InputFile> file;
  ASSERT_FALSE(CurrentPlatform().OpenForReading(tree.Native(kPath), file));
  EXPECT_NE(OpenFlags(std::filesystem::canonical(tree.Native(kPath))) & O_NONBLOCK, 0);
}

TEST(ItemReader, FailsForWhatIsNoReadableFile) {
  const TestTree tree;
  tree.Write("c:\\real", "a");
  tree.MakeFolders("c:\\folder");
  ASSERT_EQ(::mkfifo(tree.Native("c:\\pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/zero", tree.Native("c:\\device"));
  std::filesystem::create_symlink("self", tree.Native("c:\\self"));
  std::filesystem::create_symlink("real", tree.Native("c:\\link"));
  for (const auto& [path, kind, reason] :
       {std::tuple("c:\\missing", ErrorKind::NotFound, "does not exist"),
        std::tuple("c:\\folder", ErrorKind::NotAFile, "it is a folder, not a file"),
        std::tuple("c:\\pipe", ErrorKind::NotAFile, "it is a device or a pipe, not a file"),
        std::tuple("c:\\device", ErrorKind::NotAFile, "it is a device or a pipe, not a file"),
        std::tuple("c:\\self", ErrorKind::NotAFile, "a link on the way to it leads to itself")}) {
    const Error error = ErrorOf([&, name = path] { const ItemReader reader(name); });
    EXPECT_EQ(error.Kind(), kind) << path;
    EXPECT_EQ(error.Path(), path);
    EXPECT_TRUE(Contains(error.Text(), "Cannot read the file: ")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), reason)) << error.Text();
  }
  ItemReader reader("c:\\link");
  EXPECT_EQ(ReadAll(reader), Items{"a"});
  FaultPlatform platform;
  for (const int passes : {0, 1}) {
    platform.passes = passes;
    platform.Set(FaultPlatform::Step::Read);
    const Error error = ErrorOf([] { const ItemReader failing("c:\\real"); });
    EXPECT_EQ(error.Kind(), ErrorKind::System);
    EXPECT_EQ(error.Path(), "c:\\real");
  }
  platform.Set(FaultPlatform::Step::OpenForReading, std::errc::permission_denied);
  const Error error = ErrorOf([] { const ItemReader refused("c:\\real"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NoPermission);
  EXPECT_TRUE(Contains(error.Text(), "you have no permission")) << error.Text();
}

TEST(ItemReader, ReadsFilesOfAtMostFourMebibytes) {
  const TestTree tree;
  const std::string item(kLimit - 4, 'x');
  tree.Write(kPath, "a\n" + item + "\nb");
  ItemReader whole(kPath);
  EXPECT_TRUE(ReadAll(whole) == (Items{"a", item, "b"}));

  tree.Write(kPath, "a\n" + item + "\nbb");
  const std::string text =
      "Cannot read the file: it is larger than any data file. Put the right file in its place, "
      "then try again.";
  EXPECT_EQ(ErrorOf([] { const ItemReader reader(kPath); }).Text(), text);
  // Its first items can be read.
  ItemReader cut(tree.Native(kPath), kPath);
  EXPECT_EQ(cut.ReadItem(), "a");
  EXPECT_TRUE(cut.ReadItem() == item);
  EXPECT_FALSE(cut.AtEnd());
  const Error error = ErrorOf([&] { (void)cut.ReadItem(); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotAFile);
  EXPECT_EQ(error.Path(), kPath);
  EXPECT_EQ(error.Text(), text);
  EXPECT_EQ(ErrorOf([&] { (void)cut.AtEnd(); }).Kind(), ErrorKind::NotAFile);
  std::string none;
  EXPECT_FALSE(cut.TryReadItem(none));
}

/// The second item of the file, and how many bytes were read for it.
std::pair<std::string, std::size_t> SecondItem(const TestTree& tree) {
  const std::filesystem::path folder = tree.Native(kPath).parent_path();
  std::pair<std::string, std::size_t> second;
  const auto read = [&](const FoundEntry& entry) {
    second = ReadFirstItems(entry, kPath, [](ItemReader& reader) {
      (void)reader.ReadItem();
      std::string item = reader.ReadItem();
      return std::pair(item, reader.Bytes().size());
    });
    return true;
  };
  EXPECT_FALSE(CurrentPlatform().Search(folder, SearchKind::EveryName, read));
  return second;
}

TEST(ReadFirstItems, ReadsMoreThanTheBeginningOnlyWhenItMust) {
  const TestTree tree;
  const std::string rest(2 * kBeginning, 'y');
  tree.Write(kPath, "a,b," + rest);
  EXPECT_EQ(SecondItem(tree), std::pair(std::string("b"), kBeginning));
  tree.Write(kPath, "a,b");
  EXPECT_EQ(SecondItem(tree), std::pair(std::string("b"), std::size_t{3}));
  // The second item, or the CR LF after it, goes on after the beginning.
  for (const std::size_t length : {kBeginning - 4, kBeginning - 3, kBeginning - 2, kBeginning}) {
    const std::string item(length, 'x');
    tree.Write(kPath, "a," + item + "\r\n" + rest);
    const auto [read, bytes] = SecondItem(tree);
    EXPECT_TRUE(read == item) << length;
    EXPECT_GT(bytes, kBeginning) << length;
  }
  // There is no second item in the beginning, or in the whole file.
  tree.Write(kPath, "\"" + rest + "\",b,c");
  EXPECT_EQ(SecondItem(tree).first, "b");
  tree.Write(kPath, rest);
  EXPECT_EQ(ErrorOf([&] { (void)SecondItem(tree); }).Kind(), ErrorKind::InputPastEnd);
}

// The system may give a file in portions of any size.
TEST(ReadNativeFile, ReadsToTheEndOfTheFile) {
  const TestTree tree;
  std::string content;
  while (content.size() < 3 * kBeginning) {
    content += std::to_string(content.size()) + "\n";
  }
  tree.Write(kPath, content);
  FaultPlatform platform;
  std::string bytes;
  for (const std::size_t portion : {std::size_t{1}, std::size_t{1000}, kBeginning}) {
    platform.readPortion = portion;
    EXPECT_FALSE(ReadNativeFile(tree.Native(kPath), bytes));
    EXPECT_TRUE(bytes == content) << portion;
  }
  EXPECT_FALSE(ReadNativeFile(tree.Native(kPath), bytes, content.size()));
  EXPECT_EQ(ReadNativeFile(tree.Native(kPath), bytes, content.size() - 1), kTooLargeForData);
  EXPECT_TRUE(bytes == content.substr(0, content.size() - 1));
}

}  // namespace
}  // namespace tarvell
