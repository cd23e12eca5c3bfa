// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ChangedCell.h"

#include <QColor>
#include <QFont>
#include <QPalette>

namespace tarvell {

namespace {

/// How much of the selection's colour a changed cell has.
constexpr float kTint = 0.25F;

QColor Tinted(const QPalette& palette) {
  const QColor full = palette.color(QPalette::Highlight);
  const QColor base = palette.color(QPalette::Base);
  const auto mixed = [](float part, float other) { return kTint * part + (1 - kTint) * other; };
  return QColor::fromRgbF(mixed(full.redF(), base.redF()), mixed(full.greenF(), base.greenF()),
                          mixed(full.blueF(), base.blueF()));
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
