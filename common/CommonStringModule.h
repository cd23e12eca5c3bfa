// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_COMMONSTRINGMODULE_H
#define TARVELL_COMMON_COMMONSTRINGMODULE_H

#include <cstdint>
#include <string_view>

namespace tarvell {

/// `s` up to its first NUL character, less its trailing blanks.
[[nodiscard]] std::string_view StripNull(std::string_view s);

/// Whether the date exists (Gregorian leap-year rule). The year itself is not checked.
[[nodiscard]] bool IsValidDate(std::int16_t year, std::int16_t month, std::int16_t day);

/// Days of a month, -1 when `month` is outside 1 to 12.
[[nodiscard]] std::int16_t DaysInMonth(std::int16_t year, std::int16_t month);

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
