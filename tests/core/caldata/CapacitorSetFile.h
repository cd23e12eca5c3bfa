// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_CORE_CALDATA_CAPACITORSETFILE_H
#define TARVELL_TESTS_CORE_CALDATA_CAPACITORSETFILE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/SetStage.h"

namespace tarvell::test {

/// A capacitor set in its file.
class CapacitorSetStage : public SetStage {
 public:
  using SetStage::SetStage;

 protected:
  /// The header of an object without header values, and the lines after it.
  [[nodiscard]] Texts Header() const {
    return {"#MODEL_NO : " + set_.code,
            "#SER_NO   : ",
            "#CAL_DATE : 00000",
            "#CAL_NO   : ",
            "#DUE_DATE : 00000",
            "#COMMENT  : ",
            "!",
            "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
            "!"};
  }

  /// One page with this serial number. No "!" follows its end.
  [[nodiscard]] Texts PageOf(std::size_t page, const std::string& serial,
                             const Texts& dataLines) const {
    return Joined({{"#" + Name(page) + "    :     " + serial}, dataLines, {"!END"}});
  }

  [[nodiscard]] const std::string& Name(std::size_t page) const { return set_.pages.at(page); }
};

class CapacitorSetFile : public testing::TestWithParam<SetModel>, public CapacitorSetStage {
 protected:
  CapacitorSetFile() : CapacitorSetStage(GetParam()) {}
};

class CapacitorSetAFile : public testing::Test, public CapacitorSetStage {
 protected:
  CapacitorSetAFile() : CapacitorSetStage(CapacitorSetA()) {}
};

class CapacitorSetCFile : public testing::Test, public CapacitorSetStage {
 protected:
  CapacitorSetCFile() : CapacitorSetStage(CapacitorSetC()) {}
};

}  // namespace tarvell::test

#endif
