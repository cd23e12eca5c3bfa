// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_GONEFILES_H
#define TARVELL_CORE_SURVEY_GONEFILES_H

#include <set>
#include <span>
#include <string>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// The folders in which the file of a data set or an instrument of these rows is not there any
/// more: somebody has deleted or renamed it since it was read. Lists each folder once and reads no
/// file. A folder that cannot be listed counts as unchanged.
[[nodiscard]] std::set<std::string> FoldersWithGoneFiles(std::span<const SurveyRow> rows);

}  // namespace tarvell

#endif
