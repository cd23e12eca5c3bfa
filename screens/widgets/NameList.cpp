// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/NameList.h"

#include <QByteArray>
#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "core/text/FileCharacters.h"
#include "core/text/NaturalOrder.h"
#include "screens/widgets/PaleSelection.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

// What an entry keeps besides its name. The roles up to UserRole + 9 are for other subjects.
constexpr int kNumberRole = Qt::UserRole + 10;  ///< how many were added before it
constexpr int kDueRole = Qt::UserRole + 11;
constexpr int kNameKeyRole = Qt::UserRole + 12;  ///< NaturalKey of the name, set to sort by it

/// The property of a list that holds its order.
constexpr const char* kOrder = "order";

int NumberOf(const QListWidgetItem* entry) {
  return entry->data(kNumberRole).toInt();
}

class NameEntry final : public QListWidgetItem {
 public:
  using QListWidgetItem::QListWidgetItem;

  bool operator<(const QListWidgetItem& other) const override {
    const auto order = static_cast<ListOrder>(listWidget()->property(kOrder).toInt());
    if (order == ListOrder::DueDate && DueNumber(*this) != DueNumber(other)) {
      return DueNumber(*this) < DueNumber(other);
    }
    const int names =
        order == ListOrder::Folder
            ? 0
            : data(kNameKeyRole).toByteArray().compare(other.data(kNameKeyRole).toByteArray());
    return names != 0 ? names < 0 : NumberOf(this) < NumberOf(&other);
  }

 private:
  static int DueNumber(const QListWidgetItem& entry) {
    const int number = entry.data(kDueRole).toInt();
    return number == 0 ? std::numeric_limits<int>::max() : number;
  }
};

/// The entries in the order in which they were added.
std::vector<QListWidgetItem*> EntriesAsAdded(const QListWidget* list) {
  std::vector<QListWidgetItem*> entries;
  entries.reserve(static_cast<std::size_t>(list->count()));
  for (int row = 0; row < list->count(); ++row) {
    entries.push_back(list->item(row));
  }
  std::ranges::sort(entries, {}, &NumberOf);
  return entries;
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
    if (event->type() == QEvent::Paint && watched != list_ && list_->hasFocus() &&
        list_->currentItem() == nullptr) {
      DrawFocus();
    }
    return event->type() == QEvent::KeyPress && watched == list_ &&
           Press(*static_cast<QKeyEvent*>(event));
  }

 private:
  /// Runs the action of this key; false when it has none.
  bool Press(const QKeyEvent& key) {
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool isDelete = key.key() == Qt::Key_Delete;
    if (SelectsAtEnd(key)) {
      list_->currentItem()->setSelected(true);
      return true;
    }
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

  /// Whether this key would go beyond the end of the list from an entry that is not selected: the
  /// user wants that entry, and no other can be meant.
  [[nodiscard]] bool SelectsAtEnd(const QKeyEvent& key) const {
    const int row = list_->currentRow();
    const bool isEnd = (key.key() == Qt::Key_Down && row == list_->count() - 1) ||
                       (key.key() == Qt::Key_Up && row == 0);
    return isEnd && row >= 0 && !list_->isRowHidden(row) && list_->selectedItems().isEmpty();
  }

  /// Shows that the list has the keyboard, which otherwise an entry shows.
  void DrawFocus() const {
    QPainter painter(list_->viewport());
    QStyleOptionFocusRect ring;
    ring.initFrom(list_->viewport());
    ring.state |= QStyle::State_KeyboardFocusChange;
    list_->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, list_->viewport());
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
  const int number = list->count();
  auto* item = new NameEntry(ToQt(NameText(name)), list);  // the list owns it
  if (!IsUtf8(name)) {
    // Another entry may have the same text.
    const QString note = "The name has the characters of an older system.";
    item->setToolTip(note);
    item->setData(Qt::AccessibleDescriptionRole, note);
  }
  item->setData(kNumberRole, number);
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
  for (const QListWidgetItem* entry : EntriesAsAdded(list)) {
    names.push_back(NameOfEntry(entry));
  }
  return names;
}

QListWidgetItem* EntryOf(const QListWidget* list, std::string_view name) {
  const std::vector<QListWidgetItem*> entries = EntriesAsAdded(list);
  const auto found = std::ranges::find(entries, name, &NameOfEntry);
  return found == entries.end() ? nullptr : *found;
}

QListWidgetItem* EntryAdded(const QListWidget* list, int index) {
  for (int row = 0; row < list->count(); ++row) {
    if (NumberOf(list->item(row)) == index) {
      return list->item(row);
    }
  }
  return nullptr;
}

int NumberAdded(const QListWidgetItem* entry) {
  return NumberOf(entry);
}

void SortNames(QListWidget* list, ListOrder order) {
  list->setProperty(kOrder, static_cast<int>(order));
  if (order != ListOrder::Folder) {
    for (int row = 0; row < list->count(); ++row) {
      QListWidgetItem* entry = list->item(row);
      const std::string key = NaturalKey(FromQt(entry->text().toCaseFolded()));
      entry->setData(kNameKeyRole, QByteArray::fromStdString(key));
    }
  }
  list->sortItems();
}

void SetDueNumber(QListWidgetItem* entry, int number) {
  entry->setData(kDueRole, number);
}

bool HasName(const QListWidget* list, std::string_view name) {
  return EntryOf(list, name) != nullptr;
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
  QListWidgetItem* entry = EntryOf(list, name);
  if (entry != nullptr) {
    list->setCurrentItem(entry);
  }
  return entry != nullptr;
}

void SelectIfShown(QListWidget* list, std::string_view name) {
  QListWidgetItem* entry = EntryOf(list, name);
  if (entry != nullptr && !entry->isHidden()) {
    list->setCurrentItem(entry);
  }
}

void SelectFirstShown(QListWidget* list) {
  for (int row = 0; row < list->count(); ++row) {
    if (!list->item(row)->isHidden()) {
      list->setCurrentRow(row);
      return;
    }
  }
}

bool GoToName(QListWidget* list, std::string_view name) {
  QListWidgetItem* entry = EntryOf(list, name);
  if (entry == nullptr || entry->isHidden()) {
    return false;
  }
  list->setCurrentItem(entry, QItemSelectionModel::NoUpdate);
  list->scrollToItem(entry);
  return true;
}

}  // namespace tarvell
