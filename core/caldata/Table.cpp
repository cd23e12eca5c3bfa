// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/Table.h"

#include "core/platform/Error.h"

namespace tarvell {

void CheckTableIndex(TableIndex index) {
  if (index.value >= kTableRows) {
    throw Error(ErrorKind::Index,
                "A table holds at most " + std::to_string(kTableRows) +
                    " rows. Remove the rows that are not needed, then try again.");
  }
}

void WriteDataLine(FileText& text, std::string_view line) {
  if (line.find(',') != std::string_view::npos) {
    throw Error(
        ErrorKind::Character,
        "A row of the table holds a comma, which the data file cannot keep: \"" +
            std::string(line) +
            "\". Take it out of the table, or of the file that it came from, then try again.");
  }
  text.Line(line);
}

}  // namespace tarvell
