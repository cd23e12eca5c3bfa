// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CalEditor.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QLayout>
#include <QTabBar>

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
#include "screens/caldata/DraftKeeper.h"
#include "screens/caldata/DraftStrip.h"
#include "screens/widgets/AskReplacement.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
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
  controls_.ok->setShortcut(QKeySequence::Save);
  controls_.ok->setToolTip(tr("Saves the data and closes this screen (%1).")
                               .arg(controls_.ok->shortcut().toString(QKeySequence::NativeText)));
  controls_.ok->setAccessibleDescription(controls_.ok->toolTip());
  EnterPressesFocusedButton(this);
  connect(controls_.header, &CalHeaderBlock::SerialChanged, this, &CalEditor::ShowCaption);
  connect(controls_.header, &CalHeaderBlock::Noticed, controls_.notices, &NoticeLine::Report);
  connect(controls_.header, &CalHeaderBlock::Entered, controls_.notices, &NoticeLine::ShowAbout);
  cellEditor_->SetChange(
      [this](const QString& what, const std::function<void()>& change) { Change(what, change); });
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
  drafts_ = new DraftKeeper({.screen = this,
                             .strip = controls_.draft,
                             .notices = controls_.notices,
                             .state = [this] { return Contents(); },
                             .show = [this](const EditorState& draft) { Restore(draft); }});
  WatchChanges();
}

void CalEditor::WatchChanges() {
  const auto changed = [this] { drafts_->Changed(); };
  for (const QLineEdit* box : findChildren<QLineEdit*>()) {
    connect(box, &QLineEdit::textChanged, drafts_, changed);
  }
  for (const QComboBox* box : findChildren<QComboBox*>()) {
    connect(box, &QComboBox::currentIndexChanged, drafts_, changed);
  }
  for (const QTabBar* tabs : findChildren<QTabBar*>()) {
    connect(tabs, &QTabBar::currentChanged, drafts_, changed);
  }
  for (const QAbstractButton* box : findChildren<QCheckBox*>()) {
    connect(box, &QAbstractButton::toggled, drafts_, changed);
  }
  const GridModel* model = &controls_.grid->Model();
  connect(model, &QAbstractItemModel::dataChanged, drafts_, changed);
  connect(model, &QAbstractItemModel::rowsInserted, drafts_, changed);
  connect(model, &QAbstractItemModel::rowsRemoved, drafts_, changed);
  connect(model, &QAbstractItemModel::modelReset, drafts_, changed);
  connect(cellEditor_.get(), &CellEditor::Closed, drafts_, changed);
}

EditorState CalEditor::Contents() const {
  EditorState contents = {.header = controls_.header->Boxes(),
                          .pages = PagesOf(*data_, model_->hasOption),
                          .shownPage = ShownPage(),
                          .openCell = cellEditor_->Edit()};
  if (model_->hasOption) {
    contents.option = HasOption();
  }
  DraftPage& shown = contents.pages.at(static_cast<std::size_t>(ShownPage()));
  const GridModel& model = controls_.grid->Model();
  shown = {FromQt(MemberSerial()), RowsOf(model.Grid()), model.Origins()};
  std::erase_if(shown.origins, [](const auto& cell) { return cell.second == Origin::File; });
  return contents;
}

void CalEditor::Restore(const EditorState& draft) {
  const QString what = tr("restoring the draft");
  cellEditor_->Cancel();
  const EditorState now = Contents();
  const std::size_t count = std::min(now.pages.size(), draft.pages.size());
  for (std::size_t index = 0; index < count; ++index) {
    const auto page = static_cast<std::int16_t>(index);
    if (draft.pages[index] == now.pages[index]) {
      continue;
    }
    if (page >= data_->GetCalPageCount()) {
      // The page that the option hides.
      Change(what, [&] { GoTo(ShownPage(), true); });
    }
    GoTo(page, HasOption());
    Change(what, [&] { RestorePage(draft.pages[index]); });
  }
  if (model_->hasOption && draft.option && *draft.option != HasOption()) {
    Change(what, [&] { GoTo(0, *draft.option); });
  }
  GoTo(draft.shownPage < data_->GetCalPageCount() ? draft.shownPage : std::int16_t{0}, HasOption());
  controls_.header->ShowBoxes(draft.header);
  if (draft.openCell) {
    cellEditor_->Reopen(*draft.openCell);
  }
}

