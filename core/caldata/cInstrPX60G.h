// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRPX60G_H
#define TARVELL_CORE_CALDATA_CINSTRPX60G_H

#include "core/caldata/StepAttenuator.h"

namespace tarvell {

class cInstrPX60G final : public StepAttenuator {
 public:
  static constexpr StepAttenuatorTraits kTraits = {.modelCode = "PX60G",
                                                   .noteLine = "",
                                                   .frequencyCaption = "Freq[Hz]",
                                                   .presetFrequency = "1.00E05",
                                                   .narrowing = {170, 110, 90}};

  cInstrPX60G() : StepAttenuator(kTraits) {}
};

}  // namespace tarvell

#endif
