// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_VERSIONTEXTS_H
#define TARVELL_SCREENS_CALDATA_VERSIONTEXTS_H

#include <QString>
#include <QTableWidgetItem>

#include <functional>
#include <vector>

#include "core/caldata/EarlierCalibration.h"

/// What the history says of a version.
namespace tarvell {

/// Whether it is what was saved.
[[nodiscard]] QString StateText(const Calibration& version);

/// Its header; of a file without one, when it was replaced.
[[nodiscard]] QString HeaderText(const Calibration& version);

/// The row of a version in the list of versions; the list must take the cells. `version` gives it
/// while the list exists. It is called when a cell is first seen: to read a thousand versions takes
/// much longer than to list them.
[[nodiscard]] std::vector<QTableWidgetItem*> CellsOf(
    const std::function<const Calibration&()>& version);

}  // namespace tarvell

#endif
