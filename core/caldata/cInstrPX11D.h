// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRPX11D_H
#define TARVELL_CORE_CALDATA_CINSTRPX11D_H

#include "core/caldata/PowerSensor.h"

namespace tarvell {

class cInstrPX11D final : public PowerSensor {
 public:
  static constexpr PowerSensorTraits kTraits = {.modelCode = "PX11D",
                                                .frequencyUnit = "MHz",
                                                .referenceFrequency = 50.0,
                                                .clearsUnit = false};

  cInstrPX11D() : PowerSensor(kTraits) {}
};

}  // namespace tarvell

#endif
