// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_VALUECHECK_H
#define TARVELL_CORE_SURVEY_VALUECHECK_H

#include "core/caldata/Models.h"
#include "core/curves/SlipLimits.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// Adds a finding when a value of the data set stands out from its neighbours and the editor would
/// mark it. Only then, the earlier calibration is looked up in the history: a value that this
/// explains is none. A value that fits its neighbours is not compared with an earlier one.
void CheckValues(const Model& model, const cifCaldata& data, const SlipLimits& limits,
                 SurveyRow& row);

}  // namespace tarvell

#endif
