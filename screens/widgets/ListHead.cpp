// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ListHead.h"

#include <QActionGroup>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>

#include <utility>

#include "core/text/Text.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

/// Reading a folder takes a while: it waits until the user stops typing.
constexpr int kTypingPause = 150;  // ms

/// How much of the text's own colour a placeholder has.
constexpr float kPlaceholderShare = 0.7F;

/// How the settings name an order; also its name in the menu.
const char* SettingOf(ListOrder order) {
  switch (order) {
    case ListOrder::Folder:
      return "folder";
    case ListOrder::Name:
      return "name";
    case ListOrder::DueDate:
      return "due";
  }
  return "";
}

}  // namespace

ListHead::ListHead(QListWidget* list, Keys keys, Orders orders)
    : QWidget(list->parentWidget()),
      list_(list),
      filter_(new QLineEdit(this)),
      sort_(new QPushButton(tr("Sort"), this)),
      orders_(new QMenu(sort_)) {
  const QString name = list->accessibleName().toLower();
  filter_->setObjectName(list->objectName() + "Filter");
  filter_->setPlaceholderText(tr("Filter"));
  // In dark colours the desktop's own is hardly to be seen.
  QPalette palette = filter_->palette();
  QColor placeholder = palette.color(QPalette::Text);
  placeholder.setAlphaF(kPlaceholderShare);
  palette.setColor(QPalette::PlaceholderText, placeholder);
  filter_->setPalette(palette);
  filter_->setAccessibleName(tr("Filter of %1").arg(name));
  sort_->setObjectName(list->objectName() + "Sort");
  sort_->setAutoDefault(false);
  // Tab goes from list to list: it passes over the line.
  filter_->setFocusPolicy(Qt::ClickFocus);
  sort_->setFocusPolicy(Qt::ClickFocus);
  sort_->setAccessibleName(tr("Sort %1").arg(name));
  sort_->setAccessibleDescription(tr("Shows the orders that the list can have."));
  sort_->setToolTip(sort_->accessibleDescription());
  SetFilterHelp(tr("Lists only names with this text. Escape clears it."));
  GiveAltKey(sort_, keys.sort);
  GiveAltKey(filter_, keys.filter);

  // The list and its head take the place of the list.
  auto* both = new QWidget(list->parentWidget());
  delete list->parentWidget()->layout()->replaceWidget(list, both);
  auto* column = new QVBoxLayout(both);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(this);
  column->addWidget(list);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(filter_);
  line->addWidget(sort_);

  new QActionGroup(orders_);  // the menu owns it; one order is checked
  AddOrder(tr("As in the &folder"), ListOrder::Folder);
  AddOrder(tr("By &name"), ListOrder::Name);
  if (orders == Orders::ByNameOrDueDate) {
    AddOrder(tr("By &due date"), ListOrder::DueDate);
  }
  connect(sort_, &QPushButton::clicked, this,
          [this] { orders_->popup(sort_->mapToGlobal(sort_->rect().bottomLeft())); });

  filterIsDue_.setSingleShot(true);
  connect(&filterIsDue_, &QTimer::timeout, this, [this] {
    // A screen that was opened from the list must find it unchanged when it closes.
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == window()) {
      ApplyFilter();
    } else {
      filterIsDue_.start(kTypingPause);
    }
  });
  connect(filter_, &QLineEdit::textChanged, this, [this] {
    // Not earlier: its picture takes longer than the rest of the list.
    filter_->setClearButtonEnabled(true);
    filterIsDue_.start(readAgain_ ? kTypingPause : 0);
  });
  filter_->installEventFilter(this);
  auto* find = new QShortcut(QKeySequence::Find, both);
  find->setContext(Qt::WidgetWithChildrenShortcut);
  connect(find, &QShortcut::activated, filter_, [this] {
    filter_->setFocus();
    filter_->selectAll();
  });
}

void ListHead::SetFilterHelp(const QString& help) {
  filter_->setAccessibleDescription(help);
  filter_->setToolTip(help);
}

void ListHead::ReadByFilter(std::function<void()> read) {
  readAgain_ = std::move(read);
  SetFilterHelp(
      tr("Lists only those with this text in the serial number, calibration number or comment. "
         "Escape clears it."));
}

QString ListHead::Key() const {
  return "orders/" + window()->objectName() + "." + list_->objectName();
}

void ListHead::AddOrder(const QString& caption, ListOrder order) {
  QAction* action = orders_->addAction(caption);
  action->setObjectName(list_->objectName() + SettingOf(order));
  action->setCheckable(true);
  orders_->findChild<QActionGroup*>()->addAction(action);
  const bool isRemembered = RememberedText(Key()) == SettingOf(order);
  if (isRemembered || order == ListOrder::Folder) {
    action->setChecked(true);
    order_ = order;
  }
  connect(action, &QAction::triggered, this, [this, order] { ChooseOrder(order); });
}

void ListHead::ChooseOrder(ListOrder order) {
  order_ = order;
  Remember(Key(), QString(SettingOf(order)));
  Apply();
}

std::string ListHead::Filter() const {
  return std::string(Trim(FromQt(filter_->text())));
}

void ListHead::SetFilter(const std::string& text) {
  filter_->setText(ToQt(text));
  filterIsDue_.stop();
  Apply();
}

void ListHead::ClearFilter() {
  SetFilter({});
}

void ListHead::Apply() {
  if (list_->isEnabled()) {
    SortNames(list_, order_);
  }
  const std::string filter = Filter();
  QListWidgetItem* first = nullptr;
  for (int row = 0; row < list_->count(); ++row) {
    QListWidgetItem* entry = list_->item(row);
    // A disabled list only says that there is nothing.
    const bool isShown =
        readAgain_ || !list_->isEnabled() || ContainsIgnoringCase(FromQt(entry->text()), filter);
    entry->setHidden(!isShown);
    if (!isShown) {
      // Buttons must not act on what is not seen.
      entry->setSelected(false);
    } else if (first == nullptr) {
      first = entry;
    }
  }
  const QListWidgetItem* current = list_->currentItem();
  if (current != nullptr && current->isHidden()) {
    list_->setCurrentItem(first, QItemSelectionModel::NoUpdate);
  } else if (current != nullptr) {
    list_->scrollToItem(current);
  }
}

void ListHead::ApplyFilter() {
  filterIsDue_.stop();
  if (readAgain_) {
    readAgain_();
  } else {
    Apply();
  }
}

void ListHead::GoToList() {
  if (filterIsDue_.isActive()) {
    ApplyFilter();
  }
  if (list_->isEnabled()) {
    list_->setFocus();
  }
}

bool ListHead::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) {
    return QWidget::eventFilter(watched, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool isClear = key == Qt::Key_Escape && !filter_->text().isEmpty();
  const bool isGo =
      key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down || key == Qt::Key_Tab;
  if (event->type() == QEvent::ShortcutOverride) {
    if (isClear) {
      event->accept();
    }
    return isClear;
  }
  if (isClear) {
    filter_->clear();
    ApplyFilter();
  } else if (isGo) {
    GoToList();
  }
  return isClear || isGo;
}

}  // namespace tarvell
