// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_WORKPLACE_H
#define TARVELL_BENCH_WORKPLACE_H

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "core/caldata/Models.h"

namespace tarvell::bench {

/// The benchmark's own drives, in a temporary folder that is removed at the end. The templates are
/// the program's.
class Workplace {
 public:
  Workplace();
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace();

  /// Native folder of the drives.
  [[nodiscard]] const std::filesystem::path& Drives() const { return drives_; }

 private:
  std::filesystem::path drives_;
};

/// Makes the folder of a file and writes the file.
void WriteFile(const std::string& native, std::string_view bytes);
[[nodiscard]] std::string ReadWholeFile(const std::string& native);

/// Native path of a path text.
[[nodiscard]] std::string Native(const std::string& path);

/// A sensor's data file as far as a list reads it.
[[nodiscard]] std::string HeaderBytes(int serial);

/// Data of the model with all rows and pages and full-width numbers. The serial number is 12345.
[[nodiscard]] std::unique_ptr<cifCaldata> LargestData(const Model& model);

/// The models whose largest files stand for their families.
inline constexpr std::array<std::string_view, 4> kFamilies = {"PX12A", "PX60H", "RT520A", "RT730A"};

/// Columns of the widest table.
inline constexpr std::int16_t kGridColumns = 6;

}  // namespace tarvell::bench

#endif
