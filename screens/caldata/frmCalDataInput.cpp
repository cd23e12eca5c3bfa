// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmCalDataInput.h"

#include "ui_frmCalDataInput.h"

#include <string_view>
#include <utility>

#include "core/caldata/CellNotices.h"
#include "core/caldata/EditedCell.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CellEditor.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/frmInput.h"

namespace tarvell {

namespace {

constexpr std::int16_t kSensorColumns = 2;

// The only column that can be edited. Points are added and deleted as rows.
constexpr std::int16_t kFactorColumn = 1;
constexpr std::int16_t kCalDataColumn = 2;

}  // namespace

frmCalDataInput::frmCalDataInput(QWidget* parent)
    : CalEditor(parent),
      addPoint_(new QAction(tr("&Add point..."), this)),
      deletePoints_(new QAction(tr("&Delete points..."), this)),
      ui_(std::make_unique<Ui::frmCalDataInput>()) {
  ui_->setupUi(this);
  FitToDisplay(this);
  MakeScrollable(ui_->header);
  auto cellEditor = std::make_unique<CellEditor>(ui_->Grid);
  cellEditor->SetRules(
      // The formats of these models do not depend on the row.
      {.toEdit =
           [this](Cell cell, const std::string& text) {
             return EditedCellOf(Data(), 0, {kCaptionRow, cell.column}, text);
           },
       .toStore =
           [this](Cell cell, const std::string& text, const std::string& /*unit*/) {
             return Data().SetCalibrationDataFormat(0, cell.column, 0, text, "None");
           },
       .affixes = [this](Cell cell,
                         const std::string& unit) { return Data().AffixesOf(0, cell, unit); },
       .points = [this] { return PointColumns{CurrentModel().frequencyUnit}; }});
  SetUp({.header = ui_->header,
         .grid = ui_->Grid,
         .tabs = nullptr,
         .notices = ui_->notices,
         .ok = ui_->btnOk,
         .file = ui_->btnFile,
         .draft = ui_->draft},
        std::move(cellEditor));
  OfferHandbook(this, chapter::kSingleTables);
  connect(ui_->btnAddPoint, &QPushButton::clicked, this, &frmCalDataInput::btnAddPoint_Click);
  connect(ui_->btnDeletePoint, &QPushButton::clicked, this, &frmCalDataInput::btnDeletePoint_Click);
  connect(addPoint_, &QAction::triggered, this, &frmCalDataInput::btnAddPoint_Click);
  connect(deletePoints_, &QAction::triggered, this, &frmCalDataInput::btnDeletePoint_Click);
  // Only in the table itself: in an open cell, the key deletes a character.
  deletePoints_->setShortcut(QKeySequence::Delete);
  deletePoints_->setShortcutContext(Qt::WidgetShortcut);
  ui_->Grid->addAction(deletePoints_);
  connect(ui_->btnOk, &QPushButton::clicked, this, &frmCalDataInput::btnOk_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmCalDataInput::btnCancel_Click);
}

frmCalDataInput::~frmCalDataInput() = default;

bool frmCalDataInput::IsSensor() const {
  return CurrentModel().family == ModelFamily::PowerSensor;
}

std::string frmCalDataInput::PointName(const CalDataGrid& grid, GridRow row) const {
  return IsSensor() ? SensorPointName(grid, row, CurrentModel().frequencyUnit)
                    : AttenuatorPointName(grid, row);
}

std::string frmCalDataInput::TextOf(const NewPoint& point) const {
  MemoryGrid grid(static_cast<std::int16_t>(point.row.size()));
  grid.InsertRow(kFirstDataRow, point.row);
  return PointName(grid, kFirstDataRow);
}

void frmCalDataInput::ShowTables() {
  ui_->Grid->Model().SetFirstEditableColumn(IsSensor() ? kFactorColumn : kCalDataColumn);
  ui_->Grid->Fill([this](MemoryGrid& grid) {
    grid.Clear(kSensorColumns);
    Data().GetCalData(0, grid);
  });
  ShowCellMarks();
}

void frmCalDataInput::StoreTables() {
  Data().SetCalData(0, ui_->Grid->Data());
}

QString frmCalDataInput::WhyFixed() const {
  return tr("Add or delete a calibration point to change it.");
}

void frmCalDataInput::btnAddPoint_Click() {
  Guarded(this, [this] { AddPoint(); });
}

void frmCalDataInput::AddPoint() {
  Cells().Commit();
  CheckPlaceForPoint(ui_->Grid->Data());
  Notices().Report(kPoint, {});
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
      Tell(this, "A calibration point cannot be below zero.");
      break;
    case PointPlace::TooSmall:
      Tell(this, "This calibration point is too small: its row would show zero. Check its unit.");
      break;
    case PointPlace::Row:
      Change(tr("adding %1").arg(ToQt(TextOf(*point))),
             [&] { grid.Model().InsertRow(point->position.row, point->row, Origin::Template); });
      grid.SetCurrentCell(
          {point->position.row, static_cast<std::int16_t>(grid.Model().FirstEditableColumn())});
      grid.setFocus();
      Notices().Report(kPoint, ToQt(point->notice));
      break;
  }
}

