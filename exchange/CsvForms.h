// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVFORMS_H
#define TARVELL_EXCHANGE_CSVFORMS_H

#include <string>
#include <vector>

#include "exchange/CsvPlaces.h"

namespace tarvell {

/// What the lines have that is not read as it is meant, a sentence each with what to do: quotes
/// that are not closed, tables side by side, and tables with a column for each point.
[[nodiscard]] std::vector<std::string> UnreadForms(const std::vector<DelimitedLine>& lines,
                                                   const std::vector<TablePlace>& tables);

}  // namespace tarvell

#endif
