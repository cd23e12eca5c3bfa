// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CAPTIONUNIT_H
#define TARVELL_EXCHANGE_CAPTIONUNIT_H

#include <string>
#include <string_view>

namespace tarvell {

/// The text of the unit that a caption names: "Frequency [MHz]", "Frequenz / MHz", "f in MHz"; ""
/// for none, and for a caption with a power of ten, which the values would need.
[[nodiscard]] std::string UnitOfCaption(std::string_view caption);

/// The text that a caption without a known unit has in the place of a unit: "xHz" of "f [xHz]",
/// "10^-6" of "tan d x 10^-6"; "" for none. In round brackets only what looks like a unit counts,
/// because "Factor (mean)" has no unit.
[[nodiscard]] std::string UnknownUnitOf(std::string_view caption);

}  // namespace tarvell

#endif
