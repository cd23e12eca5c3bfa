// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CHANGEDCELL_H
#define TARVELL_SCREENS_CALDATA_CHANGEDCELL_H

#include <QString>
#include <QTableWidget>
#include <QTableWidgetItem>

namespace tarvell {

/// A cell of a preview; the table that gets it owns it. A changed one is bold and tinted.
[[nodiscard]] QTableWidgetItem* ChangedCell(const QString& text, const QTableWidget* table,
                                            bool isChanged);

}  // namespace tarvell

#endif
