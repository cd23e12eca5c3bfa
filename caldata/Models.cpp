// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caldata/Models.h"

#include <algorithm>

namespace tarvell {

const Model* FindModel(std::string_view code) {
  const auto* found = std::find_if(kModels.begin(), kModels.end(),
                                   [&](const Model& model) { return model.code == code; });
  return found == kModels.end() ? nullptr : found;
}

}  // namespace tarvell
