// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/dates/FileDate.h"
#include "exchange/ImportPlan.h"
#include "exchange/ReadCertificate.h"
#include "support/ErrorOf.h"

/// Certificates with numbers that could go in by mistake. None of them may without a question.
namespace tarvell::test {

namespace {

using Texts = std::vector<std::string>;
using Tables = std::vector<std::size_t>;

/// A certificate that is imported into new data.
class WrongNumbers : public testing::Test {
 protected:
  void Read(const std::string& certificate, const std::string& model = "PX11A") {
    model_ = FindModel(model);
    data_ = model_->create();
    if (now_.pages.empty()) {
      now_.pages.resize(1);
    }
    certificate_ = ReadCertificate(certificate);
    choices_ = ProposedChoices(Target(), certificate_);
    plan_ = PlanImport(Target(), certificate_, choices_);
  }

  [[nodiscard]] ImportTarget Target() const {
    return {.model = *model_, .data = *data_, .now = now_};
  }

  /// The rows of a page after the import, with blanks between the cells.
  [[nodiscard]] Texts RowsOf(std::size_t page) const {
    const EditorState after = AfterImport(now_, plan_, true);
    Texts rows;
    for (const std::vector<std::string>& cells : after.pages.at(page).rows) {
      std::string row;
      for (const std::string& cell : cells) {
        row += (row.empty() ? "" : " ") + cell;
      }
      rows.push_back(row);
    }
    return rows;
  }

  /// Two capacitors of a set, with one row each.
  void OpenCapacitors() {
    now_.pages.resize(4);
    now_.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}};
    now_.pages[1].rows = {{"1000", "1.100000pF", "0.0030 %", "0.00000", "0.00010"}};
  }

  const Model* model_ = nullptr;
  std::unique_ptr<cifCaldata> data_;
  EditorState now_;
  Certificate certificate_;
  ImportChoices choices_;
  ImportPlan plan_;
};

const std::string kTable = "f [MHz];KF [%]\n50;98.5\n";
const std::string kOtherPoints = "f [MHz];KF [%]\n1000;97.5\n";

}  // namespace

TEST_F(WrongNumbers, ResultsBeforeAndAfterAnAdjustmentAreAlternatives) {
  struct Titles {
    std::string before;
    std::string after;
  };
  for (const auto& [before, after] :
       std::vector<Titles>{{"Before adjustment", "After adjustment"},
                           {"As found", "As left"},
                           {"Results, as-found condition", "Results, as-left condition"},
                           {"Messwerte vor Justierung", "Messwerte nach Justierung"},
                           {"Werte vor der Justage", "Werte nach der Justage"},
                           {"Avant ajustage", "Après ajustage"},
                           {"Valori prima della regolazione", "Valori dopo la regolazione"},
                           {"Previous calibration", "Results"},
                           {"Table 1: as-received", "Table 2"},
                           {"", "As left"}}) {
    Read(before + "\n" + kTable + "\n" + after + "\n" + kOtherPoints);
    EXPECT_FALSE(plan_.HasValues()) << before;
    ASSERT_EQ(plan_.open.size(), 1U) << before;
    EXPECT_TRUE(Contains(plan_.open[0], "Choose the table.")) << before;
    EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}})) << before;
  }
  EXPECT_EQ(plan_.open[0],
            "The values can be those of \"Table of line 3\" (line 3) or \"As left\" (line 7). "
            "Choose the table.");
  EXPECT_FALSE(choices_.pages[0].canJoinAlternatives);
}

TEST_F(WrongNumbers, ATableThatTheUserLeavesOutIsNotSaidToBeMissing) {
  Read(kTable);
  choices_.pages[0].tables.clear();
  EXPECT_EQ(PlanImport(Target(), certificate_, choices_).notes.front(), "No table is chosen.");
}

TEST_F(WrongNumbers, EachAlternativeMayHaveSeveralParts) {
  const std::string parts = kTable + "\n" + kOtherPoints;
  Read("As found\n" + parts + "\nAs left\nRange 1\n" + parts);
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0, 1}, {2, 3}}));
}

TEST_F(WrongNumbers, TheStateMayBeAboveTheTitlesOfMembers) {
  OpenCapacitors();
  const std::string tables =
      "RT521A\nf [kHz];C [pF]\n1;1.0001\n\nRT522A\nf [kHz];C [pF]\n1;1.1001\n";
  Read("As found\n\n" + tables + "\nAs left\n\n" + tables, "RT520A");
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {2}}));
  EXPECT_EQ(choices_.pages[1].alternatives, (std::vector<Tables>{{1}, {3}}));
  EXPECT_EQ(plan_.open,
            (Texts{"RT521A: The values can be those of \"RT521A, As found\" (line 5) or \"RT521A, "
                   "As left\" (line 15). Choose the table.",
                   "RT522A: The values can be those of \"RT522A, As found\" (line 9) or \"RT522A, "
                   "As left\" (line 19). Choose the table."}));
}

