// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "core/text/Text.h"

namespace tarvell {
namespace {

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

using namespace std::string_view_literals;

TEST(StripNull, EndsAtTheFirstNulAndDropsTrailingBlanks) {
  EXPECT_EQ(StripNull("abc\0def\0ghi"sv), "abc");
  EXPECT_EQ(StripNull("  abc  \0  "sv), "  abc");
  EXPECT_EQ(StripNull("\0abc"sv), "");
  EXPECT_EQ(StripNull("abc\t"), "abc\t");
  EXPECT_EQ(StripNull(""), "");
}

}  // namespace
}  // namespace tarvell
