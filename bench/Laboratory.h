// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_LABORATORY_H
#define TARVELL_BENCH_LABORATORY_H

#include <filesystem>
#include <string>
#include <vector>

namespace tarvell::bench {

/// Runs a program, whose output is thrown away. Its status must be 0 or 1.
void Start(const std::string& program, const std::vector<std::string>& arguments);

/// The same; returns the program's peak memory in kilobytes.
[[nodiscard]] double PeakMemory(const std::string& program,
                                const std::vector<std::string>& arguments);

/// A laboratory without faults that scripts/laboratory makes, when the first row that needs it is
/// measured.
class Laboratory {
 public:
  /// `folder` is the name of its folder among the drives, `options` are those of the script.
  Laboratory(const std::string& folder, std::vector<std::string> options);

  [[nodiscard]] std::string Folder() const;

 private:
  std::filesystem::path folder_;
  std::vector<std::string> options_;
};

}  // namespace tarvell::bench

#endif