TEST_F(WrongNumbers, AStateInTheTitleOfOneMemberDoesNotHoldForTheNextTitle) {
  OpenCapacitors();
  const std::string rows = "\nf [kHz];C [pF]\n1;1.0001\n\n";
  Read("RT521A before repair" + rows + "RT521A" + rows, "RT520A");
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}}));
}

/// A DCC with a result for each of these names or refTypes, at other points.
std::string DccWith(const Texts& results) {
  std::string text =
      "<d:digitalCalibrationCertificate xmlns:d=\"https://ptb.de/dcc\" xmlns=\"https://ptb.de/si\">"
      "<d:measurementResults><d:measurementResult><d:results>";
  int point = 50;
  for (const std::string& result : results) {
    text += result + "<d:data><d:list><d:quantity><real><value>" + std::to_string(point++) +
            "</value><unit>\\mega\\hertz</unit></real></d:quantity><d:quantity>"
            "<d:name><d:content>Factor</d:content></d:name><real><value>98</value>"
            "<unit>\\percent</unit></real></d:quantity></d:list></d:data></d:result>";
  }
  return text +
         "</d:results></d:measurementResult></d:measurementResults>"
         "</d:digitalCalibrationCertificate>";
}

TEST_F(WrongNumbers, ADccNamesThemInNamesOrRefTypes) {
  const auto named = [](const std::string& name) {
    return "<d:result><d:name><d:content lang=\"de\">" + name + "</d:content></d:name>";
  };
  for (const Texts& results : {Texts{named("vor Justierung"), named("nach Justierung")},
                               Texts{"<d:result refType=\"basic_beforeAdjustment\">",
                                     "<d:result refType=\"basic_afterAdjustment\">"}}) {
    Read(DccWith(results));
    EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}})) << results[0];
  }
  EXPECT_EQ(plan_.open,
            Texts{"The values can be those of \"basic_beforeAdjustment\" (result 1, list 1) or "
                  "\"basic_afterAdjustment\" (result 2, list 1). Choose the table."});
  Read(DccWith({named("Kalibrierfaktor"), named("Kalibrierfaktor")}));
  EXPECT_EQ(choices_.pages[0].tables, (Tables{0, 1}));
}

TEST_F(WrongNumbers, TheStatusOfADccMeasurementIsItsState) {
  std::string dcc = DccWith({"<d:result>", "<d:result>"});
  const std::string between = "</d:result><d:result>";
  const auto conditions = [](const std::string& status) {
    return "<d:measurementResult><d:influenceConditions><d:influenceCondition><d:status>" + status +
           "</d:status></d:influenceCondition></d:influenceConditions>";
  };
  dcc.replace(dcc.find(between), between.size(),
              "</d:result></d:results></d:measurementResult>" + conditions("afterAdjustment") +
                  "<d:results><d:result>");
  const std::string first = "<d:measurementResult>";
  dcc.replace(dcc.find(first), first.size(), conditions("beforeAdjustment"));
  Read(dcc);
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}}));
}

TEST_F(WrongNumbers, TablesOfTwoChannelsAreAlternativesThatTheUserMayJoin) {
  Read("Channel A\n" + kTable + "\nChannel B\n" + kOtherPoints);
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}}));
  EXPECT_TRUE(choices_.pages[0].canJoinAlternatives);
  Read("Channel A\n" + kTable + "\nChannel B\nf [MHz];KF [%]\n50;98.4\n");
  EXPECT_FALSE(choices_.pages[0].canJoinAlternatives) << "both have the same point";
}

