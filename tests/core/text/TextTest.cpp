// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text/Text.h"
#include "core/text/Words.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using namespace std::string_view_literals;

using test::ErrorOf;
using Names = std::vector<std::string>;

TEST(Text, TrimmingRemovesBlanksAndNothingElse) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(TrimLeft("  a "), "a ");
  EXPECT_EQ(TrimRight(" a  "), " a");
  EXPECT_EQ(Trim("\t a \t"), "\t a \t");
  EXPECT_EQ(Trim("    "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Text, EveryKindOfLineEndEndsALine) {
  std::string_view rest = "a\r\nb\r\rc\nd";
  for (const char* line : {"a", "b", "", "c", "d"}) {
    EXPECT_FALSE(rest.empty());
    EXPECT_EQ(TakeLine(rest), line);
  }
  EXPECT_EQ(rest, "");
}

TEST(Text, CaseMeansTheLettersAToZ) {
  EXPECT_EQ(ToUpper("px12a-\xC3\xA9z"), "PX12A-\xC3\xA9Z");
  EXPECT_TRUE(EqualsIgnoringCase("New", "NEW"));
  EXPECT_FALSE(EqualsIgnoringCase("\xC3\xA9", "\xC3\x89"));
  EXPECT_FALSE(EqualsIgnoringCase("NEW", "NEWS"));
}

TEST(Text, LengthsCountCharactersNotBytes) {
  const std::string text = "1\u00B5\u20AC4";
  EXPECT_EQ(CharacterCount(text), 4U);
  EXPECT_EQ(FirstCharacters(text, 2), "1\u00B5");
  EXPECT_EQ(LastCharacters(text, 2), "\u20AC4");
  EXPECT_EQ(WithoutFirst(text, 1), "\u00B5\u20AC4");
  EXPECT_EQ(WithoutLast(text, 2), "1\u00B5");
  EXPECT_EQ(FirstCharacters(text, 5), text);
  EXPECT_EQ(LastCharacters(text, 5), text);
  EXPECT_EQ(WithoutFirst(text, 5), "");
  EXPECT_EQ(WithoutLast(text, 5), "");
}

TEST(Text, ARightAlignedTextIsPaddedAndNeverCut) {
  for (const auto& [text, field] :
       {std::pair("50", "*      50"), std::pair("123456789", "*123456789"),
        std::pair("\u00B5", "*       \u00B5")}) {
    std::string line = "*";
    AppendRight(line, text, 8);
    EXPECT_EQ(line, field);
  }
}

TEST(StripNull, EndsAtTheFirstNulAndDropsTrailingBlanks) {
  EXPECT_EQ(StripNull("abc\0def\0ghi"sv), "abc");
  EXPECT_EQ(StripNull("  abc  \0  "sv), "  abc");
  EXPECT_EQ(StripNull("\0abc"sv), "");
  EXPECT_EQ(StripNull("abc\t"), "abc\t");
  EXPECT_EQ(StripNull(""), "");
}

TEST(SplitWords, SeparatesAtBlanksAndControlBlanks) {
  const std::vector<std::pair<std::string_view, Names>> lines = {
      {"", {}},
      {" \t\r\n\b\f\v", {}},
      {"  a   b\tc ", {"a", "b", "c"}},
      {"\0\0a\0b\0"sv, {"a", "b"}},
      {"a\rb\nc\bd\fe\vf", {"a", "b", "c", "d", "e", "f"}},
      {"a\x0E\aa", {"a\x0E\aa"}},
      {"a,b;c:d", {"a,b;c:d"}},
      {"\u00B5 \u20AC\u00A0x", {"\u00B5", "\u20AC\u00A0x"}}};
  for (const auto& [line, expected] : lines) {
    SCOPED_TRACE(line);
    Names words(8, "before");
    EXPECT_EQ(SplitWords(line, words), static_cast<std::int16_t>(expected.size()));
    Names all = expected;
    all.resize(7);
    all.emplace_back("before");  // the last place is left as it was
    EXPECT_EQ(words, all);
  }
}

std::string Numbered(int count) {
  std::string line;
  for (int i = 1; i <= count; ++i) {
    line += "w" + std::to_string(i) + " ";
  }
  return line;
}

TEST(SplitWords, StopsAfterThirtyWords) {
  for (const int count : {30, 31}) {
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

TEST(SplitWords, ThrowsAnIndexErrorForAWordWithoutAPlace) {
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
