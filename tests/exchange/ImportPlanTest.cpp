// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "exchange/Export.h"
#include "exchange/ImportPlan.h"
#include "exchange/ReadCertificate.h"
#include "support/ErrorOf.h"

namespace tarvell::test {

namespace {

using Texts = std::vector<std::string>;

/// An editor of a sensor with three points, the last two of which are defaults of the template.
class SensorImport : public testing::Test {
 protected:
  SensorImport() {
    now_.header.serialNumber = "2702A00417";
    now_.pages = {{"",
                   {{"50.00", "100.0"}, {"1000.00", "98.4"}, {"2000.00", "97.0"}},
                   {{{RowOf({1}), 1}, Origin::Template}, {{RowOf({2}), 1}, Origin::Template}}}};
  }

  void Read(const std::string& csv) {
    certificate_ = ReadCertificate(csv);
    choices_ = ProposedChoices(Target(), certificate_);
    plan_ = PlanImport(Target(), certificate_, choices_);
  }

  [[nodiscard]] ImportTarget Target() const {
    return {
        .model = *FindModel("PX11A"), .data = *data_, .now = now_, .isSerialFixed = isSerialFixed_};
  }

  /// "frequency factor" of each row after the import, with a star for a default.
  [[nodiscard]] Texts RowsAfter(bool removesMissing) const {
    const DraftPage page = AfterImport(now_, plan_, removesMissing).pages.front();
    Texts rows;
    for (std::size_t i = 0; i < page.rows.size(); ++i) {
      const auto origin = page.origins.find({RowOf({i}), 1});
      const bool isDefault = origin != page.origins.end() && origin->second == Origin::Template;
      rows.push_back(page.rows[i][0] + " " + page.rows[i][1] + (isDefault ? "*" : ""));
    }
    return rows;
  }