TEST_F(WrongNumbers, TitlesThatSayMoreThanWhichPartFollowsAreAskedAbout) {
  Read("Method of substitution\n" + kTable + "\nMethod of comparison\n" + kOtherPoints);
  EXPECT_EQ(plan_.doubts.front(),
            "The tables \"Method of substitution\" (line 3) and \"Method of comparison\" (line 7) "
            "are taken together, as parts of one table.");
  Read("Results at 1 mW\n" + kTable + "\nResults at 10 mW\n" + kOtherPoints);
  EXPECT_EQ(plan_.doubts.size(), 1U);
  Read(kTable + "Control measurement\n" + kOtherPoints);
  EXPECT_EQ(plan_.doubts.size(), 1U) << "only the later table has a title";
  for (const auto& [first, later] :
       std::vector<std::pair<std::string, std::string>>{{"Table 2025", "Table 2026"},
                                                        {"High power", "Low power"},
                                                        {"Upper head", "Lower head"},
                                                        {"Table 10 mW", "Table 1 mW"},
                                                        {"Table 1 V", "Table 2V"},
                                                        {"MHz", "GHz"}}) {
    Read(first + "\n" + kTable + "\n" + later + "\n" + kOtherPoints);
    EXPECT_EQ(plan_.doubts.size(), 1U) << first;
  }
  for (const auto& [first, later] :
       std::vector<std::pair<std::string, std::string>>{{"Low band", "High band"},
                                                        {"Table 1", "Table 2"},
                                                        {"50 to 1900 MHz", "2000 MHz to 4 GHz"}}) {
    Read(first + "\n" + kTable + "\n" + later + "\n" + kOtherPoints);
    EXPECT_EQ(plan_.doubts, Texts()) << first;
  }
  Read("Calibration factor\n" + kTable + "\n" + kOtherPoints);
  EXPECT_EQ(plan_.doubts, Texts());
  Read("Table 1: Calibration factor, 50 MHz to 1 GHz\n" + kTable +
       "\nTable 2: Calibration factor (continued)\n" + kOtherPoints);
  EXPECT_EQ(plan_.doubts, Texts());
  EXPECT_EQ(RowsOf(0), (Texts{"50.00 98.5", "1000.00 97.5"}));
}

TEST_F(WrongNumbers, AColumnOfTextsThatDividesTheRowsIsAskedAbout) {
  struct Column {
    std::string caption;
    std::string first;
    std::string second;
  };
  for (const auto& [caption, first, second] :
       std::vector<Column>{{"Channel", "A", "B"},
                           {"Kanal", "1", "2"},
                           {"Sensor", "Sensor 1", "Sensor 2"},
                           {"Polarity", "+", "-"},
                           {"Level [dBm]", "0", "-10"},
                           {"Power [dBm]", "0", "-20"},
                           {"DUT", "1", "2"},
                           {"Meas. #", "1", "2"},
                           {"Probe", "left", "right"}}) {
    Read("f [MHz];KF [%];" + caption + "\n50;98.5;" + first + "\n60;98.4;" + first + "\n70;97.5;" +
         second + "\n");
    EXPECT_FALSE(plan_.HasValues()) << caption;
    EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}})) << caption;
    EXPECT_EQ(certificate_.tables.at(0).RowCount(), 2U) << caption;
  }
  EXPECT_EQ(plan_.open,
            Texts{"The values can be those of \"Table of line 2, Probe left\" (line 2) or \"Table "
                  "of line 2, Probe right\" (line 4). Choose the table."});
}

TEST_F(WrongNumbers, AnEmptyCellInSuchAColumnMeansTheTextAboveIt) {
  Read("Channel;f [MHz];KF [%]\nA;50;98.5\n;60;98.4\nB;70;97.5\n");
  ASSERT_EQ(certificate_.tables.size(), 2U);
  EXPECT_EQ(certificate_.tables[0].RowCount(), 2U);
}

TEST_F(WrongNumbers, AColumnThatSaysWhenARowWasMeasuredDividesEvenTwoRows) {
  Read("f [MHz];KF [%];Condition\n50;98.5;as found\n60;97.5;as left\n");
  EXPECT_EQ(choices_.pages[0].alternatives, (std::vector<Tables>{{0}, {1}}));
  EXPECT_FALSE(choices_.pages[0].canJoinAlternatives);
}

TEST_F(WrongNumbers, RemarksVerdictsAndUnitsDoNotDivideTheRows) {
  for (const std::string column :
       {"Remark;see note;see note;none", "Result;pass;pass;fail", "Judge;Good;Good;NG",
        "U [%];\u00B10.5;\u00B10.5;\u00B1 0.6", "Day;5.3.2026;5.3.2026;6.3.2026", "Operator;A;A;B",
        "X;ok;ok;n.i.O.", "Unit;MHz;MHz;GHz", "X;;a;a"}) {
    const std::size_t second = column.find(';') + 1;
    const std::size_t third = column.find(';', second) + 1;
    const std::size_t fourth = column.find(';', third) + 1;
    Read("f [MHz];KF [%];" + column.substr(0, second - 1) + "\n50;98.5;" +
         column.substr(second, third - 1 - second) + "\n60;98.4;" +
         column.substr(third, fourth - 1 - third) + "\n70;97.5;" + column.substr(fourth) + "\n");
    EXPECT_TRUE(plan_.open.empty()) << column;
    EXPECT_EQ(RowsOf(0).size(), 3U) << column;
  }
}

