// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/platform/Error.h"
#include "core/text/Words.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using Names = std::vector<std::string>;

using namespace std::string_view_literals;

struct Split {
  std::string_view line;
  Names words;
};

class SplitWordsOf : public testing::TestWithParam<Split> {};

TEST_P(SplitWordsOf, GivesTheWords) {
  Names words(21, "before");
  const std::int16_t count = SplitWords(GetParam().line, words);
  EXPECT_EQ(count, static_cast<std::int16_t>(GetParam().words.size()));
  Names expected = GetParam().words;
  expected.resize(20);
  expected.emplace_back("before");  // the last place is left as it was
  EXPECT_EQ(words, expected);
}

INSTANTIATE_TEST_SUITE_P(SplitWords, SplitWordsOf,
                         testing::ValuesIn<Split>({
                             {"  a   b\tc ", {"a", "b", "c"}},
                             {"", {}},
                             {"    ", {}},
                             {"a", {"a"}},
                             {"one two", {"one", "two"}},
                             {"one two ", {"one", "two"}},
                             {"\t\r\n\b\f\v", {}},
                             {"a\0b"sv, {"a", "b"}},
                             {"\0\0a\0\0"sv, {"a"}},
                             {"a\tb", {"a", "b"}},
                             {"a\r\nb", {"a", "b"}},
                             {"a\rb", {"a", "b"}},
                             {"a\nb", {"a", "b"}},
                             {"a\bb", {"a", "b"}},
                             {"a\fb", {"a", "b"}},
                             {"a\vb", {"a", "b"}},
                             {"a \t\r\n\b\f\v b", {"a", "b"}},
                             {"a\x01"
                              "b",
                              {"a\x01"
                               "b"}},
                             {"a,b;c:d", {"a,b;c:d"}},
                             {"\xC2\xB5 \xE2\x82\xAC", {"\xC2\xB5", "\xE2\x82\xAC"}},
                             {"a\xC2\xA0"
                              "b",
                              {"a\xC2\xA0"
                               "b"}},
                         }));

std::string Numbered(int count) {
  std::string line;
  for (int i = 1; i <= count; ++i) {
    line += "w" + std::to_string(i) + " ";
  }
  return line;
}

TEST(SplitWords, StopsBehindThirtyWords) {
  for (const int count : {30, 31, 35}) {
    SCOPED_TRACE(count);
    Names words(40, "before");
    EXPECT_EQ(SplitWords(Numbered(count), words), 30);
    EXPECT_EQ(words[0], "w1");
    EXPECT_EQ(words[29], "w30");
    for (std::size_t i = 30; i < 39; ++i) {
      EXPECT_EQ(words[i], "") << i;
    }
    EXPECT_EQ(words[39], "before");
  }
}

TEST(SplitWords, FillsTheLastPlaceToo) {
  Names words(3, "before");
  EXPECT_EQ(SplitWords("a b c", words), 3);
  EXPECT_EQ(words, (Names{"a", "b", "c"}));
  EXPECT_EQ(SplitWords("d", words), 1);
  EXPECT_EQ(words, (Names{"d", "", "c"}));
}

TEST(SplitWords, AWordWithoutAPlaceIsAnIndexError) {
  Names words(3);
  EXPECT_EQ(ErrorOf([&] { (void)SplitWords("a b c d", words); }).Kind(), ErrorKind::Index);
  Names header(21);
  EXPECT_EQ(SplitWords(Numbered(21), header), 21);
  EXPECT_EQ(ErrorOf([&] { (void)SplitWords(Numbered(22), header); }).Kind(), ErrorKind::Index);
  Names many(30);
  EXPECT_EQ(SplitWords(Numbered(31), many), 30);
}

}  // namespace
}  // namespace tarvell
