// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <string>
#include <vector>

#include "Ratios.h"
#include "Workplace.h"

namespace tarvell::bench {

void AddFileRows();
void AddCellRows();
void AddCurveRows(const std::string& drives);
void AddScreenRows(const std::string& drives);
void AddSurveyRows();
void AddOverviewRows();
void AddGrowthRows();

}  // namespace tarvell::bench

/// The arguments are those of the benchmark library.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const tarvell::bench::Workplace workplace;
  tarvell::bench::AddFileRows();
  tarvell::bench::AddCellRows();
  tarvell::bench::AddCurveRows(workplace.Drives().string());
  tarvell::bench::AddScreenRows(workplace.Drives().string());
  tarvell::bench::AddSurveyRows();
  tarvell::bench::AddOverviewRows();
  tarvell::bench::AddGrowthRows();
  tarvell::bench::PrintTable({argv, argv + argc});
}
