// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/FileCharacters.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;

// The characters of the bytes 80 to 9F; the others are those of the same number.
constexpr std::array<char32_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CharacterOf(int byte) {
  return byte >= 0x80 && byte <= 0x9F ? kUpperControls[static_cast<std::size_t>(byte - 0x80)]
                                      : static_cast<char32_t>(byte);
}

// Enough of UTF-8 for what a byte can stand for.
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

TEST(FileCharacters, EveryByteStandsForItsCharacterAndComesBack) {
  std::string bytes;
  std::string characters;
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    const std::string one(1, static_cast<char>(byte));
    const std::string character = Utf8(CharacterOf(byte));
    EXPECT_EQ(DecodeFileText(one), character);
    EXPECT_EQ(EncodeFileText(character), one);
    std::string appended = "x";
    AppendDecoded(appended, one);
    EXPECT_EQ(appended, "x" + character);
    bytes += one;
    characters += character;
  }
  EXPECT_EQ(DecodeFileText(bytes), characters);
  EXPECT_EQ(EncodeFileText(characters), bytes);
}

TEST(FileCharacters, SomeBytesWrittenOutInFull) {
  EXPECT_EQ(DecodeFileText("\x80"), "\xE2\x82\xAC");  // euro sign
  EXPECT_EQ(DecodeFileText("\xB5"), "\xC2\xB5");      // micro sign
  EXPECT_EQ(DecodeFileText("\x9F"), "\xC5\xB8");      // Y with diaeresis
  EXPECT_EQ(DecodeFileText("\x81\x8D\x8F\x90\x9D"),
            "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");  // the unassigned ones
  EXPECT_EQ(DecodeFileText("\xFF"), "\xC3\xBF");
  EXPECT_EQ(DecodeFileText(""), "");
  EXPECT_EQ(EncodeFileText(""), "");
}

TEST(FileCharacters, AFileHoldsExactlyTheCharactersOfItsBytes) {
  std::array<bool, 0x10000> held{};
  for (int byte = 0; byte < 256; ++byte) {
    held[CharacterOf(byte)] = true;
  }
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    const bool expected = character < held.size() && held[character];
    ASSERT_EQ(IsFileCharacter(character), expected)
        << "character " << static_cast<std::uint32_t>(character);
  }
  EXPECT_FALSE(IsFileCharacter(0x110000));
  EXPECT_FALSE(IsFileCharacter(0xFFFFFFFF));
}

TEST(FileCharacters, ACharacterThatAFileCannotHoldIsRefusedByName) {
  const std::vector<std::string> refused = {
      "\xCE\xA9",          // ohm as the Greek letter
      "\xCE\xBC",          // the Greek mu, which is not the micro sign
      "\xC4\x80",          // A with macron
      "\xE2\x84\xA6",      // ohm sign
      "\xEF\xBB\xBF",      // byte-order mark
      "\xF0\x9F\x98\x80",  // a character of four bytes
  };
  for (const std::string& character : refused) {
    SCOPED_TRACE(character);
    const Error error = ErrorOf([&] { (void)EncodeFileText("12 " + character + " kohm"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.Text(), character)) << error.Text();
  }
}

TEST(FileCharacters, TheFirstRefusedCharacterIsTheOneNamed) {
  const Error error = ErrorOf([] { (void)EncodeFileText("a\xCE\xA9\xCE\xBC"); });
  EXPECT_TRUE(Contains(error.Text(), "\xCE\xA9")) << error.Text();
  EXPECT_FALSE(Contains(error.Text(), "\xCE\xBC")) << error.Text();
}

TEST(FileCharacters, TheControlCharacterOfAnAssignedByteIsRefused) {
  // Byte 80 is the euro sign, so the character of number 80 has no byte; 81 has one.
  EXPECT_EQ(ErrorOf([] { (void)EncodeFileText("\xC2\x80"); }).Kind(), ErrorKind::Character);
  EXPECT_EQ(ErrorOf([] { (void)EncodeFileText("\xC2\x9F"); }).Kind(), ErrorKind::Character);
  EXPECT_EQ(EncodeFileText("\xC2\x81"), "\x81");
}

TEST(FileCharacters, TextThatIsNoUtf8IsRefused) {
  const std::vector<std::string> broken = {
      "\x80",              // a byte that only continues
      "a\xB5z",            // the same, inside
      "\xC3",              // ends in the middle of a character
      "\xC3(",             // the second byte continues nothing
      "\xE2\x82",          // ends in the middle
      "\xE2\x28\xAC",      // the second byte is wrong
      "\xC0\xB1",          // "1" in two bytes
      "\xC1\xBF",          // DEL in two bytes
      "\xE0\x82\xB5",      // the micro sign in three bytes
      "\xF0\x82\x82\xAC",  // the euro sign in four bytes
      "\xED\xA0\x80",      // half of a surrogate pair
      "\xF4\x90\x80\x80",  // beyond the last character
      "\xF8\x88\x80\x80\x80",
      "\xFE",
      "abc\xFF",
  };
  for (std::size_t i = 0; i < broken.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(ErrorOf([&] { (void)EncodeFileText(broken[i]); }).Kind(), ErrorKind::Character);
  }
}

TEST(FileCharacters, ANulIsACharacterLikeAnyOther) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(DecodeFileText(text), text);
  EXPECT_EQ(EncodeFileText(text), text);
}

TEST(FirstForeignCharacter, IsTheFirstOneThatAFileCannotHold) {
  EXPECT_EQ(FirstForeignCharacter("12.5 \u00b5 \u20ac"), "");
  EXPECT_EQ(FirstForeignCharacter(""), "");
  EXPECT_EQ(FirstForeignCharacter("\u221212 \u03a9"), "\u2212");
  EXPECT_EQ(FirstForeignCharacter("12\u03a9"), "\u03a9");
  EXPECT_EQ(FirstForeignCharacter("ab\xFF"), "\xFF");
}

}  // namespace
}  // namespace tarvell
