// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_POINTROWS_H
#define TARVELL_EXCHANGE_POINTROWS_H

#include "exchange/PagePlan.h"

namespace tarvell {

/// Plans the table of a sensor or an attenuator: the rows are points, and go through the paste of a
/// whole table. Throws as PlanPage does.
[[nodiscard]] PagePlan PlanPoints(const PageSource& source);

}  // namespace tarvell

#endif
