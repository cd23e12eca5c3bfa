// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_FUZZ_TAKENCERTIFICATE_H
#define TARVELL_FUZZ_TAKENCERTIFICATE_H

#include "FuzzTarget.h"
#include "core/caldata/Models.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "exchange/Export.h"
#include "exchange/ImportPlan.h"

namespace tarvell::fuzz {

inline void CheckValues(const Certificate& certificate) {
  for (const CertificateTable& table : certificate.tables) {
    for (const CertificateColumn& column : table.columns) {
      Require(!column.series.empty(), "a column has values");
      for (const Series& series : column.series) {
        Require(series.values.size() == table.RowCount(), "a column has a value for each row");
        for (const WrittenValue& value : series.values) {
          Require(!value.isNumber || ParseNumber(value.text), "a number is a number", value.text);
        }
      }
    }
  }
}

/// Whatever the certificate holds, each model takes it or refuses it, and keeps a table that fits
/// into its file.
inline void CheckTaking(const Certificate& certificate) {
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    const std::unique_ptr<cifCaldata> data = model.create();
    EditorState now = StateOf(model, *data);
    for (DraftPage& page : now.pages) {
      page.rows = {{"1000", "1", "1", "1", "1"}, {"10000", "1", "1", "1", "1"}};
    }
    const ImportTarget target = {.model = model, .data = *data, .now = now};
    const bool isTaken = Accepts([&] {
      const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
      const EditorState after = AfterImport(now, plan, true);
      Require(after.pages.size() == now.pages.size(), "no page is lost");
      for (const DraftPage& page : after.pages) {
        Require(page.rows.size() <= kTableRows, "a table fits into its file");
      }
      (void)CsvOf(model, *data, after);
      (void)JsonOf(model, *data, after);
    });
    (void)isTaken;
  }
}

}  // namespace tarvell::fuzz

#endif
