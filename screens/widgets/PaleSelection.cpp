// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/PaleSelection.h"

#include <QPalette>
#include <QWidget>

namespace tarvell {

namespace {

constexpr float kShare = 0.3F;  // of the selection's own colour

QColor Pale(const QColor& colour, const QColor& background) {
  const auto mixed = [](float part, float other) { return kShare * part + (1 - kShare) * other; };
  return QColor::fromRgbF(mixed(colour.redF(), background.redF()),
                          mixed(colour.greenF(), background.greenF()),
                          mixed(colour.blueF(), background.blueF()));
}

}  // namespace

void PaleSelection::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (option->widget == nullptr || option->widget->hasFocus()) {
    return;
  }
  QPalette& palette = option->palette;
  palette.setColor(QPalette::Highlight,
                   Pale(palette.color(QPalette::Highlight), palette.color(QPalette::Base)));
  palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
}

}  // namespace tarvell
