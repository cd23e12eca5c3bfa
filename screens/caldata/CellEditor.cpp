// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CellEditor.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QKeySequence>
#include <QScrollBar>

#include <algorithm>
#include <vector>

#include "core/caldata/EditedCell.h"
#include "core/text/Text.h"
#include "screens/caldata/GridClipboard.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/OneLineValidator.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenReaders.h"

namespace tarvell {

namespace {

constexpr ushort kSpace = 0x20;
constexpr ushort kDelete = 0x7F;

/// What the history calls it.
/// Refuses a table, which the mouse can paste or drop.
class OneCellValidator final : public OneLineValidator {
 public:
  using OneLineValidator::OneLineValidator;

  [[nodiscard]] State validate(QString& text, int& position) const override {
    return text.contains(u'\t') ? Invalid : OneLineValidator::validate(text, position);
  }
};

QString TypingOf(const QString& text) {
  // A menu takes a TAB for the beginning of the column of its keys.
  return CellEditor::tr("typing %1").arg(ToQt(Quoted(FromQt(text))));
}

}  // namespace

CellEditor::CellEditor(CalGrid* grid)
    : grid_(grid),
      txtCell_(new QLineEdit(grid->viewport())),
      txtCellCmb_(new QComboBox(grid->viewport())) {
  txtCell_->setObjectName("txtCell");
  txtCell_->setAccessibleName(tr("New value of the cell"));
  txtCell_->setAccessibleDescription(
      tr("A number with a decimal point. Everything after a comma or a letter is ignored."));
  txtCell_->setToolTip(txtCell_->accessibleDescription());
  txtCell_->setAlignment(Qt::AlignRight);
  txtCell_->setValidator(new OneCellValidator(txtCell_));  // the box owns it
  txtCell_->setAutoFillBackground(true);
  txtCell_->hide();
  txtCellCmb_->setObjectName("txtCellCmb");
  txtCellCmb_->setAccessibleName(tr("Unit of the new value"));
  txtCellCmb_->setAccessibleDescription(tr(
      "The unit that the value is stored in. Choosing another one does not convert the number."));
  txtCellCmb_->setToolTip(txtCellCmb_->accessibleDescription());
  txtCellCmb_->hide();
  ChangeOnlyDeliberately(txtCellCmb_);
  LabelDropDownLists(grid->viewport());

  txtCell_->installEventFilter(this);
  txtCellCmb_->installEventFilter(this);
  grid_->installEventFilter(this);
  grid_->viewport()->installEventFilter(this);
  connect(txtCell_, &QLineEdit::textEdited, this, [this] { touched_ = true; });
  connect(txtCell_, &QLineEdit::inputRejected, this, &CellEditor::RefuseTable);
  connect(txtCell_, &QLineEdit::textChanged, this, &CellEditor::Edited);
  connect(txtCellCmb_, &QComboBox::currentTextChanged, this, &CellEditor::Edited);
  connect(grid_, &QTableView::doubleClicked, this, [this] { Open({}); });
  connect(grid_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &CellEditor::CommitGuarded);

  connect(&grid_->Model(), &QAbstractItemModel::modelReset, this, &CellEditor::Cancel);

  connect(grid_->horizontalHeader(), &QHeaderView::geometriesChanged, this, &CellEditor::PlaceBox);
  connect(grid_->horizontalHeader(), &QHeaderView::sectionResized, this, &CellEditor::PlaceBox);
  connect(grid_->verticalHeader(), &QHeaderView::sectionResized, this, &CellEditor::PlaceBox);
  connect(grid_->horizontalScrollBar(), &QScrollBar::valueChanged, this, &CellEditor::PlaceBox);
  connect(grid_->verticalScrollBar(), &QScrollBar::valueChanged, this, &CellEditor::PlaceBox);
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched == grid_) {
    if (event->type() == QEvent::KeyPress) {
      return GridKeyPressed(*static_cast<QKeyEvent*>(event));
    }
    if (event->type() == QEvent::FocusIn) {
      CommitGuarded();
    }
    if (event->type() == QEvent::FocusOut) {
      tabsOn_ = false;
    }
    return false;
  }
  if (watched == grid_->viewport()) {
    if (event->type() == QEvent::MouseButtonPress) {
      tabsOn_ = false;
    }
    // If an edit is still open although the grid has the focus, storing it failed. Then the click
    // must not reach another cell, or the same error would be reported again.
    return IsOpen() && event->type() == QEvent::MouseButtonPress;
  }
  if (event->type() != QEvent::KeyPress) {
    return false;
  }
  const auto& key = *static_cast<QKeyEvent*>(event);
  return watched == txtCellCmb_ ? UnitKeyPressed(key) : BoxKeyPressed(key);
}

