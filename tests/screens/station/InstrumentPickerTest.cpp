// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class InstrumentPicker : public StationStage {
 protected:
  /// Opens the picker and runs `act`, which must close it. Returns its result.
  std::int16_t AtPicker(const std::function<void(frmStationGetInstr& picker)>& act) {
    frmStationGetInstr picker(nullptr);
    user_.At<frmStationGetInstr>([&](frmStationGetInstr& at) {
      act(at);
      CloseIfOpen(at);
    });
    Texts models;
    ListModelFolders(gCalibrationDir, models);
    picker.ShowModally(ModelsWithData(models));
    file_ = picker.PickedFile();
    EXPECT_EQ(file_.has_value(), picker.Result < 51);
    return picker.Result;
  }
  static void Choose(frmStationGetInstr& picker, const QString& serial) {
    ClickEntry(picker, "LstInstrment", "PX12A");
    ClickEntry(picker, "lstSerialNumber", serial);
  }
  /// Presses Add while no serial number is selected.
  void AddNothing(frmStationGetInstr& picker) {
    questions_.ExpectNotice("Model number or serial number is no selected.");
    Click(picker, "btnAdd");
    EXPECT_TRUE(picker.isVisible());
  }

  std::optional<CalFileInfo> file_;  ///< that was picked
};

TEST_F(InstrumentPicker, ListsModelsInUpperCaseAndTheFilesThatCanBeRead) {
  WriteCalFile("px12a", "SN12345");
  tree_.Write(R"(c:\calfactors\px12a\SN1)", "#MODEL_NO : PX12A\r\n#SER_NO   : 1\r\n");
  WriteCalFile("PX13A", "other");
  tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
  tree_.Write(R"(c:\calfactors\NOTES)", "x");
  AtPicker([&](frmStationGetInstr& picker) {
    EXPECT_EQ(picker.windowTitle(), "Add station instrment from calibration instrment list.");
    EXPECT_TRUE(picker.isModal());
    EXPECT_EQ(PlainCaption(Find<QPushButton>(picker, "btnAdd").text()), "Add");
    EXPECT_TRUE(Find<QPushButton>(picker, "btnAdd").isDefault());
    EXPECT_EQ(PlainCaption(Find<QAbstractButton>(picker, "btnCancel").text()), "Cancel");
    Texts models = EntriesOf(picker, "LstInstrment");
    std::sort(models.begin(), models.end());
    EXPECT_EQ(models, (Texts{"PX12A", "PX13A"}));
    EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
    questions_.ExpectError({"input past end of file", "SN1"});
    ClickEntry(picker, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"3318A12345"});
    Click(picker, "btnCancel");
  });
}

TEST_F(InstrumentPicker, ReturnsThePickedRowAndItsFile) {
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  WriteCalFile("PX12A", "SN2", {.serial = "2"});
  for (const char* serial : {"1", "2"}) {
    Texts listed;
    const std::int16_t row = AtPicker([&](frmStationGetInstr& picker) {
      Choose(picker, serial);
      listed = EntriesOf(picker, "lstSerialNumber");
      Click(picker, "btnAdd");
      EXPECT_FALSE(picker.isVisible());
    });
    ASSERT_LT(row, 2);
    EXPECT_EQ(listed.at(static_cast<std::size_t>(row)), serial);
    EXPECT_EQ(file_->FilePath, std::string(R"(c:\calfactors\PX12A\SN)") + serial);
  }
}

TEST_F(InstrumentPicker, PicksTheSelectedOneOfTwoFilesWithTheSameSerialNumber) {
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  WriteCalFile("PX12A", "SNCOPY", {.serial = "1"});
  for (int entry = 0; entry < 2; ++entry) {
    std::string path;
    AtPicker([&](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX12A");
      auto& list = Find<QListWidget>(picker, "lstSerialNumber");
      QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                        list.visualItemRect(list.item(entry)).center());
      path = gCalFiles.at(static_cast<std::size_t>(entry)).FilePath;
      Click(picker, "btnAdd");
    });
    EXPECT_EQ(file_->FilePath, path);
  }
}

TEST_F(InstrumentPicker, NeedsAModelAndASerialNumber) {
  WriteCalFile("PX12A", "SN12345");
  WriteCalFile("PX13A", "SN1", {.serial = "1"});
  EXPECT_EQ(AtPicker([&](frmStationGetInstr& picker) {
              AddNothing(picker);
              Choose(picker, "3318A12345");
              // Another model has other serial numbers.
              ClickEntry(picker, "LstInstrment", "PX13A");
              EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"1"});
              AddNothing(picker);
              auto& models = Find<QListWidget>(picker, "LstInstrment");
              QTest::mouseClick(models.viewport(), Qt::LeftButton, Qt::ControlModifier,
                                models.visualItemRect(models.currentItem()).center());
              EXPECT_TRUE(EntriesOf(picker, "lstSerialNumber").empty());
              Click(picker, "btnCancel");
            }),
            9999);
}

TEST_F(InstrumentPicker, EveryOtherWayOutCancels) {
  WriteCalFile("PX12A", "SN12345");
  for (const auto& leave : std::vector<std::function<void(frmStationGetInstr&)>>{
           [](frmStationGetInstr&) { Press(Qt::Key_Escape); },
           [](frmStationGetInstr& picker) { picker.close(); }}) {
    EXPECT_EQ(AtPicker([&](frmStationGetInstr& picker) {
                Choose(picker, "3318A12345");
                picker.Result = 0;  // as after an earlier choice
                leave(picker);
              }),
              9999);
  }
}

}  // namespace
}  // namespace tarvell
