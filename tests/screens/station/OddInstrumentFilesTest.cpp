// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using CutOffInstrument = StationStage;

TEST_F(CutOffInstrument, IsReportedAndNotReplacedWithoutAQuestion) {
  const std::string whole = InstrumentFile().Bytes();
  const std::string cutOff = whole.substr(0, whole.find("CAL DATA"));
  WriteInstrument("PX12A", cutOff);
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    const auto notice = [&] {
      Settle();
      return Find<QLabel>(screen, "lblNotice").text().toStdString();
    };
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(notice(),
              "The file does not end with its line \"CAL DATA\": it may be cut off. Its last line "
              "was not read: line 11, \"COMMENT own\". What is shown for COMMENT is not from the "
              "file.");
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_EQ(notice(), "");
    Fill(screen, "txtData_11", "");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "") << "what the screen showed before";
    Fill(screen, "txtData_9", "A-78");
    questions_.Expect({.text = "The end of the file ST1\\PX12A is missing, and its last line was "
                               "not read. Do you want to replace it?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::No);
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailContains("What would be replaced:\nCOMMENT: own\n"));
    EXPECT_EQ(ReadInstrument("PX12A"), cutOff);
    Fill(screen, "txtData_11", "own");
    Click(screen, "btnSave");
    EXPECT_EQ(notice(), "");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.asset = "A-78", .calData = ""}).Bytes());
}

using NameOfAnOlderSystem = StationStage;

TEST_F(NameOfAnOlderSystem, IsShownInCharactersAndKeptInItsBytesByASave) {
  const std::string name = "P\xC4Z";
  WriteInstrument(name, Lines({"MODEL NUMBER " + name, "CAL DUE DATE 5 MAR 2002", "CAL DATA "}));
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PÄZ"});
    ClickEntry(screen, "LstInstrment", "PÄZ");
    Settle();
    EXPECT_EQ(Find<QLabel>(screen, "lblNotice").text(), "");
    Fill(screen, "txtData_9", "A-78");
    Click(screen, "btnSave");
    EXPECT_EQ(tree_.Names(kStation), Texts{name});
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(Contains(ReadInstrument(name), "ASSET A-78\r\n"));
  EXPECT_EQ(tree_.Read(kIndex), name + "\r\nINDEX\r\n");
}

}  // namespace
}  // namespace tarvell
