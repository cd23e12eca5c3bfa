// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRPX13A_H
#define TARVELL_CORE_CALDATA_CINSTRPX13A_H

#include "core/caldata/PowerSensor.h"

namespace tarvell {

class cInstrPX13A final : public PowerSensor {
 public:
  static constexpr PowerSensorTraits kTraits = {
      .modelCode = "PX13A", .frequencyUnit = "GHz", .referenceFrequency = 0.05, .clearsUnit = true};

  cInstrPX13A() : PowerSensor(kTraits) {}
};

}  // namespace tarvell

#endif
