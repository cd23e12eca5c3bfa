// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "screens/station/StationFixture.h"
#include "support/AnotherProcess.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Two visits of the station screens at once.
class TwoVisits : public StationStage {};

TEST_F(TwoVisits, ToAStationBothStayInItsIndex) {
  WriteInstrument();
  WriteInstrument("PX60H", InstrumentFile{.model = "PX60H"}.Bytes());
  AtStation([&](frmStationModelList& screen) {
    InAnotherProcess([&] {
      WriteInstrument("RT730A", InstrumentFile{.model = "RT730A"}.Bytes());
      WriteStationInstrumentIndex(kStation, {"PX12A", "PX60H", "RT730A", "UNSAVED"});
    });
    ClickEntry(screen, "LstInstrment", "PX60H");
    ExpectDeleteInstrumentQuestion("PX60H", QMessageBox::Ok);
    Click(screen, "btnDelete");
    InAnotherProcess([&] { WriteInstrument("PX11A", InstrumentFile{.model = "PX11A"}.Bytes()); });
    LeaveUnsaved(screen);
  });
  const std::string index = tree_.Read(kIndex);
  const std::string end = "PX11A\r\nUNSAVED\r\nINDEX\r\n";
  // The first two are in the order of the directory.
  EXPECT_TRUE(index == "PX12A\r\nRT730A\r\n" + end || index == "RT730A\r\nPX12A\r\n" + end)
      << index;
}

TEST_F(TwoVisits, DoNotBringBackWhatThisOneDeleted) {
  WriteInstrument({.model = "PX13A"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    Click(screen, "btnSave");
    ClickEntry(screen, "LstInstrment", "PX13A");
    InAnotherProcess([&] {
      WriteInstrument({.model = "PX99"});
      WriteStationInstrumentIndex(kStation, {"PX13A", "PX12A", "PX99"});
    });
    for (const char* model : {"PX12A", "PX99"}) {
      Fill(screen, "txtData_0", model);
      ExpectDeleteInstrumentQuestion(model, QMessageBox::Ok);
      Click(screen, "btnDelete");
    }
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(TwoVisits, ToTheStationListBothStayInItsIndex) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    InAnotherProcess([&] {
      MakeStation(kRoot, "ST2");
      WriteStationIndex(kRoot, {"ST1", "ST2"});
    });
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\nST2\r\n");
}

}  // namespace
}  // namespace tarvell
