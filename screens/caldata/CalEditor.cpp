// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CalEditor.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QLayout>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <optional>
#include <utility>

#include "core/caldata/CellNotices.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/caldata/TableRows.h"
#include "core/caldata/ValuesToEnter.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CalHeaderBlock.h"
#include "screens/caldata/CellEditor.h"
#include "screens/caldata/CertificateFiles.h"
#include "screens/caldata/DataSetPrinting.h"
#include "screens/caldata/DraftKeeper.h"
#include "screens/caldata/DraftStrip.h"
#include "screens/caldata/EditorCurve.h"
#include "screens/caldata/SlipWatch.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

// Subjects of notices.
constexpr const char* kFixedCell = "fixed cell";

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

std::map<Cell, std::string> TextsOf(const CellNotes& notes) {
  std::map<Cell, std::string> texts;
  for (const auto& [cell, note] : notes) {
    texts[cell] = FromQt(note);
  }
  return texts;
}

OpenedDataSet Opened(std::int16_t index, const Model& model, CalEditor::Begin begin) {
  const BusyPointer busy;
  if (index == CalEditor::kNewData) {
    return NewDataSet(model);
  }
  const CalFileInfo listed = ListedDataSet(index);
  switch (begin) {
    case CalEditor::Begin::AsSaved:
      break;
    case CalEditor::Begin::NewCalibration:
      return NewCalibration(model, listed, Today());
    case CalEditor::Begin::Copy:
      return CopyOfDataSet(model, listed, Today());
  }
  return OpenDataSet(model, listed);
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
  connect(controls_.header, &CalHeaderBlock::DateEntered, this, &CalEditor::ReportValuesToEnter);
  connect(controls_.header, &CalHeaderBlock::CalDateChanged, this, [this] {
    if (const std::optional<FileDate> date = controls_.header->CalDate()) {
      curve_->SetDate(*date);
    }
  });
  connect(controls_.header, &CalHeaderBlock::Noticed, controls_.notices, &NoticeLine::Report);
  connect(controls_.header, &CalHeaderBlock::Entered, controls_.notices, &NoticeLine::ShowAbout);
  cellEditor_->SetChange(
      [this](const QString& what, const std::function<void()>& change) { Change(what, change); });
  connect(cellEditor_.get(), &CellEditor::Typed, this,
          [this](Cell cell, const QString& typed) { NoteCell(cell, typed); });
  connect(cellEditor_.get(), &CellEditor::TypedAgain, this,
          [this](Cell cell) { controls_.grid->Model().SetOrigin(cell, Origin::Operator); });
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
  MakeActions();
  MakeFileMenu();
  curve_ = new EditorCurve({.screen = this,
                            .grid = controls_.grid,
                            .cells = cellEditor_.get(),
                            .menu = fileMenu_,
                            .notices = controls_.notices,
                            .page = [this] { return ShownPage(); }});
  slips_ = new SlipWatch({.grid = controls_.grid,
                          .tabs = controls_.tabs,
                          .notices = controls_.notices,
                          .earlier = &curve_->Earlier(),
                          .page = [this] { return ShownPage(); },
                          .origins = [this](std::int16_t page) -> const CellOrigins& {
                            return MarksOf(page).origins;
                          }},
                         this);
  // The option adds a page without changing the table.
  connect(&history_, &QUndoStack::indexChanged, slips_, &SlipWatch::LookSoon);
  drafts_ = new DraftKeeper(
      {.screen = this,
       .strip = controls_.draft,
       .notices = controls_.notices,
       .state = [this] { return Contents(); },
       .show = [this](const EditorState& draft, const auto& shown) { Restore(draft, shown); },
       .canRedo = [this] { return history_.canRedo(); },
       .pointColumns =
           [this] {
             return static_cast<std::size_t>(controls_.grid->Model().FirstEditableColumn());
           }});
  WatchChanges();
  const auto modelNow = [this]() -> const Model& { return *model_; };
  const auto dataNow = [this]() -> const cifCaldata& { return *data_; };
  const auto contentsNow = [this] {
    Cells().Commit();
    return Contents();
  };
  certificates_ =
      new CertificateFiles({.screen = this,
                            .grid = controls_.grid,
                            .menu = fileMenu_,
                            .notices = controls_.notices,
                            .earlier = &curve_->Earlier(),
                            .model = modelNow,
                            .data = dataNow,
                            .contents = contentsNow,
                            .isSerialFixed = [this] { return controls_.header->IsSerialLocked(); },
                            .templateSerial = [this] { return templateSerial_; },
                            .take =
                                [this](const QString& what, const EditorState& after) {
                                  TakeContents(what, after);
                                  // In a field of the header, Ctrl+Z would not take the import
                                  // back.
                                  controls_.grid->setFocus();
                                }});
  connect(&history_, &QUndoStack::indexChanged, certificates_, &CertificateFiles::ForgetExport);
  OfferPrinting({.screen = this,
                 .menu = fileMenu_,
                 .header = controls_.header,
                 .earlier = &curve_->Earlier(),
                 .model = modelNow,
                 .data = dataNow,
                 .contents = contentsNow,
                 .bytesToSave =
                     [this] {
                       StoreContents();
                       return data_->BytesToSave();
                     },
                 .path = [this] { return filePath_; }});
}

