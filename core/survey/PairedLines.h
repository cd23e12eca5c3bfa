// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_PAIREDLINES_H
#define TARVELL_CORE_SURVEY_PAIREDLINES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvell {

/// A line of an instrument's file or of a data file.
struct FileLine {
  std::string text;
  std::string keyword;
  std::string_view end;  ///< CR LF, CR or LF; "" for a last line without an end
};
using FileLines = std::vector<FileLine>;

/// The lines of `bytes`, which must outlive them.
[[nodiscard]] FileLines LinesOf(std::string_view bytes);

/// Pairs the lines of two files, in the order of both, so that the pairs have as much in common as
/// possible. It takes time and memory for each line of one with each line of the other.
class PairedLines {
 public:
  /// Both must outlive the object.
  PairedLines(const FileLines& before, const FileLines& after);

  /// Calls `visit` with each pair, and with nullptr beside a line that has no other.
  template <typename Visit>
  void Each(const Visit& visit) const {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < before_.size() || j < after_.size()) {
      // Of several lines with one keyword, a reader takes the last.
      if (i < before_.size() && Best(i, j) == Best(i + 1, j)) {
        visit(&before_[i++], nullptr);
      } else if (j < after_.size() && Best(i, j) == Best(i, j + 1)) {
        visit(nullptr, &after_[j++]);
      } else {
        visit(&before_[i++], &after_[j++]);
      }
    }
  }

 private:
  /// What the lines from these two on have in common.
  [[nodiscard]] std::size_t Best(std::size_t i, std::size_t j) const {
    return best_[i * width_ + j];
  }

  const FileLines& before_;
  const FileLines& after_;
  std::size_t width_;
  std::vector<std::size_t> best_;
};

}  // namespace tarvell

#endif
