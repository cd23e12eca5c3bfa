// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exchange/CaptionUnit.h"
#include "exchange/CsvCertificate.h"
#include "exchange/Units.h"
#include "exchange/WrittenDate.h"
#include "support/ErrorOf.h"

namespace tarvell::test {

namespace {

Certificate Read(std::string_view text, const ReadingChoices& choices = {}) {
  return CsvCertificate(text, choices);
}

/// The texts of a column of the first table, with their units.
std::vector<std::string> Column(const Certificate& certificate, std::size_t column) {
  std::vector<std::string> texts;
  for (const WrittenValue& value :
       certificate.tables.at(0).columns.at(column).series.front().values) {
    texts.push_back(value.text + (value.unit.empty() ? "" : " " + value.unit));
  }
  return texts;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(CsvCertificate, ValuesKeepTheirDigitsAndGetTheUnitOfTheirCaption) {
  const Certificate read = Read("f [MHz];KF [%]\n50;98,50\n0,1;97,0 ppm\n");
  EXPECT_EQ(Column(read, 0), (Texts{"50 MHz", "0.1 MHz"}));
  EXPECT_EQ(Column(read, 1), (Texts{"98.50 %", "97.0 ppm"}));
}

TEST(CsvCertificate, UnitsMayBeInALineOfTheirOwn) {
  const Certificate read = Read("Frequency\tFactor\n(GHz)\t[%]\n0.05\t98.5\n");
  EXPECT_EQ(Column(read, 0), Texts{"0.05 GHz"});
  EXPECT_EQ(Column(read, 1), Texts{"98.5 %"});
}

TEST(CsvCertificate, QuotedCellsHoldSeparatorsQuotesAndLineEnds) {
  const Certificate read = Read(
      "Comment,\"a, \"\"b\"\"\nc\"\nSerial no.,4711\n\nf (MHz),\"Factor,\nmean (%)\"\n50,98.5\n");
  EXPECT_EQ(read.header.comment->text, "a, \"b\"\nc");
  EXPECT_EQ(read.items.at(0).serialNumber, "4711");
  EXPECT_EQ(Column(read, 1), Texts{"98.5 %"});
  EXPECT_EQ(read.tables.at(0).where, "line 7");
}

TEST(CsvCertificate, ANumberOfTwoReadingsIsAskedForAndReadAsChosen) {
  const std::string text = "MHz;%\n1,234;98\n";
  const Certificate open = Read(text);
  ASSERT_EQ(open.questions.size(), 1U);
  EXPECT_EQ(open.questions[0].written, "1,234");
  EXPECT_EQ(open.questions[0].first, "1234");
  EXPECT_EQ(open.questions[0].second, "1.234");
  EXPECT_EQ(Column(Read(text, {.sign = DecimalSign::Point}), 0), Texts{"1234 MHz"});
  EXPECT_EQ(Column(Read(text, {.sign = DecimalSign::Comma}), 0), Texts{"1.234 MHz"});
}

TEST(CsvCertificate, ANumberOfOneReadingDecidesForAllOthers) {
  EXPECT_EQ(Column(Read("MHz;%\n1,234;98,5\n"), 0), Texts{"1.234 MHz"});
  EXPECT_EQ(Column(Read("MHz;%\n1,234;98.5\n"), 0), Texts{"1234 MHz"});
  EXPECT_TRUE(Read("MHz;%\n1,234;98.5\n").questions.empty());
}

TEST(CsvCertificate, AColumnThatHoldsNoValuesDoesNotDecideHowTheValuesAreRead) {
  for (const std::string_view caption :
       {"Inventory no.", "Kalibriert am", "Remark", "Nr.", "Date", "Beleg"}) {
    const Certificate read =
        Read("f [MHz];KF [%];" + std::string(caption) + "\n1,500;98;03.2026\n");
    ASSERT_EQ(read.questions.size(), 1U) << caption;
    EXPECT_EQ(read.questions[0].written, "1,500");
  }
  EXPECT_TRUE(Read("f [MHz];KF [%];Gamma\n1,500;98;0.01\n").questions.empty()) << "a quantity";
  EXPECT_EQ(Column(Read("f [MHz];Ergebnis\n1000;98,5\n"), 1), Texts{"98.5"})
      << "a column that can be the value, where no other number has two readings";
}

TEST(CsvCertificate, ADateOfTwoOrdersIsAskedForUnlessAnotherDateShowsTheOrder) {
  const std::string cal = "Calibration date;03/05/2026\n";
  const Certificate open = Read(cal);
  ASSERT_EQ(open.questions.size(), 1U);
  EXPECT_EQ(open.questions[0].first, "2026-05-03");
  EXPECT_EQ(open.questions[0].second, "2026-03-05");
  const auto month = [](const Certificate& read) { return read.header.calDate->date.month; };
  EXPECT_EQ(month(Read(cal, {.dateOrder = DateOrder::MonthFirst})), 3);
  const Certificate decided = Read(cal + "Due date;03/25/2027\n");
  EXPECT_TRUE(decided.questions.empty());
  EXPECT_EQ(month(decided), 3);
}

TEST(CsvCertificate, ADateOfAnotherEventIsNeitherThatOfTheCalibrationNorANumber) {
  const Certificate read = Read(
      "Datum der Ausstellung;1.3.2026\nDatum des Eingangs;1.2.2026\nCertificate date;2.3.2026\n"
      "Zertifikatsdatum;2.3.2026\nDatum;5.3.2026\nCertificate no;C 1\nPage: 1/3\n\nMHz;%\n50;98\n");
  EXPECT_EQ(IsoDate(read.header.calDate->date), "2026-03-05");
  EXPECT_EQ(read.header.calibrationNumber->text, "C 1");
  EXPECT_EQ(read.tables.at(0).page, "") << "a page of paper is not a page of a set";
  EXPECT_EQ(read.doubts, Texts());
}

TEST(CsvCertificate, TwoDatesOfOneEventAreADoubt) {
  const Certificate read = Read("Datum;5.3.2026\nKalibrierdatum;6.3.2026\nCal date;5.3.2026\n");
  EXPECT_EQ(IsoDate(read.header.calDate->date), "2026-03-05");
  EXPECT_EQ(read.doubts, Texts{"There are two calibration dates: 2026-03-05 (line 1), which is "
                               "used, and 2026-03-06 (line 2)."});
}

TEST(CsvCertificate, ATextThatIsNotADateIsKeptForTheUser) {
  const Certificate read =
      Read("Some Laboratory\nCalibration date;5.3.26\nDue;31.2.2027\n\n50;98\n");
  EXPECT_FALSE(read.header.calDate);
  EXPECT_EQ(read.header.unreadCalDate->text + ", " + read.header.unreadCalDate->where,
            "5.3.26, line 2");
  EXPECT_EQ(read.header.unreadDueDate->text, "31.2.2027");
  EXPECT_EQ(read.notes, Texts{"Text that no field takes is not used: line 1."});
}

TEST(CsvCertificate, LinesWithNumbersOrDatesAreQuotedAndOtherTextIsCountedUp) {
  const Certificate read = Read(
      "Some Laboratory\nOld Road 5\n12345 Town\n\nTemperature;;23.1 °C\nIssued: 5.3.2026\n"
      "Customer;ACME\nf;KF\n50;98\nEnd of page 1\n");
  EXPECT_EQ(read.notes,
            (Texts{"Line 5 is not used, because no field takes it: \"Temperature; 23.1 °C\".",
                   "Line 6 is not used, because no field takes it: \"Issued: 5.3.2026\".",
                   "Text that no field takes is not used: lines 1 to 3, 7, 10."}));
}

TEST(CsvCertificate, ARowWithoutAValueOrAPointDoesNotEndATable) {
  const Certificate read = Read("f [MHz];KF [%]\n50;\n60;98\n70\n;97\n80;n/a\n90;96\n");
  ASSERT_EQ(read.tables.size(), 1U);
  EXPECT_EQ(Column(read, 0), (Texts{"50 MHz", "60 MHz", "70 MHz", "", "80 MHz", "90 MHz"}));
  EXPECT_EQ(Column(read, 1), (Texts{"", "98 %", "", "97 %", "n/a", "96 %"}));
  const Certificate members = Read("Member;Nominal;R\nA;1 Ω;2 Ω\nB;1 Ω;\nC;1 Ω;n/a\nPage 2\n");
  EXPECT_EQ(Column(members, 0), (Texts{"A", "B", "C"}));
}

TEST(CsvCertificate, ARowWhosePointBecameADateDoesNotEndATable) {
  const Certificate read = Read("f [GHz];KF [%]\n1,2;98\n01. Mai;97\n1,8;96\nMean;97\nEnd;1\n");
  ASSERT_EQ(read.tables.size(), 1U);
  EXPECT_EQ(Column(read, 0), (Texts{"1.2 GHz", "01. Mai", "1.8 GHz"}));
}

TEST(CsvCertificate, BlankLinesDoNotEndATable) {
  const Certificate read = Read("f [MHz];KF [%]\n\n50;98\n;\n\n100;97\n200;\"96\"\n");
  ASSERT_EQ(read.tables.size(), 1U);
  EXPECT_EQ(Column(read, 0), (Texts{"50 MHz", "100 MHz", "200 MHz"}));
  EXPECT_EQ(read.tables[0].rowLines, (std::vector<std::size_t>{3, 6, 7}));
}

TEST(CsvCertificate, ATableThatBeginsAgainHasTheCaptionsAboveIt) {
  const Certificate read =
      Read("f [kHz];C [pF]\n1;1.0\n10;1.1\n\n1;10.0\n\nRT523A\n1;100\n\nx;y;z\n1;1000\n");
  ASSERT_EQ(read.tables.size(), 4U);
  const auto caption = [&](std::size_t table) {
    return read.tables[table].columns[1].caption.front().text;
  };
  EXPECT_EQ(caption(1), "C [pF]");
  EXPECT_EQ(caption(2), "C [pF]");
  EXPECT_EQ(read.tables[2].name.front().text, "RT523A");
  EXPECT_EQ(caption(3), "y");
}

TEST(CsvCertificate, EachSerialNumberIsThatOfAnInstrumentWithTheTablesBelowIt) {
  const Certificate read = Read(
      "Model;M\nSerial number;A\nMHz;%\n1;98\n\nSerial number;B\nMHz;%\n2;98\n\nSerial number;A\n"
      "S/N;C\nMHz;%\n3;98\n");
  Texts serials;
  for (const CertificateItem& item : read.items) {
    serials.push_back(item.serialNumber + item.model + ", " + item.where);
  }
  EXPECT_EQ(serials, (Texts{"AM, line 10", "B, line 6", "C, line 11"}));
  ASSERT_EQ(read.tables.size(), 3U);
  EXPECT_EQ(read.tables[0].item, 0U);
  EXPECT_EQ(read.tables[1].item, 1U);
  EXPECT_FALSE(read.tables[2].item) << "two serial numbers are above it";
}

/// The instruments that the rows of tables name: "serial number model: points of its table".
Texts Instruments(const Certificate& read) {
  Texts instruments;
  for (const CertificateTable& table : read.tables) {
    const CertificateItem& item = read.items.at(table.item.value());
    std::string text = item.serialNumber + " " + item.model + ":";
    const std::size_t points = table.columns.size() - 2;
    for (const WrittenValue& value : table.columns.at(points).series.front().values) {
      text += " " + value.text;
    }
    instruments.push_back(text);
  }
  return instruments;
}

TEST(CsvCertificate, RowsThatNameTheirInstrumentAreTablesOfTheirOwn) {
  EXPECT_EQ(Instruments(Read("S/N;Type;f [MHz];KF [%]\nA1;PX11A;50;98\n;;60;97\n1.234;PX12A;50;96\n"
                             "\nA1;PX11A;70;95\n")),
            (Texts{"A1 PX11A: 50 60 70", "1.234 PX12A: 50"}));
  EXPECT_EQ(Instruments(Read("Model;M\n\nf [MHz];KF [%];Serial no.\n50;98;A1\n50;97;A2\n")),
            (Texts{"A1 M: 50", "A2 : 50"}));
}

TEST(CsvCertificate, ColumnsOfDatesAndCertificateNumbersFillTheHeader) {
  const Certificate read = Read(
      "Serial no.;Cal date;Due date;Certificate;Frequency [MHz];KF [%]\n"
      "A1;5.3.2026;5.3.2027;C 1;50;98\n;;5.3.2027;;60;97\n");
  EXPECT_EQ(Instruments(read), Texts{"A1 : 50 60"});
  EXPECT_EQ(IsoDate(read.header.calDate->date) + ", " + read.header.calDate->where,
            "2026-03-05, line 2");
  EXPECT_EQ(IsoDate(read.header.dueDate->date), "2027-03-05");
  EXPECT_EQ(read.header.calibrationNumber->text, "C 1");
  EXPECT_EQ(read.tables.at(0).columns.size(), 2U) << "nothing else is left in the table";
  const Certificate without = Read("Due date;f [MHz];KF [%]\n5.3.2027;50;98\n6.3.2027;60;97\n");
  EXPECT_FALSE(without.header.dueDate);
  EXPECT_EQ(Column(without, 1), (Texts{"98 %", "97 %"}));
  EXPECT_EQ(without.notes,
            Texts{"The column \"Due date\" (line 1) is not used, because it has several values."});
}

TEST(CsvCertificate, AListOfTheStandardsThatWereUsedSaysNothingAboutTheInstrument) {
  const std::string results = "\nf [MHz];KF [%]\n50;98\n";
  const Certificate texts = Read(
      "Standard used;Serial number;Certificate;Cal due\nPower meter;GB123;C-77;2026-12-31\n"
      "Reference standard cal due;2026-12-31\n" +
      results);
  EXPECT_TRUE(texts.items.empty());
  EXPECT_FALSE(texts.header.calibrationNumber);
  EXPECT_FALSE(texts.header.dueDate);
  const Certificate counted =
      Read("No.;Equipment;Certificate;Cal due\n1;Power meter;C-77;2026-12-31\n" + results);
  EXPECT_FALSE(counted.header.calibrationNumber);
  EXPECT_FALSE(counted.header.dueDate);
}

TEST(CsvCertificate, SeveralKeysMayBeInOneLine) {
  const Certificate read =
      Read("Date of calibration: 2026-03-05;;Due: 2027-03-05;Serial no.:;A1\n\nMHz;%\n50;98\n");
  EXPECT_EQ(IsoDate(read.header.calDate->date), "2026-03-05");
  EXPECT_EQ(IsoDate(read.header.dueDate->date), "2027-03-05");
  EXPECT_EQ(read.items.at(0).serialNumber, "A1");
  const Certificate beside = Read(
      "Cal date:;March 5, 2026;Cal due:;March 5, 2027\nTemperature:;23.0 °C;Humidity:;45 %\n\n"
      "MHz;%\n50;98\n");
  EXPECT_EQ(IsoDate(beside.header.calDate->date), "2026-03-05");
  EXPECT_EQ(IsoDate(beside.header.dueDate->date), "2027-03-05");
  EXPECT_EQ(beside.tables.size(), 1U) << "the next line has no captions above it";
}

TEST(CsvCertificate, TheTitleOfATableIsUsed) {
  EXPECT_EQ(
      Read("Laboratory\nRT521A\n\nMHz;%\n50;98\n\nRT522A\nMember serial;M\nMHz;%\n1;2\n").notes,
      Texts{"Text that no field takes is not used: line 1."});
  EXPECT_EQ(Read("RT521A\nPage;RT522A\nMHz;%\n50;98\nEnd\n").notes,
            Texts{"Text that no field takes is not used: lines 1, 5."});
}

TEST(CsvCertificate, ANumberOfTheRowOrOfASeriesIsNoSerialNumber) {
  for (const std::string_view column :
       {"Serial no.;f;KF\n1;50;98\n2;60;97\n", "Série;f;KF\nA1;50;98\nA1;60;97\nA2;70;96\n"}) {
    const Certificate read = Read(column);
    EXPECT_TRUE(read.items.empty()) << column;
    EXPECT_EQ(read.tables.size(), 1U) << column;
  }
}

TEST(CsvCertificate, MillihertzAreReadAsMegahertzOnlyWithADoubt) {
  const Certificate read = Read("f [mHz];KF [%]\n50;98\n60 mHz;97\n");
  EXPECT_EQ(Column(read, 0), (Texts{"50 MHz", "60 MHz"}));
  EXPECT_EQ(read.doubts, Texts{"The file has frequencies in \"mHz\", which is millihertz. They are "
                               "read as MHz."});
  EXPECT_TRUE(Read("f [mhz];KF [%]\n50;98\n").doubts.empty());
}

TEST(CsvCertificate, AFileOfSeparatorsNeedsNoMemoryAndOneOfCellsIsRefused) {
  EXPECT_TRUE(Read(std::string(4U << 20U, ';')).tables.empty());
  std::string cells = "f;KF\n";
  for (int i = 0; i < 250'000; ++i) {
    cells += i % 1000 == 999 ? "1;2\n" : "1;2;";
  }
  EXPECT_TRUE(Contains(ErrorOf([&] { Read(cells); }).Text(),
                       "Up to line 251, the file has more than 500000 cells and lines"));
}

TEST(CsvCertificate, FewBytesDoNotBecomeManyCells) {
  // Each of 5,000 values would get this megabyte as its unit.
  std::string text = "f [" + std::string(1'000'000, 'x') + "];KF [%]\n";
  for (int i = 0; i < 5'000; ++i) {
    text += "1;2\n";
  }
  EXPECT_EQ(Read(text).tables.at(0).columns.at(0).caption.front().text.size(), 203U);
  // Each of 20,000 lines would look for names in 20,000 captions.
  std::string wide;
  for (int i = 0; i < 20'000; ++i) {
    wide += "a;";
  }
  wide += "a\n1;2\n";
  for (int i = 0; i < 20'000; ++i) {
    wide += "x\n";
  }
  EXPECT_TRUE(Contains(ErrorOf([&] { Read(wide); }).Text(), "more than 1000 columns"));
  std::string filled = std::string(999, ';') + "a\n";
  for (int i = 0; i < 501; ++i) {
    filled += "1;2\n";
  }
  EXPECT_TRUE(Contains(ErrorOf([&] { Read(filled); }).Text(), "more than 500000 cells"));
}

TEST(CsvCertificate, BytesThatAreNotTextAreRefused) {
  EXPECT_TRUE(
      Contains(ErrorOf([] { Read(std::string("a;b\0c\n1;2\n", 10)); }).Text(), "not a text"));
  EXPECT_TRUE(Contains(ErrorOf([] { Read(std::string((4U << 20U) + 1, ';')); }).Text(), "larger"));
}

TEST(WrittenDate, ReadsTheFormsThatPeopleWrite) {
  for (const std::string_view text : {"2026-03-05",
                                      "20260305",
                                      "2026/3/5",
                                      "2026-03-05T23:00:00Z",
                                      "2026-03-05Z",
                                      "2026-03-05+01:00",
                                      "5.3.2026",
                                      "05. 03. 2026",
                                      "5-3-2026",
                                      "5/3/2026",
                                      "5 MAR 2026",
                                      "05-Mar-2026",
                                      "March 5, 2026",
                                      "5. M\u00E4rz 2026",
                                      "5 mars 2026",
                                      "5 marzo 2026",
                                      "5 de marzo de 2026",
                                      "March 5th, 2026",
                                      "Thursday, 5 March 2026",
                                      "Thu 5/3/2026",
                                      "Donnerstag, 5. M\u00E4rz 2026",
                                      "Do, 05.03.2026",
                                      "gioved\u00EC 5 marzo 2026"}) {
    const std::optional<FileDate> date = DateFrom(text, DateOrder::DayFirst);
    EXPECT_EQ(date ? IsoDate(*date) : "none", "2026-03-05") << text;
  }
  for (const std::string_view text :
       {"", "5.3.26", "29.2.2026", "5 MARCH", "12345678", "a/b/2026"}) {
    EXPECT_FALSE(DateFrom(text, DateOrder::DayFirst)) << text;
  }
}

TEST(WrittenDate, AMonthAndADayMayBeginAlike) {
  EXPECT_EQ(DateFrom("Mar 5, 2026", DateOrder::DayFirst)->month, 3);
  EXPECT_EQ(DateFrom("mar. 5 mai 2026", DateOrder::DayFirst)->month, 5);
  EXPECT_EQ(DateFrom("1er mai 2026", DateOrder::DayFirst)->day, 1);
}

TEST(WrittenDate, NumbersBetweenHyphensHaveTheGivenOrder) {
  EXPECT_EQ(DateFrom("03-05-2026", DateOrder::MonthFirst)->month, 3);
  EXPECT_EQ(DateFrom("03.05.2026", DateOrder::MonthFirst)->month, 5);
}

TEST(WrittenDate, AYearOfTwoDigitsIsRecognized) {
  for (const std::string_view text : {"05-Mar-26", "5.3.26", "3/25/26", "26-03-05"}) {
    EXPECT_TRUE(HasShortYear(text)) << text;
  }
  for (const std::string_view text : {"5.3.2026", "31.13.26", "Room 26", "26", ""}) {
    EXPECT_FALSE(HasShortYear(text)) << text;
  }
}

TEST(Units, AreFoundInCaptions) {
  for (const auto& [caption, unit] :
       std::vector<std::pair<std::string, std::string>>{{"Frequency [MHz]", "MHz"},
                                                        {"Unc. (k=2) (%)", "%"},
                                                        {"Frequenz / GHz", "GHz"},
                                                        {"C in F", "F"},
                                                        {"Cal Factor %", "%"},
                                                        {"R (\u03A9)", "\u03A9"},
                                                        {"Cal. factor [%] (1)", "%"},
                                                        {"Factor (1)", "1"},
                                                        {"Step 10-20 [dB]", "dB"},
                                                        {"Gain x100-500 [dB]", "dB"},
                                                        {"Channel A", ""},
                                                        {"Dissipation factor", ""}}) {
    EXPECT_EQ(UnitOfCaption(caption), unit) << caption;
    EXPECT_EQ(UnknownUnitOf(caption), "") << caption;
  }
}

TEST(Units, ThatAreNotKnownAreFoundInTheirPlace) {
  for (const auto& [caption, unit] : std::vector<std::pair<std::string, std::string>>{
           {"f [xHz]", "xHz"},
           {"f (k=2) [cycles]", "cycles"},
           {"tan \u03B4 \u00D7 10^-6", "10^-6"},
           {"D [10-6]", "10-6"},
           {"D (x10-4)", "10-4"},
           {"D (1E-6)", "1E-6"},
           {"D x1e-06", "1e-06"},
           {"D \u00B710\u207B\u2076", "10\u207B\u2076"},
           {"C / 10\u207B\u00B9\u00B2 F", "10\u207B\u00B9\u00B2"},
           {"Frequency / xyz", "xyz"},
           {"Frequency in kc", "kc"},
           {"Frequency (kHz/s)", "kHz/s"},
           {"Frequency (qHz)", "qHz"},
           {"Factor (mean)", ""},
           {"Factor (k=2)", ""},
           {"Uncertainty [k=2]", ""},
           {"Uncertainty / k=2", ""},
           {"Cal factor (CF)", ""},
           {"Frequency", ""}}) {
    EXPECT_EQ(UnknownUnitOf(caption), unit) << caption;
  }
}

TEST(Units, OfOneQuantityDifferByAPowerOfTen) {
  struct Case {
    std::string one;
    std::string other;
    int power;
  };
  for (const Case& each : std::vector<Case>{
           {"GHz", "Hz", 9},
           {"mhz", "Hz", 6},
           {"mHz", "Hz", -3},
           {"\\milli\\hertz", "Hz", -3},
           {"\u00B5F", "F", -6},
           {"k\u2126", "ohm", 3},
           {"%", "ppm", 4},
           {"\\mega\\hertz", "Hz", 6},
           {"\\second\\tothe{-1}", "Hz", 0},
           {"\\kilo\\per\\second", "Hz", -3},
           {"\\ampere\\tothe{-2}\\kilogram\\metre\\tothe{2}\\second\\tothe{-3}", "ohm", 0},
           {"\\kilogram\\tothe{-1}\\metre\\tothe{-2}\\second\\tothe{4}\\ampere\\tothe{2}", "F", 0},
           {"\\degreeCelsius", "\u00B0C", 0}}) {
    const std::optional<Unit> one = UnitFrom(each.one);
    const std::optional<Unit> other = UnitFrom(each.other);
    ASSERT_TRUE(one && other) << each.one;
    EXPECT_TRUE(one->IsLike(*other)) << each.one;
    EXPECT_EQ(one->power - other->power, each.power) << each.one;
  }
  EXPECT_FALSE(UnitFrom("dB")->IsLike(*UnitFrom("%")));
  for (const std::string_view text : {"", "xyz", "\\mega", "\\hertz\\tothe{99}", "\\tothe{2}"}) {
    EXPECT_FALSE(UnitFrom(text)) << text;
  }
}

TEST(Units, ConversionKeepsTheDigits) {
  EXPECT_EQ(Shifted("0.9850", 2), "98.50");
  EXPECT_EQ(Shifted("-98.5", -2), "-0.985");
  EXPECT_EQ(Shifted("5.0E7", -6), "50");
  EXPECT_EQ(Shifted("1.00027E-6", 6), "1.00027");
  EXPECT_EQ(Shifted("100", 3), "100000");
  EXPECT_EQ(Shifted("1.5D3", 2), "150000");
  EXPECT_EQ(Shifted("0", 3), "0");
  EXPECT_EQ(Shifted("1E300", 0), "1E300");
}

}  // namespace tarvell::test
