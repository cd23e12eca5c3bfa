// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SensorStage.h"

#include <QMenu>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/frmInput.h"

namespace tarvell::test {

std::string SensorFile::Bytes() const {
  std::vector<std::string> lines = {
      "#MODEL_NO : " + model,
      "#SER_NO   : " + serial,
      "#CAL_DATE : " + calDate,
      "#CAL_NO   : " + calNo,
      "#DUE_DATE : " + dueDate,
      "#COMMENT  : " + comment,
      "!",
      "!",
      "!        :              : Reflection Coefficient",
      std::string("!FEQ(") + (model == "PX13A" ? "GHz" : "MHz") +
          "): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
  for (const auto& [frequency, factor] : rows) {
    const QString line = "*%1:    %2     :%3    :     0.0    :    0.0    :     0.0  ";
    lines.push_back(line.arg(ToQt(frequency), 8)
                        .arg(ToQt(factor), 5)
                        .arg(frequency == reference ? " (Ref.)" : "    0.0")
                        .toStdString());
  }
  lines.emplace_back("!End");
  return Lines(lines);
}

SensorRows ManyRows(std::size_t count) {
  SensorRows rows;
  for (std::size_t i = 1; i <= count; ++i) {
    rows.emplace_back(std::to_string(i) + ".00", "100.0");
  }
  return rows;
}

SensorStage::SensorStage() : platform_(tree_.ProgramFolder()) {
  gCalibrationDir = "c:\\calfactors";
  gCalFiles.fill(CalFileInfo());
}

void SensorStage::ShowFile(const SensorFile& file, const Act& act) {
  const std::string last =
      file.serial.size() > 5 ? file.serial.substr(file.serial.size() - 5) : file.serial;
  const std::string path = gCalibrationDir + "\\" + file.model + "\\SN" + last;
  tree_.Write(path, file.Bytes());
  gCalFiles[0].FilePath = path;
  Show(0, file.model, act);
}

void SensorStage::ShowNew(const SensorFile& file, const Act& act) {
  WriteNative(tree_.ProgramFolder() / ("Temp" + file.model), file.Bytes());
  tree_.MakeFolders(gCalibrationDir + "\\" + file.model);
  Show(frmCalDataInput::kNewData, file.model, act);
}

void SensorStage::Show(std::int16_t index, std::string_view model, const Act& act) {
  user_.Within<frmCalDataInput>(act);
  editor_.SetupDat(index, std::string(model));
}

void SensorStage::AtMenu(const std::function<void(frmCalibrationMain& menu)>& act) {
  user_.At<frmCalibrationMain>(act);
}

void SensorStage::ChooseAdd(const QString& model) {
  AtMenu([](frmCalibrationMain& menu) { Click(menu, "btnAdd"); });
  user_.At<QMenu>([model](QMenu& add) { ClickModel(add, model); });
}

void SensorStage::RunMenu() {
  AtMenu([](frmCalibrationMain& menu) { Click(menu, "btnReturn"); });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
}

void SensorStage::AddPoint(frmCalDataInput& editor, const QString& number, const QString& unit) {
  user_.At<frmInput>([=](frmInput& dialog) {
    Type(number);
    Choose(dialog, "cmbUnit", unit);
    Click(dialog, "btnOk");
  });
  Click(editor, "btnAddPoint");
  // As a window manager does when the dialog is gone.
  editor.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
}

void SensorStage::DeletePoint(frmCalDataInput& editor, const QString& point,
                              QMessageBox::StandardButton answer) {
  questions_.Expect({.text = "Are you want delete? (" + point + ")",
                     .icon = QMessageBox::Warning,
                     .buttons = QMessageBox::Yes | QMessageBox::No,
                     .defaultButton = QMessageBox::No},
                    answer);
  Click(editor, "btnDeletePoint");
}

}  // namespace tarvell::test
