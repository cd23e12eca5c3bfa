// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_EDITORTABLE_H
#define TARVELL_SCREENS_CALDATA_EDITORTABLE_H

#include <QAccessibleInterface>
#include <QTableView>

namespace tarvell {

/// A table over whose cells boxes can be shown, as children of its viewport. Screen readers find a
/// box that is shown after the cells; the toolkit's own table lists captions and cells only.
///
/// Without Q_OBJECT on purpose: in its constructor the object still has the class QTableView, and
/// gets the toolkit's interface for screen readers. A derived class gets the one with the boxes.
class EditorTable : public QTableView {
 public:
  explicit EditorTable(QWidget* parent);

  /// What the toolkit says of the table.
  [[nodiscard]] QAccessibleInterface& ToolkitAccessible() const { return *accessible_; }

 private:
  QAccessibleInterface* accessible_;  ///< the toolkit owns it
};

}  // namespace tarvell

#endif
