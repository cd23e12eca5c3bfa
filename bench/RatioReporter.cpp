// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "RatioReporter.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace tarvell::bench {

namespace {

constexpr const char* kProgram = ": program";
constexpr const char* kLimit = ": limit";
constexpr int kGrowthRepetitions = 5;
constexpr int kNameWidth = 58;

struct Row {
  std::string name;
  double goal = 0;
  bool isKilobytes = false;
};

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

std::string NameOf(const Growth& growth) {
  return growth.name + ", " + std::to_string(growth.size);
}

void Register(const std::string& name, int repetitions,
              const std::function<void(benchmark::State&)>& run) {
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->Repetitions(repetitions)
      ->UseManualTime()
      ->Iterations(1);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// A time with the unit that suits it.
std::string Shown(double seconds) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(seconds < 0.001 ? 1 : 2);
  if (seconds < 0.001) {
    text << seconds * 1e6 << " us";
  } else {
    text << seconds * 1e3 << " ms";
  }
  return text.str();
}

std::string ShownKilobytes(double kilobytes) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << kilobytes / 1024 << " MB";
  return text.str();
}

}  // namespace

void AddRow(const std::string& row, double goal, int repetitions,
            const std::function<void(benchmark::State&)>& program,
            const std::function<void(benchmark::State&)>& limit) {
  Rows().push_back({row, goal});
  Register(row + kProgram, repetitions, program);
  Register(row + kLimit, repetitions, limit);
}

void AddGrowth(const std::string& row, long size,
               const std::function<void(benchmark::State&)>& program) {
  Growths().push_back({row, size});
  Register(NameOf(Growths().back()), kGrowthRepetitions, program);
}

bool RatioReporter::ReportContext(const Context& /*context*/) {
  std::cout << "measuring ..." << std::endl;
  return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred) {
      std::cout << run.benchmark_name() << ": " << run.error_message << std::endl;
    } else if (run.run_type == Run::RT_Iteration) {
      const auto kilobytes = run.counters.find(kKilobytes);
      const bool isTime = kilobytes == run.counters.end();
      figures_[run.run_name.function_name].push_back(
          isTime ? run.real_accumulated_time / static_cast<double>(run.iterations)
                 : kilobytes->second.value);
      for (Row& row : Rows()) {
        row.isKilobytes =
            row.isKilobytes || (!isTime && run.run_name.function_name == row.name + kLimit);
      }
    }
  }
}

void RatioReporter::Finalize() {
  PrintRatios();
  std::cout << "\n";
  PrintGrowth();
  std::cout << std::flush;
}

void RatioReporter::PrintRatios() const {
  std::cout << std::left << std::setw(kNameWidth) << "work" << std::right << std::setw(12)
            << "program" << std::setw(12) << "limit" << std::setw(8) << "ratio" << std::setw(8)
            << "goal"
            << "\n";
  for (const Row& row : Rows()) {
    const auto programs = figures_.find(row.name + kProgram);
    const auto limits = figures_.find(row.name + kLimit);
    if (programs == figures_.end() || limits == figures_.end()) {
      continue;
    }
    const double program = Median(programs->second);
    const double limit = Median(limits->second);
    const auto shown = row.isKilobytes ? &ShownKilobytes : &Shown;
    std::cout << std::left << std::setw(kNameWidth) << row.name << std::right << std::setw(12)
              << shown(program) << std::setw(12) << shown(limit) << std::fixed
              << std::setprecision(2) << std::setw(8) << program / limit << std::setw(8) << row.goal
              << "\n";
  }
}

void RatioReporter::PrintGrowth() const {
  std::cout << std::left << std::setw(kNameWidth) << "growth" << std::right << std::setw(12)
            << "median" << std::setw(14) << "for each"
            << "\n";
  for (const Growth& growth : Growths()) {
    const auto found = figures_.find(NameOf(growth));
    if (found != figures_.end()) {
      const double median = Median(found->second);
      std::cout << std::left << std::setw(kNameWidth) << found->first << std::right << std::setw(12)
                << Shown(median) << std::setw(14)
                << Shown(median / static_cast<double>(growth.size)) << "\n";
    }
  }
}

}  // namespace tarvell::bench