  std::unique_ptr<cifCaldata> data_ = FindModel("PX11A")->create();
  EditorState now_;
  bool isSerialFixed_ = false;
  Certificate certificate_;
  ImportChoices choices_;
  ImportPlan plan_;
};

}  // namespace

TEST_F(SensorImport, TakesPointsAndKeepsOrRemovesThoseThatTheCertificateLacks) {
  Read("f [GHz];KF [1]\n1;0.985\n0.05;1\n0.5;0.991\n");
  EXPECT_EQ(RowsAfter(false),
            (Texts{"50.00 100.0", "500.00 99.1", "1000.00 98.5", "2000.00 97.0*"}));
  EXPECT_EQ(RowsAfter(true), (Texts{"50.00 100.0", "500.00 99.1", "1000.00 98.5"}));
  EXPECT_EQ(plan_.Count(PastedRow::Change::Unchanged), 1U);
}

TEST_F(SensorImport, SaysWhatTheFormatRoundsAndWhatIsNotTaken) {
  Read("f [MHz];KF [%];Gamma;U [%]\n50;100;0.01;1\n1000.004;98.47;0.02;1\n2000;n/a;0.02;1\n");
  EXPECT_EQ(plan_.Rounded(), (Texts{"1000.004 MHz: 98.47 % becomes 98.5.",
                                    "1000.004 MHz: 1000.004 MHz becomes 1000.00."}));
  EXPECT_EQ(plan_.notes, (Texts{"The certificate names no serial number.",
                                "These columns are not used: \"Gamma\", \"U [%]\"."}));
  EXPECT_EQ(plan_.doubts, Texts{"2000 MHz: \"n/a\" cannot be taken for Calibration factor[%]."});
}

TEST_F(SensorImport, SaysWhatIsRoundedInTheUnitsOfTheTable) {
  Read("f [Hz];KF [1]\n1.24E10;0.95037\n");
  EXPECT_EQ(plan_.Rounded(), Texts{"12400 MHz: 0.95037 (95.037) becomes 95.0."});
}

TEST_F(SensorImport, AsksAboutAnotherInstrument) {
  Read("Model;PX 12-A\nSerial number;X1\n\nf [MHz];KF [%]\n50;98.5\n");
  EXPECT_EQ(plan_.doubts,
            (Texts{"The certificate is for the model \"PX 12-A\", and this data set is for PX11A.",
                   "The certificate is for the serial number \"X1\", and this data set has "
                   "\"2702A00417\"."}));
  EXPECT_EQ(plan_.header.serialNumber, "X1");
  isSerialFixed_ = true;
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(plan_.header.serialNumber, "2702A00417");
  EXPECT_TRUE(Contains(plan_.doubts.back(), "The serial number stays as it is."));
}

TEST_F(SensorImport, AsksBeforeItTakesNumbersWithoutAUnitAsRatios) {
  Read("f [MHz];Calibration factor\n50;0.999\n1000;0.985\n");
  ASSERT_EQ(plan_.doubts.size(), 1U);
  EXPECT_TRUE(Contains(plan_.doubts[0],
                       "\"Calibration factor\" names no unit, and all its numbers are below 2"));
  EXPECT_EQ(RowsAfter(true), (Texts{"50.00 99.9", "1000.00 98.5"}));
  Read("f [MHz];Calibration factor [1]\n50;0.999\n1000;0.985\n");
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(SensorImport, AsksBeforeItTakesNumbersWithoutAUnitInThatOfTheTable) {
  Read("Frequency;Calibration factor\n50;99.9\n1000;98\n");
  EXPECT_EQ(plan_.doubts, (Texts{"The column \"Frequency\" has numbers without a unit. They are "
                                 "taken in MHz, as in the table.",
                                 "The column \"Calibration factor\" has numbers without a unit. "
                                 "They are taken in %, as in the table."}));
  Read("Frequency;Calibration factor\n50 MHz;99.9 %\n1 GHz;98 %\n");
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(SensorImport, AsksBeforeItTakesNumbersThatTheSeparatorMayHaveCut) {
  Read("f [MHz],KF [%]\n50,99,9\n1000,98,8\n");
  EXPECT_EQ(plan_.doubts,
            Texts{"\"Column 3\" has numbers but no caption. If the certificate writes decimals "
                  "with the sign that separates the columns, each number is cut in two: compare "
                  "the values with the certificate."});
  Read("f [MHz],KF [%]\n50,99,\n1000,98,remark\n");
  EXPECT_EQ(plan_.doubts, Texts());
  Read("f [MHz];KF [%]\n50;99;x;y\n");
  EXPECT_EQ(plan_.notes.back(), "These columns are not used: \"Column 3\", \"Column 4\".");
}

TEST_F(SensorImport, AsksAboutADueDateBeforeTheCalibration) {
  Read("Calibration date;5.3.2026\nDue date;4.3.2026\n\nf [MHz];KF [%]\n50;99.9\n");
  EXPECT_EQ(plan_.doubts,
            Texts{"The due date 4 MAR 2026 is before the calibration date 5 MAR 2026."});
  Read("Calibration date;5.3.2026\nDue date;5.3.2026\n\nf [MHz];KF [%]\n50;99.9\n");
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(SensorImport, AsksBeforeItTakesAnotherQuantityInPerCent) {
  Read("f [MHz];Effective efficiency [%]\n50;99\n");
  EXPECT_EQ(plan_.doubts, Texts{"The column \"Effective efficiency [%]\" is not named as a "
                                "calibration factor. It is taken as one."});
  Read("f [MHz];Effective efficiency [%];Cal. Fac. [%]\n50;99;98\n");
  EXPECT_EQ(plan_.doubts, Texts());
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.0"});
  Read("MHz;%\n50;98\n");
  EXPECT_EQ(plan_.doubts, Texts()) << "only a unit";
}

TEST_F(SensorImport, AsksAboutNumbersThatASpreadsheetHasShortened) {
  now_.header.serialNumber.clear();
  const std::string table = "\nCalibration date;5.3.2026\nf [MHz];KF [%]\n50;98\n";
  Read("Serial number;3.31812E+09\nCertificate no;C-E+1" + table);
  EXPECT_EQ(plan_.doubts, Texts{"The serial number \"3.31812E+09\" (line 1) looks like a long "
                                "number that a spreadsheet has shortened."});
  Read("Certificate no;2.02600012E+11" + table);
  EXPECT_EQ(plan_.doubts, Texts{"The calibration number \"2.02600012E+11\" (line 1) looks like a "
                                "long number that a spreadsheet has shortened."});
}

TEST_F(SensorImport, AsksWhereACertificateWithANumberHasNoDate) {
  now_.header.calDay = "5";
  now_.header.calMonth = "MAR";
  now_.header.calYear = "2025";
  Read("Certificate no;C 1\nMeasured;5.3.2026\nf [MHz];KF [%]\n50;98\n");
  EXPECT_EQ(plan_.doubts, Texts{"The certificate has a number, but no calibration date was found. "
                                "It stays 5 MAR 2025."});
}

TEST_F(SensorImport, AsksAboutPointsAndFactorsThatCannotBe) {
  Read("f [MHz];KF [%]\n50;100\n1000;-99.9\n2000;9990\n1E8;98.5\n3000;10\n4000;200\n110000;90\n");
  EXPECT_EQ(plan_.doubts,
            (Texts{"1000 MHz (line 3): -99.9 % is not a calibration factor, which is from 10 % to "
                   "200 %.",
                   "2000 MHz (line 4): 9990 % is not a calibration factor, which is from 10 % to "
                   "200 %.",
                   "100000000 MHz (line 5): 1E8 MHz is above 110 GHz, where no point of the model "
                   "can be."}));
  std::string many = "f [MHz];KF [%]\n";
  for (int i = 1; i <= 12; ++i) {
    many += std::to_string(i) + ";985\n";
  }
  Read(many);
  ASSERT_EQ(plan_.doubts.size(), 11U);
  EXPECT_EQ(plan_.doubts.back(), "2 more values cannot be right for reasons like these.");
}

TEST(AttenuatorImport, AsksAboutDeviationsAndSettingsThatCannotBe) {
  const Model& model = *FindModel("PX60H");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(1);
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(
      "Setting [dB];f [MHz];Measured [dB]\n0;50;2.9\n10;50;0.021\n10;60;13\n60;50;54\n"
      "60;60;66.1\n1000;50;1000\n");
  EXPECT_EQ(PlanImport(target, certificate, ProposedChoices(target, certificate)).doubts,
            (Texts{"10 dB, 50 MHz (line 3): 0.021 dB is more than 3 dB away from the setting.",
                   "60 dB, 60 MHz (line 6): 66.1 dB is more than 6 dB away from the setting.",
                   "1000 dB, 50 MHz (line 7): 1000 dB is above 200 dB, where no setting can be."}));
}

TEST_F(SensorImport, AsksAboutADateThatItCannotReadUnlessAnotherLineHasIt) {
  const std::string table = "\nf [MHz];KF [%]\n50;99.9\n";
  Read("Calibration date;05-Mar-26\nDue date;in 12 months\n" + table);
  EXPECT_EQ(plan_.doubts,
            (Texts{"The calibration date \"05-Mar-26\" (line 1) is not used, because its year has "
                   "two digits. Enter the date after the import.",
                   "The due date \"in 12 months\" (line 2) is not used, because it is not a date "
                   "with a day, a month and a year. Enter the date after the import."}));
  Read("Calibration date;05-Mar-26\nCalibrated on;2026-03-05\nDue date;none\n" + table);
  EXPECT_EQ(plan_.doubts, Texts());
  EXPECT_EQ(plan_.notes.at(1),
            "The calibration date \"05-Mar-26\" (line 1) is not used, because it is not a date.");
}

TEST_F(SensorImport, AsksBeforeItTakesOneValueForAllPoints) {
  Read("f [MHz];KF [%]\n50;98\n1000;98\n");
  EXPECT_EQ(plan_.doubts, Texts());
  certificate_.tables.front().columns.at(1).isRepeated = true;
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(plan_.doubts, Texts{"The column \"KF [%]\" has one value in the certificate. It is "
                                "taken for all 2 rows."});
}

TEST(AttenuatorImport, SaysWhichFrequencyIsRounded) {
  const Model& model = *FindModel("PX60G");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(1);
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate =
      ReadCertificate("Setting [dB];f [Hz];Measured [dB]\n10;1000000.4;10\n");
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  EXPECT_EQ(plan.Rounded(), Texts{"10 dB, 1000000.4 Hz: 1000000.4 Hz becomes 1.00E06."});
}

TEST_F(SensorImport, AsksAboutASerialNumberOfWhichOnlyAPartIsReadBack) {
  now_.header.serialNumber.clear();
  Read("Serial number;3318 A12345\n\nf [MHz];KF [%]\n50;98.5\n");
  ASSERT_EQ(plan_.doubts.size(), 1U);
  EXPECT_TRUE(Contains(plan_.doubts[0], "3318"));
}

TEST_F(SensorImport, ChoosesTheInstrumentOfTheEditorAmongSeveral) {
  Certificate several;
  several.items = {{{}, "PX11A", "one"}, {{}, "PX11A", "2702A00417"}};
  EXPECT_EQ(ProposedChoices(Target(), several).item, 1U);
}

TEST_F(SensorImport, ColumnsCanBeMatchedByHandAndRemembered) {
  Read("a;b;c\n50;98.5;0.5\n");
  EXPECT_FALSE(plan_.HasValues());
  const CertificateTable& table = certificate_.tables.front();
  const std::optional<ColumnMatch> match = MatchFrom("0 1", table, 2);
  ASSERT_TRUE(match);
  EXPECT_EQ(MatchText(*match), "0 1");
  choices_.pages.front() = {{0}, *match, {}, {}};
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.5"});
  EXPECT_EQ(CaptionsKey(table), "a|b|c");
  EXPECT_FALSE(MatchFrom("0 3", table, 2));
  EXPECT_FALSE(MatchFrom("0", table, 2));
}

TEST_F(SensorImport, TablesWithTheSameColumnsAndOtherPointsGoInTogether) {
  Read(
      "f [MHz];KF [%]\n50;100\n1000;98.5\n\nf [GHz];KF [1]\n2;0.971\n0.05;1\n\n"
      "Frequency [MHz];KF [%]\n4000;96\n");
  EXPECT_EQ(choices_.pages.front().tables, std::vector<std::size_t>({0, 1}));
  EXPECT_EQ(RowsAfter(true), (Texts{"50.00 100.0", "1000.00 98.5", "2000.00 97.1"}));
  EXPECT_EQ(
      plan_.notes.back(),
      "The table \"Table of line 10\" (line 10), 1 row, is not used, because another table is "
      "used.");
}

TEST_F(SensorImport, NamesTheTablesThatAreNotTakenAndDoubtsWhichOneIsMeant) {
  Read("f [MHz];KF [%]\n50;100\n\nf [MHz];KF [%]\n50;99\n\nT [K];U [K]\n1;2\n");
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 100.0"});
  EXPECT_EQ(plan_.doubts, Texts{"The table \"Table of line 5\" (line 5) fits as well as \"Table of "
                                "line 2\" (line 2), which is used."});
  EXPECT_EQ(
      plan_.notes,
      (Texts{"The certificate names no serial number.",
             "The table \"Table of line 5\" (line 5), 1 row, is not used, because another "
             "table is used.",
             "The table \"Table of line 8\" (line 8), 1 row, is not used, because its columns "
             "are not those of the model."}));
}

TEST_F(SensorImport, AsksWhichOfTwoColumnsIsMeantAndTakesNeither) {
  Read("f [MHz];KF 2025 [%];KF 2026 [%]\n50;99;98\n");
  EXPECT_EQ(plan_.open, Texts{"Calibration factor[%] can be \"KF 2025 [%]\" or \"KF 2026 [%]\". "
                              "Choose the column."});
  EXPECT_FALSE(plan_.HasValues());
  choices_.pages.front() = {{0}, *MatchFrom("0 2", certificate_.tables.front(), 2), {}, {}};
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_TRUE(plan_.open.empty());
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.0"});
}

TEST_F(SensorImport, AColumnInAnUnknownUnitIsTakenOnlyByHandAndWithADoubt) {
  Read("f [xHz];KF [%]\n50;98.5\n");
  EXPECT_FALSE(plan_.HasValues());
  EXPECT_EQ(
      plan_.notes.back(),
      "The column \"f [xHz]\" (line 2) is not used, because its unit \"xHz\" is not known. If "
      "it is right all the same, choose the column by hand.");
  choices_.pages.front() = {{0}, *MatchFrom("0 1", certificate_.tables.front(), 2), {}, {}};
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(plan_.doubts, Texts{"The unit \"xHz\" of the column \"f [xHz]\" is not known. Its "
                                "numbers are taken as they are, for Frequency [MHz]."});
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.5"});
}

TEST_F(SensorImport, OfSeveralSerialNumbersTakesThatOfTheEditorOrDoubts) {
  const std::string table = "\nf [MHz];KF [%]\n50;98.5\n";
  Read("Serial number;A\nSerial no.;B\n" + table);
  EXPECT_EQ(plan_.doubts,
            (Texts{"The certificate is for the serial number \"A\", and this data set has "
                   "\"2702A00417\".",
                   "The certificate names several serial numbers: \"A\" (line 1), \"B\" (line 2). "
                   "Choose that of this instrument."}));
  Read("Serial number;A\nSerial no.;2702A00417\n" + table);
  EXPECT_EQ(choices_.item, 1U);
  EXPECT_EQ(plan_.doubts, Texts());
}

TEST_F(SensorImport, TakesTheResultsOfTheChosenInstrument) {
  const std::string table = "\nf [MHz];KF [%]\n50;";
  Read("Serial number;A\n" + table + "98\n\nSerial number;2702A00417\n" + table + "97\n");
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 97.0"});
  EXPECT_EQ(plan_.notes,
            Texts{"The table \"Table of line 4\" (line 4), 1 row, is not used, because "
                  "it is about another instrument."});
  plan_ = PlanImport(Target(), certificate_, ProposedChoices(Target(), certificate_, 0));
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.0"});
  ImportChoices byHand = choices_;
  byHand.pages.front().tables = {0};
  EXPECT_EQ(PlanImport(Target(), certificate_, byHand).doubts,
            Texts{"The table \"Table of line 4\" (line 4) is about the instrument \"A\"."});
}

TEST_F(SensorImport, TakesOfATableOnlyTheRowsOfItsInstrument) {
  const std::string table = "Model;S/N;f [MHz];KF [%]\nPX11A;A1;50;98\n;2702A00417;50;97\n";
  Read(table);
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 97.0"});
  EXPECT_EQ(plan_.doubts, Texts());
  EXPECT_EQ(plan_.notes,
            (Texts{"These columns are not used: \"Model\".",
                   "The table \"PX11A A1\" (line 2), 1 row, is not used, because it is "
                   "about another instrument."}));
  now_.header.serialNumber = "X";
  Read(table);
  EXPECT_EQ(plan_.doubts,
            (Texts{"The certificate is for the serial number \"A1\", and this data set has \"X\".",
                   "The certificate names several serial numbers: \"A1\" (line 2), \"2702A00417\" "
                   "(line 3). Choose that of this instrument."}));
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.0"});
}

TEST_F(SensorImport, ReportsAPointWithoutAValueAndTakesTheOthers) {
  Read("f [MHz];KF [1]\n50;1\n60;\n;0.97\n");
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 100.0"});
  EXPECT_EQ(plan_.doubts, (Texts{"60 MHz: there is no value.", "Line 4: there is no point."}));
  Read("f [MHz];Calibration factor\n50;0.999\n60;\n");
  EXPECT_TRUE(Contains(plan_.doubts.front(), "all its numbers are below 2")) << "as ratios are";
}

TEST_F(SensorImport, ASerialNumberThatSomebodyTypedIsNotTakenForThatOfTheTemplate) {
  data_->SetSerialNumber(now_.header.serialNumber);
  Read("Serial number;A\nf [MHz];KF [%]\n50;98.5\n");
  EXPECT_EQ(plan_.doubts.size(), 1U);
}

TEST_F(SensorImport, APointWithTwoValuesIsRefusedWithItsRows) {
  const Error error = ErrorOf([&] { Read("f [MHz];KF [%]\n50;98.5\n50;98.9\n"); });
  EXPECT_TRUE(Contains(error.Text(), "Line 3: line 2 has the same point with another value."))
      << "the lines are those of the file";
  EXPECT_TRUE(Contains(error.Text(),
                       "\n\nCorrect them in the file and import it again, or choose "
                       "another table or other columns."));
  const Error below = ErrorOf([&] { Read("KF [%];f [MHz]\n98.5;-1\n"); });
  EXPECT_TRUE(Contains(below.Text(), "Line 2, Frequency [MHz]: \"-1\" is below zero."));
}

TEST_F(SensorImport, ATextThatADataFileCannotHoldIsNotTaken) {
  Read("Comment;\u4F60\nCertificate no;C 1\n\nf [MHz];KF [%]\n50;98.5\n");
  EXPECT_EQ(plan_.header.comment, "");
  EXPECT_EQ(plan_.header.calibrationNumber, "C 1");
  EXPECT_EQ(plan_.notes.back(),
            "Comment: \"\u4F60\" is not used, because a data file cannot hold the character "
            "\"\u4F60\".");
}

TEST(SetImport, ChangesOnlyTheRowsOfTheMemberWhoseValuesFit) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}};
  now.pages[1].rows = {{"1000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"},
                       {"10000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(
      "f [kHz],C [nF],Unc. "
      "[ppm],Dissipation,Unc.\n1,0.010000437,31,0.000001,0.0002\n3,0.01,1,1,1\n");
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  ASSERT_EQ(plan.pages.size(), 1U);
  EXPECT_EQ(plan.pages[0].page, 1);
  EXPECT_EQ(AfterImport(now, plan, true).pages[1].rows,
            (std::vector<Texts>{{"1000", "10.00044pF", "31 ppm", "0.00000", "0.00020"},
                                {"10000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"}}));
  EXPECT_EQ(plan.Rounded(), Texts{"RT522A: 1 kHz: 0.010000437 nF (10.000437) becomes 10.00044pF."});
  EXPECT_EQ(plan.doubts, Texts{"RT522A: 1 kHz: \"0.000001\" would be stored as \"0.00000\"."})
      << "the cell keeps its value";
  EXPECT_EQ(plan.notes, (Texts{"The certificate names no serial number.",
                               "RT522A: Not used, because the table has no such row: 3 kHz."}));
}

TEST(SetImport, UsesColumnsThatWereChosenBeforeOnEveryPageAndShowsTheMembers) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(4);
  now.pages[0] = {"M0", {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}}, {}};
  now.pages[1].rows = {{"1000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(
      "Serial number;S\n\nMember serial number;M1\na;b\n1000;1.0001\n\nc;d\n1;1\n\n"
      "a;b\n1000;10.001\n");
  const RememberedMatch remembered = [](const CertificateTable& table, std::int16_t) {
    return std::string(CaptionsKey(table) == "a|b" ? "0 1 - - -" : "");
  };
  const ImportPlan plan =
      PlanImport(target, certificate, ProposedChoices(target, certificate, remembered));
  const EditorState after = AfterImport(now, plan, true);
  EXPECT_EQ(after.pages[0].rows[0][1], "1.000100pF");
  EXPECT_EQ(after.pages[1].rows[0][1], "10.00100pF");
  EXPECT_EQ(after.pages[0].serialNumber, "M1");
  ASSERT_EQ(plan.fields.size(), 2U);
  EXPECT_EQ(plan.fields[1].name, "Serial number of RT521A");
  EXPECT_EQ(plan.fields[1].before, "M0");
  EXPECT_EQ(plan.fields[1].after, "M1");
}

TEST(SetImport, AsksBeforeItTakesStandardUncertaintiesForExpandedOnes) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate("f [kHz];C [pF];u (k=1) [ppm]\n1;1.0001;25\n");
  EXPECT_EQ(PlanImport(target, certificate, ProposedChoices(target, certificate)).doubts,
            Texts{"RT521A: The column \"u (k=1) [ppm]\" has standard uncertainties, and the table "
                  "has expanded ones. They are taken as they are."});
}

