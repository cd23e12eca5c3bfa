// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_SLIPLIMITS_H
#define TARVELL_CORE_CURVES_SLIPLIMITS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Models.h"

/// How far a value may change from one calibration to the next, or be away from its curve, before
/// it is marked as a slip of typing.
namespace tarvell {

/// The limit of a value is the largest of the first three. It is never below two units of the last
/// digit, because two roundings can make up one.
struct SlipLimit {
  double absolute = 0;       ///< in the unit of the value
  double percent = 0;        ///< of the value
  double uncertainties = 0;  ///< times the stated uncertainty of the value, where it has one
  /// An uncertainty itself may change by this many per cent of the earlier one.
  double uncertaintyPercent = 0;

  bool operator==(const SlipLimit&) const = default;
};

/// The limits without a file of the laboratory.
[[nodiscard]] SlipLimit DefaultLimit(const Model& model);

/// The limits that a laboratory has set.
struct SlipLimits {
  std::map<std::string, SlipLimit, std::less<>> ofModels;  ///< by model code
  std::vector<std::string> problems;                       ///< a sentence for each line not used

  [[nodiscard]] SlipLimit Of(const Model& model) const;
};

/// The name of the laboratory's file in the root of the calibration tree. The dot keeps it out of
/// the list of models.
inline constexpr std::string_view kLimitsFile = "limits.tarvell";

/// The limits of a text as docs/file-formats.md describes it. A line that cannot be used is a
/// problem; the others hold.
[[nodiscard]] SlipLimits ParseSlipLimits(std::string_view text);

/// The limits of the file in `root`, a path of the program. Without a file, those of the program. A
/// file that cannot be read is a problem.
[[nodiscard]] SlipLimits LoadSlipLimits(const std::string& root);

}  // namespace tarvell

#endif
