// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvell::bench {

namespace {

constexpr int kGrowthRepetitions = 5;
constexpr const char* kProgram = ": program";
constexpr const char* kLimit = ": limit";

struct Growth {
  std::string name;
  long size = 0;
};

std::vector<Row>& Rows() {
  static std::vector<Row> rows;
  return rows;
}

std::vector<Growth>& Growths() {
  static std::vector<Growth> growths;
  return growths;
}

void Register(const std::string& name, int repetitions, const Measurement& measurement) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [measurement](benchmark::State& state) {
                                 for ([[maybe_unused]] const auto iteration : state) {
                                   state.SetIterationTime(measurement());
                                 }
                               })
      ->UseManualTime()
      ->Iterations(1)
      ->Repetitions(repetitions);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// A time with the unit that suits it, or a size in megabytes.
std::string Shown(double figure, bool isMemory = false) {
  std::array<char, 32> text{};
  if (isMemory) {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.1f MB", figure / 1024));
  } else if (figure < 0.001) {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.1f us", figure * 1e6));
  } else {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.2f ms", figure * 1e3));
  }
  return text.data();
}

/// Collects the figures, and prints the table of their medians at the end.
class TableReporter final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration) {
        figures_[run.run_name.function_name].push_back(run.real_accumulated_time);
      }
    }
  }

  void Finalize() override {
    std::printf("%-58s%12s%12s%8s%8s\n", "work", "program", "limit", "ratio", "goal");
    for (const Row& row : Rows()) {
      const auto program = figures_.find(row.name + kProgram);
      const auto limit = figures_.find(row.name + kLimit);
      if (program != figures_.end() && limit != figures_.end()) {
        Print(row, Median(program->second), Median(limit->second));
      }
    }
    std::printf("\n%-58s%12s%14s\n", "growth", "median", "for each");
    for (const Growth& growth : Growths()) {
      if (const auto found = figures_.find(growth.name); found != figures_.end()) {
        const double median = Median(found->second);
        std::printf("%-58s%12s%14s\n", growth.name.c_str(), Shown(median).c_str(),
                    Shown(median / static_cast<double>(growth.size)).c_str());
      }
    }
  }

 private:
  static void Print(const Row& row, double program, double limit) {
    std::printf("%-58s%12s%12s%8.2f%8.2f\n", row.name.c_str(), Shown(program, row.isMemory).c_str(),
                Shown(limit, row.isMemory).c_str(), program / limit, row.goal);
  }

  std::map<std::string, std::vector<double>> figures_;
};

}  // namespace

void AddRow(Row row) {
  Register(row.name + kProgram, row.repetitions, row.program);
  Register(row.name + kLimit, row.repetitions, row.limit);
  Rows().push_back(std::move(row));
}

void AddGrowth(const std::string& name, long size, const std::function<void()>& work) {
  const std::string row = name + ", " + std::to_string(size);
  Register(row, kGrowthRepetitions, Timed(work));
  Growths().push_back({row, size});
}

void PrintTable(std::vector<char*> arguments) {
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, interleave.data());
  auto count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
}

}  // namespace tarvell::bench