TEST(SetImport, AsksAboutUncertaintiesWithAnotherCoverageFactor) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const auto doubtsOf = [&](const std::string& caption) {
    const Certificate read = ReadCertificate("f [kHz];C [pF];" + caption + "\n1;1.0001;25\n");
    return PlanImport(target, read, ProposedChoices(target, read)).doubts;
  };
  EXPECT_EQ(doubtsOf("U [ppm] (k = 3)"),
            Texts{"RT521A: The column \"U [ppm] (k = 3)\" has uncertainties with the coverage "
                  "factor 3, and the table has those with about 2. They are taken as they are."});
  EXPECT_EQ(doubtsOf("U [ppm] (k=2,05)"), Texts());
  Certificate dcc = ReadCertificate("f [kHz];C [pF]\n1;1.0001\n");
  Series& values = dcc.tables.at(0).columns.at(1).series.at(0);
  values.uncertainties = {{"0.0001", "pF"}};
  values.coverageFactor = "1";
  EXPECT_EQ(
      PlanImport(target, dcc, ProposedChoices(target, dcc)).doubts,
      Texts{"RT521A: The column \"Expanded uncertainty of C [pF]\" has uncertainties with the "
            "coverage factor 1, and the table has those with about 2. They are taken as they "
            "are."});
}

