// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_STATIONFIXTURE_H
#define TARVELL_TESTS_SCREENS_STATIONFIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/Tarvell_MainModule.h"
#include "station/frmStationGetInstr.h"
#include "station/frmStationMain.h"
#include "station/frmStationModelList.h"
#include "support/DesktopTestPlatform.h"
#include "support/ErrorOf.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell::test {

using Texts = std::vector<std::string>;

inline constexpr const char* kRoot = "c:\\stations";
inline constexpr const char* kRootIndex = "c:\\stations\\INDEX";
inline constexpr const char* kStation = R"(c:\stations\ST1)";
inline constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";

/// The header of a calibration data file, as far as the stations need it.
struct CalHeader {
  std::string model = "PX12A";
  std::string serial = "3318A12345";
  std::string dueDate = "20020305";
  std::string comment = "factory";

  [[nodiscard]] std::string Bytes() const {
    return Lines({"#MODEL_NO : " + model, "#SER_NO   : " + serial, "#CAL_DATE : 20010305",
                  "#CAL_NO   : C-0042", "#DUE_DATE : " + dueDate, "#COMMENT  : " + comment,
                  "!End"});
  }
};

/// An instrument's file.
struct InstrumentFile {
  std::string model = "PX12A";
  std::string serial = "3318A12345";
  std::string addressType = "GP-IB";
  std::string address = "13";
  std::string station = "rack 2";
  std::string options = "001";
  std::string availability = "yes";
  std::string dueDate = "5 MAR 2002";
  std::string asset = "A-77";
  std::string trace = "lab 4";
  std::string comment = "own";
  std::string calData = "file";

  [[nodiscard]] std::string Bytes() const {
    return Lines({"MODEL NUMBER " + model, "SERIAL NUMBER " + serial, "ADDRESS TYPE " + addressType,
                  "ADDRESS " + address, "STATION " + station, "OPTIONS " + options,
                  "AVAILABILITY " + availability, "CAL DUE DATE " + dueDate, "ASSET " + asset,
                  "TRACE " + trace, "COMMENT " + comment, "CAL DATA " + calData});
  }
};

/// The screens of the stations over a tree of the test's own. Message boxes are answered by a
/// script.
class StationStage : public testing::Test {
 protected:
  StationStage() : platform_(tree_.ProgramFolder()) {
    tree_.MakeFolders(kRoot);
    tree_.MakeFolders("c:\\calfactors");
    gStationDir = kRoot;
    gCalibrationDir = "c:\\calfactors";
    gCalFiles = {};
  }
  ~StationStage() override { gCalFiles = {}; }
  StationStage(const StationStage&) = delete;
  StationStage& operator=(const StationStage&) = delete;

  /// Opens the station list and acts there, until `act` has left it.
  void AtStationList(const std::function<void(frmStationMain& screen)>& act) {
    frmStationMain screen(nullptr);
    bool shown = false;
    user_.At<frmStationMain>([&](frmStationMain& at) {
      shown = true;
      act(at);
    });
    screen.ShowModally();
    EXPECT_TRUE(shown);
  }

  /// Opens the station ST1 and acts there, until `act` has left it.
  void AtStation(const std::function<void(frmStationModelList& screen)>& act) {
    frmStationModelList screen(nullptr);
    screen.StationName = "ST1";
    bool shown = false;
    user_.At<frmStationModelList>([&](frmStationModelList& at) {
      shown = true;
      act(at);
    });
    screen.ShowModally();
    EXPECT_TRUE(shown);
  }

  void WriteCalFile(const std::string& folder, const std::string& name,
                    const CalHeader& header = {}) const {
    tree_.Write("c:\\calfactors\\" + folder + "\\" + name, header.Bytes());
  }
  void WriteInstrument(const std::string& name, const std::string& bytes) const {
    tree_.Write(std::string(kStation) + "\\" + name, bytes);
  }
  void WriteInstrument(const InstrumentFile& file = {}) const {
    WriteInstrument(file.model, file.Bytes());
  }
  [[nodiscard]] std::string ReadInstrument(const std::string& name) const {
    return tree_.Read(std::string(kStation) + "\\" + name);
  }

  /// Names in a folder, in the order in which the system tells them.
  [[nodiscard]] Texts NamesInOrder(const std::string& path) const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(tree_.Native(path))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  /// Expects the question that leaving an opened instrument asks.
  void ExpectReturnQuestion(QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "Instruemnt Data was changed. Do you want to save it?",
                       .title = "Instrument data was changed.",
                       .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                       .defaultButton = QMessageBox::Yes},
                      answer);
  }
  /// Leaves an opened instrument without saving it.
  void LeaveUnsaved(frmStationModelList& screen) {
    ExpectReturnQuestion(QMessageBox::No);
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  }

  /// Adds the instrument of this model and serial number through the picker.
  void Add(frmStationModelList& screen, const QString& model, const QString& serial) {
    user_.At<frmStationGetInstr>([=](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", model);
      ClickEntry(picker, "lstSerialNumber", serial);
      Click(picker, "btnAdd");
    });
    Click(screen, "btnAdd");
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
  ScriptedQuestions questions_;
};

[[nodiscard]] inline std::string ComboText(QWidget& screen, const QString& combo) {
  return Find<QComboBox>(screen, combo).currentText().toStdString();
}

[[nodiscard]] inline Texts ComboEntries(QWidget& screen, const QString& combo) {
  auto& control = Find<QComboBox>(screen, combo);
  Texts entries;
  for (int i = 0; i < control.count(); ++i) {
    entries.push_back(control.itemText(i).toStdString());
  }
  return entries;
}

/// Every field of the shown instrument in the order of its file; the due date as day, month, year.
[[nodiscard]] inline Texts ShownFields(QWidget& screen) {
  return {TextOf(screen, "txtData_0"),         ComboText(screen, "cmbSerial"),
          ComboText(screen, "cmbAddressType"), TextOf(screen, "txtData_2"),
          TextOf(screen, "txtData_3"),         TextOf(screen, "txtData_4"),
          TextOf(screen, "txtData_5"),         TextOf(screen, "txtData_8"),
          ComboText(screen, "cmbCalMonth"),    TextOf(screen, "txtData_6"),
          TextOf(screen, "txtData_9"),         TextOf(screen, "txtData_10"),
          TextOf(screen, "txtData_11"),        TextOf(screen, "txtData_12")};
}

/// What a screen shows before an instrument is chosen.
inline const Texts kNoFields = {"", "", "NONE", "", "", "", "", "", "JAN", "", "", "", "", ""};

[[nodiscard]] inline bool CanSave(QWidget& screen) {
  return Find<QAbstractButton>(screen, "btnSave").isEnabled();
}

/// Types over the text of a drop-down list.
inline void FillCombo(QWidget& screen, const QString& combo, const QString& text) {
  QLineEdit* box = Find<QComboBox>(screen, combo).lineEdit();
  ASSERT_NE(box, nullptr);
  QTest::mouseClick(box, Qt::LeftButton);
  Press(Qt::Key_A, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  Type(text);
}

}  // namespace tarvell::test

#endif
