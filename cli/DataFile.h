// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_DATAFILE_H
#define TARVELL_CLI_DATAFILE_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"

namespace tarvell::cli {

/// The content of a data file.
struct DataFile {
  CalFileInfo header;
  std::string calibrated;  ///< in words; a date that does not exist keeps its digits
  std::string due;
  const Model* model = nullptr;      ///< nullptr if the program does not know it
  std::unique_ptr<cifCaldata> data;  ///< nullptr if the program cannot read its values
};

/// Reads a whole file. Throws the error of one that cannot be read.
[[nodiscard]] std::string ReadBytes(const std::string& path);

/// Whether the content is that of a station's instrument, in any order of its lines.
[[nodiscard]] bool IsInstrumentFile(std::string_view bytes);

/// Reads the content of a data file. Its model is that of its model line or, without a known one,
/// of its folder. Throws the error of a file that is not a data file.
[[nodiscard]] DataFile ReadDataFile(std::string_view bytes, const std::string& path);

/// The header with the names that the screens use.
struct NamedValue {
  std::string name;
  std::string value;
};
[[nodiscard]] std::vector<NamedValue> HeaderValues(const DataFile& file);

/// A page as texts.
struct PageTexts {
  std::string name;
  std::string serialNumber;
  std::vector<std::string> captions;
  std::vector<std::vector<std::string>> rows;
};
[[nodiscard]] std::vector<PageTexts> PagesOf(const cifCaldata& data);

}  // namespace tarvell::cli

#endif