TEST(SetImport, RowsThatNameAMemberGoToItsPageOrItsRow) {
  const Model& capacitors = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = capacitors.create();
  EditorState now;
  now.header.serialNumber = "S";
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}};
  now.pages[1].rows = {{"1000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"}};
  const Certificate pages = ReadCertificate(
      "Serial number;S\n\nStandard;S/N;f [kHz];C [pF]\nRT521A;M1;1;1.0001\nRT522A;M2;1;10.001\n");
  const ImportTarget target = {.model = capacitors, .data = *data, .now = now};
  const ImportPlan plan = PlanImport(target, pages, ProposedChoices(target, pages));
  EXPECT_EQ(plan.doubts, Texts());
  const EditorState after = AfterImport(now, plan, true);
  EXPECT_EQ(after.pages[0].rows[0][1] + after.pages[0].serialNumber, "1.000100pFM1");
  EXPECT_EQ(after.pages[1].rows[0][1] + after.pages[1].serialNumber, "10.00100pFM2");

  const Model& resistors = *FindModel("RT730A");
  const std::unique_ptr<cifCaldata> set = resistors.create();
  now.pages.assign(7, {});
  now.pages[0].rows = {{"RT731A", "1 mohm", "1.0004  mohm", "0.1 %"},
                       {"RT732A", "10 mohm", "10.003  mohm", "0.1 %"}};
  const Certificate rows = ReadCertificate(
      "Serial number;S\n\nMember;S/N;Calibrated [Ω]\nRT731A;M1;0.001\nRT732A;M2;0.01001\n");
  const ImportTarget other = {.model = resistors, .data = *set, .now = now};
  const ImportPlan joined = PlanImport(other, rows, ProposedChoices(other, rows));
  EXPECT_EQ(joined.doubts, Texts());
  ASSERT_EQ(joined.pages.size(), 1U);
  EXPECT_EQ(AfterImport(now, joined, true).pages[0].rows,
            (std::vector<Texts>{{"RT731A", "1 mohm", "1.0000  mohm", "0.1 %"},
                                {"RT732A", "10 mohm", "10.010  mohm", "0.1 %"}}))
      << "the nominal values stay";
}