void CalEditor::StoreContents() {
  controls_.header->Store(*data_);
  StoreTables();
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
  connect(&controls_.grid->Model(), &GridModel::Changed, drafts_, changed);
  connect(cellEditor_.get(), &CellEditor::Closed, drafts_, changed);
}

EditorState CalEditor::Contents() {
  EditorState contents = {.header = controls_.header->Boxes(),
                          .pages = PagesOf(*data_, model_->hasOption),
                          .shownPage = ShownPage(),
                          .openCell = cellEditor_->Edit()};
  if (model_->hasOption) {
    contents.option = HasOption();
  }
  const GridModel& shown = controls_.grid->Model();
  for (std::size_t index = 0; index < contents.pages.size(); ++index) {
    const auto page = static_cast<std::int16_t>(index);
    DraftPage& kept = contents.pages[index];
    if (page == ShownPage()) {
      kept = {FromQt(MemberSerial()), RowsOf(shown.Grid()), shown.Origins(),
              TextsOf(shown.Notes())};
    } else if (page < data_->GetCalPageCount() || marks_.contains(page)) {
      kept.origins = MarksOf(page).origins;
      kept.notes = TextsOf(MarksOf(page).notes);
    }
    std::erase_if(kept.origins, [](const auto& cell) { return cell.second == Origin::File; });
  }
  return contents;
}

void CalEditor::Restore(const EditorState& draft, const WholeStep::Shown& shown) {
  TakeContents(tr("restoring the draft"), draft, shown);
  // In a field of the header, Ctrl+Z would not take the draft back.
  controls_.grid->setFocus();
  if (draft.openCell) {
    cellEditor_->Reopen(*draft.openCell);
  }
}

void CalEditor::TakeContents(const QString& what, const EditorState& contents,
                             const WholeStep::Shown& shown) {
  const EditorState before = Contents();
  ShowContents(contents);
  const EditorState after = Contents();
  if (!HaveSameContent(after, before)) {
    history_.push(new WholeStep(
        what, before, after, [this] { return Contents(); },
        [this](const EditorState& state) { ShowContents(state); }, shown));
  }
}

void CalEditor::ShowContents(const EditorState& contents) {
  cellEditor_->Cancel();
  const EditorState now = Contents();
  const std::size_t count = std::min(now.pages.size(), contents.pages.size());
  for (std::size_t index = 0; index < count; ++index) {
    const auto page = static_cast<std::int16_t>(index);
    if (contents.pages[index] == now.pages[index]) {
      continue;
    }
    if (page >= data_->GetCalPageCount()) {
      // The page that the option hides.
      GoTo(ShownPage(), true);
    }
    GoTo(page, HasOption());
    RestorePage(contents.pages[index]);
  }
  if (model_->hasOption && contents.option && *contents.option != HasOption()) {
    GoTo(0, *contents.option);
  }
  GoTo(contents.shownPage < data_->GetCalPageCount() ? contents.shownPage : std::int16_t{0},
       HasOption());
  controls_.header->ShowBoxes(contents.header);
  ReportValuesToEnter();
}

