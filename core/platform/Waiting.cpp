// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/Waiting.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace tarvell {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kLongestWait = 500;
constexpr double kLongestSleep = 0.05;

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
  // A time before the start means that the clock was set back or a sleep went past midnight.
  while (now < end && now >= start) {
    clock.Sleep(std::min(kLongestSleep, end - now));
    now = clock.Now();
  }
  return true;
}

}  // namespace tarvell
