// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ChangeTable.h"

#include <QHeaderView>
#include <QScrollBar>

#include "screens/caldata/CalGrid.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr int kEarlier = 0;
constexpr int kChange = 1;

QStandardItem* ItemOf(const std::string& text) {
  auto* item = new QStandardItem(ToQt(text));  // the model owns it
  item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

}  // namespace

ChangeTable::ChangeTable(CalGrid* grid, QWidget* parent)
    : QTableView(parent), grid_(grid), model_(new QStandardItemModel(0, 2, this)) {
  setObjectName("changes");
  setAccessibleName(tr("Change since the earlier calibration"));
  setAccessibleDescription(
      tr("The earlier value of the current column in each row of the table, and the difference."));
  GiveAltKey(this, Qt::Key_G);
  model_->setHorizontalHeaderLabels({tr("Earlier"), tr("Change")});
  setModel(model_);
  setEditTriggers(NoEditTriggers);
  setFocusPolicy(Qt::ClickFocus);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setWordWrap(false);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(grid->verticalHeader()->defaultSectionSize());
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  FollowScrolling();
}

void ChangeTable::FollowScrolling() {
  connect(grid_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
          &QScrollBar::setValue);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, grid_->verticalScrollBar(),
          &QScrollBar::setValue);
  // Both show the same number of rows.
  connect(grid_->horizontalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int last) {
    setHorizontalScrollBarPolicy(last > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  });
}

void ChangeTable::Show(const PageChange& change, std::int16_t column) {
  model_->setRowCount(0);
  for (GridRow row = kFirstDataRow; row < EndOf(grid_->Data()); ++row) {
    const auto found = change.cells.find({row, column});
    const CellChange cell = found == change.cells.end() ? CellChange() : found->second;
    model_->appendRow({ItemOf(cell.earlier), ItemOf(cell.difference)});
  }
  FitWidth();
  verticalScrollBar()->setValue(grid_->verticalScrollBar()->value());
}

void ChangeTable::FitWidth() {
  int width = 2 * frameWidth();
  for (const int column : {kEarlier, kChange}) {
    setColumnWidth(
        column, std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)));
    width += columnWidth(column);
  }
  setMaximumWidth(width);
}

}  // namespace tarvell
