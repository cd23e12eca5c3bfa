// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CalGrid.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHideEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "screens/widgets/PaleSelection.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

constexpr float kTwipsPerPixel = 15;
constexpr int kRowPadding = 6;

}  // namespace

CalGrid::CalGrid(QWidget* parent) : EditorTable(parent), model_(new GridModel(this)) {
  setModel(model_);
  // A CellEditor edits the cells: it knows the formats of the models.
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setItemDelegate(new PaleSelection(this));
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setWordWrap(false);
  // By columns, the right end of a wide one could not be reached.
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kRowPadding);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
    if (!isSharing_) {
      usersWidths_.clear();
      for (int column = 0; column < horizontalHeader()->count(); ++column) {
        usersWidths_.push_back(columnWidth(column));
      }
    }
  });
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
}

void CalGrid::Fill(const std::function<void(MemoryGrid& grid)>& fill) {
  model_->Fill([&](MemoryGrid& grid) {
    grid.SetWidth(static_cast<float>(width()) * kTwipsPerPixel);
    fill(grid);
  });
  if (isVisible()) {
    ShareWidth();
  } else {
    // Its width is not known yet.
    isShareDue_ = true;
  }
  if (Data().RowCount() > 1) {
    SetCurrentCell({kFirstDataRow, static_cast<std::int16_t>(model_->FirstEditableColumn())});
  }
}

void CalGrid::RememberWidthsAs(const QString& name) {
  widthsKey_ = "columns/" + name;
  usersWidths_ = RememberedNumbers(widthsKey_);
}

void CalGrid::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  if (isShareDue_) {
    ShareWidth();
  }
}

void CalGrid::hideEvent(QHideEvent* event) {
  QTableView::hideEvent(event);
  if (!event->spontaneous() && !usersWidths_.empty()) {
    Remember(widthsKey_, usersWidths_);
  }
}

void CalGrid::Show(const GridState& state, Cell cell) {
  model_->SetState(state);
  ShareWidth();
  GoNear(
      {cell.row, std::max(cell.column, static_cast<std::int16_t>(model_->FirstEditableColumn()))});
}

void CalGrid::GoNear(Cell cell) {
  const GridRow last = EndOf(Data()) + (-1);
  if (last >= kFirstDataRow) {
    SetCurrentCell({std::clamp(cell.row, kFirstDataRow, last), cell.column});
    scrollTo(currentIndex());
  }
}

Cell CalGrid::CurrentCell() const {
  return currentIndex().isValid() ? GridModel::CellAt(currentIndex()) : Cell{kCaptionRow, 0};
}

std::pair<GridRow, GridRow> CalGrid::SelectedRows() const {
  const QModelIndexList selected = selectionModel()->selectedIndexes();
  GridRow first = CurrentCell().row;
  GridRow last = first;
  if (selected.contains(currentIndex())) {
    for (const QModelIndex& cell : selected) {
      first = std::min(first, GridModel::CellAt(cell).row);
      last = std::max(last, GridModel::CellAt(cell).row);
    }
  }
  return {first, last};
}

void CalGrid::SetCurrentCell(Cell cell) {
  start_ = model_->IndexAt(cell);
  // The table itself would extend the selection when Shift is held.
  selectionModel()->setCurrentIndex(start_, QItemSelectionModel::ClearAndSelect);
}

void CalGrid::RemoveRows(GridRow first, GridRow last) {
  const std::int16_t column = CurrentCell().column;
  for (GridRow row = last; row >= first; row = row + (-1)) {
    model_->RemoveRow(row);
  }
  GoNear({first, column});
}

QModelIndex CalGrid::NextEditable(const QModelIndex& cell, bool forward) const {
  const int columns = model_->columnCount();
  const int end = forward ? columns * model_->rowCount() : -1;
  const int step = forward ? 1 : -1;
  for (int place = cell.row() * columns + cell.column() + step; place != end; place += step) {
    if (model_->IsEditable(place % columns)) {
      return model_->index(place / columns, place % columns);
    }
  }
  return {};
}

QModelIndex CalGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const QModelIndex cell = QTableView::moveCursor(action, modifiers);
  const bool toEdge = action == MoveHome || action == MoveEnd;
  if (!toEdge || !cell.isValid() || model_->IsEditable(cell.column())) {
    return cell;
  }
  const int column =
      action == MoveHome ? model_->FirstEditableColumn() : model_->LastEditableColumn();
  return model_->IsEditable(column) ? model_->index(cell.row(), column) : cell;
}

void CalGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
  const QPoint besideCell = visualRect(currentIndex()).bottomLeft();
  emit MenuWanted(isByMouse ? event->globalPos() : viewport()->mapToGlobal(besideCell));
}

void CalGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  ShareWidth();
  // What the user types must be seen, and so must its point where there is room for both.
  horizontalScrollBar()->setValue(0);
  if (currentIndex().isValid()) {
    scrollTo(currentIndex());
  }
}

void CalGrid::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
  if (!command.testFlag(QItemSelectionModel::Current)) {
    start_ = QPersistentModelIndex();
  }
  if (!start_.isValid()) {
    QTableView::setSelection(rect, command);
    return;
  }
  // The table itself would begin where the user last selected something, before SetCurrentCell.
  const QModelIndex end = currentIndex();
  const auto [top, bottom] = std::minmax({start_.row(), end.row()});
  const auto [left, right] = std::minmax({start_.column(), end.column()});
  selectionModel()->select(QItemSelection(model_->index(top, left), model_->index(bottom, right)),
                           command);
}

QItemSelectionModel::SelectionFlags CalGrid::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const {
  if (event != nullptr && event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<const QKeyEvent*>(event);
    const bool toEdge = key.key() == Qt::Key_Home || key.key() == Qt::Key_End;
    // The toolkit would go there and select nothing else.
    if (toEdge && key.modifiers().testFlags(Qt::ControlModifier | Qt::ShiftModifier)) {
      return QItemSelectionModel::SelectCurrent;
    }
  }
  return QTableView::selectionCommand(index, event);
}

std::vector<int> CalGrid::Proportions() const {
  const auto isWidth = [](int width) { return width > 0 && width < QWIDGETSIZE_MAX; };
  const std::int16_t columns = Data().ColumnCount();
  if (usersWidths_.size() == static_cast<std::size_t>(columns) &&
      std::ranges::all_of(usersWidths_, isWidth)) {
    return usersWidths_;
  }
  std::vector<int> widths;
  for (std::int16_t c = 0; c < columns; ++c) {
    widths.push_back(Data().ColumnWidth(c));
  }
  return widths;
}

std::vector<int> CalGrid::LeastWidths() const {
  std::vector<int> leasts;
  for (int column = 0; column < horizontalHeader()->count(); ++column) {
    leasts.push_back(horizontalHeader()->sectionSizeHint(column));
  }
  if (!leasts.empty()) {
    // Without the name of its point or member, a row says nothing.
    leasts.front() = std::max(leasts.front(), sizeHintForColumn(0));
  }
  int missing = std::accumulate(leasts.begin(), leasts.end(), -viewport()->width());
  if (missing <= 0) {
    return leasts;
  }
  std::vector<int> rooms;  // what a column can lose without cutting its values
  for (int column = 0; column < horizontalHeader()->count(); ++column) {
    const int caption = leasts[static_cast<std::size_t>(column)];
    rooms.push_back(std::max(caption - sizeHintForColumn(column), 0));
  }
  int room = std::accumulate(rooms.begin(), rooms.end(), 0);
  for (std::size_t column = 0; missing > 0 && room > 0 && column < leasts.size(); ++column) {
    const int lost = std::min(rooms[column], (missing * rooms[column] + room - 1) / room);
    leasts[column] -= lost;
    missing -= lost;
    room -= rooms[column];
  }
  return leasts;
}

void CalGrid::ShareWidth() {
  isShareDue_ = false;
  const QScopedValueRollback<bool> sharing(isSharing_, true);
  const std::vector<int> proportions = Proportions();
  const auto columns = static_cast<std::int16_t>(proportions.size());
  const std::int64_t whole =
      std::accumulate(proportions.begin(), proportions.end(), std::int64_t{0});
  const int width = viewport()->width();
  std::vector<int> shares;
  const std::vector<int> leasts = LeastWidths();
  int missing = 0;  // width that columns need beyond their shares
  for (std::int16_t c = 0; c < columns; ++c) {
    const std::int64_t share =
        whole == 0 ? width / columns
                   : std::int64_t{width} * proportions[static_cast<std::size_t>(c)] / whole;
    shares.push_back(std::max(static_cast<int>(share), leasts[static_cast<std::size_t>(c)]));
    missing += shares.back() - static_cast<int>(share);
  }
  for (std::int16_t c = 0; c < columns; ++c) {
    int& share = shares[static_cast<std::size_t>(c)];
    const int taken = std::clamp(share - leasts[static_cast<std::size_t>(c)], 0, missing);
    missing -= taken;
    share -= taken;
    setColumnWidth(c, share);
  }
}

}  // namespace tarvell
