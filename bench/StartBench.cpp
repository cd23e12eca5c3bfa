// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "RatioReporter.h"
#include "Workplace.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;

/// Runs a program to its end; returns its peak memory in kB, -1 when it failed.
long Run(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));  // posix_spawn does not change it
  }
  arguments.push_back(nullptr);
  pid_t child = 0;
  int status = -1;
  struct rusage usage {};
  if (::posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
      ::wait4(child, &status, 0, &usage) != child || status != 0) {
    return -1;
  }
  return usage.ru_maxrss;
}

void Start(benchmark::State& state, const std::vector<std::string>& command) {
  long kilobytes = 0;
  Measure(state, [&] { kilobytes = Run(command); });
  if (kilobytes < 0) {
    state.SkipWithError("the program failed");
  }
}

void Weigh(benchmark::State& state, const std::vector<std::string>& command) {
  long kilobytes = 0;
  Measure(state, [&] { kilobytes = Run(command); });
  if (kilobytes < 0) {
    state.SkipWithError("the program failed");
  }
  state.counters[kKilobytes] = static_cast<double>(kilobytes);
}

}  // namespace

void AddStartRows(const std::string& drives) {
  const std::vector<std::string> menu = {TARVELL_BENCH_SCREEN, drives};
  const std::vector<std::string> label = {TARVELL_BENCH_LABEL};
  const std::vector<std::string> editor = {TARVELL_BENCH_SCREEN, drives,
                                           R"(c:\data\RT730A\SN12345)"};
  AddRow(
      "start to the painted main menu", 1.25, kRepetitions,
      [=](benchmark::State& state) { Start(state, menu); },
      [=](benchmark::State& state) { Start(state, label); });
  AddRow(
      "peak memory with the largest data set open", 1.25, kRepetitions,
      [=](benchmark::State& state) { Weigh(state, editor); },
      [=](benchmark::State& state) { Weigh(state, label); });
}

}  // namespace tarvell::bench
