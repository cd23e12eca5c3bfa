// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DCCTABLES_H
#define TARVELL_EXCHANGE_DCCTABLES_H

#include <pugixml.hpp>

#include "exchange/Certificate.h"

namespace tarvell {

/// Adds the tables of all results below `root`, the first element of a DCC: each list whose
/// quantities are the columns of a table, and each list of lists of single values, by row or by
/// column. Throws a Type error for more values than any certificate has.
void AddDccTables(pugi::xml_node root, Certificate& certificate);

}  // namespace tarvell

#endif
