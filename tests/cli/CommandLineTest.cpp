// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/caldata/Models.h"
#include "core/text/FileCharacters.h"
#include "support/TestTree.h"

namespace tarvell::cli {
namespace {

using test::Lines;

constexpr std::time_t kNow = 1795329121;  // 22 NOV 2026 06:32:01 UTC
constexpr const char* kSensor = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kInstrument = R"(c:\stations\BENCH1\PX12A)";

class TestConsole final : public Console {
 public:
  void Out(std::string_view text) override {
    if (failure) {
      failure();
    }
    out += text;
  }
  void Err(std::string_view text) override { err += text; }
  [[nodiscard]] bool ErrIsTerminal() const override { return isTerminal; }

  std::string out;
  std::string err;
  bool isTerminal = false;
  std::function<void()> failure;  ///< throws while something is written
};

std::string Sensor(const std::string& due, const std::string& factor,
                   const std::string& comment = "certificate") {
  return Lines(
      {"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : 20260305", "#CAL_NO   : C-0042",
       "#DUE_DATE : " + due, "#COMMENT  : " + comment, "!", "!",
       "!        :              : Reflection Coefficient",
       "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)",
       "*      50:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  ",
       "*     100:     " + factor + "     :    0.0    :     0.0    :    0.0    :     0.0  ",
       "!End"});
}

/// Runs the program in a laboratory with one data set and one station.
class CommandLine : public testing::Test {
 protected:
  CommandLine() {
    tree_.Write(R"(c:\windows\tarvell.ini)",
                Lines({";", ";", ";", "[Tarvell]", "SysRevision=A.02.61", "", "[Calfactors]",
                       "Dir=c:\\calfactors", "", "[Stations]", "Dir=c:\\stations"}));
    tree_.Write(kSensor, Sensor("20270305", "99.8"));
    tree_.Write(R"(c:\stations\INDEX)", Lines({"BENCH1"}));
    tree_.Write(R"(c:\stations\BENCH1\INDEX)", Lines({"PX12A", "INDEX"}));
    WriteInstrument("5 MAR 2027");
  }

  void WriteInstrument(const std::string& due) const {
    tree_.Write(kInstrument, Lines({"MODEL NUMBER PX12A", "SERIAL NUMBER 3318A12345",
                                    "ADDRESS TYPE GP-IB", "ADDRESS 713", "STATION BENCH1",
                                    "OPTIONS ", "AVAILABILITY YES", "CAL DUE DATE " + due, "ASSET ",
                                    "TRACE ", "COMMENT certificate", "CAL DATA "}));
  }

  int Run(std::vector<std::string> arguments) {
    console_.out.clear();
    console_.err.clear();
    if (arguments.at(0) == "check" || arguments.at(0) == "due" || arguments.at(0) == "export") {
      arguments.insert(arguments.end(), {"--today", "2026-11-22"});
    }
    return RunCommandLine(arguments, kNow, console_);
  }

