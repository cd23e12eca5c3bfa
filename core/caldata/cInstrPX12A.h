// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRPX12A_H
#define TARVELL_CORE_CALDATA_CINSTRPX12A_H

#include "core/caldata/PowerSensor.h"

namespace tarvell {

class cInstrPX12A final : public PowerSensor {
 public:
  static constexpr PowerSensorTraits kTraits = {
      .modelCode = "PX12A", .frequencyUnit = "MHz", .referenceFrequency = 50.0, .clearsUnit = true};

  cInstrPX12A() : PowerSensor(kTraits) {}
};

}  // namespace tarvell

#endif
