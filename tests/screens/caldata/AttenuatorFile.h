// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFILE_H
#define TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFILE_H

#include <string>

#include "support/SetModels.h"
#include "support/TestTree.h"

namespace tarvell::test {

inline const Texts kAttenuatorHeader = {"#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                                        "#CAL_NO   : C-0042", "#DUE_DATE : 20020305",
                                        "#COMMENT  : lab"};

/// A step attenuator's data file. `header` holds the header lines after the model line.
[[nodiscard]] inline std::string AttenuatorFile(const std::string& model, const Texts& dataLines,
                                                const Texts& header = kAttenuatorHeader) {
  Texts lines = {"#MODEL_NO : " + model};
  lines.insert(lines.end(), header.begin(), header.end());
  lines.insert(lines.end(), {"!", "! Setting  /  Freq  /  CalData "});
  if (model == "PX60H") {
    lines.emplace_back("! 50M/1000MHz are calibration points.");
  }
  lines.insert(lines.end(), dataLines.begin(), dataLines.end());
  lines.emplace_back("!End");
  return Lines(lines);
}

}  // namespace tarvell::test

#endif
