// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DataSetEditors.h"

#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

// Settings.
constexpr const char* kLastModel = "last/model";
constexpr const char* kLastSerial = "last/serial";

}  // namespace

DataSetEditors::DataSetEditors(QWidget* parent) : parent_(parent) {}

DataSetEditors::~DataSetEditors() = default;

CalEditor& DataSetEditors::EditorOf(const Model& model) {
  if (HasPages(model)) {
    if (!tabbed_) {
      tabbed_ = std::make_unique<frmCalDataTabInput>(parent_);
    }
    return *tabbed_;
  }
  if (!single_) {
    single_ = std::make_unique<frmCalDataInput>(parent_);
  }
  return *single_;
}

bool DataSetEditors::Open(std::int16_t index, const Model& model, CalEditor::Begin begin) {
  CalEditor& editor = EditorOf(model);
  const std::string code(model.code);
  if (index != CalEditor::kNewData) {
    // Now, because the program may be killed while the editor is open.
    RememberDataSet(code, ListedDataSet(index).SerialNumber);
  }
  editor.SetupDat(index, code, begin);
  if (editor.result() != QDialog::Accepted) {
    return false;
  }
  RememberDataSet(code, editor.SavedSerial());
  return true;
}

void RememberDataSet(const std::string& model, const std::string& serial) {
  Remember(kLastModel, ToQt(model));
  Remember(kLastSerial, ToQt(serial));
}

std::string RememberedModel() {
  return FromQt(RememberedText(kLastModel));
}

std::string RememberedSerial() {
  return FromQt(RememberedText(kLastSerial));
}

}  // namespace tarvell