void CalEditor::RestorePage(const DraftPage& page) {
  controls_.grid->Fill([&](MemoryGrid& grid) {
    grid.SetRowCount(1);
    for (const std::vector<std::string>& row : page.rows) {
      grid.InsertRow(EndOf(grid), row);
    }
  });
  controls_.grid->Model().SetOrigins(page.origins);
  CellNotes notes = NotesOf(controls_.grid->Data(), ShownPage());
  for (const auto& [cell, note] : page.notes) {
    notes[cell] = ToQt(note);
  }
  controls_.grid->Model().SetNotes(notes);
  ShowMemberSerial(ToQt(page.serialNumber));
  ReportCells();
}

void CalEditor::SetupDat(std::int16_t index, const std::string& modelCode, Begin begin) {
  model_ = FindModel(modelCode);
  if (model_ == nullptr || model_->create == nullptr) {
    throw Error(ErrorKind::Index,
                "The program cannot edit data of the model \"" + modelCode + "\".");
  }
  const bool isNew = index == kNewData;
  OpenedDataSet opened = Opened(index, *model_, begin);
  data_ = std::move(opened.data);

  const std::string serial =
      isNew && !TakesTemplateSerial() ? std::string() : data_->SerialNumber();
  templateSerial_ = isNew ? serial : std::string();
  controls_.header->Show(ToQt(modelCode), ToQt(serial), *data_);
  const LoadedHeader& header = data_->HeaderOfLoad();
  const bool isAsSaved = begin == Begin::AsSaved;
  controls_.header->MarkDates(isNew || (isAsSaved && header.lacksCalDate),
                              isNew || (isAsSaved && header.lacksDueDate));
  controls_.header->LockSerial(opened.isNamedBySerial);
  ShowCaption(ToQt(data_->SerialNumber()));
  // ShowTables uses the width of the table. The layout has to set it now, because the screen is not
  // shown yet.
  layout()->activate();
  controls_.notices->Clear();
  history_.clear();
  marks_.clear();
  fileValues_ = opened.fileValues;
  controls_.grid->RememberWidthsAs(ToQt(modelCode));
  ShowTables();
  controls_.header->ReportNotices();
  ShowLoadNotices(opened.notices);
  if (!opened.isNamedBySerial) {
    controls_.header->FocusSerial();
  } else {
    controls_.header->FocusCalNo();
  }
  const bool hasFile = !isNew && begin != Begin::Copy;
  filePath_ = hasFile ? ListedDataSet(index).FilePath : std::string();
  showHistory_->setEnabled(hasFile);
  curve_->Begin(*model_, *data_, filePath_);
  drafts_->Start(modelCode, filePath_,
                 begin == Begin::NewCalibration ? DraftKind::NewCalibration : DraftKind::Data);
  slips_->Begin(*model_, *data_);
  exec();
  slips_->End();
  drafts_->End();
  curve_->End();
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
    ReportValuesToEnter();
  }
}

PageState CalEditor::State() const {
  return {ShownPage(), HasOption(), MemberSerial(), controls_.grid->Model().State()};
}

void CalEditor::ShowState(const PageState& state, const PageState& other) {
  const bool isSame = state.table == other.table;
  controls_.grid->Show(state.table, isSame ? controls_.grid->CurrentCell()
                                           : FirstDifference(state.table, other.table));
  ShowMemberSerial(state.memberSerial);
  controls_.notices->Report(kPoint, {});
  ReportValuesToEnter();
  ReportCells();
}

void CalEditor::Undo() {
  if (history_.canUndo()) {
    const auto& step = static_cast<const HistoryStep&>(*history_.command(history_.index() - 1));
    Go(step.Before(), [this] { history_.undo(); });
  }
}

void CalEditor::Redo() {
  auto* box = qobject_cast<QLineEdit*>(focusWidget());
  if (box != nullptr && (cellEditor_->IsOpen() || controls_.header->isAncestorOf(box))) {
    // Ctrl+Y; a box takes only the key of the desktop.
    box->redo();
    return;
  }
  if (history_.canRedo()) {
    const auto& step = static_cast<const HistoryStep&>(*history_.command(history_.index()));
    Go(step.After(), [this] { history_.redo(); });
  }
}

