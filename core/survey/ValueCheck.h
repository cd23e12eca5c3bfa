// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_VALUECHECK_H
#define TARVELL_CORE_SURVEY_VALUECHECK_H

#include "core/caldata/Models.h"
#include "core/curves/SlipLimits.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// Adds a finding when the editor would mark a value of the data set, or say that a row may be left
/// out: by the earlier calibration, nullptr if there is none, as far as that has the values,
/// otherwise by their neighbours.
void CheckValues(const Model& model, const cifCaldata& data, const cifCaldata* earlier,
                 const SlipLimits& limits, SurveyRow& row);

}  // namespace tarvell

#endif