  const test::TestTree tree_;
  TestConsole console_;
};

TEST_F(CommandLine, CheckReportsFindingsAndEndsWithOne) {
  EXPECT_EQ(Run({"check"}), kClean);
  EXPECT_EQ(console_.out, "0 findings in 2 files.\n");

  WriteInstrument("5 MAR 2026");
  EXPECT_EQ(Run({"check"}), kFindings);
  EXPECT_EQ(console_.out,
            "due date differs  c:\\stations\\BENCH1\\PX12A  3318A12345  The station says 5 MAR "
            "2026, the data set 5 MAR 2027. Update the station.\n"
            "1 finding in 2 files.\n");
  EXPECT_EQ(Run({"check", "--quiet"}), kFindings);
  EXPECT_EQ(console_.out + console_.err, "");
}

TEST_F(CommandLine, CheckCountsDataSetsThatNoStationUsesAndListsThemWhenAsked) {
  std::filesystem::remove(tree_.Native(kInstrument));
  tree_.Write(R"(c:\stations\BENCH1\INDEX)", Lines({"INDEX"}));
  EXPECT_EQ(Run({"check"}), kClean);
  EXPECT_EQ(console_.out,
            "0 findings in 1 file.\n"
            "1 data set is used by no station; --unused lists them.\n");
  EXPECT_EQ(Run({"check", "--unused"}), kFindings);
  EXPECT_EQ(console_.out.find("not used  c:\\calfactors\\PX12A\\SN12345  3318A12345  "), 0U);
}

TEST_F(CommandLine, CheckEndsWithTwoWhereItCannotLook) {
  EXPECT_EQ(Run({"check", "--stations", "c:\\gone"}), kCouldNotLook);
  EXPECT_EQ(console_.err.find("tarvell-cli: c:\\gone: Cannot list the folder"), 0U);
}

TEST_F(CommandLine, ReportsAFolderThatItCannotListAndPrintsWhatItHasRead) {
  tree_.Write(kSensor, Sensor("20261121", "99.8"));
  std::filesystem::create_directory_symlink("nowhere", tree_.Native("c:\\calfactors\\PX13A"));
  for (const auto& [command, printed] :
       std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"check"}, "past due"},
           {{"due"}, "2026-11-21  -1 "},
           {{"due", "--json"}, "\"complete\":false"},
           {{"export", "--csv"}, ",2026-11-21,"},
           {{"export", "--ics"}, "DATE:20261121\r\n"}}) {
    EXPECT_EQ(Run(command), kCouldNotLook) << printed;
    EXPECT_NE(console_.out.find(printed), std::string::npos) << console_.out;
    EXPECT_EQ(console_.err.find("tarvell-cli: c:\\calfactors\\PX13A: Cannot list the folder"), 0U);
  }
}

TEST_F(CommandLine, ReportsAModelFolderThatItCannotListAlsoIfItIsCalledIndex) {
  std::filesystem::create_directory_symlink("nowhere", tree_.Native("c:\\calfactors\\INDEX"));
  EXPECT_EQ(Run({"check"}), kCouldNotLook);
  EXPECT_EQ(console_.err.find("tarvell-cli: c:\\calfactors\\INDEX: Cannot list the folder"), 0U);
}

TEST_F(CommandLine, ReportsAFileWhoseDueDateItCannotRead) {
  for (const std::string& bytes :
       {Sensor("202703", "99.8"), Sensor("20270305", "99.8").substr(0, 60)}) {
    tree_.Write(kSensor, bytes);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"due"}, {"due", "-q"}, {"export", "--ics"}}) {
      EXPECT_EQ(Run(command), kCouldNotLook);
      EXPECT_EQ(console_.err.find("tarvell-cli: c:\\calfactors\\PX12A\\SN12345: "), 0U);
    }
  }
  EXPECT_EQ(Run({"check"}), kFindings);
  EXPECT_EQ(Run({"export", "--csv"}), kClean) << "the table has a row for the file";
}

TEST_F(CommandLine, DueListsWhatIsDueWithinTheTime) {
  EXPECT_EQ(Run({"due"}), kClean);
  EXPECT_EQ(console_.out, "");
  EXPECT_EQ(Run({"due", "--within", "102d"}), kClean) << "5 MAR 2027 is in 103 days";
  for (const char* time : {"103", "103d", "15w"}) {
    EXPECT_EQ(Run({"due", "--within", time}), kFindings) << time;
  }
  EXPECT_EQ(console_.out,
            "Due         Days left  Model  Serial number  Calibration number  Stations\n"
            "2027-03-05  103        PX12A  3318A12345     C-0042              BENCH1\n");
}

TEST_F(CommandLine, RefusesArgumentsThatItDoesNotKnow) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"due", "--within", "3m"},
        {"check", "--csv"},
        {"check", "--json", "--quiet"},
        {"export", "--csv", "--ics"},
        {"check", "--stations", ""},
        {"export", "-o", ""},
        {"diff", kSensor, ""},
        {"look"}}) {
    EXPECT_EQ(Run(arguments), kCouldNotLook) << arguments.back();
    EXPECT_EQ(console_.out, "");
    EXPECT_NE(console_.err, "");
  }
  EXPECT_EQ(Run({"show", ""}), kCouldNotLook);
  EXPECT_EQ(console_.err.find("FILE: give the name of a file\n"), 0U) << console_.err;
  EXPECT_EQ(RunCommandLine({"due", "--today", "2026-02-29"}, kNow, console_), kCouldNotLook);
  EXPECT_EQ(RunCommandLine({"--help"}, kNow, console_), kClean);
}

