// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_OPENEDROW_H
#define TARVELL_SCREENS_OVERVIEW_OPENEDROW_H

#include <QWidget>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// Opens what a row of the overview is about: a data set in its editor, an instrument or an INDEX
/// in the screen of its station. Returns when that is closed, whether files may have been changed.
/// Shows a message for a row that cannot be opened; throws the error of a file that cannot be read.
[[nodiscard]] bool OpenRow(QWidget* owner, const SurveyRow& row);

}  // namespace tarvell

#endif
