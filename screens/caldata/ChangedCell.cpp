// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ChangedCell.h"

#include <QColor>
#include <QFont>
#include <QPalette>

#include "screens/widgets/Colours.h"

namespace tarvell {

namespace {

/// How much of the selection's colour a changed cell has.
constexpr float kTint = 0.25F;

QColor Tinted(const QPalette& palette) {
  return Mixed(palette.color(QPalette::Highlight), palette.color(QPalette::Base), kTint);
}

}  // namespace

QTableWidgetItem* ChangedCell(const QString& text, const QTableWidget* table, bool isChanged) {
  auto* cell = new QTableWidgetItem(text);
  QFont font = table->font();
  font.setBold(isChanged);
  cell->setFont(font);
  if (isChanged) {
    cell->setBackground(Tinted(table->palette()));
  }
  return cell;
}

}  // namespace tarvell
