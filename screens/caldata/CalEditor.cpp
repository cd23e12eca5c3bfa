// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CalEditor.h"

#include <QItemSelectionModel>
#include <QKeySequence>
#include <QLayout>
#include <QShortcut>

#include <algorithm>
#include <utility>

#include "core/caldata/CellNotices.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CalHeaderBlock.h"
#include "screens/caldata/CellEditor.h"
#include "screens/widgets/AskReplacement.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

// Subjects of notices.
constexpr const char* kCell = "cell";
constexpr const char* kFixedCell = "fixed cell";

/// No table has more columns.
constexpr std::int16_t kColumnCount = 5;

/// A cell's note with the cell's row and column. Two columns of a set are called "Unc.": each
/// belongs to the column before it.
QString NoteAbout(const MemoryGrid& grid, Cell cell, const QString& note) {
  std::string caption = grid.TextOf({kCaptionRow, cell.column});
  if (caption.starts_with("Unc.")) {
    const auto before = static_cast<std::int16_t>(cell.column - 1);
    caption += " of " + grid.TextOf({kCaptionRow, before});
  }
  return QString("%1, %2: %3").arg(ToQt(grid.TextOf({cell.row, 0})), ToQt(caption), note);
}

OpenedDataSet Opened(std::int16_t index, const Model& model) {
  const BusyPointer busy;
  return index == CalEditor::kNewData ? NewDataSet(model)
                                      : OpenDataSet(model, ListedDataSet(index));
}

}  // namespace

CalFileInfo ListedDataSet(std::int16_t index) {
  if (index < 0 || index >= static_cast<std::int16_t>(gCalFiles.size())) {
    throw Error(ErrorKind::Index,
                "The chosen data set is not in the list any more. Choose the model again to "
                "refresh the list, then try again.");
  }
  return gCalFiles.at(static_cast<std::size_t>(index));
}

CalEditor::CalEditor(QWidget* parent) : QDialog(parent) {}

CalEditor::~CalEditor() = default;

void CalEditor::SetUp(const Controls& controls, std::unique_ptr<CellEditor> cellEditor) {
  controls_ = controls;
  cellEditor_ = std::move(cellEditor);
  // A shortcut of the button itself would take the place of its Alt key.
  auto* save = new QShortcut(QKeySequence::Save, this);  // the screen owns it
  connect(save, &QShortcut::activated, controls_.ok, &QPushButton::click);
  controls_.ok->setToolTip(tr("Saves the data and closes this screen (%1).")
                               .arg(save->key().toString(QKeySequence::NativeText)));
  controls_.ok->setAccessibleDescription(controls_.ok->toolTip());
  EnterPressesFocusedButton(this);
  connect(controls_.header, &CalHeaderBlock::SerialChanged, this, &CalEditor::ShowCaption);
  connect(controls_.header, &CalHeaderBlock::Noticed, controls_.notices, &NoticeLine::Report);
  connect(controls_.header, &CalHeaderBlock::Entered, controls_.notices, &NoticeLine::ShowAbout);
  connect(cellEditor_.get(), &CellEditor::Typed, this,
          [this](Cell cell, const QString& typed) { NoteCell(cell, typed); });
  connect(cellEditor_.get(), &CellEditor::Pasted, this,
          [this](Cell cell) { NoteCell(cell, std::nullopt); });
  connect(cellEditor_.get(), &CellEditor::FixedCellTyped, this, [this](std::int16_t column) {
    const QString caption = ToQt(controls_.grid->Data().TextOf({kCaptionRow, column}));
    controls_.notices->Report(
        kFixedCell,
        caption.isEmpty()
            ? tr("Nothing was typed: this column is not used.")
            : tr("Nothing was typed: the column \"%1\" is fixed. %2").arg(caption, WhyFixed()));
  });
  connect(controls_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &CalEditor::ReportCells);
}

