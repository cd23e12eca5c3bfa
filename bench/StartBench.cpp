// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "RatioReporter.h"
#include "Workplace.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;

/// Runs a program, which prints its peak memory in kB at its end; returns that, 0 when it failed.
long Run(const std::string& command) {
  std::array<char, 32> line{};
  FILE* output = ::popen(command.c_str(), "r");
  const bool printed = std::fgets(line.data(), line.size(), output) != nullptr;
  return ::pclose(output) == 0 && printed ? std::strtol(line.data(), nullptr, 10) : 0;
}

void Start(benchmark::State& state, const std::string& command) {
  long kilobytes = 0;
  Measure(state, [&] { kilobytes = Run(command); });
  if (kilobytes == 0) {
    state.SkipWithError("the program failed");
  }
}

void Weigh(benchmark::State& state, const std::string& command) {
  Start(state, command);
  state.counters[kKilobytes] = static_cast<double>(Run(command));
}

}  // namespace

void AddStartRows(const std::string& drives) {
  const std::string label = TARVELL_BENCH_LABEL;
  const std::string menu = TARVELL_BENCH_SCREEN " " + drives;
  const std::string editor = menu + R"( 'c:\data\RT730A\SN12345')";
  AddRow(
      "start to the painted main menu", 1.25, kRepetitions,
      [=](benchmark::State& state) { Start(state, menu); },
      [=](benchmark::State& state) { Start(state, label); });
  AddRow(
      "the same, held against a splash and a window", 1.25, kRepetitions,
      [=](benchmark::State& state) { Start(state, menu); },
      [=](benchmark::State& state) { Start(state, label + " splash"); });
  AddRow(
      "the same, held against these two screens alone", 1.25, kRepetitions,
      [=](benchmark::State& state) { Start(state, menu); },
      [=](benchmark::State& state) {
        Start(state, label + " " TARVELL_SOURCE_FOLDER "/images/tarvell.svg");
      });
  AddRow(
      "peak memory of the main menu", 1.25, kRepetitions,
      [=](benchmark::State& state) { Weigh(state, menu); },
      [=](benchmark::State& state) { Weigh(state, label); });
  AddRow(
      "peak memory with the largest data set open", 1.25, kRepetitions,
      [=](benchmark::State& state) { Weigh(state, editor); },
      [=](benchmark::State& state) { Weigh(state, label); });
}

}  // namespace tarvell::bench
