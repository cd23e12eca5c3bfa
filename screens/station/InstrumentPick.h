// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_INSTRUMENTPICK_H
#define TARVELL_SCREENS_STATION_INSTRUMENTPICK_H

#include <QListWidget>
#include <QWidget>

#include <optional>
#include <string>
#include <vector>

#include "core/caldata/mTypeDef.h"

namespace tarvell {

/// An instrument of the calibration data.
struct PickedInstrument {
  CalFileInfo file;                ///< with the model number that a station uses
  std::vector<CalFileInfo> files;  ///< the data files of its model
  int row = 0;                     ///< the index of its own
};

/// Lets the user pick an instrument whose model `listed` does not have yet. Nothing, after a
/// message where the user needs one, when none is picked. Throws an Index error when the instrument
/// is not in the calibration data any more.
[[nodiscard]] std::optional<PickedInstrument> PickInstrument(QWidget* screen,
                                                             const QListWidget* listed);

/// The headers of a model's data files. Shows an error for those that cannot be read.
[[nodiscard]] std::vector<CalFileInfo> ReadCalFiles(QWidget* screen, const std::string& model);

}  // namespace tarvell

#endif
