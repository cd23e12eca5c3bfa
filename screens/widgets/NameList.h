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

/// Lists of names. What is shown is the name as text; what comes back is the name as it was, so
/// that a file name in no known encoding still names its file.
namespace tarvell {

void AddName(QListWidget* list, const std::string& name);

/// The name that an entry stands for.
[[nodiscard]] std::string NameOfEntry(const QListWidgetItem* entry);

/// The selected name, "" when none is.
[[nodiscard]] std::string SelectedName(const QListWidget* list);

[[nodiscard]] std::vector<std::string> NamesIn(const QListWidget* list);

/// Whether the list holds exactly this name.
[[nodiscard]] bool HasName(const QListWidget* list, std::string_view name);

/// Shows these names in the place of those that were there. Without any the list is disabled and
/// shows `placeholder`.
void ShowNames(QListWidget* list, const std::vector<std::string>& names,
               const std::string& placeholder);

/// Keeps the keyboard where it is while a list is read again: in the list, which loses it while it
/// is disabled, or at `otherwise` when the list stays disabled.
class KeyboardStays {
 public:
  KeyboardStays(QListWidget* list, QWidget* otherwise);
  KeyboardStays(const KeyboardStays&) = delete;
  KeyboardStays& operator=(const KeyboardStays&) = delete;
  ~KeyboardStays();

 private:
  QListWidget* list_;
  QWidget* otherwise_;
  bool wasInList_;
};

/// Calls `chosen` when the selection changes, and when the selected entry is pressed once more: a
/// click always counts. `chosen` must live as long as the list.
void OnChoice(QListWidget* list, const std::function<void()>& chosen);

/// What the keys and the mouse do with an entry of a list, where given.
struct EntryActions {
  std::function<void()> open = nullptr;    ///< by Enter and by a double click
  std::function<void()> remove = nullptr;  ///< by the Delete key
};

/// Runs these actions as the user asks for them; a key that is held runs one once. Where nothing is
/// selected, `open` finds the entry that has the keyboard selected. Only the left button of the
/// mouse chooses and opens. The selection is pale while the keyboard is elsewhere. A key that acts
/// is not pressed on the screen's default button as well. The actions must live as long as the
/// list.
void OnEntry(QListWidget* list, EntryActions actions);

/// Puts an icon of the style before the text of an entry, in the size of the list's icons; the
/// selection leaves its colours as they are.
void SetEntryIcon(QListWidgetItem* entry, QStyle::StandardPixmap icon);

/// Selects the first entry of exactly this name; false when there is none.
bool SelectName(QListWidget* list, std::string_view name);

}  // namespace tarvell

#endif