void CalEditor::RestorePage(const DraftPage& page) {
  controls_.grid->Fill([&](MemoryGrid& grid) {
    grid.SetRowCount(1);
    for (const std::vector<std::string>& row : page.rows) {
      grid.InsertRow(EndOf(grid), row);
    }
  });
  controls_.grid->Model().SetOrigins(page.origins);
  controls_.grid->Model().SetNotes(NotesOf(controls_.grid->Data(), ShownPage()));
  ShowMemberSerial(ToQt(page.serialNumber));
  ReportCells();
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
  history_.clear();
  FindCellNotes();
  ShowTables();
  controls_.header->ReportNotices();
  ShowLoadNotices(opened.notices);
  if (!opened.isNamedBySerial) {
    controls_.header->FocusSerial();
  } else {
    controls_.header->FocusCalNo();
  }
  drafts_->Begin(modelCode, isNew ? std::string() : ListedDataSet(index).FilePath);
  exec();
  drafts_->End();
  data_.reset();
}

void CalEditor::Change(const QString& what, const std::function<void()>& change, int run) {
  const PageState before = State();
  change();
  const PageState after = State();
  if (after != before) {
    history_.push(new EditStep(
        what, before, after,
        [this](const PageState& state, const PageState& other) { ShowState(state, other); }, run));
  }
}

PageState CalEditor::State() const {
  return {ShownPage(), HasOption(), MemberSerial(), controls_.grid->Model().State()};
}

void CalEditor::ShowState(const PageState& state, const PageState& other) {
  controls_.grid->Show(state.table, FirstDifference(state.table, other.table));
  ShowMemberSerial(state.memberSerial);
  ReportCells();
}

void CalEditor::Undo() {
  if (cellEditor_->IsOpen() || !history_.canUndo()) {
    return;
  }
  const auto& step = static_cast<const EditStep&>(*history_.command(history_.index() - 1));
  Guarded(this, [&] {
    GoTo(step.Before().page, step.Before().hasOption);
    history_.undo();
  });
}

void CalEditor::Redo() {
  if (cellEditor_->IsOpen() || !history_.canRedo()) {
    return;
  }
  const auto& step = static_cast<const EditStep&>(*history_.command(history_.index()));
  Guarded(this, [&] {
    GoTo(step.After().page, step.After().hasOption);
    history_.redo();
  });
}

void CalEditor::ShowCaption(const QString& serial) {
  setWindowTitle("Editing calibraition data (" + ToQt(model_->code) + " - " + serial + ")");
}

CellNotes CalEditor::NotesOf(const MemoryGrid& grid, std::int16_t page) const {
  CellNotes notes;
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    for (std::int16_t column = 1; column < grid.ColumnCount(); ++column) {
      const Cell cell = {row, column};
      const std::string shown = grid.TextOf(cell);
      const std::string notice = ReadDifferently(shown, data_->CellReadBack(page, cell, shown));
      if (!notice.empty()) {
        notes[cell] = ToQt(notice);
      }
    }
  }
  return notes;
}

void CalEditor::FindCellNotes() {
  cellNotes_.clear();
  MemoryGrid grid;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    grid.Clear(kColumnCount);
    data_->GetCalData(page, grid);
    CellNotes notes = NotesOf(grid, page);
    if (!notes.empty()) {
      cellNotes_[page] = std::move(notes);
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
  drafts_->Saved();
  accept();
}

}  // namespace tarvell
