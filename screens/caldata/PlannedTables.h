// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_PLANNEDTABLES_H
#define TARVELL_SCREENS_CALDATA_PLANNEDTABLES_H

#include <QStringList>
#include <QTableWidget>

#include <map>
#include <string>
#include <vector>

#include "core/caldata/Cell.h"
#include "exchange/ImportPlan.h"

/// The tables of the preview of an import.
namespace tarvell {

/// Shows which header fields change.
void ShowPlannedHeader(QTableWidget* table, const std::vector<PlannedField>& fields);

/// What is shown of a page.
struct ShownPage {
  QStringList captions;
  const PagePlan* plan = nullptr;     ///< nullptr where the page stays as it is
  std::map<Cell, std::string> marks;  ///< why values may be slips of typing
  bool removesMissing = false;
};

/// Shows what happens to each row of a page.
void ShowPlannedRows(QTableWidget* table, const ShownPage& page);

/// Shows the first row that changes, and rows before it.
void ScrollToChange(QTableWidget* table, const PagePlan& plan);

}  // namespace tarvell

#endif