TEST_F(CommandLine, AsksForAFileInAFolder) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"show", "c:\\calfactors"},
        {"diff", kSensor, "c:\\calfactors"},
        {"history", "c:\\calfactors"}}) {
    EXPECT_EQ(Run(arguments), kCouldNotLook);
    EXPECT_EQ(console_.err.find("tarvell-cli: It is a folder. Name a file in it."), 0U)
        << console_.err;
  }
}

TEST_F(CommandLine, EndsWithTwoAfterAFailureThatNobodyExpected) {
  console_.failure = [] { throw std::bad_alloc(); };
  EXPECT_EQ(Run({"check"}), kCouldNotLook);
  EXPECT_EQ(console_.err, "tarvell-cli: There is not enough memory to do this.\n");
  console_.failure = [] { throw std::runtime_error("a reason"); };
  EXPECT_EQ(Run({"check"}), kCouldNotLook);
  EXPECT_EQ(console_.err,
            "tarvell-cli: The program could not do this (a reason). Report this message to whoever "
            "looks after the program.\n");
}

TEST(StandardOutput, ThatCannotBeWrittenIsReported) {
  const auto write = [] {
    if (std::freopen("/dev/full", "w", stdout) == nullptr) {
      std::exit(1);
    }
    SystemConsole console;
    console.Out("a list");
    std::exit(console.Close() ? 0 : 2);
  };
  EXPECT_EXIT(write(), testing::ExitedWithCode(2),
              "^tarvell-cli: Standard output could not be written: No space left on device\\.\n$");
}

TEST_F(CommandLine, CutsALongSerialNumberInAColumn) {
  std::string bytes = Sensor("20261121", "99.8");
  const std::string serial = std::string(56, 'A') + "12345";
  bytes.replace(bytes.find("3318A12345"), 10, serial);
  tree_.Write(kSensor, bytes);
  EXPECT_EQ(Run({"due"}), kFindings);
  EXPECT_EQ(console_.out.find("PX12A  " + std::string(56, 'A') + "1...  C-0042 "),
            console_.out.find("PX12A"))
      << console_.out;
}

TEST_F(CommandLine, ShowKnowsAnInstrumentByItsKeywords) {
  tree_.Write(kInstrument, Lines({"SERIAL NUMBER 1", "MODEL NUMBER PX12A", "CAL DATA "}));
  EXPECT_EQ(Run({"show", kInstrument}), kClean);
  EXPECT_EQ(console_.out, "SERIAL NUMBER  1\nMODEL NUMBER   PX12A\nCAL DATA\n");
  tree_.Write(kInstrument, Lines({"SERIAL NUMBER 1", "SERIAL NUMBER 2", "OPTIONS "}));
  EXPECT_EQ(Run({"show", kInstrument}), kClean);
  EXPECT_EQ(console_.out.find("Model "), 0U) << "one keyword may be a text of a data file";
}

TEST_F(CommandLine, NamesTheCommandThatWasProbablyMeant) {
  const std::string all =
      " The commands are check, due, show, diff, export, history and import; \"tarvell-cli "
      "--help\" explains them.\n";
  for (const auto& [word, meant] :
       std::vector<std::pair<std::string, std::string>>{{"chek", " Did you mean \"check\"?"},
                                                        {"dif", " Did you mean \"diff\"?"},
                                                        {"historie", " Did you mean \"history\"?"},
                                                        {"calibrate", ""}}) {
    EXPECT_EQ(Run({word}), kCouldNotLook);
    EXPECT_EQ(console_.err, "tarvell-cli: \"" + word + "\" is not a command." + meant + all);
  }
}

TEST_F(CommandLine, ExportWritesOnlyTheFileThatItWasTold) {
  EXPECT_EQ(Run({"export", "--ics", "--output", "c:\\due.ics"}), kClean);
  EXPECT_EQ(console_.out, "");
  const std::string calendar = tree_.Read("c:\\due.ics");
  EXPECT_NE(calendar.find("\r\nDTSTART;VALUE=DATE:20270305\r\n"), std::string::npos);
  EXPECT_EQ(Run({"export", "--ics"}), kClean);
  EXPECT_EQ(console_.out, calendar);
  EXPECT_EQ(Run({"export", "--ics", "-o", "c:\\due.ics", "--stations", "c:\\gone"}), kCouldNotLook);
  EXPECT_EQ(tree_.Read("c:\\due.ics"), calendar) << "half a calendar replaces none";
}

