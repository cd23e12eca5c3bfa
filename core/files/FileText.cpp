// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileText.h"

#include "core/platform/Error.h"
#include "core/text/FileCharacters.h"

namespace tarvell {

void FileText::Line(std::string_view line) {
  // A search for several characters, find_first_of, calls a function for each character.
  if (line.find('\r') != std::string_view::npos || line.find('\n') != std::string_view::npos) {
    throw Error(ErrorKind::Character,
                "A line end cannot be stored within a field. Remove it, then save again.");
  }
  RawLine(EncodeFileText(line));
}

void FileText::RawLine(std::string_view bytes) {
  bytes_ += bytes;
  bytes_ += "\r\n";
}

}  // namespace tarvell
