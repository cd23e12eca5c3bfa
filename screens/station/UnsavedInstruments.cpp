// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/UnsavedInstruments.h"

#include <algorithm>
#include <utility>

#include "screens/widgets/NameList.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

/// Number of an entry that is not saved.
constexpr int kUnsavedRole = Qt::UserRole + 2;

int NumberOf(const QListWidgetItem* entry) {
  return entry->data(kUnsavedRole).toInt();
}

void Mark(QListWidgetItem* entry, int number) {
  entry->setData(kUnsavedRole, number);
  UnmarkDueDate(entry);
  SetEntryIcon(entry, QStyle::SP_MessageBoxWarning);
  entry->setToolTip("Added and not saved. Press \"Save Instrment Data\".");
  entry->setData(Qt::AccessibleTextRole, entry->text() + ", not saved");
}

}  // namespace

void UnsavedInstruments::Add(QListWidgetItem* entry, const StationInstrument& instrument) {
  const int number = ++last_;
  unsaved_[number] = {NameOfEntry(entry), instrument};
  Mark(entry, number);
}

bool UnsavedInstruments::Contains(const QListWidgetItem* entry) const {
  return entry != nullptr && unsaved_.contains(NumberOf(entry));
}

const std::string& UnsavedInstruments::ModelOf(const QListWidgetItem* entry) const {
  return unsaved_.at(NumberOf(entry)).name;
}

const StationInstrument& UnsavedInstruments::InstrumentOf(const QListWidgetItem* entry) const {
  return unsaved_.at(NumberOf(entry)).instrument;
}

void UnsavedInstruments::Keep(const QListWidgetItem* entry, const StationInstrument& instrument) {
  if (Contains(entry)) {
    unsaved_.at(NumberOf(entry)).instrument = instrument;
  }
}

void UnsavedInstruments::Saved(QListWidgetItem* entry) {
  unsaved_.erase(NumberOf(entry));
  for (const int role :
       {kUnsavedRole, int{Qt::DecorationRole}, int{Qt::ToolTipRole}, int{Qt::AccessibleTextRole}}) {
    entry->setData(role, QVariant());
  }
}

void UnsavedInstruments::Forget(const std::string& name) {
  std::erase_if(unsaved_, [&](const auto& each) { return each.second.name == name; });
}

void UnsavedInstruments::ShowWith(const std::vector<std::string>& instruments, QListWidget* list,
                                  const std::string& placeholder) const {
  std::vector<std::string> names = instruments;
  std::vector<std::pair<int, int>> rows;
  for (const auto& [number, unsaved] : unsaved_) {
    const auto listed = std::ranges::find(names, unsaved.name);
    rows.emplace_back(static_cast<int>(listed - names.begin()), number);
    if (listed == names.end()) {
      names.push_back(unsaved.name);
    }
  }
  ShowNames(list, names, placeholder);
  for (const auto& [row, number] : rows) {
    Mark(list->item(row), number);
  }
}

QStringList UnsavedInstruments::NamesWithout(const QListWidgetItem* entry,
                                             const QListWidget* list) const {
  QStringList names;
  for (int row = 0; row < list->count(); ++row) {
    const QListWidgetItem* other = list->item(row);
    if (other != entry && Contains(other)) {
      names << other->text();
    }
  }
  return names;
}

}  // namespace tarvell
