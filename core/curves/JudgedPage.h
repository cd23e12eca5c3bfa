// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_JUDGEDPAGE_H
#define TARVELL_CORE_CURVES_JUDGEDPAGE_H

#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"
#include "core/curves/SlipLimits.h"
#include "core/curves/Slips.h"

namespace tarvell {

/// The contents of an editor, and what they are judged by.
struct StateToJudge {
  const Model& model;
  const cifCaldata& data;  ///< an object of the model, for its names and captions
  const EditorState& state;
  const cifCaldata* earlier = nullptr;  ///< the earlier calibration, nullptr for none
  SlipLimit limit;
};

/// What an editor with these contents marks on a page, and says about it, a sentence each.
struct JudgedPage {
  Slips slips;
  std::vector<std::string> sentences;
};
[[nodiscard]] JudgedPage JudgePage(const StateToJudge& set, std::int16_t page);

}  // namespace tarvell

#endif
