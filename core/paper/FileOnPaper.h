// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_FILEONPAPER_H
#define TARVELL_CORE_PAPER_FILEONPAPER_H

#include <functional>
#include <string>

#include "core/caldata/EarlierCalibration.h"
#include "core/paper/PaperDocument.h"

/// How a printed data set names its file, so that everybody can find out later whether a file is
/// the printed one.
namespace tarvell {

struct FileOnPaper {
  PaperFields fields;  ///< name, state and hash
  std::string foot;    ///< the same in short, for each sheet
};

/// The file of a data set that an editor shows. `path` is "" for one without a file; `bytesToSave`
/// gives what a save would write, or throws the error of data that cannot be saved. Where that is
/// not what the file holds, the fields say so.
[[nodiscard]] FileOnPaper EditedFileOnPaper(const std::string& path,
                                            const std::function<std::string()>& bytesToSave);

/// A content that the file at `path` has, or had. Throws the error of one that cannot be read.
[[nodiscard]] FileOnPaper VersionOnPaper(const std::string& path, const Calibration& version);

/// Program, time and user: "22 NOV 2026 10:12:33 by anna on bench3, Morrand Tarvell A.02.61".
[[nodiscard]] std::string PrintedNow();

}  // namespace tarvell

#endif
