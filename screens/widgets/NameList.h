// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_NAMELIST_H
#define TARVELL_SCREENS_WIDGETS_NAMELIST_H

#include <QListWidget>
#include <QStyle>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Lists of names. An entry shows its name as text and also keeps its bytes, so that the file of a
/// name in an unknown encoding can still be found.
namespace tarvell {

void AddName(QListWidget* list, const std::string& name);

/// The name of an entry, byte for byte.
[[nodiscard]] std::string NameOfEntry(const QListWidgetItem* entry);

/// The selected name, "" when none is.
[[nodiscard]] std::string SelectedName(const QListWidget* list);

/// The names in the order in which they were added, however the list is sorted.
[[nodiscard]] std::vector<std::string> NamesIn(const QListWidget* list);

/// The entry with exactly this name that was added first; nullptr when there is none.
[[nodiscard]] QListWidgetItem* EntryOf(const QListWidget* list, std::string_view name);

/// The entry that was added as number `index`, from 0; nullptr when there is none.
[[nodiscard]] QListWidgetItem* EntryAdded(const QListWidget* list, int index);

/// The number under which an entry was added, from 0.
[[nodiscard]] int NumberAdded(const QListWidgetItem* entry);

/// The orders that a list can be shown in: as its entries were added, which is that of the folder;
/// by name, in any case and with numbers by their value; by due date, without a date at the end.
enum class ListOrder { Folder, Name, DueDate };

/// Shows the entries in an order. Entries that are added later stay at the end.
void SortNames(QListWidget* list, ListOrder order);

/// The due date of an entry, for the order by due date: a number such as 20020305, 0 for none.
void SetDueNumber(QListWidgetItem* entry, int number);

/// Whether the list holds exactly this name.
[[nodiscard]] bool HasName(const QListWidget* list, std::string_view name);

/// Replaces the entries by these names. Without names, disables the list and shows
/// `placeholder`.
void ShowNames(QListWidget* list, const std::vector<std::string>& names,
               const std::string& placeholder);

/// Keeps the focus in a list while the list is filled again; a list loses it while it is disabled.
/// If the list stays disabled, the focus goes to `otherwise`.
class FocusKeeper {
 public:
  FocusKeeper(QListWidget* list, QWidget* otherwise);
  FocusKeeper(const FocusKeeper&) = delete;
  FocusKeeper& operator=(const FocusKeeper&) = delete;
  ~FocusKeeper();

 private:
  QListWidget* list_;
  QWidget* otherwise_;
  bool hadFocus_;
};

/// Calls `chosen` when the selection changes and when the selected entry is clicked again. Whatever
/// `chosen` refers to must live as long as the list.
void OnChoice(QListWidget* list, const std::function<void()>& chosen);

/// Actions on an entry of a list; either may be missing.
struct EntryActions {
  std::function<void()> open = nullptr;    ///< for Enter and a double click
  std::function<void()> remove = nullptr;  ///< for the Delete key
};

/// Runs these actions. A key that is held acts once and does not also press the default button of
/// the screen. If nothing is selected, `open` first selects the current entry. Only the left mouse
/// button selects and opens. The selection is pale while the list is not focused. Whatever the
/// actions refer to must live as long as the list.
void OnEntry(QListWidget* list, EntryActions actions);

/// Shows an icon of the style before the text of an entry, in the size of the list's icons. It
/// keeps its colours when the entry is selected.
void SetEntryIcon(QListWidgetItem* entry, QStyle::StandardPixmap icon);

/// Selects the entry with exactly this name that was added first; false if none exists.
bool SelectName(QListWidget* list, std::string_view name);

/// The same, but only an entry that is not hidden.
void SelectIfShown(QListWidget* list, std::string_view name);

/// Selects the first entry that is not hidden.
void SelectFirstShown(QListWidget* list);

/// Makes the entry with this name the current one without selecting it. Returns false if there is
/// none, or it is hidden.
bool GoToName(QListWidget* list, std::string_view name);

}  // namespace tarvell

#endif
