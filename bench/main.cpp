// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "RatioReporter.h"
#include "Workplace.h"

namespace tarvell::bench {

void AddTreeRows();
void AddFileRows();
void AddCellRows();
void AddStartRows(const std::string& drives);
void AddWindowRows();
void AddEditorRows();
void AddGrowthRows();

}  // namespace tarvell::bench

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  std::vector<char*> arguments(argv, argv + argc);
  std::string interleaving = "--benchmark_enable_random_interleaving=true";
  arguments.push_back(interleaving.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());

  const tarvell::bench::Workplace workplace;
  tarvell::bench::AddTreeRows();
  tarvell::bench::AddFileRows();
  tarvell::bench::AddCellRows();
  tarvell::bench::AddStartRows(workplace.Drives().string());
  tarvell::bench::AddWindowRows();
  tarvell::bench::AddEditorRows();
  tarvell::bench::AddGrowthRows();
  tarvell::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
}
