// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_WAITING_H
#define TARVELL_CORE_PLATFORM_WAITING_H

namespace tarvell {

/// The time of day, and a way to sleep.
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

/// The system's clock in universal time, which has no summer time.
[[nodiscard]] DayClock& SystemDayClock();

/// Waits until `seconds` (at most 500) have passed on `clock`. No window event is handled in the
/// meantime. A wait that goes past midnight first waits for the new day. Setting the clock back
/// ends the wait. Returns false at once for a negative argument, otherwise true.
bool WaitSeconds(double seconds, DayClock& clock = SystemDayClock());

}  // namespace tarvell

#endif
