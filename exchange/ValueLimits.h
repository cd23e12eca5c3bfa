// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_VALUELIMITS_H
#define TARVELL_EXCHANGE_VALUELIMITS_H

#include <string>

/// What points and values of the models can be at all. A certificate that has others is read
/// wrongly, or is wrong itself. docs/handbook.md has the limits.
///
/// Each function returns why a number is not possible, as the end of a sentence about it; "" for
/// one that is possible.
namespace tarvell {

/// A calibration factor in per cent.
[[nodiscard]] std::string WhyNoFactor(double percent);

/// The frequency of a calibration point.
[[nodiscard]] std::string WhyNoFrequency(double hertz);

/// The setting of an attenuator in decibels.
[[nodiscard]] std::string WhyNoSetting(double setting);

/// The attenuation at a setting, both in decibels.
[[nodiscard]] std::string WhyNoAttenuation(double attenuation, double setting);

/// A dissipation factor.
[[nodiscard]] std::string WhyNoDissipation(double factor);

/// An uncertainty in any unit.
[[nodiscard]] std::string WhyNoUncertainty(double uncertainty);

/// An uncertainty relative to its value.
[[nodiscard]] std::string WhyNoRelativeUncertainty(double ratio);

/// Whether both can be values of one capacitor or resistor.
[[nodiscard]] bool AreNear(double one, double other);

}  // namespace tarvell

#endif
