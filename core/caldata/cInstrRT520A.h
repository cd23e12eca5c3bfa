// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRRT520A_H
#define TARVELL_CORE_CALDATA_CINSTRRT520A_H

#include <array>

#include "core/caldata/CapacitorSet.h"

namespace tarvell {

/// Set A: four members, eight frequencies each.
class cInstrRT520A final : public CapacitorSet {
 public:
  cInstrRT520A() : CapacitorSet(kTraits) {}

  // clang-format off
  static constexpr std::array<CapacitorFormat, 10> kCapacitance = {{
      // page, rows, pattern
      {0, 1, 1, "0.000000"},
      {0, 2, 5, "0.00000"},
      {0, 6, 8, "0.0000"},
      {1, 1, 6, "#0.00000"},
      {1, 7, 8, "#0.0000"},
      {2, 1, 4, "##0.0000"},
      {2, 5, 8, "##0.000"},
      {3, 1, 2, "###0.000"},
      {3, 3, 6, "###0.00"},
      {3, 7, 8, "###0.0"},
  }};

  static constexpr std::array<CapacitorFormat, 10> kUncertainty = {{
      // page, rows, pattern, in ppm
      {0, 1, 1, "0.0000", "#0"},
      {0, 2, 5, "0.000",  "0.000"},
      {0, 6, 8, "0.00",   "0.00"},
      {1, 1, 6, "0.0000", "#0"},
      {1, 7, 8, "0.000",  "0.000"},
      {2, 1, 4, "0.0000", "#0"},
      {2, 5, 8, "0.000",  "0.000"},
      {3, 1, 2, "0.0000", "#0"},
      {3, 3, 6, "0.000",  "0.000"},
      {3, 7, 8, "0.00",   "0.00"},
  }};

  static constexpr std::array<CapacitorFormat, 2> kDissipation = {{
      {3, 8, 8, "0.0000"},
      {kAnyPage, kFirstRow, kLastRow, "0.00000"},
  }};
  // clang-format on

  static constexpr CapacitorSetTraits kTraits = {
      .modelCode = "RT520A",
      .pageNames = {"RT521A", "RT522A", "RT523A", "RT524A"},
      .units = {"pF", "pF", "pF", "pF"},
      .otherUnit = "pF",
      .normalisesCapacitance = true,
      .hasOption = false,
      .capacitance = kCapacitance,
      .uncertainty = kUncertainty,
      .dissipation = kDissipation};
};

}  // namespace tarvell

#endif
