// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_DUECALENDAR_H
#define TARVELL_CORE_SURVEY_DUECALENDAR_H

#include <ctime>
#include <span>
#include <string>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// An iCalendar file (RFC 5545) with an entry of a whole day for each due date: those of the data
/// sets, and of the instruments whose due date is not a copy. A day after the end of its month
/// counts as the last day of it; any other date that does not exist is left out.
///
/// The identifier of an entry is made of the names of its file and folder, so that importing a
/// later file moves the entry. An instrument without a data set has the identifier that its data
/// set would have; the stations that have it share an entry, on the earliest of their days. Where
/// the data set is that of another instrument, the entry is named after the instrument's own file.
/// `now` is the time of writing.
[[nodiscard]] std::string DueCalendar(std::span<const SurveyRow> rows, std::time_t now);

}  // namespace tarvell

#endif
