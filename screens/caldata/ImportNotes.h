// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_IMPORTNOTES_H
#define TARVELL_SCREENS_CALDATA_IMPORTNOTES_H

#include <QString>

#include <string>
#include <vector>

#include "exchange/ImportPlan.h"

namespace tarvell {

/// The name, model and serial number of an instrument, in this language.
[[nodiscard]] QString ItemName(const CertificateItem& item, const std::string& language);

/// What the preview of an import says below its tables.
struct NotedImport {
  QString error;                           ///< why the values cannot be taken, "" when they can
  std::vector<ReadingQuestion> questions;  ///< which are still open
  const ImportPlan& plan;
  std::vector<std::string> slips;  ///< values that may be slips of typing, a sentence each
};
[[nodiscard]] QString ImportNotes(const NotedImport& import);

}  // namespace tarvell

#endif