TEST_F(WrongNumbers, ColumnsOfAnEarlierCalibrationOrAReferenceAreNotTakenByThemselves) {
  for (const std::string caption :
       {"Last calibration factor", "Previous cal factor", "Old cal factor", "Reference factor",
        "Cal factor, min", "Cal factor 2025", "Cal factor of year 2024", "Cal factor (max)",
        "Cal factor, last", "Letzter Kalibrierfaktor", "Kalibrierfaktor (alt)",
        "Vorheriger Kalibrierfaktor", "Referenzfaktor, Kalibrierfaktor", "Facteur précédent",
        "Ancien facteur", "Facteur de référence", "Fattore precedente", "Ultimo fattore",
        "Fattore di riferimento"}) {
    Read("f [MHz];" + caption + " [%]\n50;98.5\n");
    EXPECT_FALSE(plan_.HasValues()) << caption;
    EXPECT_EQ(plan_.open,
              Texts{"Calibration factor[%] can be \"" + caption + " [%]\". Choose the column."});
    for (const std::string& both : {caption + " [%];Cal factor [%]\n50;90;98.5\n",
                                    "Cal factor [%];" + caption + " [%]\n50;98.5;90\n"}) {
      Read("f [MHz];" + both);
      if (both.starts_with("Cal factor [%]")) {
        EXPECT_EQ(RowsOf(0), Texts{"50.00 98.5"}) << both;
      }
      EXPECT_TRUE(plan_.open.empty()) << both;
    }
  }
}

TEST_F(WrongNumbers, ColumnsOfTwoChannelsAreAskedAbout) {
  Read("f [MHz];KF channel A [%];Channel B [%]\n50;98.5;97.5\n");
  EXPECT_EQ(plan_.open, Texts{"Calibration factor[%] can be \"KF channel A [%]\" or \"Channel B "
                              "[%]\". Choose the column."});
}

TEST_F(WrongNumbers, TheReciprocalOfAFactorIsNotTaken) {
  Read("f [MHz];1/KF [%]\n50;101\n");
  EXPECT_FALSE(plan_.HasValues());
}

TEST_F(WrongNumbers, AFactorWithoutAUnitIsNotAKilofarad) {
  Read("f [MHz];KF\n50;98.5\n");
  EXPECT_EQ(plan_.doubts,
            Texts{"The column \"KF\" has numbers without a unit. They are taken in %, "
                  "as in the table."});
}

TEST_F(WrongNumbers, OfTwoColumnsOfPointsOneHasToBeChosenUnlessTheyAreEqual) {
  Read("Setting;Nominal [dB];f [MHz];Attenuation [dB]\n10;12;50;10.02\n", "PX60G");
  EXPECT_EQ(plan_.open, Texts{"Setting [dB] can be \"Nominal [dB]\" or \"Setting\". Choose the "
                              "column."});
  Read("Setting [dB];Nominal [dB];f [MHz];f [kHz];Attenuation [dB]\n10;10.0;50;50000;10.02\n",
       "PX60G");
  EXPECT_EQ(plan_.open, Texts());
  EXPECT_EQ(RowsOf(0), Texts{"10 5.00E07 10.0200"});
  Read("Nominal frequency [MHz];Actual frequency [MHz];KF [%]\n50;50.1;98.5\n");
  EXPECT_FALSE(plan_.open.empty());
}

TEST_F(WrongNumbers, NegativeAttenuationsAreAskedAbout) {
  Read("Setting [dB];f [MHz];S21 [dB]\n0;50;-0.02\n1;50;-1.02\n", "PX60G");
  EXPECT_EQ(plan_.doubts,
            (Texts{"0 dB, 50 MHz (line 2): -0.02 dB is negative, and the table has attenuations "
                   "without a sign.",
                   "1 dB, 50 MHz (line 3): -1.02 dB is negative, and the table has attenuations "
                   "without a sign."}));
}

TEST_F(WrongNumbers, ATableTitledForAMemberDoesNotFillThePageOfAnother) {
  OpenCapacitors();
  Read("RT521A\nf [kHz];C [pF]\n1;1.05\n", "RT520A");
  EXPECT_EQ(choices_.pages[0].tables, Tables{0});
  EXPECT_EQ(choices_.pages[1].tables, Tables());
  Read("f [kHz];C [pF];S/N;Standard\n1;1.05;M1;RT521A\n", "RT520A");
  EXPECT_EQ(choices_.pages[1].tables, Tables());
}

