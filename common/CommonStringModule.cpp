// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/CommonStringModule.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <thread>

#include "common/Text.h"

namespace tarvell {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kLongestWait = 500;
constexpr double kLongestSleep = 0.05;
constexpr std::int16_t kFebruary = 2;
constexpr std::array<std::int16_t, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool IsLeapYear(std::int16_t year) {
  return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
}

class SystemClock : public DayClock {
 public:
  double Now() override {
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    return std::fmod(now.count(), kSecondsPerDay);
  }

  void Sleep(double seconds) override {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  }
};

}  // namespace

std::string_view StripNull(std::string_view s) {
  return TrimRight(s.substr(0, s.find('\0')));
}

bool IsValidDate(std::int16_t year, std::int16_t month, std::int16_t day) {
  return day >= 1 && day <= DaysInMonth(year, month);
}

std::int16_t DaysInMonth(std::int16_t year, std::int16_t month) {
  if (month < 1 || month > static_cast<std::int16_t>(kDays.size())) {
    return -1;
  }
  if (month == kFebruary && IsLeapYear(year)) {
    return 29;
  }
  return kDays.at(static_cast<std::size_t>(month - 1));
}

DayClock& SystemDayClock() {
  static SystemClock clock;
  return clock;
}

bool WaitSeconds(double seconds, DayClock& clock) {
  if (seconds < 0) {
    return false;
  }
  const double start = clock.Now();
  double end = start + std::min(seconds, kLongestWait);
  double now = start;
  if (end >= kSecondsPerDay) {
    while (now >= start) {
      clock.Sleep(std::min(kLongestSleep, kSecondsPerDay - now));
      now = clock.Now();
    }
    end -= kSecondsPerDay;
    while (now < end) {
      clock.Sleep(std::min(kLongestSleep, end - now));
      now = clock.Now();
    }
    return true;
  }
  // A clock before the start was set back, or slept over midnight: the wait is over.
  while (now < end && now >= start) {
    clock.Sleep(std::min(kLongestSleep, end - now));
    now = clock.Now();
  }
  return true;
}

}  // namespace tarvell
