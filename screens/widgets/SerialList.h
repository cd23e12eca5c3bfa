// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_SERIALLIST_H
#define TARVELL_SCREENS_WIDGETS_SERIALLIST_H

#include <QColor>
#include <QListWidget>
#include <QPalette>

#include <cstdint>
#include <string>

#include "core/caldata/mTypeDef.h"
#include "core/dates/DueDate.h"
#include "core/session/Tarvell_MainModule.h"

/// Lists of the serial numbers of a model's data files. The tooltip of an entry shows the header of
/// its file. An entry that is past due or due soon is marked by colour, icon and accessible text.
namespace tarvell {

class ListHead;
class NoticeLine;

/// The local date.
[[nodiscard]] FileDate Today();

/// Call this once for each list. Its marks then follow changes of palette and style.
void SetUpSerialList(QListWidget* list);

/// Reads `gCalFiles` for a model of the calibration data root and lists its files in that order,
/// only those that match `filter`; none when `model` is "". Throws what ReadCalFileHeaders throws,
/// after all rows read are listed.
void FillSerialList(QListWidget* list, const std::string& model, const FileDate& today = Today(),
                    const std::string& filter = {});

/// Lists the files of a model that match the filter in `head`, in the order chosen there. Throws as
/// FillSerialList does; but where there is a filter, or the user is typing one, an error is only
/// shown in `notices`, because the list is read again at each change.
void ListDataSets(QListWidget* list, const std::string& model, ListHead& head, NoticeLine& notices,
                  bool isTyping);

/// The row of `gCalFiles` that the selected entry shows, even if another file has the same serial
/// number; kTableRows if there is no such row. One entry must be selected.
[[nodiscard]] std::int16_t SelectedDataSet(const QListWidget* list);

/// Marks an entry of such a list, or of another, by its due date, which is also what it is sorted
/// by.
void MarkDueDate(QListWidgetItem* entry, const FileDate& due, const FileDate& today = Today());

/// Removes such a mark, so that the entry can have another.
void UnmarkDueDate(QListWidgetItem* entry);

/// Shows the header `row` in the marks and tooltip of an entry. Does not change its text.
void ShowCalFile(QListWidgetItem* entry, const CalFileInfo& row, const FileDate& today = Today());

/// A colour for a text of this state that can be read on the background of a list. `state` is
/// PastDue or DueSoon.
[[nodiscard]] QColor DueColour(DueState state, const QPalette& palette);

}  // namespace tarvell

#endif
