// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_WORKPLACE_H
#define TARVELL_BENCH_WORKPLACE_H

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "core/caldata/Models.h"

namespace tarvell::bench {

/// Drives of the benchmark's own in a temporary folder, which is removed at the end; every path
/// with a drive letter lies there. The templates are the program's.
class Workplace {
 public:
  Workplace();
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace();

  /// Native folder of the drives.
  [[nodiscard]] const std::filesystem::path& Drives() const { return drives_; }

 private:
  std::filesystem::path drives_;
};

/// Writes a file; its folder is made first.
void WriteFile(const std::string& native, std::string_view bytes);
[[nodiscard]] std::string ReadWholeFile(const std::string& native);

/// Native path of a path text.
[[nodiscard]] std::string Native(const std::string& path);

/// A sensor's data file as far as a list reads it.
[[nodiscard]] std::string HeaderBytes(int serial);

/// Data of the model with every row, all pages and full-width numbers.
[[nodiscard]] std::unique_ptr<cifCaldata> LargestData(const Model& model);

/// Of every data set; its file is SN12345.
inline constexpr std::string_view kSerialNumber = "12345";

/// The models whose largest files stand for their families.
inline constexpr std::array<std::string_view, 4> kFamilies = {"PX12A", "PX60H", "RT520A", "RT730A"};

/// Columns of the widest table.
inline constexpr std::int16_t kMostColumns = 6;

[[nodiscard]] inline double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs `work` once for each iteration and reports how long it took.
template <typename Work>
void Measure(benchmark::State& state, const Work& work) {
  for (auto iteration : state) {
    static_cast<void>(iteration);
    const auto start = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(SecondsSince(start));
  }
}

/// Lets the optimiser keep what a limit computed.
template <typename Value>
void Use(const Value& value) {
  benchmark::DoNotOptimize(value);
}

}  // namespace tarvell::bench

#endif
