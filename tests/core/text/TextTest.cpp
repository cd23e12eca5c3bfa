// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text/FileCharacters.h"
#include "core/text/NaturalOrder.h"
#include "core/text/PercentEscapes.h"
#include "core/text/Text.h"
#include "core/text/Words.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using namespace std::string_view_literals;

using test::Contains;
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

TEST(Text, NaturalKeysCompareNumbersByTheirValueInAnyCase) {
  const std::vector<std::string> sorted = {"",
                                           "-",
                                           "9",
                                           "10",
                                           std::string(254, '1'),
                                           std::string(255, '1'),
                                           std::string(256, '1'),
                                           "A",
                                           "a0",
                                           "a1",
                                           "A01b",
                                           "A2",
                                           "BENCH2",
                                           "bench10",
                                           "BENCH10a",
                                           "C-9.5",
                                           "C-9.10",
                                           "_",
                                           "\u00B5"};
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    for (std::size_t j = 0; j < sorted.size(); ++j) {
      EXPECT_EQ(NaturalKey(sorted[i]) <=> NaturalKey(sorted[j]), i <=> j)
          << sorted[i] << " " << sorted[j];
    }
  }
  EXPECT_EQ(NaturalKey("Px12A"), NaturalKey("pX012a"));
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

TEST(SplitWords, FillsTheLastPlaceTooAndThrowsAnIndexErrorForAWordWithoutAPlace) {
  Names words(3, "before");
  EXPECT_EQ(SplitWords("a b c", words), 3);
  EXPECT_EQ(words, (Names{"a", "b", "c"}));
  EXPECT_EQ(ErrorOf([&] { (void)SplitWords("a b c d", words); }).Kind(), ErrorKind::Index);
  Names many(30);
  EXPECT_EQ(SplitWords(Numbered(31), many), 30);
}

// The characters of the bytes 80 to 9F. Every other byte has the character of its number.
constexpr std::array<char32_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CharacterOf(int byte) {
  return byte >= 0x80 && byte <= 0x9F ? kUpperControls[static_cast<std::size_t>(byte - 0x80)]
                                      : static_cast<char32_t>(byte);
}

// UTF-8 of a character that a byte can stand for.
std::string Utf8(char32_t character) {
  std::string text;
  const auto add = [&text](char32_t unit) { text += static_cast<char>(unit); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | (character >> 6));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xE0 | (character >> 12));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  }
  return text;
}

TEST(FileCharacters, MapEveryByteToItsCharacterAndBack) {
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    const std::string one(1, static_cast<char>(byte));
    const std::string character = Utf8(CharacterOf(byte));
    EXPECT_EQ(DecodeFileText(one), character);
    EXPECT_EQ(EncodeFileText(character), one);
    std::string appended = "x";
    AppendDecoded(appended, one);
    EXPECT_EQ(appended, "x" + character);
  }
  EXPECT_EQ(DecodeFileText("\x80z\xB5"), "\u20ACz\u00B5");
  EXPECT_EQ(EncodeFileText("\u20ACz\u00B5"), "\x80z\xB5");
}

TEST(FileCharacters, AreExactlyThoseOfTheBytes) {
  std::set<char32_t> held;
  for (int byte = 0; byte < 256; ++byte) {
    held.insert(CharacterOf(byte));
  }
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    ASSERT_EQ(IsFileCharacter(character), held.contains(character))
        << "character " << static_cast<std::uint32_t>(character);
  }
  EXPECT_FALSE(IsFileCharacter(0x110000));
  EXPECT_FALSE(IsFileCharacter(0xFFFFFFFF));
}

TEST(FileCharacters, NameTheFirstCharacterThatAFileCannotHold) {
  // The Greek letter, mu (not the micro sign), A with macron, the ohm sign, a byte-order mark and a
  // character of four bytes. Byte 80 is the euro sign, so the character of number 80 has no byte.
  for (const std::string character :
       {"\u03A9", "\u03BC", "\u0100", "\u2126", "\uFEFF", "\U0001F600", "\xC2\x80", "\xC2\x9F"}) {
    SCOPED_TRACE(character);
    const Error error = ErrorOf([&] { (void)EncodeFileText("12 " + character + " \u0398"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.Text(), character)) << error.Text();
    EXPECT_FALSE(Contains(error.Text(), "\u0398")) << error.Text();
    EXPECT_EQ(FirstForeignCharacter("12 " + character + " \u0398"), character);
  }
  EXPECT_EQ(FirstForeignCharacter("12.5 \u00B5 \u20AC"), "");
  EXPECT_EQ(FirstForeignCharacter("ab\xFF"), "\xFF");
}

TEST(FileCharacters, RejectTextThatIsNotUtf8) {
  for (const std::string text : {"\x80",              // a continuation byte
                                 "a\xB5z",            // the same, inside
                                 "\xC3",              // an incomplete character
                                 "\xC3(",             // the second byte is no continuation
                                 "\xE2\x82",          // the same, of three bytes
                                 "\xC0\xB1",          // "1" in two bytes
                                 "\xC1\xBF",          // DEL in two bytes
                                 "\xE0\x82\xB5",      // the micro sign in three bytes
                                 "\xF0\x82\x82\xAC",  // the euro sign in four bytes
                                 "\xED\xA0\x80",      // half of a surrogate pair
                                 "\xF4\x90\x80\x80",  // beyond the last character
                                 "\xFE", "abc\xFF"}) {
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(ErrorOf([&] { (void)EncodeFileText(text); }).Kind(), ErrorKind::Character);
  }
}

TEST(PercentEscapes, StandForTheSignItselfAndForEveryByteThatIsNotKept) {
  const auto isKept = [](unsigned char byte) { return byte > ' ' && byte < 0x7F; };
  EXPECT_EQ(PercentEscaped("a b%\xFF/\t", isKept), "a%20b%25%FF/%09");
  EXPECT_EQ(WithoutPercentEscapes("a%20b%25%FF/%09"), "a b%\xFF/\t");
  for (const char* wrong : {"%", "a%4", "%G0", "%0x", "%-1", "% 1"}) {
    EXPECT_EQ(WithoutPercentEscapes(wrong), std::nullopt) << wrong;
  }
}

}  // namespace
}  // namespace tarvell
