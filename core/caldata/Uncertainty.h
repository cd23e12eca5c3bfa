// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_UNCERTAINTY_H
#define TARVELL_CORE_CALDATA_UNCERTAINTY_H

#include <string>
#include <string_view>

#include "core/numbers/NumberPattern.h"

/// The relative uncertainties of the sets of standards. Cells have them in ppm or per cent, files
/// always in per cent.
namespace tarvell {

/// An uncertainty as its cell shows it: a number, and "ppm", "%" or, if no unit is known, "".
struct Uncertainty {
  double number = 0;
  std::string_view unit;
};

inline constexpr std::string_view kPpm = "ppm";
inline constexpr std::string_view kPercent = "%";

/// The parts of a cell's text. An "m" and the two characters before it are taken for a unit.
struct UncertaintyText {
  std::string_view number;
  std::string_view unit;
};
/// `ppmEnds` holds the characters that the unit ppm may end with.
[[nodiscard]] UncertaintyText SplitUncertainty(std::string_view cell, std::string_view ppmEnds);

/// A value in per cent as one in ppm. Throws a Type error when it is too large.
[[nodiscard]] double PpmOfPercent(double percent);

/// Throws a Type error for a value in per cent that is too large to be converted to ppm: a long
/// text is read back from the file in ppm, and that would fail.
void CheckPercent(double percent);

/// The uncertainty of a file's field. It is in ppm if the field is as long as only values in ppm
/// are written; nothing else marks the unit. Throws as PpmOfPercent does.
[[nodiscard]] Uncertainty UncertaintyOfField(std::string_view field, std::string_view ppmEnds);

/// The field of a cell's uncertainty, without a unit: the text of a cell in per cent, a value in
/// ppm by `pattern`, which gives it the characters that mark it.
[[nodiscard]] std::string FieldOfUncertainty(std::string_view cell, std::string_view ppmEnds,
                                             const NumberPattern& pattern);

}  // namespace tarvell

#endif