TEST_F(CommandLine, ExportWritesEveryRowAsJson) {
  EXPECT_EQ(Run({"export", "--json"}), kClean);
  EXPECT_EQ(console_.out,
            R"({"format":"tarvell-survey","version":1,"today":"2026-11-22",)"
            R"("calibrationData":"c:\\calfactors","stationData":"c:\\stations",)"
            R"("complete":true,"filesRead":2,"rows":[)"
            "\n"
            R"({"kind":"data-set","path":"c:\\calfactors\\PX12A\\SN12345","model":"PX12A",)"
            R"("serialNumber":"3318A12345","calibrationNumber":"C-0042",)"
            R"("calibrated":"2026-03-05","due":"2027-03-05","daysLeft":103,)"
            R"("comment":"certificate","address":"","stations":["BENCH1"],"dataSet":null,)"
            R"("findings":[]},)"
            "\n"
            R"({"kind":"instrument","path":"c:\\stations\\BENCH1\\PX12A","model":"PX12A",)"
            R"("serialNumber":"3318A12345","calibrationNumber":"","calibrated":null,)"
            R"("due":"2027-03-05","daysLeft":103,"comment":"certificate","address":"GP-IB 713",)"
            R"("stations":["BENCH1"],"dataSet":"c:\\calfactors\\PX12A\\SN12345",)"
            R"("findings":[]})"
            "\n]}\n");
}

TEST_F(CommandLine, WritesUtf8AlsoOfNamesThatAreNot) {
  tree_.Write("c:\\stations\\B\xC4NK\\PX12A", tree_.Read(kInstrument));
  tree_.Write("c:\\stations\\B\xC4NK\\INDEX", Lines({"PX12A", "INDEX"}));
  EXPECT_EQ(Run({"check"}), kFindings);
  EXPECT_EQ(
      console_.out,
      "INDEX lacks a name  c:\\stations\\INDEX    INDEX lacks \"BÄNK\". Open the list of stations "
      "and leave it with Return to Main to save a new one.\n1 finding in 3 files.\n");
  tree_.Write("c:\\stations\\INDEX", Lines({"BENCH1", "B\xC4NK"}));
  EXPECT_EQ(Run({"check"}), kClean);
  for (const char* format : {"--csv", "--json", "--ics"}) {
    EXPECT_EQ(Run({"export", format}), kClean);
    EXPECT_TRUE(IsUtf8(console_.out)) << format;
    EXPECT_NE(console_.out.find("BÄNK"), std::string::npos) << format;
  }
}

TEST_F(CommandLine, ShowWritesHeaderAndTable) {
  EXPECT_EQ(Run({"show", kSensor}), kClean);
  EXPECT_EQ(console_.out,
            "Model               PX12A\n"
            "Serial number       3318A12345\n"
            "Calibration number  C-0042\n"
            "Calibrated          5 MAR 2026\n"
            "Due                 5 MAR 2027\n"
            "Comment             certificate\n"
            "\n"
            "Frequency  [MHz]  Calibration factor[%]\n"
            "50                100.0\n"
            "100               99.8\n");
  EXPECT_EQ(Run({"show", kInstrument}), kClean);
  EXPECT_EQ(console_.out.find("MODEL NUMBER   PX12A\nSERIAL NUMBER  3318A12345\n"), 0U);
  EXPECT_EQ(Run({"show", "c:\\gone"}), kCouldNotLook);
  EXPECT_EQ(Run({"show", "-q", kInstrument}), kClean);
  EXPECT_EQ(console_.out, "");
}

