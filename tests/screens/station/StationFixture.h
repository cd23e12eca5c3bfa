// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_STATION_STATIONFIXTURE_H
#define TARVELL_TESTS_SCREENS_STATION_STATIONFIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/station/frmStationGetInstr.h"
#include "screens/station/frmStationMain.h"
#include "screens/station/frmStationModelList.h"
#include "support/DesktopTestPlatform.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell::test {

using Texts = std::vector<std::string>;

inline constexpr const char* kRoot = "c:\\stations";
inline constexpr const char* kRootIndex = "c:\\stations\\INDEX";
inline constexpr const char* kStation = R"(c:\stations\ST1)";
inline constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";

/// The header of a calibration data file, as the station screens read it.
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

/// Shows the station screens on a tree of the test's own. A script answers the message boxes.
class StationStage : public testing::Test {
 protected:
  StationStage() : platform_(tree_.ProgramFolder()), dataHome_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", (tree_.Root() / "data").string().c_str());
    tree_.MakeFolders(kRoot);
    tree_.MakeFolders("c:\\calfactors");
    gStationDir = kRoot;
    gCalibrationDir = "c:\\calfactors";
    gCalFiles = {};
  }
  ~StationStage() override {
    gCalFiles = {};
    qputenv("XDG_DATA_HOME", dataHome_);
  }
  StationStage(const StationStage&) = delete;
  StationStage& operator=(const StationStage&) = delete;

  /// Opens the station list and runs `act`, which must close it.
  void AtStationList(const std::function<void(frmStationMain& screen)>& act) {
    frmStationMain screen(nullptr);
    Run(screen, act);
  }

  /// Opens the station ST1 and runs `act`, which must close it.
  void AtStation(const std::function<void(frmStationModelList& screen)>& act) {
    frmStationModelList screen(nullptr);
    screen.StationName = "ST1";
    Run(screen, act);
  }

  /// A screen that is still open is a failure; the test then goes on without it.
  static void CloseIfOpen(QDialog& screen) {
    EXPECT_FALSE(screen.isVisible());
    screen.done(QDialog::Rejected);
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

  /// Names in a folder, in the order of the directory.
  [[nodiscard]] Texts NamesInOrder(const std::string& path) const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(tree_.Native(path))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  void ExpectDeleteStationQuestion(const QString& name, QMessageBox::StandardButton answer) {
    ExpectDeleteQuestion("Are you sure you want to delete \"" + name + "\" station data?", answer);
  }
  void ExpectDeleteInstrumentQuestion(const QString& model, QMessageBox::StandardButton answer) {
    ExpectDeleteQuestion("Are you sure to want to delete " + model + "?", answer);
  }
  void ExpectClearQuestion(QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "This action is current station instrment data be all lost.\r\n"
                               "Do you wish to continue?",
                       .title = "Station Data Delete",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer);
  }
  /// Clears the station; its list is then empty.
  void Clear(frmStationModelList& screen) {
    ExpectClearQuestion(QMessageBox::Yes);
    questions_.ExpectNotice("Current station data delete completed.");
    Click(screen, "btnClear");
  }
  void ExpectWarning(const QString& text) {
    questions_.Expect({.text = text, .icon = QMessageBox::Warning}, QMessageBox::Ok);
  }
  void ExpectCannotSave() { ExpectWarning("Error: Cannot save "); }

  /// Expects the question that Return asks when an instrument is open.
  void ExpectReturnQuestion(QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "Instruemnt Data was changed. Do you want to save it?",
                       .title = "Instrument data was changed.",
                       .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                       .defaultButton = QMessageBox::Yes},
                      answer);
  }
  /// Leaves the screen, without saving the open instrument.
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

  [[nodiscard]] bool LastDetailContains(const std::string& part) const {
    return !questions_.details.empty() && Contains(questions_.details.back().toStdString(), part);
  }
  [[nodiscard]] std::filesystem::path InTrash(const std::string& name) const {
    return tree_.Root() / "data/Trash/files" / name;
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
  ScriptedQuestions questions_;

 private:
  template <typename Screen>
  void Run(Screen& screen, const std::function<void(Screen& screen)>& act) {
    // The user's destructor reports a screen that did not open.
    user_.At<Screen>([&](Screen& at) {
      act(at);
      CloseIfOpen(at);
    });
    screen.ShowModally();
  }

  QByteArray dataHome_;

  void ExpectDeleteQuestion(const QString& text, QMessageBox::StandardButton answer) {
    questions_.Expect({.text = text,
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                       .defaultButton = QMessageBox::Cancel},
                      answer);
  }
};

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

/// The fields of a screen before an instrument is chosen.
inline const Texts kEmptyFields = {"", "", "NONE", "", "", "", "", "", "JAN", "", "", "", "", ""};

[[nodiscard]] inline bool CanSave(QWidget& screen) {
  return Find<QAbstractButton>(screen, "btnSave").isEnabled();
}

}  // namespace tarvell::test

#endif