TEST_F(WrongNumbers, ATableInAListOfStandardsIsAskedAbout) {
  Read("Serial number;A1\n\nReference standards\n" + kTable);
  EXPECT_EQ(plan_.doubts, Texts{"The table \"Table of line 5\" (line 5) is in a list of the "
                                "standards that were used."});
  Read("Standards used\nPower meter;C-77\n\n" + kTable);
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(WrongNumbers, TheSerialNumberOfAStandardIsNotThatOfTheInstrument) {
  const auto serial = [&](const std::string& lines) {
    Read(lines + "\n" + kTable);
    return plan_.header.serialNumber + (plan_.doubts.empty() ? "" : "?");
  };
  const std::string list = "Standards used\n\nPower meter;Serial no.;GB1\nSensor;S/N;GB2\n";
  EXPECT_EQ(serial("Serial number;A1\n" + list), "A1");
  EXPECT_EQ(serial(list + "\nSerial number;A1\n"), "A1");
  EXPECT_EQ(serial("Standards used: Power meter;serial no.;GB1\nSerial number;A1\n"), "A1");
  EXPECT_EQ(serial("Power meter, serial no.: GB1\nSerial number: A1\n"), "A1");
  EXPECT_EQ(serial("Referenznormal;Seriennummer;GB1\nSeriennummer;A1\n"), "A1");
  EXPECT_EQ(plan_.notes.front(),
            "The serial number \"GB1\" (line 1) is not used, because it is that of a standard.");
  EXPECT_EQ(serial("Serial number of the reference standard;GB1\n"), "GB1?");
  EXPECT_EQ(plan_.doubts, Texts{"The serial number \"GB1\" (line 1) may be that of a standard that "
                                "was used."});
}

TEST_F(WrongNumbers, OnlyAKeyThatNamesTheCertificateGivesItsNumber) {
  const std::string table = "\n\nMHz;%\n50;98.5\n1000;97.5\n";
  for (const std::string line :
       {"CERTIFICATE OF CALIBRATION;;Acme Metrology Ltd", "CALIBRATION CERTIFICATE;Page 1 of 2",
        "Previous certificate no.;K-0", "Accreditation certificate no.;D-K-1",
        "ISO 9001 certificate;Q-9001", "Certificate type;Accredited 2",
        "Calibration notes;Adjusted to 1 %"}) {
    Read("Serial number;A1\n" + line + "\nCertificate no.;K-1\nCalibration date;2026-03-05" +
         table);
    EXPECT_EQ(certificate_.header.calibrationNumber->text, "K-1") << line;
    EXPECT_EQ(plan_.doubts, Texts()) << line;
  }
  for (const std::string key :
       {"Certificate", "Calibration certificate", "Kalibrierscheinnr.", "Zertifikatsnummer",
        "Certificat d'étalonnage n\u00B0", "Calibration number", "Certificato di taratura n."}) {
    Read(key + ";K-1" + table);
    ASSERT_TRUE(certificate_.header.calibrationNumber) << key;
    EXPECT_EQ(certificate_.header.calibrationNumber->text, "K-1") << key;
  }
  Read("Calibration certificate;K-0\nCertificate no.;K-1" + table);
  EXPECT_EQ(certificate_.header.calibrationNumber->text, "K-1");
  Read("Certificate no.;K-1\nCalibration number;K-2\nCalibration date;2026-03-05" + table);
  EXPECT_EQ(plan_.doubts,
            Texts{"There are two certificate numbers: \"K-1\" (line 1), which is used, and \"K-2\" "
                  "(line 2)."});
}

TEST_F(WrongNumbers, DatesOfAnEarlierCalibrationOrAMeasuringDeviceAreNotThoseOfTheInstrument) {
  const std::string table = "\nMHz;%\n50;98.5\n1000;97.5\n";
  Read("Previous calibration date;2025-03-04\nDate of measurement;2026-03-05\n" + table +
       "\nEquipment\nPower meter;Cal due;2026-08-01\n");
  EXPECT_EQ(IsoDate(certificate_.header.calDate->date), "2026-03-05");
  EXPECT_FALSE(certificate_.header.dueDate);
  EXPECT_EQ(plan_.doubts, Texts());
  for (const std::string key : {"Previous calibration date", "Vorheriges Kalibrierdatum"}) {
    Read(key + ";2025-03-04\n" + table);
    EXPECT_EQ(plan_.doubts,
              Texts{"The date \"2025-03-04\" (line 1) is used as the calibration date, "
                    "though it follows \"" +
                    key + "\"."});
  }
  Read("Payment due;2026-04-04\nRecommended recalibration (dd.mm.yyyy);05.03.2027\n" + table);
  EXPECT_EQ(IsoDate(certificate_.header.dueDate->date), "2027-03-05");
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(WrongNumbers, ASerialNumberMayFollowItsKeyInOneCellAndAModelMayBeAnywhere) {
  const std::string table = "\n\nMHz;%\n50;98.5\n1000;97.5\n";
  for (const std::string line : {"Serial No. Z9", "SN;Z9", "S/N Z9", "PX11A S/N Z9", "Ser.-Nr.;Z9",
                                 "S.N.;Z9", "Ger\u00E4tenummer;Z9"}) {
    Read(line + table);
    EXPECT_EQ(plan_.header.serialNumber, "Z9") << line;
  }
  for (const std::string line :
       {"Instrument;Power sensor PX11D", "Calibration factors of a PX-11D"}) {
    Read(line + table);
    EXPECT_EQ(plan_.doubts,
              Texts{"The certificate names the model \"PX11D\" (line 1), and this data "
                    "set is for PX11A."});
  }
  Read("Instrument;Power sensor PX11A\nCompared with;PX11D" + table);
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(WrongNumbers, AnImportSaysWhyItDoesNotReadAForm) {
  const auto doubts = [&](const std::string& text) {
    Read(text);
    return plan_.doubts;
  };
  EXPECT_EQ(doubts("f [MHz];KF [%]\n50;\"98.5\n60;97\n").back(),
            "Line 2 has a quote that is not closed, so that all lines after it are one cell. Close "
            "the quote in the file, or remove it.");
  EXPECT_EQ(doubts("Frequency [MHz];50;60\nKF [%];98;97\n"),
            Texts{"Line 1 has a quantity with a column for each point, which is not read. Turn the "
                  "table in a spreadsheet, so that each point has a line, or copy the points and "
                  "the values as two columns and paste them."});
  EXPECT_EQ(doubts("Sensor;50 MHz;1 GHz\nKF [%];98;97\n"),
            Texts{"Line 1 has frequencies as captions, which are not read. Give each frequency and "
                  "value a line of its own, or copy them as columns and paste them."});
  EXPECT_EQ(doubts("f [MHz];KF [%];;f [MHz];KF [%]\n50;98;;70;97\n"),
            Texts{"Line 1 has the captions of several tables side by side. Put the tables below "
                  "each other in the file, or choose the columns of one of them."});
  EXPECT_EQ(plan_.open.size(), 2U);
}

TEST_F(WrongNumbers, DifferentDecimalSignsAreNamedWithTheirLines) {
  Read("f [MHz];KF [%]\n50;98,5\n60;97.4\n70;96.25\n");
  EXPECT_EQ(plan_.doubts.back(),
            "The values have different decimal signs: \"98,5\" (line 2) has a comma, and \"97.4\" "
            "(line 3) a point. Values with the other sign than most are not read. Write all with "
            "the same one.");
}

TEST_F(WrongNumbers, ANumberThatIsTooLargeIsNamedWithItsLine) {
  Read("f [MHz];KF [%]\n50;98.5\n60;1e400\n");
  EXPECT_EQ(plan_.doubts, Texts{"60 MHz (line 3): 1E400 % is too large to be calculated with."});
  EXPECT_EQ(RowsOf(0), Texts{"50.00 98.5"});
}

TEST_F(WrongNumbers, VerticalBarsSeparateCells) {
  Read("Serial number|A1\nf [MHz]|KF [%]\n50|98,5\n60|97,5\n");
  EXPECT_EQ(RowsOf(0), (Texts{"50.00 98.5", "60.00 97.5"}));
  EXPECT_EQ(certificate_.kind, "Text, UTF-8, separated by \"|\"");
}

TEST_F(WrongNumbers, ADccOfAnotherVersionIsAskedAbout) {
  const auto doubts = [&](const std::string& version) {
    Read("<digitalCalibrationCertificate xmlns=\"https://ptb.de/dcc\" schemaVersion=\"" + version +
         "\"/>");
    return plan_.doubts;
  };
  for (const std::string version : {"2.4.0", "3.0.0", "3.3.0", "2.10"}) {
    EXPECT_EQ(doubts(version), Texts()) << version;
  }
  EXPECT_EQ(doubts("2.3.0").size(), 1U);
  EXPECT_EQ(doubts("4.0.0"),
            Texts{"The certificate is a DCC of version \"4.0.0\", and the program knows the "
                  "versions 2.4 to 3.x. Another version may mean other things by the same names."});
}

TEST_F(WrongNumbers, ADecimalCommaInADccIsNamed) {
  std::string dcc = DccWith({"<d:result>"});
  dcc.replace(dcc.find(">98<") + 1, 2, "98,5");
  Read(dcc);
  EXPECT_TRUE(Contains(certificate_.notes.at(0),
                       "is not used, because its value 1, \"98,5\", has a decimal comma, which a "
                       "DCC never has."));
}

TEST_F(WrongNumbers, EachSentenceIsSaidOnce) {
  OpenCapacitors();
  Read("RT521A\nf [kHz];C [pF]\n1;1.0001\n1;1.0002\n1;1.0003\n", "RT520A");
  EXPECT_EQ(plan_.doubts,
            Texts{"RT521A: 1 kHz is in the certificate twice. The first one is used."});
}

TEST_F(WrongNumbers, AColumnThatSaysMoreThanItsQuantityIsAskedAbout) {
  const auto doubts = [&](const std::string& text, const std::string& model) {
    Read(text, model);
    return plan_.doubts;
  };
  EXPECT_EQ(doubts("RBW frequency [Hz];RF [MHz];KF low power [%]\n1e6;50;98.5\n", "PX11A"),
            (Texts{"The column \"RBW frequency [Hz]\" is taken as a frequency, though its caption "
                   "also says \"RBW\".",
                   "The column \"KF low power [%]\" is taken as a calibration factor, though its "
                   "caption also says \"low power\"."}));
  EXPECT_EQ(
      doubts("Setting [dB];f [MHz];Repeatability [dB]\n0;50;0.003\n", "PX60G"),
      Texts{"The column \"Repeatability [dB]\" is not named as an attenuation. It is taken as "
            "one."});
  OpenCapacitors();
  EXPECT_EQ(doubts("RT521A\nf [kHz];C [pF];Dissipation factor;Uncertainty of C [1]\n"
                   "1;1.0001;0.0002;0.00005\n",
                   "RT520A"),
            Texts{"RT521A: The column \"Uncertainty of C [1]\" is taken as an expanded uncertainty "
                  "of a dissipation factor, though its caption also says \"C\"."});
}

TEST_F(WrongNumbers, TablesWhoseCaptionsSayDifferentThingsAreNotJoined) {
  const auto doubts = [&](const std::string& later) {
    Read(kTable + "\n" + later + "\n1000;97.5\n");
    return plan_.doubts.size();
  };
  EXPECT_EQ(doubts("f [MHz];KF [%]"), 0U);
  EXPECT_EQ(RowsOf(0).size(), 2U);
  EXPECT_EQ(doubts("f [MHz];KF (10 mW) [%]"), 1U);
  EXPECT_EQ(RowsOf(0).size(), 1U);
}

TEST_F(WrongNumbers, AColumnThatTheUserChoseIsNotAskedAbout) {
  Read("f [MHz];KF low [%];KF high [%]\n50;98.5;97\n");
  EXPECT_EQ(plan_.open.size(), 1U);
  choices_.pages[0].match = {ColumnSource{0, false}, ColumnSource{2, false}};
  choices_.pages[0].asked.clear();
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(plan_.doubts, Texts());
  EXPECT_EQ(RowsOf(0), Texts{"50.00 97.0"});
}

TEST_F(WrongNumbers, ACaptionThatSaysOnlyMeasuredNeedsATitleThatFits) {
  Read("Effective efficiency\nf [MHz];Measured [%]\n50;98.5\n");
  EXPECT_EQ(plan_.doubts, Texts{"The column \"Measured [%]\" is not named as a calibration factor. "
                                "It is taken as one."});
  for (const std::string title : {"", "Calibration factor of the sensor A1\n", "Results\n"}) {
    Read(title + "f [MHz];Measured [%]\n50;98.5\n");
    EXPECT_EQ(plan_.doubts, Texts()) << title;
  }
}

TEST_F(WrongNumbers, TheCoverageFactorMayBeInTheLineOfUnits) {
  Read("Frequency;Effective efficiency;U\nMHz;%;% (k=2)\n50;98.5;0.5\n");
  EXPECT_EQ(plan_.doubts, Texts{"The column \"Effective efficiency [%]\" is not named as a "
                                "calibration factor. It is taken as one."});
  OpenCapacitors();
  Read("RT521A\nf;C;U\nkHz;pF;ppm (k=1)\n1;1.0001;50\n", "RT520A");
  ASSERT_EQ(plan_.doubts.size(), 1U);
  EXPECT_TRUE(Contains(plan_.doubts[0], "\"U [ppm] (k=1)\" has standard uncertainties"));
}

TEST_F(WrongNumbers, DecimalCommasBetweenCommasCutNumbersInTwo) {
  const auto isDoubted = [&](const std::string& text, const std::string& model) {
    Read(text, model);
    return std::ranges::any_of(plan_.doubts, [](const std::string& doubt) {
      return doubt.starts_with("Commas separate the columns, and ") ||
             Contains(doubt, ": Commas separate the columns, and ");
    });
  };
  const std::string captions = "f [MHz],KF [%],Remark\n";
  EXPECT_TRUE(isDoubted(captions + "50,98,5\n1000,97,25\n", "PX11A"));
  EXPECT_TRUE(Contains(plan_.doubts.back(), "\"KF [%]\" and \"Remark\" have only whole numbers."));
  EXPECT_FALSE(isDoubted(captions + "50,98.5,5\n1000,97,25\n", "PX11A"));
  EXPECT_FALSE(isDoubted(captions + "50,98,a\n1000,97,b\n", "PX11A"));
  EXPECT_FALSE(isDoubted("f [MHz];KF [%];No\n50;98;5\n1000;97;25\n", "PX11A"));
  EXPECT_FALSE(isDoubted("f [MHz],KF [%]\n50,98\n1000,97\n", "PX11A"));
  EXPECT_TRUE(isDoubted("f [GHz],x,KF [%]\n1,05,98.5\n2,2,97.5\n", "PX11A"));
  EXPECT_TRUE(isDoubted("Setting [dB],f [MHz],A [dB],U [dB]\n0,50,0,02\n10,50,10,05\n", "PX60G"));
  OpenCapacitors();
  EXPECT_TRUE(isDoubted("RT521A\nf [kHz],C [pF],U [ppm]\n1,1,0001\n10,1,0002\n", "RT520A"));
}

TEST_F(WrongNumbers, AnUncertaintyInPerCentOfARatioMayBeRelative) {
  OpenCapacitors();
  const auto doubts = [&](const std::string& value, const std::string& uncertainty) {
    Read("RT521A\nf [kHz];C [pF];Dissipation factor" + value + ";U" + uncertainty + "\n", "RT520A");
    return plan_.doubts;
  };
  EXPECT_EQ(
      doubts("", " [%]\n1;1.0001;0.0002;5"),
      Texts{"RT521A: The column \"U [%]\" may be relative to the values before it, which have "
            "no unit. It is taken as absolute: 1 % as 0.01."});
  EXPECT_EQ(doubts("", "\n1;1.0001;0.0002;0.00001"), Texts());
  EXPECT_EQ(doubts(" [%]", " [%]\n1;1.0001;0.02;0.001"), Texts());
}

TEST_F(WrongNumbers, AChangedExportIsReadWithItsDecimalSign) {
  Read(
      "Format;tarvell-data-set 1 00\nModel;PX11A\n\n"
      "Frequency [MHz];Calibration factor [%]\n0,1;98,5\n1.000;97,5\n");
  EXPECT_EQ(RowsOf(0), (Texts{"0.10 98.5", "1000.00 97.5"}));
}

TEST_F(WrongNumbers, AListWithItsQuantitiesInAnotherOrderIsNoRowOfTheTable) {
  const auto quantity = [](const std::string& name, const std::string& value,
                           const std::string& unit) {
    return "<d:quantity><d:name><d:content>" + name + "</d:content></d:name><real><value>" + value +
           "</value><unit>" + unit + "</unit></real></d:quantity>";
  };
  const auto row = [&](const std::string& point, const std::string& first,
                       const std::string& second) {
    return "<d:list>" + quantity("Frequency", point, "\\mega\\hertz") + first + second +
           "</d:list>";
  };
  const auto factor = [&](const std::string& value) {
    return quantity("Calibration factor", value, "\\percent");
  };
  const auto efficiency = [&](const std::string& value) {
    return quantity("Effective efficiency", value, "\\percent");
  };
  const auto read = [&](const std::string& second) {
    std::string dcc = DccWith({"<d:result>"});
    const std::size_t begin = dcc.find("<d:data>");
    const std::size_t end = dcc.find("</d:data>");
    dcc.replace(
        begin, end - begin,
        "<d:data><d:list>" + row("50", factor("98.5"), efficiency("99.5")) + second + "</d:list>");
    Read(dcc);
  };
  read(row("1000", factor("97.5"), efficiency("99.1")));
  EXPECT_EQ(RowsOf(0), (Texts{"50.00 98.5", "1000.00 97.5"}));
  read(row("1000", efficiency("99.1"), factor("97.5")));
  EXPECT_EQ(certificate_.tables.size(), 2U);
  EXPECT_FALSE(plan_.doubts.empty() && plan_.open.empty());
}

TEST_F(WrongNumbers, TheCaptionsOfADccCountInTheLanguageOfTheUserAndInEnglish) {
  const auto doubts = [&](const std::string& names) {
    std::string dcc = DccWith({"<d:result>"});
    const std::string name = "<d:content>Factor</d:content>";
    dcc.replace(dcc.find(name), name.size(), names);
    Read(dcc);
    return plan_.doubts.size();
  };
  const std::string danish = "<d:content lang=\"da\">Kalibreringsfaktor, lav effekt</d:content>";
  EXPECT_EQ(doubts(danish + "<d:content lang=\"en\">Calibration factor</d:content>"), 0U);
  EXPECT_EQ(doubts(danish + "<d:content lang=\"en\">Factor, low power</d:content>"), 1U);
  EXPECT_EQ(doubts(danish), 1U);
}

TEST_F(WrongNumbers, BlanksInTitlesAndCaptionsAreShownOnce) {
  Read("After  the\tadjustment\nf  [MHz];KF [%]\n50;98.5\n\nx;y;z\n1;2;3\n");
  EXPECT_EQ(TitleOf(certificate_.tables.at(0), "en"), "After the adjustment");
  EXPECT_EQ(SourceName(certificate_.tables.at(0), {0, false}, "en"), "f [MHz]");
}

}  // namespace tarvell::test
