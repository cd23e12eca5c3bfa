// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <utility>
#include <vector>

#include "core/files/ItemReader.h"
#include "core/platform/ForwardingPlatform.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FaultPlatform;
using test::TestTree;

constexpr std::size_t kBlock = 16384;
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

using Items = std::vector<std::string>;

Items ReadAll(ItemReader& reader) {
  Items items;
  while (!reader.AtEnd()) {
    items.push_back(reader.ReadItem());
  }
  return items;
}

Items ItemsOf(const TestTree& tree, std::string_view bytes) {
  tree.Write(kPath, bytes);
  ItemReader reader(kPath);
  return ReadAll(reader);
}

struct Rule {
  const char* name;
  std::string_view bytes;
  Items items;
};

class ListInput : public testing::TestWithParam<Rule> {};

TEST_P(ListInput, GivesTheItems) {
  const TestTree tree;
  EXPECT_EQ(ItemsOf(tree, GetParam().bytes), GetParam().items);
}

// The same whatever portion of the file the system hands out at a time.
class Dripping : public ForwardingPlatform {
 public:
  explicit Dripping(std::size_t portion) : portion_(portion) {}

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path, EntryKind kind,
                                               std::unique_ptr<InputFile>& file) override {
    const std::error_code code = ForwardingPlatform::OpenForReading(path, kind, file);
    if (file != nullptr) {
      file = std::make_unique<Drip>(std::move(file), portion_);
    }
    return code;
  }

 private:
  class Drip : public InputFile {
   public:
    Drip(std::unique_ptr<InputFile> file, std::size_t portion)
        : file_(std::move(file)), portion_(portion) {}
    [[nodiscard]] std::error_code Read(char* buffer, std::size_t size,
                                       std::size_t& count) override {
      return file_->Read(buffer, std::min(size, portion_), count);
    }

   private:
    std::unique_ptr<InputFile> file_;
    std::size_t portion_;
  };

  std::size_t portion_;
};

class PlatformInPlace {
 public:
  explicit PlatformInPlace(Platform& platform) : before_(SetCurrentPlatform(&platform)) {}
  PlatformInPlace(const PlatformInPlace&) = delete;
  PlatformInPlace& operator=(const PlatformInPlace&) = delete;
  ~PlatformInPlace() { SetCurrentPlatform(before_); }

 private:
  Platform* before_;
};

TEST_P(ListInput, GivesTheSameItemsInSmallPortions) {
  const TestTree tree;
  for (const std::size_t portion : {std::size_t{1}, std::size_t{2}, std::size_t{3}}) {
    SCOPED_TRACE(portion);
    Dripping platform(portion);
    const PlatformInPlace inPlace(platform);
    EXPECT_EQ(ItemsOf(tree, GetParam().bytes), GetParam().items);
  }
}

using namespace std::string_view_literals;

std::string NameOf(const testing::TestParamInfo<Rule>& rule) {
  return rule.param.name;
}

INSTANTIATE_TEST_SUITE_P(Unquoted, ListInput,
                         testing::ValuesIn<Rule>({
                             {"EmptyFile", "", {}},
                             {"OneItem", "a", {"a"}},
                             {"OneLine", "a\r\n", {"a"}},
                             {"CommasAndLineEnds", "a,b\r\nc,d\r\n", {"a", "b", "c", "d"}},
                             {"NoLineEndAtTheEnd", "a,b\r\nc", {"a", "b", "c"}},
                             {"LeadingBlanksAndTabs", " \t a,\t\tb\r\n  c\r\n", {"a", "b", "c"}},
                             {"TrailingBlanks", "a  ,b \r\nc   ", {"a", "b", "c"}},
                             {"BlanksInsideStay", "a  b,c\td\r\n", {"a  b", "c\td"}},
                             {"EmptyItems", "a,,b\r\n", {"a", "", "b"}},
                             {"ACommaAtTheEndOfTheFileEndsItsItemOnly", "a,", {"a"}},
                             {"ACommaBeforeALineEnd", "a,\r\nb\r\n", {"a", "", "b"}},
                             {"ACommaFirst", ",a\r\n", {"", "a"}},
                             {"OnlyCommas", ",,,", {"", "", ""}},
                             {"AQuoteInsideIsAPlainCharacter", "a\"b,c\"\r\n", {"a\"b", "c\""}},
                             {"ANulIsAPlainCharacter", "a\0b,c"sv, {std::string("a\0b", 3), "c"}},
                             {"ControlZIsAPlainCharacter", "a\x1A,b", {"a\x1A", "b"}},
                             {"TheHeaderOfAFile",
                              "#MODEL_NO : PX12A\r\n#COMMENT  : \r\n!End\r\n",
                              {"#MODEL_NO : PX12A", "#COMMENT  :", "!End"}},
                         }),
                         NameOf);

