// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/platform/Error.h"
#include "core/text/Words.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using Names = std::vector<std::string>;

using namespace std::string_view_literals;

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
