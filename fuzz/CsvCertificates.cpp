// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TakenCertificate.h"
#include "exchange/CsvCertificate.h"
#include "exchange/TableParts.h"

/// Certificates as CSV and TSV. An input is the file.
namespace tarvell::fuzz {

void Run(Input input) {
  const std::string bytes = input.Rest();
  Certificate certificate;
  if (!Accepts([&] { certificate = CsvCertificate(bytes, {}); })) {
    return;
  }
  CheckValues(certificate);
  for (const DecimalSign sign : {DecimalSign::Point, DecimalSign::Comma}) {
    const Certificate chosen = CsvCertificate(bytes, {sign, DateOrder::MonthFirst});
    CheckValues(chosen);
    Require(chosen.tables.size() == certificate.tables.size(),
            "the decimal sign does not change which lines are tables");
  }
  DivideTables(certificate);
  CheckValues(certificate);
  CheckTaking(certificate);
}

}  // namespace tarvell::fuzz
