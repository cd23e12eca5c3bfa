// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_RATIOS_H
#define TARVELL_BENCH_RATIOS_H

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace tarvell::bench {

/// Returns the figure of one measurement: seconds, or kilobytes in a row of memory.
using Measurement = std::function<double()>;

/// A row of the table: the program's work and the least work that any program must do for it.
struct Row {
  std::string name;
  double goal = 0;  ///< of the ratio of the medians
  Measurement program;
  Measurement limit;
  int repetitions = 41;
  bool isMemory = false;
};
void AddRow(Row row);

/// Adds a row for work that has no limit but grows with `size`.
void AddGrowth(const std::string& name, long size, const std::function<void()>& work);

/// Measures the rows that the program's arguments, those of the benchmark library, choose, and
/// prints their medians. Program and limit are measured in a random order, so that other work on
/// the machine affects both alike.
void PrintTable(std::vector<char*> arguments);

[[nodiscard]] inline double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A measurement of the seconds that `work` takes.
template <typename Work>
Measurement Timed(Work work) {
  return [work] {
    const auto start = std::chrono::steady_clock::now();
    work();
    return SecondsSince(start);
  };
}

/// Makes the compiler keep what was computed.
template <typename Value>
void Use(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

}  // namespace tarvell::bench

#endif
