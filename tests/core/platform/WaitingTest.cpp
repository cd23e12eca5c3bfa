// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

#include "core/platform/Waiting.h"

namespace tarvell {
namespace {

// A clock on which time passes only during a sleep.
class FakeClock : public DayClock {
 public:
  static constexpr double kDay = 86400;

  explicit FakeClock(double now) : now_(now) {}

  [[nodiscard]] double Now() override {
    ++looks_;
    // A wait that never ends fails the test instead of hanging it.
    if (looks_ > kLookLimit) {
      throw std::length_error("the wait does not end");
    }
    return now_;
  }
  void Sleep(double seconds) override {
    EXPECT_GT(seconds, 0);
    slept_ += seconds;
    now_ = std::fmod(now_ + seconds, kDay);
    if (slept_ >= setBackAfter_) {
      setBackAfter_ = std::numeric_limits<double>::infinity();
      now_ -= setBackBy_;
    }
  }

  void SetBack(double afterSeconds, double bySeconds) {
    setBackAfter_ = afterSeconds;
    setBackBy_ = bySeconds;
  }

  [[nodiscard]] double Time() const { return now_; }
  [[nodiscard]] double Slept() const { return slept_; }

 private:
  static constexpr int kLookLimit = 2000000;

  double now_;
  double slept_ = 0;
  int looks_ = 0;
  double setBackAfter_ = std::numeric_limits<double>::infinity();
  double setBackBy_ = 0;
};

// How much longer than asked a wait may take, in seconds.
constexpr double kSlack = 0.5;

TEST(WaitSeconds, LastsAsLongAsAskedUpToFiveHundredSeconds) {
  for (const double seconds : {0.01, 2.5, 500.0, 500.5, std::numeric_limits<double>::infinity()}) {
    SCOPED_TRACE(seconds);
    FakeClock clock(1000);
    EXPECT_TRUE(WaitSeconds(seconds, clock));
    EXPECT_GE(clock.Time(), 1000 + std::min(seconds, 500.0));
    EXPECT_LE(clock.Time(), 1000 + std::min(seconds, 500.0) + kSlack);
  }
}

TEST(WaitSeconds, DoesNotSleepForZeroAndRefusesLess) {
  FakeClock clock(1000);
  EXPECT_TRUE(WaitSeconds(0, clock));
  EXPECT_FALSE(WaitSeconds(-0.001, clock));
  EXPECT_EQ(clock.Slept(), 0);
}

TEST(WaitSeconds, GoesOnOverMidnight) {
  // To midnight itself, over it, and the longest wait over it.
  for (const auto& [start, seconds] :
       {std::pair(86390.0, 10.0), {86399.5, 2.0}, {86399.999, 2.0}, {86399.0, 1000.0}}) {
    SCOPED_TRACE(start);
    FakeClock clock(start);
    const double expected = std::min(seconds, 500.0);
    EXPECT_TRUE(WaitSeconds(seconds, clock));
    EXPECT_GE(clock.Slept(), expected - 1E-6);
    EXPECT_LE(clock.Slept(), expected + kSlack);
    EXPECT_LT(clock.Time(), 500) << "the new day has begun";
  }
}

// A clock that is set back during a wait must not make it last for hours.
TEST(WaitSeconds, IsNotLongerThanAskedWhenTheClockIsSetBack) {
  for (const double start : {40000.0, 86395.0}) {
    SCOPED_TRACE(start);
    FakeClock clock(start);
    clock.SetBack(2, 3600);
    EXPECT_TRUE(WaitSeconds(10, clock));
    EXPECT_GE(clock.Slept(), 2);
    EXPECT_LE(clock.Slept(), 10 + kSlack);
  }
}

TEST(WaitSeconds, UsesTheSystemsClock) {
  DayClock& clock = SystemDayClock();
  const double before = clock.Now();
  EXPECT_GE(before, 0);
  EXPECT_LT(before, 86400);
  EXPECT_TRUE(WaitSeconds(0.05));
  const double after = clock.Now();
  const double passed = after >= before ? after - before : after - before + 86400;
  EXPECT_GE(passed, 0.05);
  EXPECT_LT(passed, 30);
}

}  // namespace
}  // namespace tarvell
