// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_WAITING_H
#define TARVELL_CORE_PLATFORM_WAITING_H

namespace tarvell {

/// Time of day, and a way to let it pass.
class DayClock {
 public:
  DayClock() = default;
  DayClock(const DayClock&) = delete;
  DayClock& operator=(const DayClock&) = delete;
  virtual ~DayClock() = default;

  /// Seconds since midnight, 0 to below 86400.
  [[nodiscard]] virtual double Now() = 0;
  virtual void Sleep(double seconds) = 0;
};

/// The system's clock in universal time, which no summer time sets back.
[[nodiscard]] DayClock& SystemDayClock();

/// Waits until `seconds` (at most 500) have passed on `clock`, sleeping between looks at it; no
/// window event runs meanwhile. A wait over midnight waits for the new day first; a clock that is
/// set back ends the wait. Returns false at once for a negative argument, else true.
bool WaitSeconds(double seconds, DayClock& clock = SystemDayClock());

}  // namespace tarvell

#endif
