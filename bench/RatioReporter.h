// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_RATIOREPORTER_H
#define TARVELL_BENCH_RATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarvell::bench {

/// Registers one row of the table: the program's work and the limit that it is held against.
/// `repetitions` of both are run in a random order among each other, so that whatever else the
/// machine does meets both alike.
void AddRow(const std::string& row, double goal, int repetitions,
            const std::function<void(benchmark::State&)>& program,
            const std::function<void(benchmark::State&)>& limit);

/// Registers a row that has no limit, but a size that it grows with.
void AddGrowth(const std::string& row, long size,
               const std::function<void(benchmark::State&)>& program);

/// The name under which a benchmark reports a figure that is no time.
inline constexpr const char* kKilobytes = "kB";

/// Prints, at the end, the ratio of the medians of every row, and the growth of every other one.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  void PrintRatios() const;
  void PrintGrowth() const;

  std::map<std::string, std::vector<double>> figures_;  ///< of each benchmark's repetitions
};

}  // namespace tarvell::bench

#endif
