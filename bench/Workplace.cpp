// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Workplace.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "core/caldata/MemoryGrid.h"
#include "core/files/Paths.h"
#include "core/platform/ForwardingPlatform.h"
#include "core/platform/Platform.h"
#include "core/session/Tarvell_MainModule.h"

namespace tarvell::bench {

namespace {

constexpr auto kGridRows = static_cast<std::int16_t>(kTableRows + 1);  // with the caption row

/// The system, with the templates where the sources have them.
class BenchPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] std::filesystem::path ProgramFolder() override { return TARVELL_TEMPLATE_FOLDER; }
};

std::string LastRow(const CalDataGrid& grid) {
  std::string row;
  for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
    row += (column > 0 ? "\t" : "") +
           grid.CellText(static_cast<std::int16_t>(grid.RowCount() - 1), column);
  }
  return row;
}

}  // namespace

Workplace::Workplace() {
  static BenchPlatform platform;
  std::string name = (std::filesystem::temp_directory_path() / "tarvell-bench-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary folder can be made");
  }
  drives_ = name;
  std::filesystem::create_directories(drives_ / "c");
  SetCurrentPlatform(&platform);
  SetDriveFolder(name);
}

Workplace::~Workplace() {
  SetCurrentPlatform(nullptr);
  SetDriveFolder("");
  std::error_code code;
  std::filesystem::remove_all(drives_, code);
}

void WriteFile(const std::string& native, std::string_view bytes) {
  std::filesystem::create_directories(std::filesystem::path(native).parent_path());
  std::ofstream(native, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadWholeFile(const std::string& native) {
  std::ifstream file(native, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Native(const std::string& path) {
  return NativePath(path).string();
}

std::string HeaderBytes(int serial) {
  return "#MODEL_NO : PX12A\r\n#SER_NO   : " + std::to_string(serial) +
         "\r\n#CAL_DATE : 20010305\r\n#CAL_NO   : C-0042\r\n#DUE_DATE : 20020305\r\n"
         "#COMMENT  : factory\r\n!Start of data\r\n!End\r\n";
}

std::unique_ptr<cifCaldata> LargestData(const Model& model) {
  std::unique_ptr<cifCaldata> data = model.create();
  data->SetInitialDefaultData();
  data->SetSerialNumber("12345");
  if (model.family == ModelFamily::ResistorSet) {
    return data;  // its tables have a fixed number of rows
  }
  for (std::int16_t page = 0; page < data->GetCalPageCount(); ++page) {
    MemoryGrid grid(kGridColumns);
    data->GetCalData(page, grid);
    while (grid.RowCount() < kGridRows) {
      grid.AddRow(LastRow(grid));
    }
    data->SetCalData(page, grid);
  }
  return data;
}

}  // namespace tarvell::bench
