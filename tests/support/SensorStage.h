// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SENSORSTAGE_H
#define TARVELL_TESTS_SUPPORT_SENSORSTAGE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "support/DesktopTestPlatform.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell::test {

/// Frequency and factor of each row.
using SensorRows = std::vector<std::pair<std::string, std::string>>;

/// A power sensor's data file, put together by hand.
struct SensorFile {
  std::string model = "PX12A";
  std::string serial = "3318A12345";
  std::string calDate = "20010305";
  std::string calNo = "C-0042";
  std::string dueDate = "20020305";
  std::string comment = "factory";
  SensorRows rows;
  std::string reference = "50.00";  ///< the frequency text whose row says "(Ref.)"

  [[nodiscard]] std::string Bytes() const;
};

/// `count` rows of 1 MHz, 2 MHz and so on, each with the factor 100.0.
[[nodiscard]] SensorRows ManyRows(std::size_t count);

/// Shows power sensor data in the single-table editor, or the calibration data menu. Message boxes
/// are answered by a script.
class SensorStage : public testing::Test {
 protected:
  using Act = std::function<void(frmCalDataInput& editor)>;

  SensorStage();

  /// Writes a file as data of its model, in the first row of `gCalFiles`, and shows it.
  void ShowFile(const SensorFile& file, const Act& act);
  /// Writes a file as the template of its model, makes the model folder, and shows new data.
  void ShowNew(const SensorFile& file, const Act& act);
  /// Shows the data of this row of `gCalFiles`.
  void Show(std::int16_t index, std::string_view model, const Act& act);

  /// Adds a point through the input dialog, whose unit is preset.
  void AddPoint(frmCalDataInput& editor, const QString& number, const QString& unit);
  /// Presses Delete Calibration Point and answers the question.
  void DeletePoint(frmCalDataInput& editor, const QString& point,
                   QMessageBox::StandardButton answer);

  /// What the user does at the calibration data menu, step by step, once it runs.
  void AtMenu(const std::function<void(frmCalibrationMain& menu)>& act);
  /// Opens the Add menu and chooses a model.
  void ChooseAdd(const QString& model);
  /// Shows the calibration data menu, and closes it after the last step.
  void RunMenu();

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
  ScriptedQuestions questions_;
  frmCalDataInput editor_{nullptr};
};

}  // namespace tarvell::test

#endif
