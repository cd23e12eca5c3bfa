// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_SLIPS_CHANCE_H
#define TARVELL_BENCH_SLIPS_CHANCE_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>

namespace tarvell::bench {

/// Random numbers that are the same for a seed on every system.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : engine_(seed) {}

  /// Even between 0 and 1.
  [[nodiscard]] double Share() {
    constexpr double kSteps = 9007199254740992;  // 2 to the power of 53
    return static_cast<double>(engine_() >> 11U) / kSteps;
  }
  [[nodiscard]] double Between(double low, double high) { return low + (high - low) * Share(); }
  /// One of 0 to count - 1.
  [[nodiscard]] std::size_t Below(std::size_t count) {
    return static_cast<std::size_t>(engine_() % count);
  }
  /// Normal, with the standard deviation 1.
  [[nodiscard]] double Normal() {
    return std::sqrt(-2 * std::log(1 - Share())) * std::cos(2 * std::numbers::pi * Share());
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace tarvell::bench

#endif
