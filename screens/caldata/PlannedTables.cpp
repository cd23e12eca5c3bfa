// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/PlannedTables.h"

#include <QFont>
#include <QHeaderView>
#include <QTableWidgetItem>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "screens/caldata/ChangedCell.h"
#include "screens/caldata/GridModel.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

using Change = PastedRow::Change;

/// Shows a table that has no values of its own to edit.
void ShowCaptions(QTableWidget* table, const QStringList& captions, std::size_t rows) {
  table->setColumnCount(static_cast<int>(captions.size()));
  table->setHorizontalHeaderLabels(captions);
  table->setRowCount(static_cast<int>(rows));
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

/// Marks a value as the table of an editor does.
void MarkAsSlip(QTableWidgetItem* item, const QString& why) {
  QFont font = item->font();
  font.setUnderline(true);
  item->setFont(font);
  item->setIcon(SlipIcon());
  item->setToolTip(why);
  item->setData(Qt::AccessibleTextRole, QObject::tr("%1 (possible slip)").arg(item->text()));
  item->setData(Qt::AccessibleDescriptionRole, why);
}

/// `inTable` is the row of the table after the import, the caption row if it has none.
void ShowRow(QTableWidget* table, int row, const PlannedRow& planned, GridRow inTable,
             const std::map<Cell, std::string>& marks) {
  const PastedRow& cells = planned.row;
  const bool isRemoved = inTable == kCaptionRow;
  const QString words = cells.change == Change::Unchanged ? QObject::tr("as it was")
                        : cells.change == Change::Updated ? QObject::tr("updated")
                        : cells.change == Change::Added   ? QObject::tr("added")
                        : isRemoved                       ? QObject::tr("not in it, is removed")
                                                          : QObject::tr("not in it, is kept");
  // The first column is seen without scrolling, however wide the values are.
  table->setItem(row, 0, ChangedCell(words, table, false));
  for (int column = 0; column + 1 < table->columnCount(); ++column) {
    const auto index = static_cast<std::size_t>(column);
    const QString after = index < cells.after.size() ? ToQt(cells.after[index]) : QString();
    const QString before = index < cells.before.size() ? ToQt(cells.before[index]) : QString();
    const bool isChanged = cells.change != Change::Missing && before != after;
    QTableWidgetItem* item = ChangedCell(
        isChanged && !before.isEmpty() ? QObject::tr("%1 \u2192 %2").arg(before, after) : after,
        table, isChanged);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont font = item->font();
    font.setStrikeOut(isRemoved);
    item->setFont(font);
    const auto mark = marks.find({inTable, static_cast<std::int16_t>(column)});
    if (mark != marks.end()) {
      MarkAsSlip(item, ToQt(mark->second));
    }
    table->setItem(row, column + 1, item);
  }
}

}  // namespace

void ShowPlannedHeader(QTableWidget* table, const std::vector<PlannedField>& fields) {
  ShowCaptions(
      table,
      {QObject::tr("Field"), QObject::tr("Before"), QObject::tr("After"), QObject::tr("Place")},
      fields.size());
  table->horizontalHeader()->setStretchLastSection(true);
  int row = 0;
  for (const PlannedField& field : fields) {
    const bool isChanged = field.before != field.after;
    table->setItem(row, 0, ChangedCell(ToQt(field.name), table, false));
    table->setItem(row, 1, ChangedCell(ToQt(field.before), table, false));
    table->setItem(row, 2, ChangedCell(ToQt(field.after), table, isChanged));
    table->setItem(row++, 3, ChangedCell(ToQt(field.where), table, false));
  }
}

void ShowPlannedRows(QTableWidget* table, const ShownPage& page) {
  ShowCaptions(table, QStringList(QObject::tr("Change")) + page.captions,
               page.plan == nullptr ? 0 : page.plan->rows.size());
  if (page.plan == nullptr) {
    return;
  }
  int row = 0;
  GridRow next = kFirstDataRow;
  for (const PlannedRow& planned : page.plan->rows) {
    const bool isRemoved = planned.row.change == Change::Missing && page.removesMissing;
    ShowRow(table, row++, planned, isRemoved ? kCaptionRow : next, page.marks);
    next = isRemoved ? next : next + 1;
  }
}

void ScrollToChange(QTableWidget* table, const PagePlan& plan) {
  const auto changed = std::ranges::find_if(plan.rows, [](const PlannedRow& planned) {
    return planned.row.change == Change::Updated || planned.row.change == Change::Added;
  });
  if (changed != plan.rows.end()) {
    table->scrollToItem(table->item(static_cast<int>(changed - plan.rows.begin()), 0),
                        QAbstractItemView::PositionAtCenter);
  }
}

}  // namespace tarvell
