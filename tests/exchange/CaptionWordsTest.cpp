// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "exchange/CaptionWords.h"

namespace tarvell::test {

namespace {

/// A caption for a column of a model, and the words of it that are not known.
struct Caption {
  std::string model;
  std::int16_t page;
  std::size_t column;
  std::string text;
  std::string unknown = {};  ///< those in a row, with "|" between these
};

void PrintTo(const Caption& caption, std::ostream* stream) {
  *stream << caption.model << " " << caption.column << " " << caption.text;
}

class CaptionReadings : public testing::TestWithParam<Caption> {};

constexpr std::size_t kPoint = 0;
constexpr std::size_t kFactor = 1;
constexpr std::size_t kAttenuation = 2;
constexpr std::size_t kCapacitance = 1;
constexpr std::size_t kOfCapacitance = 2;
constexpr std::size_t kDissipation = 3;
constexpr std::size_t kOfDissipation = 4;

}  // namespace

TEST_P(CaptionReadings, NameTheWordsThatAreNotKnown) {
  const Model& model = *FindModel(GetParam().model);
  const std::unique_ptr<cifCaldata> data = model.create();
  const std::vector<ModelColumn> columns = ModelColumns(model, *data, GetParam().page);
  std::string unknown;
  for (const std::string& words :
       ReadingOf(GetParam().text, columns.at(GetParam().column)).unknown) {
    unknown += (unknown.empty() ? "" : "|") + words;
  }
  EXPECT_EQ(unknown, GetParam().unknown);
}

INSTANTIATE_TEST_SUITE_P(
    Known, CaptionReadings,
    testing::Values(Caption{"PX11A", 0, kPoint, "f / MHz"},
                    Caption{"PX11A", 0, kPoint, "Measurement frequency (GHz)"},
                    Caption{"PX11A", 0, kPoint, "Messfrequenz in MHz"},
                    Caption{"PX11A", 0, kFactor, "CAL. FACTOR [%]"},
                    Caption{"PX11A", 0, kFactor, "Measured value of the cal factor, %"},
                    Caption{"PX11A", 0, kFactor, "Gemessener Kalibrierfaktor (KF) [%]"},
                    Caption{"PX11A", 0, kFactor, "Facteur d'étalonnage mesuré (%)"},
                    Caption{"PX11A", 0, kFactor, "Facteur d\u2019étalonnage"},
                    Caption{"PX11A", 0, kFactor, "Factor de calibración medido [%]"},
                    Caption{"PX11A", 0, kFactor, "Fattore di taratura misurato [%]"},
                    Caption{"PX60G", 0, kPoint, "Affaiblissement nominal (dB)"},
                    Caption{"PX60G", 0, kAttenuation, "Dämpfung, Ist-Wert [dB]"},
                    Caption{"PX60G", 0, kAttenuation, "|S21| [dB]"},
                    Caption{"RT520A", 0, kCapacitance, "Cp (pF)"},
                    Caption{"RT520A", 0, kOfCapacitance, "Expanded uncertainty (k = 2) [ppm]"},
                    Caption{"RT520A", 0, kOfCapacitance, "U(C), 95 % [pF]"},
                    Caption{"RT520A", 0, kOfCapacitance, "Uncertainty of capacitance (±%)"},
                    Caption{"RT520A", 0, kOfCapacitance, "u (k=2,0) [ppm]"},
                    Caption{"RT520A", 0, kOfCapacitance, "Relative Messunsicherheit [ppm]"},
                    Caption{"RT520A", 0, kOfCapacitance, "Rel. exp. unc. / ppm"},
                    Caption{"RT520A", 0, kOfCapacitance, "Incertitude sur la capacité (pF)"},
                    Caption{"RT520A", 0, kOfDissipation, "Unsicherheit des Verlustfaktors"},
                    Caption{"RT520A", 0, kDissipation, "tan \u03B4"},
                    Caption{"RT520A", 0, kOfDissipation, "Uncertainty of dissipation factor"},
                    Caption{"RT730A", 4, 3, "Susceptance B [\u00B5S]"}));

INSTANTIATE_TEST_SUITE_P(
    Unknown, CaptionReadings,
    testing::Values(
        Caption{"PX11A", 0, kPoint, "RBW frequency [Hz]", "RBW"},
        Caption{"PX11A", 0, kFactor, "Cal factor low power [%]", "low power"},
        Caption{"PX11A", 0, kFactor, "Cal factor as found, label [%]", "as found label"},
        Caption{"PX11A", 0, kFactor, "Old cal factor (1 mW) [%]", "Old|1 mW"},
        Caption{"PX11A", 0, kFactor, "Cal factor 23 C [%]", "23 C"},
        Caption{"PX11A", 0, kFactor, "Factory factor [%]", "Factory"},
        Caption{"PX11A", 0, kFactor, "Kalibrierfaktor laut Hersteller [%]", "laut Hersteller"},
        Caption{"PX11A", 0, kFactor, "Cal factor 95 % [%]", "95"},
        Caption{"PX60G", 0, kAttenuation, "Repeatability [dB]", "Repeatability"},
        Caption{"RT520A", 0, kCapacitance, "Capacitance 2-terminal [pF]", "2 terminal"},
        Caption{"RT520A", 0, kOfCapacitance, "Uncertainty (1 sigma) [ppm]", "1 sigma"},
        Caption{"RT520A", 0, kOfCapacitance, "Combined uncertainty u_c [ppm]", "Combined|u"},
        Caption{"RT520A", 0, kOfCapacitance, "u(C) [ppm]", "u"},
        Caption{"RT520A", 0, kOfCapacitance, "Uncertainty of D [%]", "D"},
        Caption{"RT520A", 0, kOfDissipation, "Uncertainty of C", "C"},
        Caption{"RT520A", 0, kOfDissipation, "Relative uncertainty", "Relative"},
        Caption{"RT730A", 2, 1, "|Z| [ohm]", "|Z|"}, Caption{"RT730A", 2, 3, "R [ohm]", "R"}));

TEST(CaptionReading, SaysWhetherTheQuantityIsNamed) {
  const Model& model = *FindModel("PX60G");
  const std::unique_ptr<cifCaldata> data = model.create();
  const ModelColumn attenuation = ModelColumns(model, *data, 0).at(kAttenuation);
  EXPECT_TRUE(ReadingOf("A [dB]", attenuation).isNamed);
  EXPECT_FALSE(ReadingOf("Result [dB]", attenuation).isNamed);
  EXPECT_TRUE(ReadingOf("Result [dB]", attenuation).hasWords);
  EXPECT_FALSE(ReadingOf("dB", attenuation).hasWords);
}

}  // namespace tarvell::test
