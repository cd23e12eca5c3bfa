// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/platform/Waiting.h"

namespace tarvell {
namespace {

// A clock on which time passes while one sleeps and in no other way.
class FakeClock : public DayClock {
 public:
  static constexpr double kDay = 86400;

  explicit FakeClock(double now) : now_(now) {}

  [[nodiscard]] double Now() override {
    ++looks_;
    // A wait that never ends fails the test instead of hanging it.
    if (looks_ > kMostLooks) {
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
  static constexpr int kMostLooks = 2000000;

  double now_;
  double slept_ = 0;
  int looks_ = 0;
  double setBackAfter_ = std::numeric_limits<double>::infinity();
  double setBackBy_ = 0;
};

// The clock is looked at often enough that a wait is not noticeably too long.
constexpr double kSlack = 0.5;

TEST(WaitSeconds, LastsAsLongAsItWasTold) {
  for (const double seconds : {0.01, 0.25, 1.0, 2.5, 60.0, 499.0, 500.0}) {
    SCOPED_TRACE(seconds);
    FakeClock clock(1000);
    EXPECT_TRUE(WaitSeconds(seconds, clock));
    EXPECT_GE(clock.Time(), 1000 + seconds);
    EXPECT_LE(clock.Time(), 1000 + seconds + kSlack);
  }
}

TEST(WaitSeconds, OfNothingDoesNotSleep) {
  FakeClock clock(1000);
  EXPECT_TRUE(WaitSeconds(0, clock));
  EXPECT_EQ(clock.Slept(), 0);
}

TEST(WaitSeconds, OfLessThanNothingIsRefused) {
  FakeClock clock(1000);
  EXPECT_FALSE(WaitSeconds(-1, clock));
  EXPECT_FALSE(WaitSeconds(-0.001, clock));
  EXPECT_FALSE(WaitSeconds(-1E300, clock));
  EXPECT_EQ(clock.Slept(), 0);
}

TEST(WaitSeconds, IsNeverLongerThanFiveHundred) {
  for (const double seconds : {500.5, 1000.0, 1E300, std::numeric_limits<double>::infinity()}) {
    SCOPED_TRACE(seconds);
    FakeClock clock(1000);
    EXPECT_TRUE(WaitSeconds(seconds, clock));
    EXPECT_GE(clock.Time(), 1500);
    EXPECT_LE(clock.Time(), 1500 + kSlack);
  }
}

TEST(WaitSeconds, GoesOnOverMidnight) {
  for (const double start : {86399.5, 86399.0, 86399.999}) {
    SCOPED_TRACE(start);
    FakeClock clock(start);
    EXPECT_TRUE(WaitSeconds(2, clock));
    EXPECT_GE(clock.Slept(), 2 - 1E-6);
    EXPECT_LE(clock.Slept(), 2 + kSlack);
    EXPECT_LT(clock.Time(), 10) << "the new day has begun";
  }
}

TEST(WaitSeconds, UpToMidnightItselfEndsInTheNewDay) {
  FakeClock clock(86390);
  EXPECT_TRUE(WaitSeconds(10, clock));
  EXPECT_GE(clock.Slept(), 10 - 1E-6);
  EXPECT_LE(clock.Slept(), 10 + kSlack);
  EXPECT_LT(clock.Time(), 1);
}

TEST(WaitSeconds, TheLongestWaitOverMidnight) {
  FakeClock clock(86399);
  EXPECT_TRUE(WaitSeconds(1000, clock));
  EXPECT_GE(clock.Time(), 499);
  EXPECT_LE(clock.Time(), 499 + kSlack);
}

// A clock that is set back while one waits must not keep the program waiting for hours.
TEST(WaitSeconds, IsNeverLongerThanToldWhenTheClockIsSetBack) {
  for (const double start : {40000.0, 86395.0}) {
    SCOPED_TRACE(start);
    FakeClock clock(start);
    clock.SetBack(2, 3600);
    EXPECT_TRUE(WaitSeconds(10, clock));
    EXPECT_GE(clock.Slept(), 2);
    EXPECT_LE(clock.Slept(), 10 + kSlack);
  }
}

TEST(WaitSeconds, OnTheClockOfTheSystem) {
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
