// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ValueLimits.h"

#include <algorithm>
#include <cmath>

#include "core/numbers/Numbers.h"

namespace tarvell {

std::string WhyNoFactor(double percent) {
  // Sensors have factors near 100 %. These limits find a moved decimal point and a sign.
  constexpr double kLeast = 10;
  constexpr double kMost = 200;
  return percent >= kLeast && percent <= kMost
             ? std::string()
             : "is not a calibration factor, which is from 10 % to 200 %";
}

std::string WhyNoFrequency(double hertz) {
  // No coaxial connector goes higher.
  constexpr double kMost = 110E9;
  return hertz <= kMost ? std::string() : "is above 110 GHz, where no point of the model can be";
}

std::string WhyNoSetting(double setting) {
  constexpr double kMost = 200;
  return setting <= kMost ? std::string() : "is above 200 dB, where no setting can be";
}

std::string WhyNoAttenuation(double attenuation, double setting) {
  // The loss at the setting 0 may be included; a deviation from the setting is not the attenuation.
  constexpr double kLeast = 3;
  constexpr double kPart = 0.1;
  if (attenuation < 0) {
    // A transmission, such as S21, is the attenuation with the other sign.
    return "is negative, and the table has attenuations without a sign";
  }
  const double most = std::max(kLeast, RoundedTo15Digits(kPart * setting));
  return std::abs(attenuation - setting) <= most
             ? std::string()
             : "is more than " + ShortestText(most) + " dB away from the setting";
}

std::string WhyNoDissipation(double factor) {
  return std::abs(factor) <= 1 ? std::string() : "is above 1, where no dissipation factor is";
}

std::string WhyNoUncertainty(double uncertainty) {
  return uncertainty > 0 ? std::string() : "is not an uncertainty, which is above 0";
}

std::string WhyNoRelativeUncertainty(double ratio) {
  return ratio <= 1 ? WhyNoUncertainty(ratio) : "is an uncertainty above 100 % of the value";
}

bool AreNear(double one, double other) {
  constexpr double kLess = 0.7;
  constexpr double kMore = 1.4;
  const double ratio = one / other;
  return ratio > kLess && ratio < kMore;
}

}  // namespace tarvell
