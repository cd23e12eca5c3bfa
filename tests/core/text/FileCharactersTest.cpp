// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "core/text/FileCharacters.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;

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

}  // namespace
}  // namespace tarvell