INSTANTIATE_TEST_SUITE_P(LineEnds, ListInput,
                         testing::ValuesIn<Rule>({
                             {"LoneLf", "a\nb\nc", {"a", "b", "c"}},
                             {"LoneCr", "a\rb\rc\r", {"a", "b", "c"}},
                             {"Mixed", "a\r\nb\nc\rd\r\n", {"a", "b", "c", "d"}},
                             {"LfCrIsTwoLineEnds", "a\n\rb", {"a", "", "b"}},
                             {"CrCrLfIsTwoLineEnds", "a\r\r\nb", {"a", "", "b"}},
                             {"CrLfLfIsTwoLineEnds", "a\r\n\nb", {"a", "", "b"}},
                             {"AnEmptyLineIsOneEmptyItem", "a\r\n\r\nb\r\n", {"a", "", "b"}},
                             {"EmptyLinesAlone", "\r\n\r\n", {"", ""}},
                             {"OneLineFeed", "\n", {""}},
                             {"ALineOfBlanks", "a\r\n   \r\nb\r\n", {"a", "", "b"}},
                             {"ALineOfTabs", "a\r\n\t\t\r\nb\r\n", {"a", "", "b"}},
                         }),
                         NameOf);

INSTANTIATE_TEST_SUITE_P(
    Quoted, ListInput,
    testing::ValuesIn<Rule>({
        {"Plain", "\"a\"\r\n", {"a"}},
        {"TheEmptyText", "\"\",b\r\n", {"", "b"}},
        {"Commas", "\"a,b\",c\r\n", {"a,b", "c"}},
        {"LineEndsStayAsTheyAre", "\"a\r\nb\nc\rd\",e\r\n", {"a\r\nb\nc\rd", "e"}},
        {"BlanksStay", "\"  a \t\",b\r\n", {"  a \t", "b"}},
        {"BlanksBeforeTheQuote", " \t\"a,b\"\r\n", {"a,b"}},
        {"BlanksBehindTheQuote", "\"a\"  ,b\r\n", {"a", "b"}},
        {"TextBehindTheQuoteIsPassedOver", "\"a\"xyz,b\r\nc\r\n", {"a", "b", "c"}},
        {"TextBehindTheQuoteUpToTheLineEnd", "\"a\" x y\r\nb\r\n", {"a", "b"}},
        {"TextBehindTheQuoteUpToALoneCr", "\"a\"x\rb", {"a", "b"}},
        {"TextBehindTheQuoteUpToTheEndOfTheFile", "\"a\"xyz", {"a"}},
        {"AQuoteBehindTheQuoteIsPassedOverToo", "\"a\"\"b\",c\r\n", {"a", "c"}},
        {"UnclosedRunsToTheEndOfTheFile", "x,\"a,b\r\nc\r\n", {"x", "a,b\r\nc\r\n"}},
        {"AQuoteAsTheLastByte", "x,\"", {"x", ""}},
        {"EndOfTheFileBehindTheQuote", "x,\"a\"", {"x", "a"}},
        {"ALineEndBehindTheQuoteIsItsTerminator", "\"a\"\r\n\r\nb\r\n", {"a", "", "b"}},
    }),
    NameOf);

TEST(ItemReader, TheEndIsReachedRightBehindTheLastTerminator) {
  const TestTree tree;
  for (const std::string_view bytes :
       {"a\r\n", "a\n", "a\r", "a,", "a", "\"a\"\r\n", "\"a\",", "\"a\"", "\"a"}) {
    SCOPED_TRACE(bytes);
    tree.Write(kPath, bytes);
    ItemReader reader(kPath);
    EXPECT_FALSE(reader.AtEnd());
    EXPECT_EQ(reader.ReadItem(), "a");
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_TRUE(reader.AtEnd());
  }
}

TEST(ItemReader, AByteBehindTheTerminatorIsNotTheEnd) {
  const TestTree tree;
  for (const std::string_view bytes : {"a\r\n\r\n", "a\n\r", "a\r\r", "a,,", "a\r\n,"}) {
    SCOPED_TRACE(bytes);
    tree.Write(kPath, bytes);
    ItemReader reader(kPath);
    EXPECT_EQ(reader.ReadItem(), "a");
    EXPECT_FALSE(reader.AtEnd());
    EXPECT_EQ(reader.ReadItem(), "");
    EXPECT_TRUE(reader.AtEnd());
  }
}

