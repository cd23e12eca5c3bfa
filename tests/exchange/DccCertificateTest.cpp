// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exchange/ReadCertificate.h"
#include "support/ErrorOf.h"

namespace tarvell::test {

namespace {

using Texts = std::vector<std::string>;

/// A certificate with this text inside the only result's data.
std::string Dcc(const std::string& data, const std::string& administrative = "") {
  return "<?xml version=\"1.0\"?><c:digitalCalibrationCertificate xmlns:c=\"https://ptb.de/dcc\" "
         "xmlns:s=\"https://ptb.de/si\" schemaVersion=\"3.2.1\"><c:administrativeData>" +
         administrative +
         "</c:administrativeData><c:measurementResults><c:measurementResult><c:results><c:result>"
         "<c:data>" +
         data +
         "</c:data></c:result></c:results></c:measurementResult></c:measurementResults>"
         "</c:digitalCalibrationCertificate>";
}

std::string Real(const std::string& value, const std::string& unit) {
  return "<c:quantity><s:real><s:value>" + value + "</s:value><s:unit>" + unit +
         "</s:unit></s:real></c:quantity>";
}

std::string List(const std::string& values, const std::string& unit) {
  return "<c:quantity><s:realListXMLList><s:valueXMLList>" + values +
         "</s:valueXMLList><s:unitXMLList>" + unit +
         "</s:unitXMLList></s:realListXMLList></c:quantity>";
}

/// The values of each column of a table, joined.
Texts ColumnsOf(const CertificateTable& table) {
  Texts columns;
  for (const CertificateColumn& column : table.columns) {
    std::string text;
    for (const WrittenValue& value : column.series.front().values) {
      text += (text.empty() ? "" : " ") + value.text + value.unit;
    }
    columns.push_back(text);
  }
  return columns;
}

std::string RefusalOf(const std::string& bytes) {
  return ErrorOf([&] { (void)ReadCertificate(bytes); }).Text();
}

}  // namespace

TEST(DccCertificate, ListsOfSingleValuesAreATableByRowOrByColumn) {
  const std::string rows = "<c:list><c:list>" + Real("1", "\\hertz") + Real("10.0", "\\decibel") +
                           "</c:list><c:list>" + Real("2", "\\hertz") + Real("20.0", "\\decibel") +
                           "</c:list></c:list>";
  const std::string columns = "<c:list><c:list>" + Real("1", "\\hertz") + Real("2", "\\hertz") +
                              "</c:list><c:list>" + Real("10.0", "\\decibel") +
                              Real("20.0", "\\decibel") + "</c:list></c:list>";
  for (const std::string& data : {rows, columns}) {
    const Certificate read = ReadCertificate(Dcc(data));
    ASSERT_EQ(read.tables.size(), 1U) << data;
    EXPECT_EQ(ColumnsOf(read.tables[0]),
              (Texts{"1\\hertz 2\\hertz", "10.0\\decibel 20.0\\decibel"}));
  }
}

TEST(DccCertificate, EveryListIsATableAndASingleValueHoldsForAllItsRows) {
  const Certificate read = ReadCertificate(Dcc(
      "<c:list><c:list>" + Real("10", "\\decibel") + List("1 2", "\\hertz") + "</c:list><c:list>" +
      List("1 2 3", "\\hertz") + List("4 5", "\\decibel") + "</c:list></c:list>"));
  ASSERT_EQ(read.tables.size(), 2U);
  EXPECT_EQ(ColumnsOf(read.tables[0]), (Texts{"10\\decibel 10\\decibel", "1\\hertz 2\\hertz"}));
  EXPECT_TRUE(read.tables[0].columns[0].isRepeated);
  EXPECT_FALSE(read.tables[0].columns[1].isRepeated);
  EXPECT_EQ(read.tables[0].where, "result 1, list 2");
  EXPECT_EQ(ColumnsOf(read.tables[1]), Texts{"1\\hertz 2\\hertz 3\\hertz"});
  EXPECT_EQ(read.notes, Texts{"The column \"\" (result 1, list 3) is not used, because it does not "
                              "have a value for each row."});
}

TEST(DccCertificate, AListForEachColumnIsATable) {
  const Certificate read =
      ReadCertificate(Dcc("<c:list><c:list>" + List("1 2", "\\hertz") + "</c:list><c:list>" +
                          List("3 4", "\\decibel") + "</c:list></c:list>"));
  ASSERT_EQ(read.tables.size(), 1U);
  EXPECT_EQ(ColumnsOf(read.tables[0]), (Texts{"1\\hertz 2\\hertz", "3\\decibel 4\\decibel"}));
}

TEST(DccCertificate, AValueWithoutAnUncertaintyDoesNotGetThatOfAnother) {
  const auto row = [](const std::string& value, const std::string& uncertainty) {
    return "<c:list>" + Real(value, "\\hertz") + "<c:quantity><s:real><s:value>" + value +
           "0</s:value><s:unit>\\decibel</s:unit>" +
           (uncertainty.empty() ? ""
                                : "<s:expandedUnc><s:uncertainty>" + uncertainty +
                                      "</s:uncertainty></s:expandedUnc>") +
           "</s:real></c:quantity></c:list>";
  };
  for (const Texts& uncertainties : {Texts{"0.1", "", "0.3"}, Texts{"", "0.2", ""}}) {
    const Certificate read =
        ReadCertificate(Dcc("<c:list>" + row("1", uncertainties[0]) + row("2", uncertainties[1]) +
                            row("3", uncertainties[2]) + "</c:list>"));
    Texts texts;
    for (const WrittenValue& each : read.tables.at(0).columns.at(1).series.front().uncertainties) {
      texts.push_back(each.text);
    }
    EXPECT_EQ(texts, uncertainties);
  }
}

TEST(DccCertificate, TheCoverageFactorThatIsFarthestFromTwoIsKept) {
  const auto factorOf = [](const std::string& uncertainty) {
    const std::string value =
        "<c:quantity><s:realListXMLList><s:valueXMLList>1 2</s:valueXMLList>"
        "<s:unitXMLList>\\one</s:unitXMLList>" +
        uncertainty + "</s:realListXMLList></c:quantity>";
    return ReadCertificate(Dcc("<c:list>" + value + value + "</c:list>"))
        .tables.at(0)
        .columns.at(0)
        .series.at(0)
        .coverageFactor;
  };
  EXPECT_EQ(factorOf("<s:expandedUncXMLList><s:uncertaintyXMLList>1 2</s:uncertaintyXMLList>"
                     "<s:coverageFactorXMLList>2.0 3</s:coverageFactorXMLList>"
                     "</s:expandedUncXMLList>"),
            "3");
  EXPECT_EQ(factorOf("<s:measurementUncertaintyUnivariateXMLList><s:expandedMUXMLList>"
                     "<s:valueExpandedMUXMLList>1</s:valueExpandedMUXMLList>"
                     "<s:coverageFactorXMLList>1</s:coverageFactorXMLList></s:expandedMUXMLList>"
                     "</s:measurementUncertaintyUnivariateXMLList>"),
            "1");
  EXPECT_EQ(factorOf(""), "");
}

TEST(DccCertificate, AListWithTooFewUnitsOrUncertaintiesIsNotUsed) {
  const std::string three = List("7 8 9", "\\decibel");
  const std::string uncertain =
      "<c:quantity><s:realListXMLList><s:valueXMLList>4 5 6</s:valueXMLList><s:unitXMLList>\\one"
      "</s:unitXMLList><s:expandedUncXMLList><s:uncertaintyXMLList>1 2</s:uncertaintyXMLList>"
      "</s:expandedUncXMLList></s:realListXMLList></c:quantity>";
  const Certificate read = ReadCertificate(
      Dcc("<c:list>" + List("1 2 3", "\\hertz \\hertz") + uncertain + three + three + "</c:list>"));
  EXPECT_EQ(ColumnsOf(read.tables.at(0)).size(), 2U);
  const std::string begin = "The column \"\" (result 1, list 1) is not used, because it has ";
  EXPECT_EQ(read.notes,
            (Texts{begin + "2 units for 3 values.", begin + "2 uncertainties for 3 values."}));
}

TEST(DccCertificate, AQuantityOutsideATableIsNamed) {
  EXPECT_EQ(ReadCertificate(Dcc("<c:list>" + List("1 2", "\\hertz") + "</c:list>")).notes,
            Texts{"The column \"\" (result 1, list 1) is not used, because it is not a column of a "
                  "table."});
}

TEST(DccCertificate, LongNamesAndUnitsAreCutBeforeTheyAreCopied) {
  const std::string huge(1'000'000, 'x');
  std::string values;
  for (int i = 0; i < 5'000; ++i) {
    values += "1 ";
  }
  std::string lists = "<c:list>" + List(values, huge) + List(values, "\\hertz") + "</c:list>";
  for (int i = 0; i < 1'000; ++i) {
    lists += "<c:list>" + List("1 2", "\\hertz") + List("1 2", "\\one") + "</c:list>";
  }
  const Certificate read = ReadCertificate(
      Dcc(lists + "</c:data><c:name><c:content>" + huge + "</c:content></c:name><c:data>"));
  ASSERT_EQ(read.tables.size(), 1'001U);
  EXPECT_EQ(read.tables[0].columns[0].series[0].values.back().unit.size(), 203U);
  EXPECT_EQ(read.tables.back().name.front().text.size(), 203U);
}

TEST(DccCertificate, ResultsBelongToTheItemThatTheyReferToOrName) {
  const auto item = [](const std::string& id, const std::string& serial) {
    return "<c:item id=\"" + id +
           "\"><c:identifications><c:identification><c:issuer>manufacturer</c:issuer><c:value>" +
           serial + "</c:value></c:identification></c:identifications></c:item>";
  };
  const std::string columns = List("1 2", "\\hertz") + List("3 4", "\\one");
  const Certificate read =
      ReadCertificate(Dcc("<c:list refId=\"x two\">" + columns +
                              "</c:list><c:list><c:name><c:content>Head SER1</c:content></c:name>" +
                              columns + "</c:list><c:list>" + columns + "</c:list>",
                          "<c:items>" + item("one", "SER1") + item("two", "SER2") + "</c:items>"));
  ASSERT_EQ(read.tables.size(), 3U);
  EXPECT_EQ(read.tables[0].item, 1U);
  EXPECT_EQ(read.tables[1].item, 0U);
  EXPECT_FALSE(read.tables[2].item);
  EXPECT_TRUE(read.tables[2].isItemOpen);
}

TEST(DccCertificate, TheSerialNumberIsTheManufacturersAndTheDateTheLastOne) {
  const Certificate read = ReadCertificate(
      Dcc("",
          "<c:coreData><c:uniqueIdentifier>N 1</c:uniqueIdentifier><c:beginPerformanceDate>"
          "2026-01-02</c:beginPerformanceDate><c:endPerformanceDate>2026-01-05"
          "</c:endPerformanceDate></c:coreData><c:items><c:item><c:identifications>"
          "<c:identification><c:issuer>customer</c:issuer><c:value>INV</c:value>"
          "</c:identification><c:identification><c:issuer>manufacturer</c:issuer><c:value>SER"
          "</c:value></c:identification></c:identifications></c:item></c:items>"));
  EXPECT_EQ(read.header.calibrationNumber->text, "N 1");
  EXPECT_EQ(IsoDate(read.header.calDate->date), "2026-01-05");
  EXPECT_FALSE(read.header.dueDate);
  EXPECT_EQ(read.items.at(0).serialNumber, "SER");
}

TEST(DccCertificate, DatesThatContradictEachOtherOrAreNoneAreDoubts) {
  const auto statement = [](const std::string& date) {
    return "<c:statement refType=\"basic_recalibration\"><c:date>" + date +
           "</c:date></c:statement>";
  };
  const Certificate read = ReadCertificate(
      Dcc("",
          "<c:coreData><c:beginPerformanceDate>2026-01-02</c:beginPerformanceDate>"
          "<c:endPerformanceDate>5 January</c:endPerformanceDate></c:coreData><c:statements>" +
              statement("2027-01-02") + statement("2028-01-02") + "</c:statements>"));
  EXPECT_EQ(IsoDate(read.header.calDate->date), "2026-01-02");
  EXPECT_EQ(IsoDate(read.header.dueDate->date), "2027-01-02");
  EXPECT_EQ(read.doubts,
            (std::vector<std::string>{
                "\"5 January\" (end of the calibration) is not a date. 2026-01-02 "
                "(begin of the calibration) is used.",
                "There are two statements on recalibration: 2027-01-02, which is used, "
                "and 2028-01-02."}));
}

TEST(DccCertificate, ANameIsShownInAnyFormOfTheLanguage) {
  const Names names = {{"en-GB", "Frequency"}, {"de", "Frequenz"}, {"fr-CH", "Fréquence"}};
  EXPECT_EQ(NameIn(names, "de-DE"), "Frequenz");
  EXPECT_EQ(NameIn(names, "fr"), "Fréquence");
  EXPECT_EQ(NameIn(names, "it"), "Frequency") << "English, where the language is missing";
  EXPECT_EQ(NameIn({{"de", "Deutsch"}, {"de-AT", "Österreich"}}, "de-at"), "Österreich");
}

TEST(DccCertificate, AnArticleNumberOfTheManufacturerIsNotTheSerialNumber) {
  const auto identification = [](const std::string& attribute, const std::string& name,
                                 const std::string& value) {
    return "<c:identification" + attribute + "><c:issuer>manufacturer</c:issuer><c:value>" + value +
           "</c:value><c:name><c:content lang=\"de\">" + name +
           "</c:content></c:name></c:identification>";
  };
  const auto serialOf = [](const std::string& identifications) {
    return ReadCertificate(Dcc("", "<c:items><c:item><c:identifications>" + identifications +
                                       "</c:identifications></c:item></c:items>"))
        .items.at(0)
        .serialNumber;
  };
  const std::string article = identification("", "Artikelnummer", "ART");
  EXPECT_EQ(serialOf(article + identification("", "Seriennummer", "SER")), "SER");
  EXPECT_EQ(serialOf(article + identification(" refType=\"basic_serialNumber\"", "Nr.", "SER")),
            "SER");
  EXPECT_EQ(serialOf(identification("", "Serial no.", "SER") + article), "SER");
}

TEST(DccCertificate, ElementsOfOtherNamespacesAreNotTakenForThoseOfACertificate) {
  EXPECT_TRUE(ReadCertificate(Dcc("<list xmlns=\"urn:x\">" + List("1 2", "\\hertz") +
                                  List("3 4", "\\one") + "</list>"))
                  .tables.empty());
}

TEST(DccCertificate, EntitiesAreNotResolved) {
  const std::string entities =
      "<!DOCTYPE x [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\"><!ENTITY f SYSTEM "
      "\"file:///etc/passwd\">]>";
  std::string bytes = Dcc("",
                          "<c:coreData><c:uniqueIdentifier>&b;&f;</c:uniqueIdentifier>"
                          "</c:coreData>");
  bytes.insert(bytes.find("?>") + 2, entities);
  const Certificate read = ReadCertificate(bytes);
  EXPECT_EQ(read.header.calibrationNumber->text, "&b;&f;");
  EXPECT_EQ(read.notes, Texts{"The file declares entities. They were not resolved."});
}

TEST(DccCertificate, HostileFilesAreRefusedWithAReason) {
  std::string deep;
  for (int i = 0; i < 300'000; ++i) {
    deep += "<a>";
  }
  std::string many;
  for (int i = 0; i < 100'001; ++i) {
    many += " 1 2";
  }
  std::string wide;
  for (int i = 0; i < 500'001; ++i) {
    wide += "<a></a>";
  }
  EXPECT_TRUE(Contains(RefusalOf(deep), "line 1 is not correct XML"));
  for (int i = 0; i < 300'000; ++i) {
    deep += "</a>";
  }
  EXPECT_TRUE(Contains(RefusalOf(deep), "nested deeper"));
  EXPECT_TRUE(Contains(RefusalOf(Dcc(wide)), "more elements"));
  EXPECT_TRUE(Contains(RefusalOf(Dcc("<c:list>" + List(many, "\\one") + "</c:list>")),
                       "more than 200000 values"));
  std::string columns;
  for (int i = 0; i < 1001; ++i) {
    columns += List("1 2", "\\one");
  }
  EXPECT_TRUE(
      Contains(RefusalOf(Dcc("<c:list>" + columns + "</c:list>")), "more than 1000 columns"));
  EXPECT_TRUE(Contains(RefusalOf(Dcc("\xC3(")), "not in UTF-8"));
  EXPECT_TRUE(Contains(RefusalOf("<html/>"), "not a DCC. Its first element is \"html\""));
  EXPECT_TRUE(Contains(RefusalOf("\x30\x82\x10signed"), "inside a signature"));
  EXPECT_TRUE(Contains(RefusalOf("PK\x03\x04"), "workbook"));
  EXPECT_TRUE(Contains(RefusalOf(" \r\n"), "empty"));
  EXPECT_TRUE(Contains(RefusalOf("\xEF\xBB\xBF{\"a\": 1}"), "The file is JSON"));
}

}  // namespace tarvell::test
