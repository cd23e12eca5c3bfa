// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_JOINEDTABLES_H
#define TARVELL_EXCHANGE_JOINEDTABLES_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "exchange/Certificate.h"
#include "exchange/ColumnMatch.h"

/// A table that a certificate has in parts, such as one for each range of frequencies.
namespace tarvell {

/// Whether both tables have the same columns, so that the rows of one can follow those of the
/// other.
[[nodiscard]] bool HaveSameColumns(const CertificateTable& one, const CertificateTable& other);

/// One table with the rows of all of these, which have the same columns.
[[nodiscard]] CertificateTable Joined(const std::vector<const CertificateTable*>& tables);

/// The points of tables that are joined, with their values.
class JoinedPoints {
 public:
  JoinedPoints(const ColumnMatch& match, const std::vector<ModelColumn>& columns)
      : match_(match), columns_(columns) {}

  /// Adds the points of a table, unless one of them is known with other values.
  bool Add(const CertificateTable& table);

 private:
  const ColumnMatch& match_;
  const std::vector<ModelColumn>& columns_;
  std::map<std::string, std::string> values_;  ///< of each point
};

}  // namespace tarvell

#endif
