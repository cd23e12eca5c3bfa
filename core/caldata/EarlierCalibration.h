// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_EARLIERCALIBRATION_H
#define TARVELL_CORE_CALDATA_EARLIERCALIBRATION_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/ComparedTables.h"
#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"
#include "core/dates/FileDate.h"
#include "core/history/KeptVersions.h"

namespace tarvell {

/// A content that the file of a data set has, or had. Its header is what the lists show; the fields
/// are empty if it has none, or has not been read yet.
struct Calibration {
  bool isCurrent = false;   ///< what the file holds now
  CalFileInfo header = {};  ///< its FilePath is that of the file, or of the kept version
  HistoryEvent event = {};  ///< what has replaced it; of the current one, what has written it
  bool hasHeader = false;   ///< whether it has the header of a data file, not in the old style
  bool wasSaved = true;     ///< that of a KeptVersion
  bool isRead = false;      ///< whether its header, if any, has been read

  /// Reads its file, and works out a hash.
  [[nodiscard]] VersionState State() const {
    return isCurrent ? StateOfCurrent(header.FilePath, event)
                     : StateOfKept(header.FilePath, event, wasSaved);
  }

  [[nodiscard]] FileDate Calibrated() const {
    return {header.CalYear, header.CalMonth, header.CalDay};
  }
  [[nodiscard]] FileDate Due() const { return {header.DueYear, header.DueMonth, header.DueDay}; }
};

/// All that the file of a data set at `path`, a path of the program, holds and has held: the
/// current content first, then the others, the latest first. Throws the error of a history that
/// cannot be read.
[[nodiscard]] std::vector<Calibration> EveryCalibrationOf(const std::string& path);

/// The same from a history that has been read. Only the header of the current content has been
/// read; ReadHeader reads that of another one, unless it has been read.
[[nodiscard]] std::vector<Calibration> CalibrationsIn(FileHistory history, const std::string& path);
void ReadHeader(Calibration& calibration);

/// Those whose header can be read and is not in the old style. A history that cannot be read counts
/// as empty; `problem` says then what is wrong with it.
[[nodiscard]] std::vector<Calibration> CalibrationsOf(const std::string& path,
                                                      std::string& problem);
[[nodiscard]] inline std::vector<Calibration> CalibrationsOf(const std::string& path) {
  std::string problem;
  return CalibrationsOf(path, problem);
}

/// The data of a calibration, without any value that its file lacks; nullptr if they cannot be
/// loaded.
[[nodiscard]] std::unique_ptr<cifCaldata> LoadCalibration(const Model& model,
                                                          const Calibration& calibration);

/// The newest of the calibrations, as CalibrationsOf lists them, with another calibration date than
/// `date`; nullptr if none has.
[[nodiscard]] const Calibration* EarlierCalibration(const std::vector<Calibration>& calibrations,
                                                    const FileDate& date);

/// The data that EarlierCalibration would choose among the kept versions of a file, the latest
/// first; nullptr if none. Reads no more versions than it needs.
[[nodiscard]] std::unique_ptr<cifCaldata> LoadEarlier(const Model& model,
                                                      const std::vector<KeptVersion>& versions,
                                                      const FileDate& date);

/// A calibration as it can be read on a screen.
struct ReadablePage {
  std::string name;      ///< of a page of a set, otherwise ""
  TableRowList rows;     ///< the captions first
  std::size_t keys = 1;  ///< how many cells at the beginning say what a row is about
};
struct ReadableData {
  std::vector<ReadablePage> pages;
  std::string notice;    ///< what is doubtful, or why lines are shown; "" for none
  bool isLines = false;  ///< whether the lines of the file are shown instead of its tables
};

/// The tables of a calibration, or the lines of a file that the program cannot edit or load.
/// `model` is nullptr for an unknown one. Throws the error of a file that cannot be read.
[[nodiscard]] ReadableData Readable(const Model* model, const Calibration& calibration);

}  // namespace tarvell

#endif
