// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_UNREAD_H
#define TARVELL_CORE_SURVEY_UNREAD_H

#include <string>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// What a list lacks where not everything could be read.
enum class Unread {
  Folders,  ///< only what is in the folders that could not be listed: every file has a row
  DueDates  ///< also the due dates of the files that could not be read
};

/// Whether a list lacks something because of what is damaged in this row.
[[nodiscard]] bool LacksSomething(const SurveyRow& row, Unread unread);

/// The sentence about what is damaged in such a row.
[[nodiscard]] std::string TextOfDamage(const SurveyRow& row);

}  // namespace tarvell

#endif
