// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_SURVEYPAPER_H
#define TARVELL_CORE_PAPER_SURVEYPAPER_H

#include "core/dates/FileDate.h"
#include "core/paper/PaperDocument.h"
#include "core/survey/ShownRows.h"

namespace tarvell {

/// The shown rows of a survey, in their order, with what they were narrowed by.
[[nodiscard]] PaperDocument SurveyOnPaper(const ShownRows& rows, const FileDate& today);

}  // namespace tarvell

#endif
