// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/EarlierCalibration.h"

#include <algorithm>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"

namespace tarvell {

namespace {

/// Takes what the lists would show of a file with this content.
void TakeHeader(const std::string& bytes, const std::string& path, Calibration& calibration) {
  calibration.header.FilePath = path;
  try {
    if (std::optional<CalFileInfo> header = CalFileHeaderIn(bytes, path)) {
      calibration.header = *std::move(header);
      calibration.hasHeader = bytes.starts_with('#');
    }
  } catch (const Error&) {
    // It is listed without a header: whoever opens it sees what is wrong with it.
  }
}

}  // namespace

std::vector<Calibration> EveryCalibrationOf(const std::string& path) {
  return CalibrationsIn(HistoryOf(path), path);
}

std::vector<Calibration> CalibrationsIn(const FileHistory& history, const std::string& path) {
  std::vector<Calibration> calibrations;
  if (history.current) {
    Calibration current{.isCurrent = true, .event = history.last, .state = history.currentState};
    TakeHeader(*history.current, path, current);
    calibrations.push_back(std::move(current));
  }
  for (const KeptVersion& version : history.versions) {
    Calibration earlier{.event = version.event, .state = version.state};
    TakeHeader(version.bytes, version.path, earlier);
    calibrations.push_back(std::move(earlier));
  }
  return calibrations;
}

std::vector<Calibration> CalibrationsOf(const std::string& path) {
  std::vector<Calibration> calibrations;
  try {
    calibrations = EveryCalibrationOf(path);
  } catch (const Error&) {
    // The data set can be edited without its history, whose own screen says what is wrong.
    FileHistory history;
    history.current.emplace();
    static_cast<void>(ReadNativeFile(NativePath(path), *history.current, kDataFileLimit));
    calibrations = CalibrationsIn(history, path);
  }
  std::erase_if(calibrations, [](const Calibration& each) { return !each.hasHeader; });
  return calibrations;
}

std::unique_ptr<cifCaldata> LoadCalibration(const Model& model, const Calibration& calibration) {
  try {
    return OpenDataSet(model, calibration.header).data;
  } catch (const Error&) {
    // Nothing can be compared with such data; the screen of the history says what is wrong.
    return nullptr;
  }
}

const Calibration* EarlierCalibration(const std::vector<Calibration>& calibrations,
                                      const FileDate& date) {
  const auto found = std::ranges::find_if(calibrations, [&](const Calibration& each) {
    const FileDate calibrated = each.Calibrated();
    return calibrated.year != date.year || calibrated.month != date.month ||
           calibrated.day != date.day;
  });
  return found == calibrations.end() ? nullptr : &*found;
}

}  // namespace tarvell
