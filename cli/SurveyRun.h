// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_SURVEYRUN_H
#define TARVELL_CLI_SURVEYRUN_H

#include <string>

#include "cli/Commands.h"
#include "core/survey/Survey.h"

namespace tarvell::cli {

/// Looks at both trees, and shows a bar meanwhile.
[[nodiscard]] SurveyResult RunSurvey(const Options& options, Console& console);

/// Reports the directories that could not be listed.
void ReportPlaces(const SurveyResult& result, Console& console);

/// Rows as JSON text, as docs/file-formats.md describes it.
[[nodiscard]] std::string SurveyJson(const Options& options, const SurveyResult& result);

}  // namespace tarvell::cli

#endif
