// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_SERIALLIST_H
#define TARVELL_SCREENS_WIDGETS_SERIALLIST_H

#include <QColor>
#include <QListWidget>
#include <QPalette>

#include <string>

#include "core/caldata/mTypeDef.h"
#include "core/dates/DueDate.h"
#include "core/session/Tarvell_MainModule.h"

/// Lists of the serial numbers of a model's data files. Each entry tells on hover what its file's
/// header holds; one that is past due or due soon is marked by colour, icon and accessible text.
namespace tarvell {

/// The day that it is here.
[[nodiscard]] FileDate Today();

/// Prepares a list once; its marks then follow the colours and the style of the screen.
void SetUpSerialList(QListWidget* list);

/// Lists the data files of a model of the calibration data root in the order of `gCalFiles`, which
/// is read anew; none when `model` is "". What cannot be read throws, after what was read is
/// listed.
void FillSerialList(QListWidget* list, const std::string& model, const FileDate& today = Today());

/// Marks the entry by what its file holds; its text stays.
void ShowCalFile(QListWidgetItem* entry, const CalFileInfo& row, const FileDate& today = Today());

/// Colour in which a text of this state, which must be one with words, can be read on the
/// background of a list.
[[nodiscard]] QColor DueColour(DueState state, const QPalette& palette);

}  // namespace tarvell

#endif