TEST_F(CommandLine, DiffComparesValuesNotBytes) {
  tree_.Write("c:\\a", Sensor("20270305", "99.8"));
  tree_.Write("c:\\b", Sensor("20270305", " 99.80"));
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kClean);
  EXPECT_EQ(Run({"diff", "--bytes", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out, "Byte 355, line 12  57  32\n");

  std::string third = Sensor("20280305", "99.9");
  third.replace(third.find("*      50"), 9, "*      60");
  tree_.Write("c:\\b", third);
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out,
            "Due                         5 MAR 2027  5 MAR 2028\n"
            "50                          50 | 100.0  (none)\n"
            "60                          (none)      60 | 100.0\n"
            "100, Calibration factor[%]  99.8        99.9\n");
}

TEST_F(CommandLine, DiffComparesTheDigitsOfDatesThatDoNotExist) {
  tree_.Write("c:\\a", Sensor("20261399", "99.8"));
  tree_.Write("c:\\b", Sensor("20261398", "99.8"));
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out, "Due  20261399 (no such day)  20261398 (no such day)\n");
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\a"}), kClean);
}

/// A capacitor set whose first row has this uncertainty.
std::string Capacitors(const std::string& uncertainty, bool hasSecondPage) {
  std::vector<std::string> lines = {
      "#MODEL_NO : RT520A",
      "#SER_NO   : 2519J00217",
      "#CAL_DATE : 20251104",
      "#CAL_NO   : CS-25-031",
      "#DUE_DATE : 20261104",
      "#COMMENT  : ",
      "#RT521A    :     2519J00218",
      "*        10000 :        1.00019pF :" + uncertainty + " :            0.00002 :   0.00010",
      "!END"};
  if (hasSecondPage) {
    lines.insert(
        lines.end(),
        {"#RT522A    :     2519J00219",
         "*        10000 :       10.00040pF :    0.0030 :            0.00001 :   0.00010", "!END"});
  }
  return Lines(lines);
}

TEST_F(CommandLine, DiffComparesUncertaintiesWhateverTheirUnits) {
  tree_.InstallTemplate("RT520A");
  tree_.Write("c:\\a", Capacitors("     0.010", true));
  tree_.Write("c:\\b", Capacitors("    0.0100", true));
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kClean) << console_.out;
  tree_.Write("c:\\b", Capacitors("    0.0101", true));
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out, "RT521A, 10000, Unc.  0.0100 %  101 ppm\n") << "as its row has it";
}

TEST_F(CommandLine, DiffReportsAMissingPageOnceAndWhatCouldNotBeRead) {
  tree_.Write("c:\\a", Capacitors("     0.010", true));
  tree_.Write("c:\\b", Capacitors("     0.010", false));
  EXPECT_EQ(Run({"diff", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out, "RT522A  serial number 2519J00219, 1 row  (none)\n");
  EXPECT_NE(console_.err.find("tarvell-cli: c:\\b: The file holds no page RT522A. It is empty.\n"),
            std::string::npos)
      << console_.err;
  EXPECT_EQ(Run({"diff", "-q", "c:\\a", "c:\\b"}), kFindings);
  EXPECT_EQ(console_.out + console_.err, "");
}

TEST_F(CommandLine, HistoryListsWhatAFileHasHeld) {
  const auto data = FindModel("PX12A")->create();
  data->LoadCalibrationDataFromFile(kSensor);
  data->SetCalDate(2026, "NOV", 20);
  data->SetCalibrationNumber("C-0099");
  data->SaveCalibrationDataToFile(kSensor);
  EXPECT_EQ(Run({"history", kSensor}), kClean);
  const std::size_t now = console_.out.find("\nnow ");
  const std::size_t until = console_.out.find("\nuntil 20");
  ASSERT_NE(until, std::string::npos) << console_.out;
  EXPECT_LT(now, console_.out.find("2026-11-20  2027-03-05  C-0099  "));
  EXPECT_LT(until, console_.out.find("2026-03-05  2027-03-05  C-0042  "));
  EXPECT_EQ(Run({"history", "-q", kSensor}), kClean);
  EXPECT_EQ(console_.out + console_.err, "");
  for (const char* wrong : {R"(c:\calfactors\PX12A\SN99999)", R"(c:\calfactors\PX99)"}) {
    EXPECT_EQ(Run({"history", wrong}), kCouldNotLook);
    EXPECT_EQ(console_.out, "");
    EXPECT_NE(console_.err.find(wrong), std::string::npos) << console_.err;
  }
}

TEST_F(CommandLine, ShowsABarOnlyToSomebodyWhoWatches) {
  EXPECT_EQ(Run({"check"}), kClean);
  EXPECT_EQ(console_.err, "");
  console_.isTerminal = true;
  EXPECT_EQ(Run({"check"}), kClean);
  EXPECT_TRUE(console_.err.starts_with("\r[" + std::string(40, ' ') + "] 0%")) << console_.err;
  EXPECT_TRUE(console_.err.ends_with(" \r"));
  EXPECT_EQ(Run({"check", "-q"}), kClean);
  EXPECT_EQ(console_.err, "");
}

// ---- Import.

constexpr const char* kCertificate =
    "Kalibrierschein Nr.;C-7\r\nTyp;PX12A\r\nSeriennummer;3318A12345\r\n"
    "Kalibrierdatum;05.03.2026\r\nNächste Kalibrierung;05.03.2027\r\n\r\n"
    "Frequenz [MHz];Kalibrierfaktor [%]\r\n50;100,0\r\n100;99,76\r\n";
// 99.76 is rounded.
const std::string kImported =
    Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : 20260305", "#CAL_NO   : C-7",
           "#DUE_DATE : 20270305", "#COMMENT  : ", "!", "!",
           "!        :              : Reflection Coefficient",
           "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)",
           "*   50.00:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  ",
           "*  100.00:     99.8     :    0.0    :     0.0    :    0.0    :     0.0  ", "!End"});