std::optional<frmCalDataInput::NewPoint> frmCalDataInput::AskSensorPoint() {
  const std::string_view unit = CurrentModel().frequencyUnit;
  frmInput input(this);
  input.setWindowTitle("Input calibration point...");
  input.SetCaption("Input calibration Point");
  input.SetUnit(ToQt(unit));
  input.exec();
  const double frequency = SensorFrequency(FromQt(input.Text()), FromQt(input.Unit()), unit);
  const std::string typed = FromQt(input.Text());
  if (frequency == 0) {
    Notices().Report(kPoint, ToQt(PointTakenDifferently(typed, "")));
    return std::nullopt;
  }
  const std::vector<std::string> row = SensorRow(frequency, unit);
  return NewPoint{row, PlaceSensorPoint(ui_->Grid->Data(), frequency, unit),
                  PointTakenDifferently(typed, row.front())};
}

std::optional<frmCalDataInput::NewPoint> frmCalDataInput::AskAttenuatorPoint() {
  frmInputPX60H input(this);
  input.setWindowTitle("Select calibration point...");
  input.SetCaption("Select calibration point and calibration frequency");
  input.SetPoint("0", ToQt(CurrentModel().presetFrequency));
  input.exec();
  if (DialogResult == "CANCEL") {
    return std::nullopt;
  }
  const AttenuatorPoint point =
      AttenuatorPointFrom(FromQt(input.Setting()), FromQt(input.Frequency()));
  const std::vector<std::string> row = AttenuatorRow(point);
  const std::string setting = PointTakenDifferently(FromQt(input.Setting()), row[0]);
  const std::string frequency = PointTakenDifferently(FromQt(input.Frequency()), row[1]);
  return NewPoint{row, PlaceAttenuatorPoint(ui_->Grid->Data(), point),
                  setting + (setting.empty() || frequency.empty() ? "" : " ") + frequency};
}

void frmCalDataInput::btnDeletePoint_Click() {
  Guarded(this, [this] { DeletePoints(); });
}

void frmCalDataInput::DeletePoints() {
  Cells().Commit();
  const auto rows = ui_->Grid->SelectedRows();
  const GridRow first = rows.first;
  const GridRow last = rows.second;
  if (first == kCaptionRow) {
    return;
  }
  const MemoryGrid& grid = ui_->Grid->Data();
  const int count = last.number - first.number + 1;
  const QString points = ToQt(PointsName(PointName(grid, first), PointName(grid, last), count));
  const auto answer = CurrentQuestions().Ask(this, {.text = "Are you want delete? (" + points + ")",
                                                    .icon = QMessageBox::Warning,
                                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                                    .defaultButton = QMessageBox::No});
  if (answer == QMessageBox::Yes) {
    Change(tr("deleting %1").arg(points), [&] { ui_->Grid->RemoveRows(first, last); });
    ReportCells();
  }
}

void frmCalDataInput::btnOk_Click() {
  Guarded(this, [this] { SaveAndClose(); });
}

void frmCalDataInput::btnCancel_Click() {
  reject();
}

}  // namespace tarvell
