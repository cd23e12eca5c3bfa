// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_PAGEPLAN_H
#define TARVELL_EXCHANGE_PAGEPLAN_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/PastedTable.h"
#include "exchange/ColumnMatch.h"

/// What a table of a certificate does to one page of a data set.
namespace tarvell {

struct PlannedRow {
  PastedRow row;
  std::vector<std::int16_t> taken;  ///< the columns whose values come from the certificate
};

struct PagePlan {
  std::int16_t page = 0;
  std::string name;
  std::optional<std::string> memberSerial;  ///< nothing where the certificate does not give it
  std::vector<PlannedRow> rows;
  std::vector<std::string> rounded;  ///< what the formats of the table round, a sentence each
  std::vector<std::string> doubts;   ///< what the user has to confirm
  std::vector<std::string> notes;    ///< what is not taken and why

  [[nodiscard]] bool IsEmpty() const;
  /// Whether the table has a place for every row.
  [[nodiscard]] bool HasPlace(bool missingRemoved) const;
};

/// A page as the editor has it, and the part of the certificate that goes into it.
struct PageSource {
  const Model& model;
  const cifCaldata& data;
  std::int16_t page = 0;
  const std::vector<std::vector<std::string>>& rows;  ///< the data rows of the page
  const CertificateTable& table;
  const ColumnMatch& match;
  std::string language = "en";  ///< of the user
  bool keepsTexts = false;  ///< a number that needs no rounding keeps the digits it is written with
};

/// Throws a Type or Index error that names the rows of the certificate's table that no table of the
/// model can hold.
[[nodiscard]] PagePlan PlanPage(const PageSource& source);

/// Whether the measured values are about as large as those of the page, so that they can be those
/// of its member. A page whose rows are members has no such doubt.
[[nodiscard]] bool IsNearPage(const PageSource& source);

}  // namespace tarvell

#endif
