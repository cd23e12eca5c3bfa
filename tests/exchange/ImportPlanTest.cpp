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
    return {*FindModel("PX11A"), *data_, now_, isSerialFixed_};
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
                                "These columns are not used: \"Gamma\", \"U [%]\".",
                                "2000 MHz: \"n/a\" cannot be taken for Calibration factor[%]."}));
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
  choices_.pages.front() = {0, *match};
  plan_ = PlanImport(Target(), certificate_, choices_);
  EXPECT_EQ(RowsAfter(true), Texts{"50.00 98.5"});
  EXPECT_EQ(CaptionsKey(table), "a|b|c");
  EXPECT_FALSE(MatchFrom("0 3", table, 2));
  EXPECT_FALSE(MatchFrom("0", table, 2));
}

TEST_F(SensorImport, APointWithTwoValuesIsRefusedWithItsRows) {
  const Error error = ErrorOf([&] { Read("f [MHz];KF [%]\n50;98.5\n50;98.9\n"); });
  EXPECT_TRUE(Contains(error.Text(), "Line 2: line 1 has the same point with another value."));
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
  const ImportTarget target = {model, *data, now};
  const Certificate certificate = ReadCertificate(
      "f [kHz],C [nF],Unc. "
      "[ppm],Dissipation,Unc.\n1,0.010000437,31,0.000001,0.0002\n3,0.01,1,1,1\n");
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  ASSERT_EQ(plan.pages.size(), 1U);
  EXPECT_EQ(plan.pages[0].page, 1);
  EXPECT_EQ(AfterImport(now, plan, true).pages[1].rows,
            (std::vector<Texts>{{"1000", "10.00044pF", "31 ppm", "0.00000", "0.00020"},
                                {"10000", "10.00000pF", "0.0030 %", "0.00000", "0.00010"}}));
  EXPECT_EQ(plan.Rounded(), Texts{"RT522A: 1 kHz: 0.010000437 nF becomes 10.00044pF."});
  EXPECT_EQ(plan.notes, (Texts{"The certificate names no serial number.",
                               "RT522A: 1 kHz: \"0.000001\" would be stored as \"0.00000\".",
                               "RT522A: Not used, because the table has no such row: 3 kHz."}));
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
  EXPECT_EQ(CsvOf(model, *data, state),
            "Format,tarvell-data-set 1\r\nModel,PX11A\r\nSerial number,4711\r\n"
            "Calibration date,2026-03-05\r\n\r\n"
            "Frequency [MHz],Calibration factor [%]\r\n50.00,98.50\r\n");
}

}  // namespace tarvell::test