class ImportCommand : public CommandLine {
 protected:
  ImportCommand() {
    tree_.InstallTemplate("PX12A");
    std::filesystem::remove(tree_.Native(kSensor));
  }
  int Import(const std::string& certificate, std::vector<std::string> options = {}) {
    tree_.Write("c:\\new.csv", certificate);
    options.insert(options.begin(), {"import", "c:\\new.csv", "--model", "px12a"});
    return Run(options);
  }
  [[nodiscard]] bool HasSaved() const { return std::filesystem::exists(tree_.Native(kSensor)); }
  [[nodiscard]] bool Reported(const std::string& text) const {
    return console_.err.find(text) != std::string::npos;
  }
};

std::string With(std::string text, const std::string& part, const std::string& other) {
  return text.replace(text.find(part), part.size(), other);
}

TEST_F(ImportCommand, SavesACertificateAsANewDataSetAndReplacesOneOnlyIfItIsTold) {
  EXPECT_EQ(Import(kCertificate), kClean) << console_.err;
  EXPECT_EQ(console_.out, "Saved c:\\calfactors\\PX12A\\SN12345.\n");
  EXPECT_TRUE(Reported("99.76"));
  EXPECT_EQ(tree_.Read(kSensor), kImported);

  const std::string later = With(kCertificate, "99,76", "99,5");
  EXPECT_EQ(Import(later), kFindings);
  EXPECT_TRUE(Reported("already exists, with the serial number \"3318A12345\""));
  EXPECT_EQ(tree_.Read(kSensor), kImported);
  EXPECT_EQ(Import(later, {"--replace"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read(kSensor), With(kImported, " 99.8", " 99.5"));
  EXPECT_EQ(Run({"history", kSensor}), kClean);
  EXPECT_NE(console_.out.find("\nuntil 20"), std::string::npos) << "the earlier one is kept";
}

TEST_F(ImportCommand, SavesNothingThatTheCertificateDoesNotSay) {
  struct Case {
    std::string certificate;
    std::string reported;
    std::vector<std::string> answer;
  };
  for (const auto& [certificate, reported, answer] : std::vector<Case>{
           {With(kCertificate, "Kalibrierdatum", "Etwas"),
            "--calibrated",
            {"--calibrated", "2026-03-05"}},
           {With(kCertificate, "Nächste Kalibrierung", "Etwas"), "--due", {"--due", "2027-03-05"}},
           {With(kCertificate, "05.03.2026", "05-Mar-26"),
            "\"05-Mar-26\" (line 4) cannot be read. Give it with --calibrated.",
            {"--calibrated", "2026-03-05"}},
           {With(kCertificate, "Seriennummer", "Etwas"), "--serial", {"--serial", "3318A12345"}},
           {With(kCertificate, "Typ", "Serial number;B\r\nTyp"),
            "\"B\" (line 2), \"3318A12345\" (line 4). Give that of this instrument with --serial.",
            {"--serial", "3318A12345"}}}) {
    EXPECT_EQ(Import(certificate), kCouldNotLook) << reported;
    EXPECT_TRUE(Reported(reported)) << console_.err;
    EXPECT_FALSE(HasSaved()) << reported;
    EXPECT_EQ(Import(certificate, answer), kClean) << console_.err;
    EXPECT_EQ(tree_.Read(kSensor), kImported) << reported;
    std::filesystem::remove(tree_.Native(kSensor));
  }
}

TEST_F(ImportCommand, AsksHowToReadWhatHasTwoReadings) {
  const std::string certificate = With(With(kCertificate, "99,76", "99,760"), "100,0", "100,000");
  EXPECT_EQ(Import(certificate), kCouldNotLook);
  EXPECT_TRUE(Reported("--decimal point or --decimal comma")) << console_.err;
  EXPECT_FALSE(HasSaved());
  EXPECT_EQ(Import(certificate, {"--decimal", "comma"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read(kSensor), kImported);
}

TEST_F(ImportCommand, TakesADoubtfulCertificateOnlyIfItIsSure) {
  EXPECT_EQ(Import(kCertificate, {"--serial", "3318A99999"}), kFindings);
  EXPECT_TRUE(Reported("3318A12345") && Reported("--sure")) << console_.err;
  EXPECT_EQ(tree_.Names("c:\\calfactors\\PX12A"), std::vector<std::string>());
  EXPECT_EQ(Import(kCertificate, {"--serial", "3318A99999", "--sure"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read("c:\\calfactors\\PX12A\\SN99999"),
            With(kImported, "3318A12345", "3318A99999"));
}

TEST_F(ImportCommand, SaysForWhichModelACertificateWithoutATableIs) {
  tree_.InstallTemplate("RT520A");
  tree_.Write("c:\\new.csv", kCertificate);
  EXPECT_EQ(Run({"import", "c:\\new.csv", "--model", "RT520A"}), kCouldNotLook);
  EXPECT_TRUE(Reported("no table for the model RT520A")) << console_.err;
  EXPECT_TRUE(console_.err.starts_with(
      "tarvell-cli: c:\\new.csv: The certificate is for the model \"PX12A\", and"))
      << console_.err;
}

TEST_F(ImportCommand, ReportsAValueThatStandsOutBeforeItSavesIt) {
  const std::string certificate =
      With(kCertificate, "100;99,76\r\n",
           "100;99,8\r\n200;99,6\r\n300;79,4\r\n400;99,2\r\n500;99,0\r\n");
  EXPECT_EQ(Import(certificate), kFindings);
  EXPECT_TRUE(Reported("300 MHz, value \"79.4\"") && Reported("--sure")) << console_.err;
  EXPECT_FALSE(HasSaved());
  EXPECT_EQ(Import(certificate, {"--sure"}), kClean) << console_.err;
  EXPECT_TRUE(HasSaved());
}

TEST_F(ImportCommand, ChoosesNoColumnForTheUser) {
  const std::string certificate =
      With(With(With(kCertificate, "faktor [%]", "faktor 1 [%];kf 2 [%]"), "100,0", "100,0;100,0"),
           "99,76", "99,76;99,9");
  EXPECT_EQ(Import(certificate, {"--sure"}), kCouldNotLook);
  EXPECT_TRUE(Reported("\"Kalibrierfaktor 1 [%]\" or \"kf 2 [%]\"")) << console_.err;
  EXPECT_FALSE(HasSaved());
}

constexpr std::string_view kCaptions = "Frequenz [MHz];Kalibrierfaktor [%]\r\n";

/// A certificate with the header of kCertificate and these lines.
std::string CertificateWith(const std::string& lines) {
  const std::string header = kCertificate;
  return header.substr(0, header.find(kCaptions)) + lines;
}

TEST_F(ImportCommand, TakesTheTableThatTheUserNames) {
  const std::string captions(kCaptions);
  const std::string certificate =
      CertificateWith("As left\r\n" + captions + "50;100,0\r\n100;99,76\r\n\r\nAs found\r\n" +
                      captions + "50;100,0\r\n100;97,2\r\n");
  EXPECT_EQ(Import(certificate, {"--sure"}), kCouldNotLook);
  EXPECT_TRUE(
      Reported("Repeat the command with --table and the title or the number of the table. The "
               "certificate has 1 \"As left\" (line 9), 2 \"As found\" (line 14)."))
      << console_.err;
  EXPECT_FALSE(HasSaved());
  EXPECT_EQ(Import(certificate, {"--table", "3"}), kCouldNotLook);
  EXPECT_TRUE(Reported("The certificate has no table \"3\". It has 1 \"As left\"")) << console_.err;
  EXPECT_EQ(Import(certificate, {"--table", "as LEFT"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read(kSensor), kImported);
  EXPECT_EQ(Import(certificate, {"--table", "2", "--replace"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read(kSensor), With(kImported, " 99.8", " 97.2"));
}

TEST_F(ImportCommand, JoinsTheTablesThatTheUserNames) {
  const std::string captions(kCaptions);
  const std::string certificate = CertificateWith(
      "Channel A\r\n" + captions + "50;100,0\r\n\r\nChannel B\r\n" + captions + "100;99,76\r\n");
  EXPECT_EQ(Import(certificate, {"--table", "channel", "--sure"}), kCouldNotLook)
      << "it names both";
  EXPECT_EQ(Import(certificate, {"--table", "1", "--table", "2"}), kClean) << console_.err;
  EXPECT_EQ(tree_.Read(kSensor), kImported);
}

TEST_F(ImportCommand, TakesASetWithoutAllItsValuesOnlyIfItIsSure) {
  struct Case {
    std::string file;
    std::string model;
    std::string saved;
    std::string reported;
  };
  const auto examples = std::filesystem::path(TARVELL_EXAMPLE_FOLDER) / "certificates";
  for (const auto& [file, model, saved, reported] :
       std::vector<Case>{{"capacitors-switzerland.csv", "RT520A", "SN00217",
                          "12 of the 32 values of the page \"RT521A\""},
                         {"resistors-usa.tsv", "RT730A", "SN00154",
                          "9 of the 27 values of the page \"DC Registance\""},
                         {"capacitors-3.3.xml", "RT520C", "SN00093",
                          "12 of the 20 values of the page \"RT525A\""}}) {
    tree_.InstallTemplate(model);
    const std::string path = "c:\\calfactors\\" + model + "\\" + saved;
    const std::string certificate = (examples / file).string();
    EXPECT_EQ(Run({"import", certificate, "--model", model}), kFindings) << file;
    EXPECT_TRUE(Reported(reported) && Reported("--sure")) << console_.err;
    EXPECT_FALSE(tree_.Exists(path)) << file;
    EXPECT_EQ(Run({"import", certificate, "--model", model, "--sure"}), kClean) << console_.err;
    EXPECT_TRUE(Reported(reported)) << console_.err;
    EXPECT_EQ(tree_.Read(path),
              test::ReadNative(examples / "expected" / std::filesystem::path(file).stem()));
  }
}

TEST_F(ImportCommand, SaysThatAnExportAsJsonIsNotImported) {
  EXPECT_EQ(Import("{\n  \"format\": \"tarvell-data-set\",\n  \"version\": 1\n}\n"), kCouldNotLook);
  EXPECT_TRUE(Reported("exported as JSON, for other programs. Export the data set as CSV"))
      << console_.err;
}

TEST_F(ImportCommand, NamesTheModelsThatItKnows) {
  EXPECT_EQ(Run({"import", "c:\\new.csv", "--model", "PX99"}), kCouldNotLook);
  EXPECT_TRUE(Reported("\"PX99\". Name one of RT520A, ")) << console_.err;
}

TEST(TextTables, PutColumnsBelowEachOtherByCharactersAndDropControls) {
  TextTable table;
  table.Add({"Prüfung", "a", ""});
  table.Add({"\x1B[31m", "b", "c"});
  EXPECT_EQ(table.Text(), "Prüfung  a\n [31m    b  c\n");
}

}  // namespace
}  // namespace tarvell::cli
