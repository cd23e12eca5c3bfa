// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_MODELCOLUMNS_H
#define TARVELL_EXCHANGE_MODELCOLUMNS_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Models.h"
#include "exchange/Units.h"

namespace tarvell {

/// What a column of a model's table holds.
enum class ColumnRole {
  Frequency,
  Setting,      ///< of an attenuator
  Member,       ///< the name of a member of a set, a text
  Nominal,      ///< the nominal value of a member
  Value,        ///< a measured value
  Uncertainty,  ///< of the value column before it, in the same unit
  Relative      ///< uncertainty of the value column before it, relative to the value
};

// What the columns hold, as messages name it.
inline constexpr std::string_view kFrequencyName = "a frequency";
inline constexpr std::string_view kFactorName = "a calibration factor";
inline constexpr std::string_view kSettingName = "a setting";
inline constexpr std::string_view kAttenuationName = "an attenuation";
inline constexpr std::string_view kCapacitanceName = "a capacitance";
inline constexpr std::string_view kDissipationName = "a dissipation factor";
inline constexpr std::string_view kResistanceName = "a resistance";
inline constexpr std::string_view kInductanceName = "an inductance or capacitance";
inline constexpr std::string_view kReactanceName = "a reactance";
inline constexpr std::string_view kSusceptanceName = "a susceptance";

/// A column of a model's table as certificates have to offer it.
struct ModelColumn {
  std::string caption;  ///< as the table shows it
  ColumnRole role = ColumnRole::Value;
  Unit unit;  ///< one that its values can be converted to
  /// Another unit that some of its rows have instead: inductances and capacitances are one column.
  Unit otherUnit;
  std::span<const std::string_view> words;   ///< folded words that its captions have
  std::span<const std::string_view> others;  ///< words of other columns of the same unit
  bool needsName = false;                    ///< whether its unit does not say enough
  /// One of the names above; of an uncertainty that of its value, "" for members.
  std::string_view quantity = {};

  [[nodiscard]] bool IsUncertainty() const {
    return role == ColumnRole::Uncertainty || role == ColumnRole::Relative;
  }
  /// Whether the column says which row is meant.
  [[nodiscard]] bool IsPoint() const {
    return role == ColumnRole::Frequency || role == ColumnRole::Setting ||
           role == ColumnRole::Member;
  }
  /// Whether it takes values in this unit.
  [[nodiscard]] bool Takes(const Unit& other) const {
    return unit.IsLike(other) || otherUnit.IsLike(other);
  }
};

/// The columns of a page, from column 0 on. `data` must be an object of that model.
[[nodiscard]] std::vector<ModelColumn> ModelColumns(const Model& model, const cifCaldata& data,
                                                    std::int16_t page);

/// Whether a folded caption names a point, a value, or what else is measured.
[[nodiscard]] bool NamesQuantity(std::string_view folded);

/// Whether a folded caption names a measured value, whatever was measured.
[[nodiscard]] bool NamesMeasured(std::string_view folded);

/// Whether a folded caption names a nominal value, or a setting.
[[nodiscard]] bool NamesNominal(std::string_view folded);

/// Whether a folded caption names what no table of the program has: a deviation, a tolerance, the
/// humidity, a coverage factor ...
[[nodiscard]] bool NamesOther(std::string_view folded);

/// Whether a folded text names an earlier calibration: "last", "previous" ...
[[nodiscard]] bool NamesEarlier(std::string_view folded);

/// Whether a folded caption names what is hardly a result: a value of an earlier calibration, of a
/// reference, or the least or the largest one.
[[nodiscard]] bool NamesUnlikely(std::string_view folded);

/// Whether a folded caption names an uncertainty.
[[nodiscard]] bool NamesUncertainty(std::string_view folded);

/// Whether a folded caption says that an uncertainty is not the expanded one.
[[nodiscard]] bool NamesStandard(std::string_view folded);

/// The coverage factor that a folded caption names, as in "u (k=2)", with a decimal point; "" for
/// none.
[[nodiscard]] std::string CoverageFactorIn(std::string_view folded);

/// Whether a folded caption says that an uncertainty is the expanded one.
[[nodiscard]] bool NamesExpanded(std::string_view folded);

}  // namespace tarvell

#endif