TEST(SetImport, AsksAboutValuesOfAnotherMemberAndUncertaintiesThatCannotBe) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"},
                       {"10000", "1.00000pF", "0.010 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(
      "RT521A\nf [kHz];C [pF];Unc. [%];D [1];Unc.\n1;10.002;150;1.5;-0.0001\n"
      "10;1.0002;0;0.0001;0.0001\n");
  EXPECT_EQ(PlanImport(target, certificate, ProposedChoices(target, certificate)).doubts,
            (Texts{"RT521A: 1 kHz (line 3): 10.002 pF is not near 1.000000pF in the table.",
                   "RT521A: 1 kHz (line 3): 150 % is an uncertainty above 100 % of the value.",
                   "RT521A: 1 kHz (line 3): 1.5 is above 1, where no dissipation factor is.",
                   "RT521A: 1 kHz (line 3): -0.0001 is not an uncertainty, which is above 0.",
                   "RT521A: 10 kHz (line 4): 0 % is not an uncertainty, which is above 0."}));
}

TEST(SetImport, SaysWhichUncertaintiesInTheUnitOfTheValueAreRounded) {
  const Model& model = *FindModel("RT730A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.pages.resize(7);
  now.pages[0].rows = {{"RT731A", "1 mohm", "1.0004  mohm", "0.1 %"},
                       {"RT732A", "10 mohm", "10.003  mohm", "0.1 %"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(
      "Member;Calibrated [mΩ];Unc. [mΩ]\nRT731A;1.0004;0.0123\nRT732A;10.003;0.01\n");
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  EXPECT_EQ(AfterImport(now, plan, true).pages[0].rows[0][3], "1.23 %");
  EXPECT_EQ(AfterImport(now, plan, true).pages[0].rows[1][3], "0.1 %");
  // 0.0123 / 1.0004 is 0.0122951: the cell keeps 1.23 %, which is 0.0123 mΩ again. 0.01 / 10.003 is
  // 0.00099970, and 0.1 % is 0.010003 mΩ.
  EXPECT_EQ(plan.Rounded(), Texts());
  const Certificate longer = ReadCertificate(
      "Member;Calibrated [mΩ];Unc. [mΩ]\nRT731A;1.0004;0.01234\nRT732A;10.003;0.01\n");
  // 0.01234 / 1.0004 is 1.233507 %, and 1.23 % of 1.0004 mΩ is 0.012305 mΩ.
  EXPECT_EQ(PlanImport(target, longer, ProposedChoices(target, longer)).Rounded(),
            Texts{"DC Registance: RT731A: 0.01234 mΩ (1.2335 %) becomes 1.23 %."});
}

/// A DCC about these instruments, a model and a serial number each, with a table of one row.
Certificate DccAbout(const std::vector<std::pair<std::string, std::string>>& items) {
  std::string text =
      "<d:digitalCalibrationCertificate xmlns:d=\"https://ptb.de/dcc\" xmlns=\"https://ptb.de/si\">"
      "<d:administrativeData><d:items>";
  for (const auto& [model, serial] : items) {
    text += "<d:item><d:model>" + model +
            "</d:model><d:identifications><d:identification><d:issuer>manufacturer</d:issuer>"
            "<d:value>" +
            serial + "</d:value></d:identification></d:identifications></d:item>";
  }
  text +=
      "</d:items></d:administrativeData><d:measurementResults><d:measurementResult><d:results>"
      "<d:result><d:data><d:list>";
  for (const std::string unit : {"\\kilo\\hertz", "\\pico\\farad"}) {
    text += "<d:quantity><real><value>1</value><unit>" + unit + "</unit></real></d:quantity>";
  }
  return ReadCertificate(text +
                         "</d:list></d:data></d:result></d:results></d:measurementResult>"
                         "</d:measurementResults></d:digitalCalibrationCertificate>");
}

TEST(SetImport, AnItemOfADccIsAMemberOrAnotherInstrument) {
  const Model& model = *FindModel("RT520A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState now;
  now.header.serialNumber = "S";
  now.pages.resize(4);
  now.pages[0].rows = {{"1000", "1.100000pF", "0.0050 %", "0.00000", "0.00010"}};
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate members = DccAbout({{"RT520A", "S"}, {"RT521A", "M1"}});
  const ImportPlan plan = PlanImport(target, members, ProposedChoices(target, members));
  EXPECT_EQ(plan.doubts, Texts());
  EXPECT_EQ(AfterImport(now, plan, true).pages[0].serialNumber, "M1");
  const Certificate several = DccAbout({{"RT520A", "S"}, {"RT520A", "T"}});
  EXPECT_EQ(
      PlanImport(target, several, ProposedChoices(target, several)).doubts,
      Texts{"The certificate is about several instruments, and does not say which of them its "
            "results are about, such as the table \"\" (result 1, list 1)."});
}

TEST(JsonExport, HoldsTheTextsOfTheDataSet) {
  const Model& model = *FindModel("PX11A");
  const std::unique_ptr<cifCaldata> data = model.create();
  EditorState state;
  state.header = {.serialNumber = "4711", .calYear = "2026", .calMonth = "MAR", .calDay = "5"};
  state.pages = {{"", {{"50.00", "98.50"}}, {}}};
  EXPECT_EQ(JsonOf(model, *data, state), R"({
  "format": "tarvell-data-set",
  "version": 1,
  "model": "PX11A",
  "serialNumber": "4711",
  "calibrationDate": "2026-03-05",
  "pages": [
    {
      "name": "",
      "serialNumber": "",
      "columns": [
        {
          "caption": "Frequency",
          "unit": "MHz"
        },
        {
          "caption": "Calibration factor",
          "unit": "%"
        }
      ],
      "rows": [
        [
          "50.00",
          "98.50"
        ]
      ]
    }
  ]
}
)");
  EXPECT_EQ(
      CsvOf(model, *data, state),
      "Format,tarvell-data-set 1 e777346b28673479770eb0cea290ccc4070b0e2c2f1d2d9fab5634062e85581b"
      "\r\nModel,PX11A\r\nSerial number,4711\r\n"
      "Calibration number,\r\nCalibration date,2026-03-05\r\nDue date,\r\nComment,\r\n\r\n"
      "Frequency [MHz],Calibration factor [%]\r\n50.00,98.50\r\n");
}

TEST_F(SensorImport, GivesTheDigitsOfTheTableToAnExportThatASpreadsheetHasSaved) {
  const std::string lines =
      "Model,PX11A\r\n\r\nFrequency [MHz],Calibration factor [%]\r\n50,98\r\n.5,97.5\r\n";
  now_.pages.front().rows.clear();
  Read("Format," + ExportFormat(lines) + "\r\n" + lines);
  EXPECT_EQ(RowsAfter(false), (Texts{".5 97.5", "50 98"}));
  std::string saved = lines;
  saved.replace(saved.find(".5,"), 1, "0.");
  Read("Format," + ExportFormat(lines) + "\r\n" + saved);
  EXPECT_EQ(RowsAfter(false), (Texts{"0.50 97.5", "50.00 98.0"}));
  EXPECT_TRUE(Contains(plan_.notes.back(), "This export was changed after it was written."));
}

TEST_F(SensorImport, AnExportWithoutPointsBringsTheHeaderAndNoPoint) {
  EditorState empty = now_;
  empty.header.calibrationNumber = "C 7";
  empty.pages.front() = {};
  Read(CsvOf(*FindModel("PX11A"), *data_, empty));
  EXPECT_EQ(plan_.header.calibrationNumber, "C 7");
  EXPECT_EQ(plan_.notes, Texts{"The exported table has no rows. Only the header goes in."});
  EXPECT_TRUE(plan_.HasValues());
  EXPECT_EQ(RowsAfter(false).size(), 3U);
  EXPECT_EQ(RowsAfter(true), Texts());
}

}  // namespace tarvell::test