void CalEditor::SetupDat(std::int16_t index, const std::string& modelCode) {
  model_ = FindModel(modelCode);
  if (model_ == nullptr || model_->create == nullptr) {
    throw Error(ErrorKind::Index,
                "The program cannot edit data of the model \"" + modelCode + "\".");
  }
  const bool isNew = index == kNewData;
  OpenedDataSet opened = Opened(index, *model_);
  data_ = std::move(opened.data);

  const std::string serial =
      isNew && !TakesTemplateSerial() ? std::string() : data_->SerialNumber();
  controls_.header->Show(ToQt(modelCode), ToQt(serial), *data_);
  controls_.header->LockSerial(opened.isNamedBySerial);
  ShowCaption(ToQt(data_->SerialNumber()));
  // ShowTables uses the width of the table. The layout has to set it now, because the screen is not
  // shown yet.
  layout()->activate();
  controls_.notices->Clear();
  FindCellNotes();
  ShowTables();
  controls_.header->ReportNotices();
  ShowLoadNotices(opened.notices);
  if (!opened.isNamedBySerial) {
    controls_.header->FocusSerial();
  } else {
    controls_.header->FocusCalNo();
  }
  exec();
  data_.reset();
}

void CalEditor::ShowCaption(const QString& serial) {
  setWindowTitle("Editing calibraition data (" + ToQt(model_->code) + " - " + serial + ")");
}

void CalEditor::FindCellNotes() {
  cellNotes_.clear();
  MemoryGrid grid;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    grid.Clear(kColumnCount);
    data_->GetCalData(page, grid);
    for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
      for (std::int16_t column = 1; column < grid.ColumnCount(); ++column) {
        const Cell cell = {row, column};
        const std::string shown = grid.TextOf(cell);
        const std::string notice = ReadDifferently(shown, data_->CellReadBack(page, cell, shown));
        if (!notice.empty()) {
          cellNotes_[page][cell] = ToQt(notice);
        }
      }
    }
  }
}

void CalEditor::NoteCell(Cell cell, const std::optional<QString>& typed) {
  const std::string stored = controls_.grid->Data().TextOf(cell);
  const std::string difference = typed ? StoredDifferently(FromQt(*typed), stored) : std::string();
  const std::string readBack =
      ReadDifferently(stored, data_->CellReadBack(ShownPage(), cell, stored));
  latestNote_ = ToQt(difference + (difference.empty() || readBack.empty() ? "" : " ") + readBack);
  controls_.grid->Model().SetNote(cell, latestNote_);
  ReportCells();
}

void CalEditor::KeepCellNotes() {
  cellNotes_[ShownPage()] = controls_.grid->Model().Notes();
}

void CalEditor::ShowCellNotes() {
  controls_.grid->Model().SetNotes(cellNotes_[ShownPage()]);
  ReportCells();
}

void CalEditor::ReportCells() {
  controls_.notices->Report(kFixedCell, {});
  const CalGrid& grid = *controls_.grid;
  const QString current = grid.Model().NoteAt(grid.CurrentCell());
  if (!current.isEmpty()) {
    controls_.notices->Report(kCell, NoteAbout(grid.Data(), grid.CurrentCell(), current));
    return;
  }
  const CellNotes& notes = grid.Model().Notes();
  if (!notes.empty()) {
    auto shown = std::ranges::find(notes, latestNote_, &CellNotes::value_type::second);
    shown = shown == notes.end() ? notes.begin() : shown;
    controls_.notices->Report(kCell, NoteAbout(grid.Data(), shown->first, shown->second));
    return;
  }
  const auto other = std::ranges::find_if(cellNotes_, [&](const auto& page) {
    return page.first != ShownPage() && page.first < data_->GetCalPageCount() &&
           !page.second.empty();
  });
  QString elsewhere;
  if (other != cellNotes_.end()) {
    MemoryGrid page;
    page.Clear(kColumnCount);
    data_->GetCalData(other->first, page);
    const auto& [cell, note] = *other->second.begin();
    elsewhere = tr("On the page %1: %2")
                    .arg(ToQt(data_->GetCalPageName(other->first)), NoteAbout(page, cell, note));
  }
  controls_.notices->Report(kCell, elsewhere);
}

void CalEditor::ShowLoadNotices(const std::vector<std::string>& notices) {
  QString text;
  for (const std::string& notice : notices) {
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
  const std::string serial = FromQt(controls_.header->Serial());
  if (serial.empty()) {
    Tell(this, "Please input serial number");
    controls_.header->FocusSerial();
    return;
  }
  const std::string name = DataFileName(serial);
  controls_.header->Store(*data_);
  StoreTables();
  const std::string path = Joined(Joined(gCalibrationDir, data_->ModelNumber()), name);
  if (!UserLetsReplace(this, [&] { return data_->WouldReplace(path); })) {
    return;
  }
  const BusyPointer busy;
  data_->SaveCalibrationDataToFile(path);
  accept();
}

}  // namespace tarvell
