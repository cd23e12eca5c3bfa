// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_SURVEYRUN_H
#define TARVELL_CLI_SURVEYRUN_H

#include <string>

#include "cli/Commands.h"
#include "core/survey/Survey.h"
#include "core/survey/Unread.h"

namespace tarvell::cli {

/// Looks at both trees, and shows a bar meanwhile.
[[nodiscard]] SurveyResult RunSurvey(const Options& options, Console& console);

/// Reports what is missing on standard error. Returns whether nothing is.
[[nodiscard]] bool ReportUnread(const SurveyResult& result, Unread unread, Console& console);

/// Rows as JSON text, as docs/file-formats.md describes it. `isWhole` is what ReportUnread
/// returned.
[[nodiscard]] std::string SurveyJson(const Options& options, const SurveyResult& result,
                                     bool isWhole);

}  // namespace tarvell::cli

#endif
