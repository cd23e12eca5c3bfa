// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRRT520C_H
#define TARVELL_CORE_CALDATA_CINSTRRT520C_H

#include <array>

#include "core/caldata/CapacitorSet.h"

namespace tarvell {

/// Set C: three members, and a fourth with option 001.
class cInstrRT520C final : public CapacitorSet {
 public:
  cInstrRT520C() : CapacitorSet(kTraits) {}

  // clang-format off
  static constexpr std::array<CapacitorFormat, 4> kCapacitance = {{
      // page, rows, pattern
      {0, kFirstRow, kLastRow, "#0.0000#"},
      {1, kFirstRow, kLastRow, "##0.000#"},
      {2, kFirstRow, kLastRow, "0.00000#"},
      {3, kFirstRow, kLastRow, "#0.0000#"},
  }};

  static constexpr std::array<CapacitorFormat, 1> kUncertainty = {{
      // page, rows, pattern, in ppm
      {kAnyPage, kFirstRow, kLastRow, "0.0000", "#0"},
  }};

  static constexpr std::array<CapacitorFormat, 1> kDissipation = {{
      {kAnyPage, kFirstRow, kLastRow, "0.00000"},
  }};
  // clang-format on

  static constexpr CapacitorSetTraits kTraits = {
      .modelCode = "RT520C",
      .pageNames = {"RT525A", "RT526A", "RT527A", "RT528A"},
      .units = {"nF", "nF", "uF", "uF"},
      .otherUnit = "",
      .normalisesCapacitance = false,
      .hasOption = true,
      .capacitance = kCapacitance,
      .uncertainty = kUncertainty,
      .dissipation = kDissipation};
};

}  // namespace tarvell

#endif
