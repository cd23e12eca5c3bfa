// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_HEADERPLAN_H
#define TARVELL_EXCHANGE_HEADERPLAN_H

#include <string>
#include <string_view>

#include "exchange/ImportPlan.h"

namespace tarvell {

/// Whether an item of a certificate is a member of the set, not the set itself.
[[nodiscard]] bool IsMember(const ImportTarget& target, const CertificateItem& item);

/// Whether an item is the member that the page of this name is about.
[[nodiscard]] bool IsMemberOf(const CertificateItem& item, std::string_view page);

/// Whether the certificate is about several instruments, apart from members of the set.
[[nodiscard]] bool HasSeveralInstruments(const ImportTarget& target,
                                         const Certificate& certificate);

/// The serial numbers of which one has to be chosen, with their places; "" if the certificate has
/// only one, or has that of the editor.
[[nodiscard]] std::string SerialsToChooseFrom(const ImportTarget& target,
                                              const Certificate& certificate);

/// Fills in the header fields of the plan, and the doubts about the instrument.
void PlanHeader(const ImportTarget& target, const Certificate& certificate,
                const ImportChoices& choices, ImportPlan& plan);

/// Fills in the serial numbers of the members and the option, when the pages are planned.
void PlanMembers(const ImportTarget& target, const Certificate& certificate,
                 const ImportChoices& choices, ImportPlan& plan);

}  // namespace tarvell

#endif