TEST(ItemReader, ReadingPastTheEndIsAnErrorOfTheFileAndItsLine) {
  const TestTree tree;
  tree.Write(kPath, "a\r\nb,c");
  ItemReader reader(kPath);
  EXPECT_EQ(ReadAll(reader), (Items{"a", "b", "c"}));
  const Error error = ErrorOf([&] { (void)reader.ReadItem(); });
  EXPECT_EQ(error.Kind(), ErrorKind::InputPastEnd);
  EXPECT_EQ(error.Path(), kPath);
  EXPECT_EQ(error.Line(), 2);
  EXPECT_TRUE(Contains(error.what(), kPath)) << error.what();
  EXPECT_EQ(ErrorOf([&] { (void)reader.ReadItem(); }).Kind(), ErrorKind::InputPastEnd);
  std::string item;
  EXPECT_FALSE(reader.TryReadItem(item));
}

TEST(ItemReader, AnEmptyFileHasNoItem) {
  const TestTree tree;
  tree.Write(kPath, "");
  ItemReader reader(kPath);
  EXPECT_TRUE(reader.AtEnd());
  const Error error = ErrorOf([&] { (void)reader.ReadItem(); });
  EXPECT_EQ(error.Kind(), ErrorKind::InputPastEnd);
  EXPECT_EQ(error.Path(), kPath);
  EXPECT_EQ(error.Line(), 1);
}

TEST(ItemReader, TellsTheLineOnWhichAnItemBegins) {
  const TestTree tree;
  tree.Write(kPath, "a,b\r\n\r\nc\nd\re,\"f\r\ng\nh\ri\",j\r\nk");
  ItemReader reader(kPath);
  const std::vector<std::pair<std::string, int>> expected = {
      {"a", 1}, {"b", 1}, {"", 2}, {"c", 3}, {"d", 4}, {"e", 5}, {"f\r\ng\nh\ri", 5},
      {"j", 8}, {"k", 9}};
  for (const auto& [item, line] : expected) {
    SCOPED_TRACE(item);
    EXPECT_EQ(reader.ReadItem(), item);
    EXPECT_EQ(reader.Line(), line);
  }
  EXPECT_TRUE(reader.AtEnd());
}

