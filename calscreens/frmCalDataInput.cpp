// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "calscreens/frmCalDataInput.h"

#include "ui_frmCalDataInput.h"

#include "app/Tarvell_MainModule.h"
#include "calscreens/CellEditor.h"
#include "calscreens/frmInputPX60H.h"
#include "common/Error.h"
#include "common/FileNames.h"
#include "common/Guard.h"
#include "common/Paths.h"
#include "common/QtText.h"
#include "common/Questions.h"
#include "common/frmInput.h"

namespace tarvell {

namespace {

constexpr std::int16_t kSensorColumns = 2;

/// The value column is the only one that is typed into; points are added and deleted as rows.
constexpr std::int16_t kFactorColumn = 1;
constexpr std::int16_t kCalDataColumn = 2;

}  // namespace

frmCalDataInput::frmCalDataInput(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCalDataInput>()) {
  ui_->setupUi(this);
  cellEditor_ = new CellEditor(ui_->Grid);  // the grid owns it
  cellEditor_->SetRules(
      {.textToEdit =
           [this](std::int16_t column, std::int16_t /*row*/, const std::string& text) {
             std::string unit;
             return data_->GetCalibrationDataFormat(0, column, 0, text, unit);
           },
       .textToStore =
           [this](std::int16_t column, std::int16_t /*row*/, const std::string& text) {
             return data_->SetCalibrationDataFormat(0, column, 0, text, "None");
           }});
  connect(ui_->header, &CalHeaderBlock::SerialChanged, this, &frmCalDataInput::ShowCaption);
  connect(ui_->btnAddPoint, &QPushButton::clicked, this, &frmCalDataInput::btnAddPoint_Click);
  connect(ui_->btnDeletePoint, &QPushButton::clicked, this, &frmCalDataInput::btnDeletePoint_Click);
  connect(ui_->btnOk, &QPushButton::clicked, this, &frmCalDataInput::btnOk_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmCalDataInput::btnCancel_Click);
}

frmCalDataInput::~frmCalDataInput() = default;

void frmCalDataInput::SetupDat(std::int16_t index, const std::string& modelCode) {
  const bool isNew = index == kNewData;
  if (!isNew && (index < 0 || index >= static_cast<std::int16_t>(gCalFiles.size()))) {
    throw Error(ErrorKind::Index,
                "The chosen data set is not in the list any more. Choose the model again to "
                "refresh the list, then try again.");
  }
  model_ = FindModel(modelCode);
  if (model_ == nullptr || model_->create == nullptr) {
    throw Error(ErrorKind::Index,
                "The program cannot edit data of the model \"" + modelCode + "\".");
  }
  data_ = model_->create();
  if (isNew) {
    data_->SetInitialDefaultData();
  } else {
    data_->LoadCalibrationDataFromFile(gCalFiles.at(static_cast<std::size_t>(index)).FilePath);
  }

  ui_->header->Show(ToQt(modelCode), *data_);
  ui_->header->LockSerial(!isNew);
  ShowCaption();
  ui_->Grid->Model().SetFirstEditableColumn(IsSensor() ? kFactorColumn : kCalDataColumn);
  ui_->Grid->Fill([this](MemoryGrid& grid) {
    grid.Clear(kSensorColumns);
    data_->GetCalData(0, grid);
  });
  if (isNew) {
    ui_->header->FocusSerial();
  } else {
    ui_->header->FocusCalNo();
  }
  exec();
  data_.reset();
}

void frmCalDataInput::ShowCaption() {
  setWindowTitle("Editing calibraition data (" + ui_->header->ModelCode() + " - " +
                 ui_->header->Serial() + ")");
}

void frmCalDataInput::btnAddPoint_Click() {
  Guarded(this, [this] { AddPoint(); });
}

void frmCalDataInput::AddPoint() {
  cellEditor_->Commit();
  const std::optional<NewPoint> point = IsSensor() ? AskSensorPoint() : AskAttenuatorPoint();
  if (!point) {
    return;
  }
  CalGrid& grid = *ui_->Grid;
  switch (point->position.place) {
    case PointPlace::Taken:
      Tell(this, "Cannot add to same calibration point");
      break;
    case PointPlace::BelowZero:
      Tell(this, "A calibration point cannot lie below zero.");
      break;
    case PointPlace::TableFull:
      throw FullTableError();
    case PointPlace::Row:
      grid.Model().InsertRow(point->position.row, point->row);
      grid.SetCurrentCell(point->position.row,
                          static_cast<std::int16_t>(grid.Model().FirstEditableColumn()));
      grid.setFocus();
      break;
  }
}

std::optional<frmCalDataInput::NewPoint> frmCalDataInput::AskSensorPoint() {
  const std::string_view unit = model_->frequencyUnit;
  frmInput input(this);
  input.setWindowTitle("Input calibration point...");
  input.SetCaption("Input calibration Point");
  input.SetUnit(ToQt(unit));
  input.exec();
  const double frequency = SensorFrequency(FromQt(input.Text()), FromQt(input.Unit()), unit);
  if (frequency == 0) {
    return std::nullopt;
  }
  return NewPoint{SensorRow(frequency, unit), PlaceSensorPoint(ui_->Grid->Data(), frequency)};
}

std::optional<frmCalDataInput::NewPoint> frmCalDataInput::AskAttenuatorPoint() {
  frmInputPX60H input(this);
  input.setWindowTitle("Select calibration point...");
  input.SetCaption("Select calibration point and calibration frequency");
  input.SetPoint("0", ToQt(model_->presetFrequency));
  input.exec();
  if (DialogResult == "CANCEL") {
    return std::nullopt;
  }
  const AttenuatorPoint point =
      AttenuatorPointFrom(FromQt(input.Setting()), FromQt(input.Frequency()));
  return NewPoint{AttenuatorRow(point), PlaceAttenuatorPoint(ui_->Grid->Data(), point)};
}

void frmCalDataInput::btnDeletePoint_Click() {
  Guarded(this, [this] { DeletePoint(); });
}

void frmCalDataInput::DeletePoint() {
  cellEditor_->Commit();
  const std::int16_t row = ui_->Grid->CurrentRow();
  if (row == 0) {
    return;
  }
  const MemoryGrid& grid = ui_->Grid->Data();
  const std::string point = IsSensor() ? SensorPointName(grid, row, model_->frequencyUnit)
                                       : AttenuatorPointName(grid, row);
  const auto answer =
      CurrentQuestions().Ask(this, {.text = "Are you want delete? (" + ToQt(point) + ")",
                                    .icon = QMessageBox::Warning,
                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                    .defaultButton = QMessageBox::No});
  if (answer == QMessageBox::Yes) {
    ui_->Grid->Model().RemoveRow(row);
  }
}

void frmCalDataInput::btnOk_Click() {
  Guarded(this, [this] {
    cellEditor_->Commit();
    if (Save()) {
      accept();
    }
  });
}

bool frmCalDataInput::Save() {
  if (ui_->header->Serial().isEmpty()) {
    Tell(this, "Please input serial number");
    ui_->header->FocusSerial();
    return false;
  }
  ui_->header->Store(*data_);
  data_->SetCalData(0, ui_->Grid->Data());
  const std::string folder = Joined(gCalibrationDir, data_->ModelNumber());
  data_->SaveCalibrationDataToFile(Joined(folder, DataFileName(data_->SerialNumber())));
  return true;
}

void frmCalDataInput::btnCancel_Click() {
  reject();
}

}  // namespace tarvell
