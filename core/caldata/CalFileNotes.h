// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALFILENOTES_H
#define TARVELL_CORE_CALDATA_CALFILENOTES_H

#include <string>

#include "core/caldata/mTypeDef.h"
#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"

namespace tarvell {

/// The day on which the calibration of a data file is due again.
[[nodiscard]] FileDate DueDateOf(const CalFileInfo& row);

/// The calibration number, both dates and the comment of a data file, a line each; the due date
/// with the words of its state. What is missing is "(none)"; a date that does not exist is marked
/// "(no such day)".
[[nodiscard]] std::string CalFileNotes(const CalFileInfo& row, DueState state);

}  // namespace tarvell

#endif
