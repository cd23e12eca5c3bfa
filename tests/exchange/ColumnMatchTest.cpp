// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "exchange/ColumnMatch.h"
#include "exchange/ModelColumns.h"
#include "exchange/ReadCertificate.h"

namespace tarvell::test {

namespace {

/// The captions of a table, and the columns of it that a page gets; all of them in their order
/// where nothing else is said.
struct Captions {
  std::string model;
  std::int16_t page;
  std::string captions;
  std::string match = {};
};

void PrintTo(const Captions& captions, std::ostream* stream) {
  *stream << captions.model << " " << captions.captions;
}

class CaptionWords : public testing::TestWithParam<Captions> {};

}  // namespace

TEST_P(CaptionWords, SayWhichColumnIsMeant) {
  const Model& model = *FindModel(GetParam().model);
  const std::unique_ptr<cifCaldata> data = model.create();
  const std::vector<ModelColumn> columns = ModelColumns(model, *data, GetParam().page);
  const bool hasMembers = columns.front().role == ColumnRole::Member;
  const Certificate read =
      ReadCertificate(GetParam().captions + (hasMembers ? "\nA" : "\n1") + ";2;3;4;5\n");
  const std::string all = "0 1 2 3 4";
  EXPECT_EQ(MatchText(MatchedColumns(read.tables.at(0), columns).match),
            GetParam().match.empty() ? all.substr(0, 2 * columns.size() - 1) : GetParam().match);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, CaptionWords,
    testing::Values(
        Captions{"PX11A", 0, "Frequency;Calibration factor"},
        Captions{"PX11A", 0, "Messfrequenz;Kalibrierfaktor"},
        Captions{"PX11A", 0, "Fréquence;Facteur d'étalonnage"},
        Captions{"PX11A", 0, "Frecuencia;Factor de calibración"},
        Captions{"PX11A", 0, "Frequenza;Fattore di taratura"},
        Captions{"PX60G", 0, "Nenndämpfung;Frequenz;Dämpfung"},
        Captions{"PX60G", 0, "Affaiblissement nominal;Fréquence;Affaiblissement mesuré"},
        Captions{"PX60G", 0, "Atenuación nominal;Frecuencia;Atenuación medida"},
        Captions{"PX60G", 0, "Attenuazione nominale;Frequenza;Attenuazione misurata"},
        Captions{"RT520A", 0, "Frequenz;Kapazität;Unsicherheit;Verlustfaktor;Unsicherheit"},
        Captions{"RT520A", 0, "Fréquence;Capacité;Incertitude;Facteur de pertes;Incertitude"},
        Captions{"RT520A", 0,
                 "Frecuencia;Capacidad;Incertidumbre;Factor de pérdidas;Incertidumbre"},
        Captions{"RT520A", 0, "Frequenza;Capacità;Incertezza;Fattore di perdita;Incertezza"},
        Captions{"RT730A", 2, "Frequenz;Widerstand;Unsicherheit;Blindwiderstand;Unsicherheit"},
        Captions{"RT730A", 2, "Fréquence;Résistance;Incertitude;Réactance;Incertitude"},
        Captions{"RT730A", 2, "Frecuencia;Resistencia;Incertidumbre;Reactancia;Incertidumbre"},
        Captions{"RT730A", 4, "Frequenza;Resistenza;Incertezza;Suscettanza;Incertezza"}));

INSTANTIATE_TEST_SUITE_P(
    Nominal, CaptionWords,
    testing::Values(
        Captions{"RT730A", 0, "Member;Resistance [Ω];Unc. [%]", "0 - 1 2"},
        Captions{"RT730A", 0, "Member;R [Ω];Unc. [%]", "0 - 1 2"},
        Captions{"RT730A", 0, "Member;Measured [Ω];Nennwert [Ω]", "0 2 1 -"},
        Captions{"RT730A", 0, "Member;Setting [Ω];R [Ω];Deviation [%];Unc. [%]", "0 1 2 4"},
        Captions{"RT730A", 2, "f [MHz];Nominal resistance [Ω];R [Ω];Dev. [Ω];Unc. [%]",
                 "0 2 4 - -"},
        Captions{"RT520A", 0, "f [kHz];Nominal capacitance [pF];Measured value [pF]", "0 2 - - -"},
        Captions{"RT520A", 0, "Fréquence;Capacité nominale;Valeur mesurée", "0 2 - - -"},
        Captions{"RT520A", 0, "f [kHz];Nennwert [pF];Kapazität [pF]", "0 2 - - -"},
        Captions{"PX11A", 0, "f [MHz];Nominal [%];Messwert [%]", "0 2"}));

INSTANTIATE_TEST_SUITE_P(
    OtherQuantities, CaptionWords,
    testing::Values(
        Captions{"RT520A", 0, "f [kHz];C [pF];Deviation [%];Uncertainty [ppm];k", "0 1 3 - -"},
        Captions{"RT520A", 0, "f [kHz];C [pF];Tolerance [%];Coverage factor", "0 1 - - -"},
        Captions{"RT520A", 0, "f [kHz];C [pF];Feuchte [%];x [1];tan δ", "0 1 - 4 -"},
        Captions{"PX11A", 0, "f [MHz];Cal Factor;RH [%]", "0 1"},
        Captions{"PX11A", 0, "f [MHz];Coverage factor;Cal Factor;U95 [%]", "0 2"},
        Captions{"PX11A", 0, "f [MHz];Humidity [%];Limit [%]", "0 -"},
        Captions{"PX60G", 0, "Soll [dB];f [MHz];Ist [dB];Korrektur [dB]"},
        Captions{"PX60G", 0, "Nominal [dB];f [MHz];Correction [dB]", "0 1 -"},
        Captions{"PX60G", 0, "Setting;Frequency (MHz);Attenuation (dB)"}));

TEST(ColumnMatch, TheKindOfADccColumnSaysWhetherItIsNominal) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  const auto column = [](const std::string& refType, const std::string& unit) {
    return CertificateColumn{{{"", "X"}}, refType, {Series{{{"1", unit}}, {}}}};
  };
  CertificateTable table;
  table.columns = {column("", "Hz"), column("basic_nominalValue", "pF"),
                   column("basic_measuredValue", "pF"), column("basic_measurementError", "\\one"),
                   column("capacitance_dissipationFactor", "\\one")};
  EXPECT_EQ(MatchText(MatchedColumns(table, ModelColumns(model, *data, 0)).match), "0 2 - 4 -");
}

}  // namespace tarvell::test
