// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_CORE_CALDATA_RESISTORSETFILE_H
#define TARVELL_TESTS_CORE_CALDATA_RESISTORSETFILE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "support/SetStage.h"

namespace tarvell::test {

/// The resistor set in its file.
class ResistorSetFile : public testing::Test, public SetStage {
 protected:
  static constexpr std::int16_t kPages = 7;

  ResistorSetFile() : SetStage(ResistorSet()) {}

  /// Only that page holds rows, whose first cells are these.
  void ExpectRowsOnlyOnPage(std::int16_t page, const Texts& firstColumn,
                            const std::string& what) const {
    for (std::int16_t other = 0; other < kPages; ++other) {
      EXPECT_EQ(FirstColumn(other), other == page ? firstColumn : Texts()) << what << ", " << other;
    }
  }
};

}  // namespace tarvell::test

#endif
