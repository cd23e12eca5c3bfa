// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_INDEXCHECK_H
#define TARVELL_CORE_SURVEY_INDEXCHECK_H

#include <string>
#include <string_view>
#include <vector>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// Compares the content of an INDEX with the names in its folder, and adds what does not fit. Upper
/// and lower case make no difference. `remedy` says how a new INDEX is saved.
void CheckIndex(std::string_view bytes, const std::vector<std::string>& names,
                std::string_view remedy, SurveyRow& row);

}  // namespace tarvell

#endif
