// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The examples of docs/examples/certificates: each is imported into new data, and the saved file is
// the expected one, byte for byte.

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "core/caldata/Models.h"
#include "core/caldata/OpenedDataSet.h"
#include "exchange/Export.h"
#include "exchange/ImportPlan.h"
#include "exchange/ReadCertificate.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell::test {

namespace {

struct Example {
  std::string file;
  std::string model;
  std::string kind;
};

void PrintTo(const Example& example, std::ostream* stream) {
  *stream << example.file;
}

std::filesystem::path Folder() {
  return std::filesystem::path(TARVELL_EXAMPLE_FOLDER) / "certificates";
}

class Certificates : public testing::TestWithParam<Example> {};

}  // namespace

TEST_P(Certificates, AreImportedIntoNewData) {
  const Example& example = GetParam();
  const Model& model = *FindModel(example.model);
  const TestTree tree;
  tree.InstallTemplate(model.code);
  const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
  EditorState now = StateOf(model, *data);
  now.header.serialNumber.clear();
  const ImportTarget target = {.model = model, .data = *data, .now = now};
  const Certificate certificate = ReadCertificate(CertificateBytes(Folder() / example.file));
  EXPECT_EQ(certificate.kind, example.kind);
  EXPECT_TRUE(certificate.questions.empty());
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  EXPECT_EQ(plan.doubts, std::vector<std::string>());
  StoreState(AfterImport(now, plan, true), model, *data);
  data->SaveCalibrationDataToFile("c:\\saved");
  const std::filesystem::path expected =
      Folder() / "expected" / std::filesystem::path(example.file).stem();
  EXPECT_EQ(tree.Read("c:\\saved"), ReadNative(expected));
}

INSTANTIATE_TEST_SUITE_P(
    Examples, Certificates,
    testing::Values(
        Example{"sensor-germany.csv", "PX11A", "Text, Windows-1252, separated by semicolons"},
        Example{"attenuator-france.csv", "PX60G", "Text, UTF-8, separated by semicolons"},
        Example{"capacitors-switzerland.csv", "RT520A", "Text, UTF-8, separated by semicolons"},
        Example{"resistors-usa.tsv", "RT730A", "Text, UTF-16, separated by tabs"},
        Example{"sensor-2.4.xml", "PX13A", "DCC 2.4.0"},
        Example{"attenuator-3.1.xml", "PX60H", "DCC 3.1.2"},
        Example{"capacitors-3.3.xml", "RT520C", "DCC 3.3.0"},
        Example{"resistors-3.2.xml", "RT730A", "DCC 3.2.1"}));

TEST(OtherCertificates, AThermometerHasNoTableForASensorAndIsNamedWithWhatItHas) {
  const Model& model = *FindModel("PX11A");
  const TestTree tree;
  tree.InstallTemplate(model.code);
  const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
  const EditorState now = StateOf(model, *data);
  const ImportTarget target = {
      .model = model, .data = *data, .now = now, .templateSerial = now.header.serialNumber};
  const Certificate certificate =
      ReadCertificate(CertificateBytes(Folder() / "thermometer-3.3.xml"));
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  EXPECT_FALSE(plan.HasValues());
  EXPECT_EQ(plan.doubts, std::vector<std::string>{
                             "The certificate is for the model \"Pt100\", and this data set is for "
                             "PX11A."});
  EXPECT_EQ(plan.notes,
            std::vector<std::string>{
                "The certificate has no table for the model PX11A, which has the columns Frequency "
                "[MHz], Calibration factor[%]. It has:\nMeasuring results (result 1, list 1): "
                "Reference value [K], Indicated value [K], 3 rows."});
}

TEST(OtherCertificates, AreDescribedInTheLanguageOfTheUser) {
  const Model& model = *FindModel("PX11A");
  const TestTree tree;
  tree.InstallTemplate(model.code);
  const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
  const EditorState now = StateOf(model, *data);
  const ImportTarget target = {.model = model, .data = *data, .now = now, .language = "de"};
  const Certificate certificate =
      ReadCertificate(CertificateBytes(Folder() / "capacitors-3.3.xml"));
  const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
  EXPECT_TRUE(Contains(plan.notes.at(0),
                       "\nNormal RT525A (result 1, list 1): Frequenz [Hz], "
                       "Kapazit\u00E4t [nF], Verlustfaktor, 3 rows."))
      << plan.notes.at(0);
}

}  // namespace tarvell::test