void CalEditor::Go(const PageState& state, const std::function<void()>& go) {
  if (cellEditor_->IsOpen() || controls_.header->isAncestorOf(focusWidget())) {
    return;
  }
  Guarded(this, [&] {
    GoTo(state.page, state.hasOption);
    go();
  });
}

void CalEditor::MakeActions() {
  undo_ = new QAction(this);
  redo_ = new QAction(this);
  undo_->setShortcut(Qt::CTRL | Qt::Key_Z);
  redo_->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
  connect(undo_, &QAction::triggered, this, &CalEditor::Undo);
  connect(redo_, &QAction::triggered, this, &CalEditor::Redo);
  const auto show = [](QAction* action, const QString& act, QString what) {
    action->setEnabled(!what.isEmpty());
    action->setText((act + ' ' + what.replace('&', "&&")).trimmed());
  };
  const auto showBoth = [this, show] {
    show(undo_, tr("&Undo"), history_.undoText());
    show(redo_, tr("&Redo"), history_.redoText());
  };
  connect(&history_, &QUndoStack::indexChanged, this, showBoth);
  showBoth();
  addActions({undo_, redo_});
  connect(controls_.grid, &CalGrid::MenuWanted, this, &CalEditor::ShowMenu);
}

void CalEditor::MakeFileMenu() {
  fileMenu_ = new QMenu(this);
  fileMenu_->setObjectName("mnuFile");
  showHistory_ = fileMenu_->addAction(tr("&History..."));
  showHistory_->setObjectName("mnuHistory");
  connect(showHistory_, &QAction::triggered, this, [this] {
    Guarded(this, [this] {
      frmHistory({.path = filePath_,
                  .model = model_,
                  .whyNotPutBack = tr("Close the editor first, then open the history from "
                                      "the menu.")},
                 this)
          .exec();
    });
  });
  connect(controls_.file, &QPushButton::clicked, this, [this] {
    fileMenu_->popup(controls_.file->mapToGlobal(controls_.file->rect().bottomLeft()));
  });
}

void CalEditor::ShowMenu(const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions({undo_, redo_});
  menu->addSeparator();
  // The keys are those of the CellEditor; the menu only names them.
  const auto add = [&](const QString& text, QKeySequence::StandardKey key,
                       void (CellEditor::*act)()) {
    QAction* action = menu->addAction(text, cellEditor_.get(), act);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
  };
  add(tr("&Copy"), QKeySequence::Copy, &CellEditor::Copy);
  add(tr("&Paste"), QKeySequence::Paste, &CellEditor::Paste);
  if (const QList<QAction*> points = PointActions(); !points.isEmpty()) {
    menu->addSeparator();
    menu->addActions(points);
  }
  menu->popup(place);
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

CalEditor::CellMarks& CalEditor::MarksOf(std::int16_t page) {
  const auto known = marks_.find(page);
  return known != marks_.end() ? known->second : marks_[page] = FirstMarksOf(page);
}

CalEditor::CellMarks CalEditor::FirstMarksOf(std::int16_t page) const {
  CellMarks marks;
  MemoryGrid grid;
  grid.Clear(kTableColumns);
  data_->GetCalData(page, grid);
  marks.notes = NotesOf(grid, page);
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    for (std::int16_t column = 1; column < grid.ColumnCount(); ++column) {
      const Cell cell = {row, column};
      const std::string shown = grid.TextOf(cell);
      const bool isEntered = column >= controls_.grid->Model().FirstEditableColumn() &&
                             data_->AffixesOf(page, cell, "").has_value();
      const Origin ofLoad = data_->OriginOfLoad(page, cell);
      const Origin origin = ofLoad == Origin::File ? fileValues_ : ofLoad;
      if (isEntered && !shown.empty() && IsToEnter(origin)) {
        marks.origins[cell] = origin;
      }
    }
  }
  return marks;
}