bool CellEditor::GridKeyPressed(const QKeyEvent& event) {
  const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  if (tabsOn_ && isTab && (event.modifiers() & ~Qt::ShiftModifier) == 0) {
    GoByTab(grid_->currentIndex(), event.key() == Qt::Key_Tab);
    return true;
  }
  // Shift, pressed for Shift+Tab, does not count as another key.
  tabsOn_ = tabsOn_ && event.key() == Qt::Key_Shift;
  const bool copies = event.matches(QKeySequence::Copy);
  if (copies || event.matches(QKeySequence::Paste)) {
    copies ? Copy() : Paste();
    return true;
  }
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
    return false;
  }
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Space:
    case Qt::Key_F2:
      Open({});
      return true;
    default:
      break;
  }
  const QString text = event.text();
  const bool printable = !text.isEmpty() && text.at(0).unicode() > kSpace && text.at(0) != kDelete;
  if (!printable || !grid_->currentIndex().isValid()) {
    return false;
  }
  Open(text);
  return true;
}

// While an edit is open, the list of units passes these keys on to the grid; they are not meant for
// it.
void CellEditor::Copy() {
  if (!IsOpen()) {
    CopySelectedCells(*grid_);
  }
}

void CellEditor::Paste() {
  if (!IsOpen()) {
    change_(tr("paste"), [this] {
      for (const PastedCell& pasted : PasteIntoCells(*grid_, rules_)) {
        emit Pasted(pasted.cell);
      }
    });
  }
}

void CellEditor::RefuseTable() {
  Tell(grid_->window(),
       tr("A table cannot be pasted into an open cell. Press Enter or Escape to close "
          "the cell, then paste again."));
}

bool CellEditor::BoxKeyPressed(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Paste) && ClipboardHasTable()) {
    RefuseTable();
    return true;
  }
  switch (event.key()) {
    case Qt::Key_Escape:
      Cancel();
      return true;
    case Qt::Key_Tab:
      if (txtCellCmb_->isVisible()) {
        txtCellCmb_->setFocus();
      } else {
        ReturnByTab(true);
      }
      return true;
    case Qt::Key_Backtab:
      ReturnByTab(false);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      ReturnToGrid((event.modifiers() & Qt::ShiftModifier) != 0 ? -1 : 0);
      return true;
    case Qt::Key_Down:
      ReturnToGrid(1);
      return true;
    case Qt::Key_Up:
      ReturnToGrid(-1);
      return true;
    default:
      return false;
  }
}

bool CellEditor::UnitKeyPressed(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Escape:
      Cancel();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      ReturnToGrid((event.modifiers() & Qt::ShiftModifier) != 0 ? -1 : 0);
      return true;
    case Qt::Key_Tab:
      ReturnByTab(true);
      return true;
    case Qt::Key_Backtab:
      txtCell_->setFocus();
      return true;
    default:
      return false;
  }
}

void CellEditor::OfferUnits(std::int16_t column, const std::string& unit) {
  txtCellCmb_->clear();
  const std::vector<std::string> units = rules_.UnitsOf(column);
  for (const std::string& choice : units) {
    txtCellCmb_->addItem(ToQt(choice));
  }
  txtCellCmb_->setCurrentText(ToQt(ChosenUnit(units, unit)));
  txtCellCmb_->setVisible(!units.empty());
  untouchedUnit_ = txtCellCmb_->currentText();
}

void CellEditor::Open(const QString& typed) {
  const QModelIndex index = grid_->currentIndex();
  if (IsOpen() || !index.isValid()) {
    return;
  }
  if (!grid_->Model().IsEditable(index.column())) {
    emit FixedCellTyped(GridModel::CellAt(index).column);
    return;
  }
  Guarded(grid_->window(), [&] {
    const Cell cell = GridModel::CellAt(index);
    const EditedCell edited = rules_.toEdit(cell, grid_->Data().TextOf(cell));
    const QString shown = typed.isEmpty() ? ToQt(edited.text) : typed;
    OfferUnits(cell.column, edited.unit);
    cell_ = index;
    untouched_ = shown;
    replaced_ = !typed.isEmpty();
    touched_ = false;
    txtCell_->setFont(grid_->font());
    txtCell_->setText(shown);
    grid_->scrollTo(index);
    PlaceBox();
    txtCell_->show();
    txtCell_->setFocus();
    txtCell_->deselect();
    txtCell_->setCursorPosition(static_cast<int>(shown.size()));
  });
}

