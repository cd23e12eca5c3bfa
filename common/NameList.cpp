// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/NameList.h"

#include <QByteArray>
#include <QTimer>

#include <memory>

#include "common/QtText.h"

namespace tarvell {

namespace {

std::string NameOf(const QListWidgetItem* item) {
  return item->data(Qt::UserRole).toByteArray().toStdString();
}

}  // namespace

void AddName(QListWidget* list, const std::string& name) {
  auto* item = new QListWidgetItem(ToQt(name), list);  // the list owns it
  item->setData(Qt::UserRole, QByteArray::fromStdString(name));
}

std::string SelectedName(const QListWidget* list) {
  const QList<QListWidgetItem*> selected = list->selectedItems();
  return selected.isEmpty() ? std::string() : NameOf(selected.first());
}

std::vector<std::string> NamesIn(const QListWidget* list) {
  std::vector<std::string> names;
  for (int row = 0; row < list->count(); ++row) {
    names.push_back(NameOf(list->item(row)));
  }
  return names;
}

void OnChoice(QListWidget* list, const std::function<void()>& chosen) {
  // The press that selects another entry is told twice, as a change and as a press.
  const auto changedByPress = std::make_shared<bool>(false);
  QObject::connect(list, &QListWidget::itemSelectionChanged, list, [=] {
    *changedByPress = true;
    chosen();
    // Not before: events run while a message is shown.
    QTimer::singleShot(0, list, [=] { *changedByPress = false; });
  });
  QObject::connect(list, &QListWidget::itemPressed, list, [=] {
    if (!*changedByPress) {
      chosen();
    }
  });
}

bool SelectName(QListWidget* list, std::string_view name) {
  for (int row = 0; row < list->count(); ++row) {
    if (NameOf(list->item(row)) == name) {
      list->setCurrentRow(row);
      return true;
    }
  }
  return false;
}

}  // namespace tarvell
