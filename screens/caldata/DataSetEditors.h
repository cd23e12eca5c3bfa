// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_DATASETEDITORS_H
#define TARVELL_SCREENS_CALDATA_DATASETEDITORS_H

#include <QWidget>

#include <cstdint>
#include <memory>
#include <string>

#include "core/caldata/Models.h"
#include "screens/caldata/CalEditor.h"

namespace tarvell {

class frmCalDataInput;
class frmCalDataTabInput;

/// The two editors of the calibration data menu, each created when it is first used.
class DataSetEditors {
 public:
  explicit DataSetEditors(QWidget* parent);
  DataSetEditors(const DataSetEditors&) = delete;
  DataSetEditors& operator=(const DataSetEditors&) = delete;
  ~DataSetEditors();

  /// Opens the editor for a data set of the model, as CalEditor::SetupDat does. Returns whether the
  /// data were saved, and remembers them then.
  bool Open(std::int16_t index, const Model& model,
            CalEditor::Begin begin = CalEditor::Begin::AsSaved);

 private:
  [[nodiscard]] CalEditor& EditorOf(const Model& model);

  QWidget* parent_;
  std::unique_ptr<frmCalDataInput> single_;
  std::unique_ptr<frmCalDataTabInput> tabbed_;
};

/// The data set that the user chose or saved last, kept for the next time.
void RememberDataSet(const std::string& model, const std::string& serial);
[[nodiscard]] std::string RememberedModel();
[[nodiscard]] std::string RememberedSerial();

}  // namespace tarvell

#endif
