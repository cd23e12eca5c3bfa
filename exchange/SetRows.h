// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_SETROWS_H
#define TARVELL_EXCHANGE_SETROWS_H

#include "exchange/PagePlan.h"

namespace tarvell {

/// Plans a page of a set: its rows are fixed, and take values.
[[nodiscard]] PagePlan PlanSetRows(const PageSource& source);

/// As IsNearPage.
[[nodiscard]] bool AreNearSetRows(const PageSource& source);

}  // namespace tarvell

#endif
