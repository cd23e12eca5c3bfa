// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_PALESELECTION_H
#define TARVELL_SCREENS_WIDGETS_PALESELECTION_H

#include <QStyledItemDelegate>

namespace tarvell {

/// Draws the selection of a view paler while the view is not focused. This shows which control
/// receives the keys.
class PaleSelection final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace tarvell

#endif
