// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/NameList.h"

#include <QByteArray>
#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>

#include <utility>

#include "screens/widgets/PaleSelection.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// Row of the first entry with exactly this name, -1 if none exists.
int RowOf(const QListWidget* list, std::string_view name) {
  for (int row = 0; row < list->count(); ++row) {
    if (NameOfEntry(list->item(row)) == name) {
      return row;
    }
  }
  return -1;
}

/// Calls `chosen` once for each choice. The toolkit reports a press that selects another entry
/// twice: as a change and as a press.
class Choices : public QObject {
 public:
  Choices(QListWidget* list, std::function<void()> chosen)
      : QObject(list), chosen_(std::move(chosen)) {
    list->viewport()->installEventFilter(this);
    connect(list, &QListWidget::itemSelectionChanged, this, [this] {
      changedByPress_ = true;
      chosen_();
    });
    connect(list, &QListWidget::itemPressed, this, [this] {
      if (!changedByPress_) {
        chosen_();
      }
    });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
      changedByPress_ = false;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> chosen_;
  bool changedByPress_ = false;
};

/// Runs the actions for the keys and clicks of a list.
class EntryEvents : public QObject {
 public:
  EntryEvents(QListWidget* list, EntryActions actions)
      : QObject(list), list_(list), actions_(std::move(actions)) {
    list->installEventFilter(this);
    list->viewport()->installEventFilter(this);
    // Not itemActivated, which a single click emits on some desktops.
    connect(list, &QListWidget::itemDoubleClicked, this, [this] { Open(); });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick ||
        event->type() == QEvent::MouseButtonRelease) {
      return static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton;
    }
    return event->type() == QEvent::KeyPress && watched == list_ &&
           Press(*static_cast<QKeyEvent*>(event));
  }

 private:
  /// Runs the action of this key; false when it has none.
  bool Press(const QKeyEvent& key) {
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool isDelete = key.key() == Qt::Key_Delete;
    const bool acts = (isEnter && actions_.open) || (isDelete && actions_.remove);
    if (!acts || (key.modifiers() & ~Qt::KeypadModifier) != 0 || list_->currentItem() == nullptr) {
      return false;
    }
    if (!key.isAutoRepeat()) {
      if (isEnter) {
        Open();
      } else {
        actions_.remove();
      }
    }
    return true;
  }

  void Open() {
    if (!actions_.open) {
      return;
    }
    if (list_->selectedItems().isEmpty() && list_->currentItem() != nullptr) {
      list_->currentItem()->setSelected(true);
    }
    actions_.open();
  }

  QListWidget* list_;
  EntryActions actions_;
};

}  // namespace

void AddName(QListWidget* list, const std::string& name) {
  auto* item = new QListWidgetItem(ToQt(name), list);  // the list owns it
  item->setData(Qt::UserRole, QByteArray::fromStdString(name));
}

std::string NameOfEntry(const QListWidgetItem* entry) {
  return entry->data(Qt::UserRole).toByteArray().toStdString();
}

std::string SelectedName(const QListWidget* list) {
  const QList<QListWidgetItem*> selected = list->selectedItems();
  return selected.isEmpty() ? std::string() : NameOfEntry(selected.first());
}

std::vector<std::string> NamesIn(const QListWidget* list) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(list->count()));
  for (int row = 0; row < list->count(); ++row) {
    names.push_back(NameOfEntry(list->item(row)));
  }
  return names;
}

bool HasName(const QListWidget* list, std::string_view name) {
  return RowOf(list, name) >= 0;
}

void ShowNames(QListWidget* list, const std::vector<std::string>& names,
               const std::string& placeholder) {
  list->clear();
  for (const std::string& name : names) {
    AddName(list, name);
  }
  list->setEnabled(!names.empty());
  if (names.empty()) {
    AddName(list, placeholder);
  }
}

FocusKeeper::FocusKeeper(QListWidget* list, QWidget* otherwise)
    // Not hasFocus(), which is false when the window is not yet active again after a message.
    : list_(list), otherwise_(otherwise), hadFocus_(list->window()->focusWidget() == list) {}

FocusKeeper::~FocusKeeper() {
  if (hadFocus_) {
    QWidget* focused = list_->isEnabled() ? list_ : otherwise_;
    focused->setFocus();
  }
}

void OnChoice(QListWidget* list, const std::function<void()>& chosen) {
  new Choices(list, chosen);  // the list owns it
}

void OnEntry(QListWidget* list, EntryActions actions) {
  list->setItemDelegate(new PaleSelection(list));
  new EntryEvents(list, std::move(actions));  // the list owns it
}

void SetEntryIcon(QListWidgetItem* entry, QStyle::StandardPixmap icon) {
  const QListWidget* list = entry->listWidget();
  const QPixmap picture = list->style()
                              ->standardIcon(icon, nullptr, list)
                              .pixmap(list->iconSize(), list->devicePixelRatioF());
  QIcon both(picture);
  // Otherwise the toolkit tints the icon of a selected entry.
  both.addPixmap(picture, QIcon::Selected);
  entry->setIcon(both);
}

bool SelectName(QListWidget* list, std::string_view name) {
  const int row = RowOf(list, name);
  if (row >= 0) {
    list->setCurrentRow(row);
  }
  return row >= 0;
}

}  // namespace tarvell
