// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class InstrumentPicker : public StationStage {
 protected:
  /// Opens the picker and acts there, until `act` has left it; returns its result.
  std::int16_t AtPicker(const std::function<void(frmStationGetInstr& picker)>& act) {
    frmStationGetInstr picker(nullptr);
    bool shown = false;
    user_.At<frmStationGetInstr>([&](frmStationGetInstr& at) {
      shown = true;
      act(at);
    });
    Texts models;
    ListModelFolders(gCalibrationDir, models);
    picker.ShowModally(ModelsWithData(models));
    EXPECT_TRUE(shown);
    return picker.Result;
  }

  static Texts Sorted(Texts texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
  }

  /// Presses Add with something missing, which is told; the picker stays.
  void AddWithout(frmStationGetInstr& picker) {
    questions_.ExpectNotice("Model number or serial number is no selected.");
    Click(picker, "btnAdd");
    EXPECT_TRUE(picker.isVisible());
  }
};

TEST_F(InstrumentPicker, TheScreenSaysWhatItIs) {
  AtPicker([](frmStationGetInstr& picker) {
    EXPECT_EQ(picker.windowTitle(), "Add station instrment from calibration instrment list.");
    EXPECT_TRUE(picker.isModal());
    EXPECT_EQ(Find<QAbstractButton>(picker, "btnAdd").text(), "Add");
    EXPECT_EQ(Find<QAbstractButton>(picker, "btnCancel").text(), "Cancel");
    EXPECT_TRUE(EntriesOf(picker, "LstInstrment").empty());
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    Click(picker, "btnCancel");
  });
}

TEST_F(InstrumentPicker, ModelsAreListedInUpperCaseWithoutEmptyOnes) {
  WriteCalFile("px12a", "SN12345");
  WriteCalFile("PX13A", "other", {.model = "PX13A"});
  tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
  tree_.MakeFolders(R"(c:\calfactors\with.dot\x)");
  tree_.Write(R"(c:\calfactors\NOTES)", "x");
  Texts expected;
  for (const std::string& name : NamesInOrder("c:\\calfactors")) {
    if (name == "px12a" || name == "PX13A") {
      expected.push_back(name == "px12a" ? "PX12A" : name);
    }
  }
  ASSERT_EQ(expected.size(), 2U);
  AtPicker([&](frmStationGetInstr& picker) {
    EXPECT_EQ(EntriesOf(picker, "LstInstrment"), expected);
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    // The folder is found as it is written.
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"3318A12345"});
    Click(picker, "btnCancel");
  });
  EXPECT_EQ(tree_.Names("c:\\calfactors"), (Texts{"EMPTY", "NOTES", "PX13A", "px12a", "with.dot"}));
}

TEST_F(InstrumentPicker, ThePickedRowIsReturned) {
  WriteCalFile("PX12A", "SN1", {.serial = "1", .dueDate = "20020305", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "2", .dueDate = "20030405", .comment = "two"});
  WriteCalFile("PX12A", "SN3", {.serial = "3", .dueDate = "20040506", .comment = "three"});
  tree_.Write(R"(c:\calfactors\PX12A\SN4.old)", "x");
  tree_.Write(R"(c:\calfactors\PX12A\sN5)", "x");
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9"});
  for (const char* serial : {"1", "2", "3"}) {
    Texts listed;
    const std::int16_t row = AtPicker([&](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX13A");
      EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"9"});
      ClickEntry(picker, "LstInstrment", "PX12A");
      listed = EntriesOf(picker, "lstSerialNumber");
      EXPECT_EQ(Sorted(listed), (Texts{"1", "2", "3"}));
      ClickEntry(picker, "lstSerialNumber", serial);
      Click(picker, "btnAdd");
      EXPECT_FALSE(picker.isVisible());
    });
    ASSERT_GE(row, 0);
    ASSERT_LT(row, 3);
    EXPECT_EQ(listed[static_cast<std::size_t>(row)], serial);
    const CalFileInfo& picked = gCalFiles[static_cast<std::size_t>(row)];
    EXPECT_EQ(picked.ModelNumber, "PX12A");
    EXPECT_EQ(picked.SerialNumber, serial);
    EXPECT_EQ(picked.FilePath, std::string(R"(c:\calfactors\PX12A\SN)") + serial);
  }
}

TEST_F(InstrumentPicker, EnterIsAdd) {
  WriteCalFile("PX12A", "SN12345");
  EXPECT_EQ(AtPicker([](frmStationGetInstr& picker) {
              EXPECT_TRUE(Find<QPushButton>(picker, "btnAdd").isDefault());
              Find<QListWidget>(picker, "LstInstrment").setFocus();
              Press(Qt::Key_Space);
              EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"3318A12345"});
              Press(Qt::Key_Tab);
              Press(Qt::Key_Space);
              Press(Qt::Key_Return);
              EXPECT_FALSE(picker.isVisible());
            }),
            0);
}

TEST_F(InstrumentPicker, AModelAndASerialNumberAreNeeded) {
  WriteCalFile("PX12A", "SN12345");
  WriteCalFile("PX13A", "SN1", {.model = "PX13A", .serial = "1"});
  EXPECT_EQ(AtPicker([&](frmStationGetInstr& picker) {
              AddWithout(picker);
              ClickEntry(picker, "LstInstrment", "PX12A");
              AddWithout(picker);
              ClickEntry(picker, "lstSerialNumber", "3318A12345");
              // Another model's serial numbers take the place of the chosen one.
              ClickEntry(picker, "LstInstrment", "PX13A");
              EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"1"});
              AddWithout(picker);
              Click(picker, "btnCancel");
            }),
            9999);
}

