// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "calscreens/CalEditor.h"

#include <QLayout>

#include <utility>

#include "app/Tarvell_MainModule.h"
#include "calscreens/CalHeaderBlock.h"
#include "calscreens/CellEditor.h"
#include "common/BusyPointer.h"
#include "common/Error.h"
#include "common/FileNames.h"
#include "common/Paths.h"
#include "common/QtText.h"
#include "common/Questions.h"
#include "common/Text.h"

namespace tarvell {

const CalFileInfo& ListedDataSet(std::int16_t index) {
  if (index < 0 || index >= static_cast<std::int16_t>(gCalFiles.size())) {
    throw Error(ErrorKind::Index,
                "The chosen data set is not in the list any more. Choose the model again to "
                "refresh the list, then try again.");
  }
  return gCalFiles.at(static_cast<std::size_t>(index));
}

CalEditor::CalEditor(QWidget* parent) : QDialog(parent) {}

CalEditor::~CalEditor() = default;

void CalEditor::SetUp(CalHeaderBlock* header, std::unique_ptr<CellEditor> cellEditor) {
  header_ = header;
  cellEditor_ = std::move(cellEditor);
  connect(header_, &CalHeaderBlock::SerialChanged, this, &CalEditor::ShowCaption);
}

void CalEditor::SetupDat(std::int16_t index, const std::string& modelCode) {
  model_ = FindModel(modelCode);
  if (model_ == nullptr || model_->create == nullptr) {
    throw Error(ErrorKind::Index,
                "The program cannot edit data of the model \"" + modelCode + "\".");
  }
  const bool isNew = index == kNewData;
  data_ = model_->create();
  Load(index);

  const std::string serial =
      isNew && !TakesTemplateSerial() ? std::string() : data_->SerialNumber();
  header_->Show(ToQt(modelCode), ToQt(serial), *data_);
  header_->LockSerial(!isNew);
  ShowCaption(ToQt(data_->SerialNumber()));
  // The table tells the object how wide it is before it is first shown.
  layout()->activate();
  ShowTables();
  TellNotices(index);
  if (isNew) {
    header_->FocusSerial();
  } else {
    header_->FocusCalNo();
  }
  exec();
  data_.reset();
}

void CalEditor::Load(std::int16_t index) {
  const BusyPointer busy;
  if (index == kNewData) {
    data_->SetInitialDefaultData();
    return;
  }
  const CalFileInfo& listed = ListedDataSet(index);
  if (ReadsOverTemplate()) {
    data_->SetInitialDefaultData();
  }
  data_->LoadCalibrationDataFromFile(listed.FilePath);
  data_->CheckRoundTrip();
}

void CalEditor::ShowCaption(const QString& serial) {
  setWindowTitle("Editing calibraition data (" + ToQt(model_->code) + " - " + serial + ")");
}

void CalEditor::TellNotices(std::int16_t index) {
  QString text;
  if (index != kNewData) {
    const std::string name(NameOf(ListedDataSet(index).FilePath));
    const std::string other = "SN" + std::string(LastCharacters(data_->SerialNumber(), 5));
    if (!EqualsIgnoringCase(name, other)) {
      text = ToQt("The serial number that was read, \"" + data_->SerialNumber() +
                  "\", is not that of the file's name " + name + ". Saving writes the file " +
                  other + "; " + name + " stays.");
    }
  }
  for (const std::string& notice : data_->LoadNotices()) {
    text += (text.isEmpty() ? "" : "\n\n") + ToQt(notice);
  }
  if (!text.isEmpty()) {
    CurrentQuestions().Ask(
        parentWidget(),
        {.text = text,
         .icon = QMessageBox::Warning,
         .detail = "The file is as it was. Check the data before you save them with OK."});
  }
}

void CalEditor::SaveAndClose() {
  cellEditor_->Commit();
  const std::string serial = FromQt(header_->Serial());
  if (serial.empty()) {
    Tell(this, "Please input serial number");
    header_->FocusSerial();
    return;
  }
  const std::string name = DataFileName(serial);
  header_->Store(*data_);
  StoreTables();
  const std::string folder = Joined(gCalibrationDir, data_->ModelNumber());
  const BusyPointer busy;
  data_->SaveCalibrationDataToFile(Joined(folder, name));
  accept();
}

}  // namespace tarvell
