// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_VERSIONTEXTS_H
#define TARVELL_SCREENS_CALDATA_VERSIONTEXTS_H

#include <QString>
#include <QTableWidgetItem>

#include <vector>

#include "core/caldata/EarlierCalibration.h"

/// What the history says of a version.
namespace tarvell {

/// Whether it is what was saved.
[[nodiscard]] QString StateText(const Calibration& version);

/// Its header; of a file without one, when it was replaced.
[[nodiscard]] QString HeaderText(const Calibration& version);

/// Its row in the list of versions; the list must take them. The state is worked out when its cell
/// is first seen: for a thousand versions that takes much longer than listing them.
[[nodiscard]] std::vector<QTableWidgetItem*> CellsOf(const Calibration& version);

}  // namespace tarvell

#endif
