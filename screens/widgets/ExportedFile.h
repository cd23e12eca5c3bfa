// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_EXPORTEDFILE_H
#define TARVELL_SCREENS_WIDGETS_EXPORTEDFILE_H

#include <QString>

#include <array>
#include <string_view>

#include "core/session/Tarvell_MainModule.h"
#include "core/survey/ExportFile.h"
#include "screens/widgets/QtPath.h"

namespace tarvell {

/// Writes a file for other programs. Throws as SaveExport does for the two directories of this
/// session.
inline void SaveExportedFile(const QString& file, std::string_view bytes) {
  SaveExport(SystemPath(file), bytes, std::array{gCalibrationDir, gStationDir});
}

}  // namespace tarvell

#endif
