// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "calscreens/CellEditor.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScrollBar>

#include "common/Guard.h"
#include "common/QtText.h"

namespace tarvell {

namespace {

constexpr ushort kBlank = 0x20;
constexpr ushort kDelete = 0x7F;

std::int16_t GridRow(const QModelIndex& cell) {
  return static_cast<std::int16_t>(cell.row() + 1);
}

std::int16_t GridColumn(const QModelIndex& cell) {
  return static_cast<std::int16_t>(cell.column());
}

}  // namespace

CellEditor::CellEditor(CalGrid* grid)
    : QObject(grid), grid_(grid), txtCell_(new QLineEdit(grid->viewport())) {
  txtCell_->setObjectName("txtCell");
  txtCell_->setAccessibleName(tr("New value of the cell"));
  txtCell_->setAlignment(Qt::AlignRight);
  txtCell_->setAutoFillBackground(true);
  txtCell_->hide();

  txtCell_->installEventFilter(this);
  grid_->installEventFilter(this);
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
    return false;
  }
  return event->type() == QEvent::KeyPress && BoxKeyPressed(*static_cast<QKeyEvent*>(event));
}

bool CellEditor::GridKeyPressed(const QKeyEvent& event) {
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
    return false;
  }
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // Never passed on, they would press the screen's default button.
    case Qt::Key_Backspace:
    case Qt::Key_Space:
      Open({});
      return true;
    default:
      break;
  }
  const QString text = event.text();
  const bool printable = !text.isEmpty() && text.at(0).unicode() > kBlank && text.at(0) != kDelete;
  if (!printable || !grid_->currentIndex().isValid() ||
      grid_->CurrentColumn() < grid_->Model().FirstEditableColumn()) {
    return false;
  }
  Open(text);
  return true;
}

bool CellEditor::BoxKeyPressed(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Escape:
      Cancel();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      ReturnToGrid(0);
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

void CellEditor::Open(const QString& typed) {
  const QModelIndex cell = grid_->currentIndex();
  if (IsOpen() || !cell.isValid() || cell.column() < grid_->Model().FirstEditableColumn()) {
    return;
  }
  Guarded(grid_->window(), [&] {
    const std::string text = grid_->Data().CellText(GridRow(cell), GridColumn(cell));
    const QString shown =
        typed.isEmpty() ? ToQt(rules_.textToEdit(GridColumn(cell), GridRow(cell), text)) : typed;
    cell_ = cell;
    untouched_ = shown;
    replaced_ = !typed.isEmpty();
    txtCell_->setFont(grid_->font());
    txtCell_->setText(shown);
    grid_->scrollTo(cell);
    PlaceBox();
    txtCell_->show();
    txtCell_->setFocus();
    txtCell_->deselect();
    txtCell_->setCursorPosition(static_cast<int>(shown.size()));
  });
}

void CellEditor::Commit() {
  if (!IsOpen()) {
    return;
  }
  if (replaced_ || txtCell_->text() != untouched_) {
    const std::int16_t row = GridRow(cell_);
    const std::int16_t column = GridColumn(cell_);
    grid_->Model().SetCellText(row, column,
                               rules_.textToStore(column, row, FromQt(txtCell_->text())));
  }
  Close();
}

void CellEditor::CommitGuarded() {
  if (!IsOpen()) {
    return;
  }
  Guarded(
      grid_->window(), [this] { Commit(); },
      [this](const Error& error) {
        // Back into the box first: the grid getting the focus back would commit again.
        txtCell_->setFocus();
        const QSignalBlocker blocker(grid_->selectionModel());
        grid_->setCurrentIndex(cell_);
        ShowError(grid_->window(), error);
      });
}

void CellEditor::Cancel() {
  if (txtCell_->isVisible()) {
    Close();
  }
}

void CellEditor::ReturnToGrid(int rows) {
  // Getting the focus back commits.
  grid_->setFocus();
  const int row = grid_->currentIndex().row() + rows;
  if (!IsOpen() && rows != 0 && row >= 0 && row < grid_->Model().rowCount()) {
    grid_->setCurrentIndex(grid_->Model().index(row, grid_->currentIndex().column()));
  }
}

void CellEditor::Close() {
  cell_ = QPersistentModelIndex();
  grid_->setFocus();
  txtCell_->hide();
}

void CellEditor::PlaceBox() {
  if (IsOpen()) {
    txtCell_->setGeometry(grid_->visualRect(cell_));
  }
}

}  // namespace tarvell