bool CellEditor::IsChanged() const {
  return replaced_ || txtCell_->text() != untouched_ ||
         txtCellCmb_->currentText() != untouchedUnit_;
}

void CellEditor::Commit() {
  if (!IsOpen()) {
    return;
  }
  if (IsChanged()) {
    const Cell cell = GridModel::CellAt(cell_);
    const QString typed = txtCell_->text();
    const QString unit = txtCellCmb_->currentText();
    const bool isUnitOnly = !replaced_ && typed == untouched_;
    const std::string text = rules_.toStore(cell, FromQt(typed), FromQt(unit));
    Close();
    change_(isUnitOnly ? tr("unit %1").arg(unit) : TypingOf(typed), [&] {
      grid_->Model().SetCellText(cell, text);
      emit Typed(cell, typed);
    });
    return;
  }
  const Cell cell = GridModel::CellAt(cell_);
  Close();
  if (touched_ && !untouched_.isEmpty()) {
    change_(TypingOf(untouched_), [&] { emit TypedAgain(cell); });
  }
}

void CellEditor::CommitGuarded() {
  if (!IsOpen()) {
    return;
  }
  Guarded(
      grid_->window(), [this] { Commit(); },
      [this](const Error& error) {
        // The focus must leave the grid first, or the edit would be committed again.
        txtCell_->setFocus();
        const QSignalBlocker blocker(grid_->selectionModel());
        grid_->SetCurrentCell(GridModel::CellAt(cell_));
        ShowError(grid_->window(), error);
      });
}

void CellEditor::Cancel() {
  // isVisible() would not do: it is false when the screen was closed during an edit.
  if (!txtCell_->isHidden()) {
    Close();
  }
}

std::optional<OpenCell> CellEditor::Edit() const {
  if (!IsOpen()) {
    return std::nullopt;
  }
  return OpenCell{GridModel::CellAt(cell_), FromQt(txtCell_->text()),
                  FromQt(txtCellCmb_->currentText()), touched_ || IsChanged()};
}

std::pair<Cell, std::string> CellEditor::Preview() const {
  const std::optional<OpenCell> edit = Edit();
  if (!edit) {
    return {{kCaptionRow, 0}, {}};
  }
  const auto affixes = rules_.affixes(edit->cell, edit->unit);
  return {edit->cell, affixes
                          ? std::string(affixes->before) + edit->text + std::string(affixes->after)
                          : edit->text};
}

void CellEditor::Reopen(const OpenCell& edit) {
  const QModelIndex index = grid_->Model().IndexAt(edit.cell);
  if (!index.isValid() || !grid_->Model().IsEditable(index.column())) {
    return;
  }
  grid_->SetCurrentCell(edit.cell);
  Open({});
  if (IsOpen()) {
    txtCell_->setText(ToQt(edit.text));
    txtCellCmb_->setCurrentText(ToQt(edit.unit));
    touched_ = edit.isTyped;
  }
}

void CellEditor::ReturnToGrid(int rows) {
  // This stores the edit: the grid commits when it gets the focus.
  grid_->setFocus();
  Cell cell = grid_->CurrentCell();
  cell.row = cell.row + rows;
  if (!IsOpen() && rows != 0 && cell.row >= kFirstDataRow && cell.row < EndOf(grid_->Data())) {
    grid_->SetCurrentCell(cell);
  }
}

void CellEditor::ReturnByTab(bool forward) {
  const QPersistentModelIndex from = cell_;
  grid_->setFocus();
  if (IsOpen()) {
    return;
  }
  GoByTab(from, forward);
}

void CellEditor::GoByTab(const QModelIndex& from, bool forward) {
  const QModelIndex to = grid_->NextEditable(from, forward);
  tabsOn_ = to.isValid();
  if (tabsOn_) {
    grid_->SetCurrentCell(GridModel::CellAt(to));
  } else {
    grid_->Leave(forward);
  }
}

void CellEditor::Close() {
  cell_ = QPersistentModelIndex();
  grid_->setFocus();
  txtCell_->hide();
  txtCellCmb_->hide();
  emit Closed();
}

void CellEditor::PlaceBox() {
  if (!IsOpen()) {
    return;
  }
  QRect box = grid_->visualRect(cell_);
  if (txtCellCmb_->count() > 0) {
    const int unitWidth = std::min(txtCellCmb_->sizeHint().width(), box.width() / 2);
    box.setWidth(box.width() - unitWidth);
    txtCellCmb_->setGeometry(box.right() + 1, box.top(), unitWidth, box.height());
  }
  txtCell_->setGeometry(box);
}

}  // namespace tarvell
