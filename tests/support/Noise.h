// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_NOISE_H
#define TARVELL_TESTS_SUPPORT_NOISE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace tarvell::test {

/// `size` random bytes. The same seed gives the same bytes on every system.
[[nodiscard]] inline std::string Noise(std::size_t size, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::string noise(size, '\0');
  std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random() & 0xFFU); });
  return noise;
}

}  // namespace tarvell::test

#endif
