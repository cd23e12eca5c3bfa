// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRPX60H_H
#define TARVELL_CORE_CALDATA_CINSTRPX60H_H

#include "core/caldata/StepAttenuator.h"

namespace tarvell {

class cInstrPX60H final : public StepAttenuator {
 public:
  static constexpr StepAttenuatorTraits kTraits = {
      .modelCode = "PX60H",
      .noteLine = "! 50M/1000MHz are calibration points.",
      .frequencyCaption = "Frequency[Hz]",
      .presetFrequency = "5.00E07",
      .narrowing = {100, 15, 15}};

  cInstrPX60H() : StepAttenuator(kTraits) {}
};

}  // namespace tarvell

#endif
