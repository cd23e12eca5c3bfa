// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EditorTable.h"

#include <QAccessible>
#include <QPointer>

#include <algorithm>

namespace tarvell {

namespace {

/// The toolkit's table and, while a box is shown over it, one more child: the viewport, whose
/// children are the boxes.
class TableWithBoxes final : public QAccessibleInterface {
 public:
  explicit TableWithBoxes(EditorTable* table) : table_(table) {}

  [[nodiscard]] bool isValid() const override { return table_ != nullptr && Toolkit().isValid(); }
  [[nodiscard]] QObject* object() const override { return table_; }
  [[nodiscard]] QWindow* window() const override { return Toolkit().window(); }
  [[nodiscard]] QAccessibleInterface* parent() const override { return Toolkit().parent(); }

  [[nodiscard]] int childCount() const override {
    return Toolkit().childCount() + (HasBox() ? 1 : 0);
  }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    return HasBox() && index == Toolkit().childCount() ? Viewport() : Toolkit().child(index);
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == table_->viewport()
               ? Toolkit().childCount()
               : Toolkit().indexOfChild(child);
  }
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
    const QWidget* viewport = table_->viewport();
    const bool isOverBox = viewport->childAt(viewport->mapFromGlobal(QPoint(x, y))) != nullptr;
    return isOverBox ? Viewport() : Toolkit().childAt(x, y);
  }
  [[nodiscard]] QAccessibleInterface* focusChild() const override {
    QWidget* focus = table_->viewport()->focusWidget();
    return HasBox() && focus != nullptr && focus->hasFocus()
               ? QAccessible::queryAccessibleInterface(focus)
               : Toolkit().focusChild();
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override { return Toolkit().text(kind); }
  void setText(QAccessible::Text kind, const QString& text) override {
    Toolkit().setText(kind, text);
  }
  [[nodiscard]] QRect rect() const override { return Toolkit().rect(); }
  [[nodiscard]] QAccessible::Role role() const override { return Toolkit().role(); }
  [[nodiscard]] QAccessible::State state() const override { return Toolkit().state(); }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return Toolkit().interface_cast(type);
  }

 private:
  [[nodiscard]] QAccessibleInterface& Toolkit() const { return table_->ToolkitAccessible(); }
  [[nodiscard]] QAccessibleInterface* Viewport() const {
    return QAccessible::queryAccessibleInterface(table_->viewport());
  }
  [[nodiscard]] bool HasBox() const {
    return std::ranges::any_of(table_->viewport()->children(), [](QObject* part) {
      const auto* box = qobject_cast<QWidget*>(part);
      return box != nullptr && !box->isHidden();
    });
  }

  QPointer<EditorTable> table_;
};

/// The toolkit asks for each class of an object, beginning with its own.
QAccessibleInterface* AccessibleOf(const QString& className, QObject* object) {
  auto* table = dynamic_cast<EditorTable*>(object);
  const bool isDerived = className != QTableView::staticMetaObject.className();
  return table != nullptr && isDerived ? new TableWithBoxes(table) : nullptr;
}

}  // namespace

EditorTable::EditorTable(QWidget* parent)
    : QTableView(parent), accessible_(QAccessible::queryAccessibleInterface(this)) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(&AccessibleOf);
    return true;
  }();
  static_cast<void>(isInstalled);
}

}  // namespace tarvell
