// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_HEADERPLAN_H
#define TARVELL_EXCHANGE_HEADERPLAN_H

#include <string_view>

#include "exchange/ImportPlan.h"

namespace tarvell {

/// Whether what a certificate calls its model is this model code, perhaps with the maker's name
/// before it or an option after it, and with other blanks and hyphens.
[[nodiscard]] bool NamesModel(std::string_view named, std::string_view code);

/// Fills in the header fields of the plan, and the doubts about the instrument.
void PlanHeader(const ImportTarget& target, const Certificate& certificate,
                const ImportChoices& choices, ImportPlan& plan);

}  // namespace tarvell

#endif
