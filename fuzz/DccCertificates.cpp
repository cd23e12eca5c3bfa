// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TakenCertificate.h"
#include "core/text/FileCharacters.h"
#include "exchange/DccCertificate.h"
#include "exchange/TableParts.h"

/// Digital calibration certificates. An input is the XML file.
namespace tarvell::fuzz {

void Run(Input input) {
  const std::string bytes = input.Rest();
  Certificate certificate;
  if (!Accepts([&] { certificate = DccCertificate(bytes); })) {
    return;
  }
  CheckValues(certificate);
  for (const CertificateItem& item : certificate.items) {
    Require(IsUtf8(item.serialNumber), "a text is UTF-8");
  }
  DivideTables(certificate);
  CheckValues(certificate);
  CheckTaking(certificate);
}

}  // namespace tarvell::fuzz
