// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/platform/SystemName.h"

/// Names of Windows, which are characters and not bytes.
namespace tarvell {
namespace {

TEST(NameOnWindows, HasTheCharactersThatTheTextSpellsInUtf8) {
  EXPECT_EQ(SystemName("c:\\P\xC3\x84Z\\\xE2\x82\xAC").native(), L"c:\\P\u00C4Z\\\u20AC");
}

// A tree that is shared with Linux may hold such a name, for example in its journal.
TEST(NameOnWindows, OfATextThatIsNotUtf8HasTheCharactersOfTheFiles) {
  EXPECT_EQ(SystemName("P\xC4Z\x80").native(), L"P\u00C4Z\u20AC");
  EXPECT_EQ(SystemName("\x81").native(), L"\u0081");
}

TEST(NameOnWindows, OfAnEmptyTextIsEmpty) {
  EXPECT_EQ(SystemName("").native(), L"");
}

}  // namespace
}  // namespace tarvell
