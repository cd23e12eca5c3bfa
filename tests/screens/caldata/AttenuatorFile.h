// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFILE_H
#define TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFILE_H

#include <string>

#include "support/SetModels.h"
#include "support/TestTree.h"

namespace tarvell::test {

/// A step attenuator's data file with these header lines after the model line.
[[nodiscard]] inline std::string AttenuatorFile(const std::string& model, const Texts& header,
                                                const Texts& dataLines) {
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

/// The same with the header that most tests do not look at.
[[nodiscard]] inline std::string AttenuatorFile(const std::string& model, const Texts& dataLines) {
  return AttenuatorFile(model,
                        {"#SER_NO   : 3318A12345", "#CAL_DATE : 20010305", "#CAL_NO   : C-0042",
                         "#DUE_DATE : 20020305", "#COMMENT  : factory"},
                        dataLines);
}

}  // namespace tarvell::test

#endif
