// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/Csv.h"

namespace tarvell {

void AppendCsvField(std::string& csv, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    csv += field;
    return;
  }
  csv += '"';
  for (const char c : field) {
    csv += c;
    if (c == '"') {
      csv += c;
    }
  }
  csv += '"';
}

}  // namespace tarvell