void CalEditor::NoteCell(Cell cell, const std::optional<QString>& typed) {
  const std::string stored = controls_.grid->Data().TextOf(cell);
  const std::string difference = typed ? StoredDifferently(FromQt(*typed), stored) : std::string();
  const std::string readBack =
      ReadDifferently(stored, data_->CellReadBack(ShownPage(), cell, stored));
  latestNote_ = ToQt(difference + (difference.empty() || readBack.empty() ? "" : " ") + readBack);
  controls_.grid->Model().SetNote(cell, latestNote_);
  controls_.grid->Model().SetOrigin(cell, Origin::Operator);
  ReportCells();
}

void CalEditor::KeepCellMarks() {
  const GridModel& shown = controls_.grid->Model();
  marks_[ShownPage()] = {shown.Notes(), shown.Origins()};
}

void CalEditor::ShowCellMarks() {
  const CellMarks& marks = MarksOf(ShownPage());
  controls_.grid->Model().SetNotes(marks.notes);
  controls_.grid->Model().SetOrigins(marks.origins);
  ReportValuesToEnter();
  ReportCells();
}

int CalEditor::CountOf(Origin origin) {
  int count = 0;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    const CellOrigins& origins =
        page == ShownPage() ? controls_.grid->Model().Origins() : MarksOf(page).origins;
    count += static_cast<int>(
        std::ranges::count(origins, origin, [](const auto& cell) { return cell.second; }));
  }
  return count;
}

void CalEditor::ReportValuesToEnter() {
  controls_.notices->SetRemark(
      ToQt(RemarkOn({.defaults = CountOf(Origin::Template),
                     .isCalDateDefault = controls_.header->IsCalDateDefault(),
                     .isDueDateDefault = controls_.header->IsDueDateDefault(),
                     .earlier = CountOf(Origin::Earlier)})));
}

std::vector<CalEditor::NotedCell> CalEditor::NotedCells() {
  std::vector<NotedCell> noted;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    const CellNotes& notes =
        page == ShownPage() ? controls_.grid->Model().Notes() : MarksOf(page).notes;
    for (const auto& [cell, note] : notes) {
      noted.push_back({page, cell, note});
    }
  }
  return noted;
}

void CalEditor::ReportCells() {
  controls_.notices->Report(kFixedCell, {});
  const std::vector<NotedCell> noted = NotedCells();
  const auto rank = [&](const NotedCell& found) {
    return found.page != ShownPage()                     ? 0
           : found.cell == controls_.grid->CurrentCell() ? 3
           : found.note == latestNote_                   ? 2
                                                         : 1;
  };
  const auto shown = std::ranges::max_element(noted, {}, rank);
  if (shown == noted.end()) {
    controls_.notices->Report(kCellNotice, {});
    return;
  }
  QString about;
  if (shown->page == ShownPage()) {
    about = NoteAbout(controls_.grid->Data(), shown->cell, shown->note);
  } else {
    MemoryGrid page;
    page.Clear(kTableColumns);
    data_->GetCalData(shown->page, page);
    about = tr("On the page %1: %2")
                .arg(ToQt(data_->GetCalPageName(shown->page)),
                     NoteAbout(page, shown->cell, shown->note));
  }
  if (noted.size() > 1) {
    about.prepend(tr("Marked cell %1 of %2: ").arg(shown - noted.begin() + 1).arg(noted.size()));
  }
  controls_.notices->Report(kCellNotice, about);
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

void CalEditor::reject() {
  QString reason;
  if (drafts_->Keep(reason) ||
      CurrentQuestions().Ask(this, {.text = tr("What was typed is not kept as a draft. Close "
                                               "without saving?"),
                                    .icon = QMessageBox::Warning,
                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                    .defaultButton = QMessageBox::No,
                                    .detail = reason}) == QMessageBox::Yes) {
    QDialog::reject();
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
  StoreContents();
  const std::string path = Joined(Joined(gCalibrationDir, data_->ModelNumber()), name);
  const bool isSaved = SavedWithHistory(
      this, [&] { return data_->WouldReplace(path); },
      [&](Earlier earlier) { data_->SaveCalibrationDataToFile(path, earlier); });
  if (!isSaved) {
    return;
  }
  savedSerial_ = serial;
  drafts_->Saved();
  accept();
}

}  // namespace tarvell