TEST(ItemReader, AnErrorOfAnInterpretationIsOneOfTheFileAndLine) {
  const TestTree tree;
  tree.Write(kPath, "a\r\nb\r\n");
  ItemReader reader(kPath);
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

// What stands at the border of two read blocks must be read like anything else.
TEST(ItemReader, TheBorderOfTheReadBlocksChangesNothing) {
  const TestTree tree;
  const std::vector<std::pair<std::string_view, Items>> tails = {
      {"\r\nb\r\n", {"", "b"}},
      {"\rb\r", {"", "b"}},
      {"\nb\n", {"", "b"}},
      {",b", {"", "b"}},
      {"  ,  b", {"", "b"}},
      {"\r\n", {""}},
      {"\r\n\r\nb", {"", "", "b"}},
      {"\r\r\nb", {"", "", "b"}},
      {",\"q,\r\n\" x,b", {"", "q,\r\n", "b"}},
      {"  y\r\n \t b", {"  y", "b"}},
      {",\"\"\r\n\"z\"", {"", "", "z"}},
  };
  for (std::size_t offset = kBlock - 12; offset <= kBlock + 2; ++offset) {
    for (const auto& [tail, items] : tails) {
      SCOPED_TRACE(testing::Message() << offset << ' ' << testing::PrintToString(tail));
      const std::string head(offset, 'x');
      Items expected = items;
      expected.front() = head + expected.front();
      ASSERT_EQ(ItemsOf(tree, head + std::string(tail)), expected);
    }
  }
}

TEST(ItemReader, TheEndIsSeenWhenALineEndIsSplitOverTwoBlocks) {
  const TestTree tree;
  tree.Write(kPath, std::string(kBlock - 1, 'x') + "\r\n");
  ItemReader reader(kPath);
  EXPECT_EQ(reader.ReadItem(), std::string(kBlock - 1, 'x'));
  EXPECT_EQ(reader.Line(), 1);
  EXPECT_TRUE(reader.AtEnd());
}

TEST(ItemReader, ALineEndSplitOverTwoBlocksIsOneLineEnd) {
  const TestTree tree;
  tree.Write(kPath, std::string(kBlock - 1, 'x') + "\r\nb");
  ItemReader reader(kPath);
  (void)reader.ReadItem();
  EXPECT_EQ(reader.ReadItem(), "b");
  EXPECT_EQ(reader.Line(), 2);
}

TEST(ItemReader, AnItemMayBeLongerThanABlock) {
  const TestTree tree;
  const std::string whole(3 * kBlock + 5, 'x');
  EXPECT_EQ(ItemsOf(tree, whole + ",b"), (Items{whole, "b"}));
  EXPECT_EQ(ItemsOf(tree, "\"" + whole + "\r\n,\",b"), (Items{whole + "\r\n,", "b"}));
  EXPECT_EQ(ItemsOf(tree, "\"a\"" + whole + ",b"), (Items{"a", "b"}));
  EXPECT_EQ(ItemsOf(tree, std::string(3 * kBlock, ' ') + "a" + std::string(3 * kBlock, ' ') + ",b"),
            (Items{"a", "b"}));
  EXPECT_EQ(ItemsOf(tree, std::string(2 * kBlock, ',')), Items(2 * kBlock));
}

constexpr std::size_t kMostBytes = 4194304;  // 4 MiB

TEST(ItemReader, AFileOfFourMebibytesIsReadToItsEnd) {
  const TestTree tree;
  const std::string item(kMostBytes - 4, 'x');
  EXPECT_EQ(ItemsOf(tree, "a\n" + item + "\nb"), (Items{"a", item, "b"}));
}

TEST(ItemReader, ALargerFileIsAnErrorOfTheFileAsSoonAsThatIsKnown) {
  const std::string path = "c:\\large";
  const TestTree tree;
  const std::string beyond(kMostBytes, 'x');
  for (const std::string& large :
       {beyond, "\"" + beyond, "\"\"" + beyond, std::string(kMostBytes, ' '),
        std::string(kMostBytes, '\0'), beyond.substr(1)}) {
    tree.Write(path, "a\n" + large);
    ItemReader reader(path);
    EXPECT_EQ(reader.ReadItem(), "a");
    const Error error = ErrorOf([&] { (void)reader.ReadItem(); });
    EXPECT_EQ(error.Kind(), ErrorKind::NotAFile);
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(error.Text(),
              "Cannot read the file: it is larger than any data file. Put the right file in its "
              "place, then try again.");
    EXPECT_EQ(ErrorOf([&] { (void)reader.ReadItem(); }).Kind(), ErrorKind::NotAFile);
    EXPECT_EQ(ErrorOf([&] { (void)reader.AtEnd(); }).Kind(), ErrorKind::NotAFile);
    std::string item;
    EXPECT_FALSE(reader.TryReadItem(item));
  }
}

TEST(ItemReader, AFileOfShortItemsIsReadNoFurtherThanItsLimit) {
  const TestTree tree;
  FaultPlatform platform;
  std::string bytes;
  while (bytes.size() < kMostBytes + 4 * kBlock) {
    bytes += "\n\r\n,#x\n!x\n\"x\"\n \n";
  }
  tree.Write(kPath, bytes);
  ItemReader reader(kPath);
  // One block more than the limit shows that there is more; reading on would fail otherwise.
  platform.passes = static_cast<int>(kMostBytes / kBlock) + 1;
  platform.Set(FaultPlatform::Step::Read);
  const Error error = ErrorOf([&] {
    while (!reader.AtEnd()) {
      (void)reader.ReadItem();
    }
  });
  EXPECT_EQ(error.Kind(), ErrorKind::NotAFile) << error.what();
  EXPECT_EQ(error.Path(), kPath);
  EXPECT_EQ(platform.passes, 0);
  EXPECT_EQ(platform.faults, 0);
}

TEST(ItemReader, BytesAreFileCharactersOrUtf8) {
  const TestTree tree;
  tree.Write(kPath, "1 \xB5H,\x80\x81,\"\xFF\"\r\n");
  ItemReader decoded(kPath);
  EXPECT_EQ(ReadAll(decoded), (Items{"1 \xC2\xB5H", "\xE2\x82\xAC\xC2\x81", "\xC3\xBF"}));

  tree.Write(kPath,
             "Dir=c:\\Pr\xC3\xBC"
             "fung,\"\xE2\x82\xAC\"\r\n");
  ItemReader plain;
  ASSERT_FALSE(plain.Open(tree.Native(kPath).string(), TextEncoding::Utf8));
  EXPECT_EQ(ReadAll(plain), (Items{"Dir=c:\\Pr\xC3\xBC"
                                   "fung",
                                   "\xE2\x82\xAC"}));
}

TEST(ItemReader, OpensFilesByBothKindsOfPath) {
  const TestTree tree;
  tree.Write(kPath, "a");
  ItemReader byNativePath(tree.Native(kPath).string(), "as shown");
  EXPECT_EQ(byNativePath.Path(), "as shown");
  EXPECT_EQ(byNativePath.ReadItem(), "a");
  const Error error = ErrorOf([&] { (void)byNativePath.ReadItem(); });
  EXPECT_EQ(error.Path(), "as shown");
  ItemReader byPathText("C:/CALFACTORS/px12a/sn12345");
  EXPECT_EQ(byPathText.Path(), "C:/CALFACTORS/px12a/sn12345");
  EXPECT_EQ(byPathText.ReadItem(), "a");
}

TEST(ItemReader, AMissingFileIsAnErrorOfItsPath) {
  const TestTree tree;
  const Error error = ErrorOf([] { const ItemReader reader(kPath); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), kPath);
  ItemReader reader;
  EXPECT_EQ(reader.Open(tree.Native(kPath).string()), std::errc::no_such_file_or_directory);
}

TEST(ItemReader, AFolderIsNoFile) {
  const TestTree tree;
  tree.MakeFolders(kPath);
  const Error error = ErrorOf([] { const ItemReader reader(kPath); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotAFile);
  EXPECT_EQ(error.Path(), kPath);
  ItemReader reader;
  EXPECT_EQ(reader.Open(tree.Native(kPath).string()), std::errc::is_a_directory);
}

// Opened like a file, a pipe without a writer would hang the program for good.
TEST(ItemReader, APipeIsNoFileAndIsNotWaitedFor) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors\\PX12A");
  ASSERT_EQ(::mkfifo(tree.Native(kPath).c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf([] { const ItemReader reader(kPath); }).Kind(), ErrorKind::NotAFile);
  ItemReader reader;
  EXPECT_EQ(reader.Open(tree.Native(kPath).string()), std::errc::not_supported);
}

TEST(ItemReader, ADeviceIsNoFileAndALinkToAFileIsOne) {
  const TestTree tree;
  tree.Write("c:\\real", "a");
  std::filesystem::create_symlink("/dev/zero", tree.Native("c:\\device"));
  std::filesystem::create_symlink("real", tree.Native("c:\\link"));
  EXPECT_EQ(ErrorOf([] { const ItemReader reader("c:\\device"); }).Kind(), ErrorKind::NotAFile);
  ItemReader reader("c:\\link");
  EXPECT_EQ(ReadAll(reader), Items{"a"});
}

// A file whose disk fails behind its first bytes.
class Broken : public ForwardingPlatform {
 public:
  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& /*path*/,
                                               EntryKind /*kind*/,
                                               std::unique_ptr<InputFile>& file) override {
    file = std::make_unique<Failing>();
    return {};
  }

 private:
  class Failing : public InputFile {
   public:
    [[nodiscard]] std::error_code Read(char* buffer, std::size_t /*size*/,
                                       std::size_t& count) override {
      count = 0;
      if (std::exchange(begun_, true)) {
        return std::make_error_code(std::errc::io_error);
      }
      buffer[0] = 'a';
      buffer[1] = ',';
      buffer[2] = 'b';
      count = 3;
      return {};
    }

   private:
    bool begun_ = false;
  };
};

TEST(ItemReader, AFailureOfTheDiskIsNoEndOfTheFile) {
  const TestTree tree;
  Broken platform;
  const PlatformInPlace inPlace(platform);
  ItemReader reader(kPath);
  EXPECT_EQ(reader.ReadItem(), "a");
  const Error error = ErrorOf([&] { (void)reader.ReadItem(); });
  EXPECT_EQ(error.Kind(), ErrorKind::System);
  EXPECT_EQ(error.Path(), kPath);

  ItemReader trying(kPath);
  std::string item;
  ASSERT_TRUE(trying.TryReadItem(item));
  EXPECT_EQ(item, "a");
  EXPECT_FALSE(trying.TryReadItem(item));
}

}  // namespace
}  // namespace tarvell