TEST_F(InstrumentPicker, WithoutAModelNoSerialNumberIsOffered) {
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  WriteCalFile(".", "SN2", {.serial = "2"});
  AtPicker([&](frmStationGetInstr& picker) {
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"1"});
    auto& models = Find<QListWidget>(picker, "LstInstrment");
    QTest::mouseClick(models.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      models.visualItemRect(models.item(models.currentRow())).center());
    EXPECT_TRUE(models.selectedItems().isEmpty());
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    Click(picker, "btnCancel");
  });
}

TEST_F(InstrumentPicker, AModelWithoutDataFilesHasNoSerialNumbers) {
  tree_.Write(R"(c:\calfactors\PX12A\notes)", "x");
  WriteCalFile("PX13A", "SN1", {.model = "PX13A", .serial = "1"});
  AtPicker([&](frmStationGetInstr& picker) {
    ClickEntry(picker, "LstInstrment", "PX13A");
    EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"1"});
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    AddWithout(picker);
    Click(picker, "btnCancel");
  });
}

TEST_F(InstrumentPicker, OfEqualSerialNumbersTheFirstRowIsReturned) {
  WriteCalFile("PX12A", "SN1", {.serial = "77", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "77", .comment = "two"});
  EXPECT_EQ(AtPicker([](frmStationGetInstr& picker) {
              ClickEntry(picker, "LstInstrment", "PX12A");
              EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), (Texts{"77", "77"}));
              ClickEntry(picker, "lstSerialNumber", "77");
              Press(Qt::Key_Down);
              EXPECT_EQ(Find<QListWidget>(picker, "lstSerialNumber").currentRow(), 1);
              Click(picker, "btnAdd");
            }),
            0);
}

TEST_F(InstrumentPicker, ASerialNumberThatNoRowHasGivesTheRowBehindTheLast) {
  WriteCalFile("PX12A", "SN12345");
  EXPECT_EQ(AtPicker([](frmStationGetInstr& picker) {
              ClickEntry(picker, "LstInstrment", "PX12A");
              ClickEntry(picker, "lstSerialNumber", "3318A12345");
              gCalFiles = {};
              Click(picker, "btnAdd");
              EXPECT_FALSE(picker.isVisible());
            }),
            51);
}

TEST_F(InstrumentPicker, EveryWayToGiveItUpIsCancelling) {
  WriteCalFile("PX12A", "SN12345");
  const std::vector<std::function<void(frmStationGetInstr&)>> ways = {
      [](frmStationGetInstr& picker) { Click(picker, "btnCancel"); },
      [](frmStationGetInstr&) { Press(Qt::Key_Escape); },
      [](frmStationGetInstr& picker) { picker.close(); }};
  for (const auto& leave : ways) {
    EXPECT_EQ(AtPicker([&](frmStationGetInstr& picker) {
                ClickEntry(picker, "LstInstrment", "PX12A");
                ClickEntry(picker, "lstSerialNumber", "3318A12345");
                leave(picker);
                EXPECT_FALSE(picker.isVisible());
              }),
              9999);
  }
}

TEST_F(InstrumentPicker, OldFilesAreOfferedAsWell) {
  tree_.Write(R"(c:\calfactors\PX12A\SN123)",
              "QZ PX12A Opt001\r\n 3318A00123 \r\n05MAR2001\r\nwhatever\r\n");
  EXPECT_EQ(AtPicker([](frmStationGetInstr& picker) {
              ClickEntry(picker, "LstInstrment", "PX12A");
              ClickEntry(picker, "lstSerialNumber", "3318A00123");
              Click(picker, "btnAdd");
            }),
            0);
  EXPECT_EQ(gCalFiles[0].ModelNumber, "PX12A");
  EXPECT_EQ(gCalFiles[0].Option, "001");
  EXPECT_EQ(gCalFiles[0].DueYear, 2002);
}

TEST_F(InstrumentPicker, ItWritesNothing) {
  WriteCalFile("PX12A", "SN12345");
  AtPicker([](frmStationGetInstr& picker) {
    ClickEntry(picker, "LstInstrment", "PX12A");
    ClickEntry(picker, "lstSerialNumber", "3318A12345");
    Click(picker, "btnAdd");
  });
  EXPECT_EQ(tree_.Names(kRoot), Texts{});
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\PX12A)"), Texts{"SN12345"});
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), CalHeader().Bytes());
}

TEST_F(InstrumentPicker, TheFirstFiftyOneOfTooManyFilesAreOffered) {
  for (int i = 10; i < 62; ++i) {
    WriteCalFile("PX12A", "SN" + std::to_string(i), {.serial = std::to_string(i)});
  }
  AtPicker([&](frmStationGetInstr& picker) {
    questions_.ExpectError({"more than 51 data files", R"(c:\calfactors\PX12A)"});
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(picker, "lstSerialNumber").size(), 51U);
    Click(picker, "btnCancel");
  });
}

TEST_F(InstrumentPicker, AFileThatCannotBeReadIsToldAndTheRowsBeforeItAreOffered) {
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "#MODEL_NO : PX12A\r\n#SER_NO   : 1\r\n");
  AtPicker([&](frmStationGetInstr& picker) {
    questions_.ExpectError({"input past end of file", R"(c:\calfactors\PX12A\SN1)"});
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    AddWithout(picker);
    Click(picker, "btnCancel");
  });
}

}  // namespace
}  // namespace tarvell
