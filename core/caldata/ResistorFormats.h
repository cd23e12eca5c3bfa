// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_RESISTORFORMATS_H
#define TARVELL_CORE_CALDATA_RESISTORFORMATS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/numbers/NumberPattern.h"

/// What is fixed for each page of the standard resistor set.
namespace tarvell {

inline constexpr std::size_t kResistorPages = 7;
inline constexpr std::int16_t kNoColumn = -1;

/// Stands for " ppm" or " %", whichever was chosen.
inline constexpr std::string_view kRelativeUnit = "ppm or %";

struct ResistorPage {
  std::string_view name;
  std::array<std::string_view, 5> captions;
  std::array<std::string_view, 4> titles;  ///< title lines of the section, "" where there are fewer
  std::array<std::size_t, 5> widths;       ///< field widths, 0 for a column that is not used
  std::int16_t relativeColumn;             ///< the relative uncertainty, or kNoColumn
};

// clang-format off
inline constexpr std::array<ResistorPage, kResistorPages> kResistorPage = {{
    {"DC Registance",
     {"Model", "Nominal Value", "Calibrated Value", "Unc. (%)"},
     {"!", "!DC Resistance", "!Model     : Nominal Value : Calibrated Value : Unc.(%)"},
     {9, 13, 16, 9}, 3},
    {"Indactance / Parallel Capacitance",
     {"Model", "Calibrated Value", "Unc. (%)"},
     {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz", "!Model     : Calibrated Value : Unc.(%)"},
     {9, 16, 7}, kNoColumn},
    {"HF Calibration at 10ohm",
     {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]", "Reactance [ohm]", "Unc. (%)"},
     {"!", "!High Freqency Calibration Results", "! 10 ohm (MODEL QZ RT735A)", "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
     {9, 12, 9, 14, 11}, 2},
    {"HF Calibration at 100ohm",
     {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]", "Reactance [ohm]", "Unc. (%)"},
     {"!", "! 100 ohm (MODEL QZ RT736A)", "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
     {9, 12, 9, 14, 11}, 2},
    {"HF Calibration at 1kohm",
     {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
     {"!", "! 1 kohm (MODEL QZ RT737A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
     {9, 13, 9, 14, 11}, 2},
    {"HF Calibration at 10kohm",
     {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
     {"!", "! 10 kohm (MODEL QZ RT738A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
     {9, 13, 9, 14, 11}, 2},
    {"HF Calibration at 100kohm",
     {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
     {"!", "! 100 kohm (MODEL QZ RT739A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
     {9, 13, 9, 14, 11}, 2},
}};

/// The stored text of a cell: prefix, number and unit. On pages 2 to 6 the rule of column 3 applies
/// to column 4, too.
struct ResistorFormat {
  std::int16_t page;
  std::int16_t column;
  std::int16_t firstRow;  ///< grid rows count from 1
  std::int16_t lastRow;
  NumberPattern pattern;
  std::string_view unit;
  std::string_view prefix = "";
};

inline constexpr std::int16_t kEveryRow = 32767;

inline constexpr std::array<ResistorFormat, 47> kResistorFormat = {{
    // page, column, rows, pattern, unit
    {0, 1, 1, 3, "### ",     "mohm"},
    {0, 1, 4, 6, "### ",     "ohm"},
    {0, 1, 7, 9, "### ",     "kohm"},
    {0, 2, 1, 1, "0.0000",   "  mohm"},
    {0, 2, 2, 2, "#0.000",   "  mohm"},
    {0, 2, 3, 3, "##0.00",   "  mohm"},
    {0, 2, 4, 4, "0.0000",   "  ohm"},
    {0, 2, 5, 5, "#0.000",   "  ohm"},
    {0, 2, 6, 6, "##0.000",  " ohm"},
    {0, 2, 7, 7, "0.00000",  " kohm"},
    {0, 2, 8, 8, "#0.0000",  " kohm"},
    {0, 2, 9, 9, "##0.000",  " kohm"},
    {0, 3, -32767, kEveryRow, "0.##", kRelativeUnit},
    {1, 1, 1, 3, "#0.##",    " nH", "Ls/"},
    {1, 1, 4, 6, "0.###",    " pF", "Cp/"},
    {1, 2, 1, 2, "0.##",     " nH"},
    {1, 2, 3, 3, "#0.#",     " nH"},
    {1, 2, 4, 6, "0.0#",     " pF"},
    {2, 1, 1, 4, "#0.000",   " ohm"},
    {2, 1, 5, 7, "#0.00",    " ohm"},
    {2, 2, 1, 4, "0.00",     kRelativeUnit},
    {2, 2, 5, 7, "0.0",      kRelativeUnit},
    {2, 3, 1, 4, "0.000",    " ohm"},
    {2, 3, 5, 7, "0.00",     " ohm"},
    {3, 1, 1, 5, "##0.00",   " ohm"},
    {3, 1, 6, 7, "##0.0",    " ohm"},
    {3, 2, 1, 5, "0.00",     kRelativeUnit},
    {3, 2, 6, 7, "0.0",      kRelativeUnit},
    {3, 3, 1, 5, "0.00",     " ohm"},
    {3, 3, 6, 7, "0.0",      " ohm"},
    {4, 1, 1, 6, "##0.0000", " kohm"},
    {4, 1, 7, 8, "##0.000",  " kohm"},
    {4, 2, 1, 6, "0.00",     kRelativeUnit},
    {4, 2, 7, 8, "0.0",      kRelativeUnit},
    {4, 3, 1, 6, "0.0",      " uS"},
    {4, 3, 7, 8, "0",        " uS"},
    {5, 1, 1, 8, "##0.000",  " kohm"},
    {5, 2, 1, 2, "0.00",     kRelativeUnit},
    {5, 2, 3, 8, "0.0",      kRelativeUnit},
    {5, 3, 1, 2, "0.00",     " uS"},
    {5, 3, 3, 8, "0",        " uS"},
    {6, 1, 1, 2, "##0.00",   " kohm"},
    {6, 1, 3, 8, "##0.000",  " kohm"},
    {6, 2, 1, 2, "0.00",     kRelativeUnit},
    {6, 2, 3, 8, "0.0",      kRelativeUnit},
    {6, 3, 1, 1, "0.000",    " uS"},
    {6, 3, 2, 8, "0.00",     " uS"},
}};
// clang-format on

}  // namespace tarvell

#endif
