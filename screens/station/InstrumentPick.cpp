// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/InstrumentPick.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/caldata/HeaderLines.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/station/frmStationGetInstr.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

Error InstrumentGone() {
  return {ErrorKind::Index,
          "The chosen instrument is not in the calibration data any more. Choose it again."};
}

/// The row of a data file that was picked from a filtered list. A list without a filter may end
/// before it; then it is added.
int RowOfPicked(const CalFileInfo& picked, std::vector<CalFileInfo>& files) {
  const auto found = std::ranges::find(files, picked.FilePath, &CalFileInfo::FilePath);
  const auto row = found - files.begin();
  if (found == files.end()) {
    files.push_back(picked);
  }
  return static_cast<int>(row);
}

/// The models with data files. Shows a message when there are none.
std::vector<std::string> ModelsToPickFrom(QWidget* screen) {
  std::vector<std::string> models;
  // When there are too many models, the user can choose among those that were read.
  const bool areListed = Guarded(screen, [&] {
    const BusyPointer busy;
    ListModelFolders(gCalibrationDir, models);
  });
  models = ModelsWithData(std::move(models));
  if (models.empty() && areListed) {
    CurrentQuestions().Ask(screen, {.text = "There is no equipment calibration data.\r\n"
                                            "It's not possible to add it.",
                                    .title = "No data is availval."});
  }
  return models;
}

}  // namespace

std::optional<PickedInstrument> PickInstrument(QWidget* screen, const QListWidget* listed) {
  const std::vector<std::string> models = ModelsToPickFrom(screen);
  if (models.empty()) {
    return std::nullopt;
  }
  frmStationGetInstr picker(screen);
  picker.ShowModally(models);
  if (picker.Result == frmStationGetInstr::kCancelled) {
    return std::nullopt;
  }
  if (!picker.PickedFile()) {
    throw InstrumentGone();
  }
  CalFileInfo picked = *picker.PickedFile();
  if (HasName(listed, picked.ModelNumber)) {
    Tell(screen, "This instrment is already exist.");
    return std::nullopt;
  }
  picked.ModelNumber = StationModelOf(picked.ModelNumber);
  if (HasName(listed, picked.ModelNumber)) {
    Tell(screen, "This instrment is already exist.");
    return std::nullopt;
  }
  std::vector<CalFileInfo> files = ReadCalFiles(screen, picked.ModelNumber);
  int row = picker.Result;
  if (picker.WasFiltered()) {
    row = RowOfPicked(*picker.PickedFile(), files);
  } else if (static_cast<std::size_t>(row) >= files.size()) {
    throw InstrumentGone();
  }
  return PickedInstrument{std::move(picked), std::move(files), row};
}

std::vector<CalFileInfo> ReadCalFiles(QWidget* screen, const std::string& model) {
  std::vector<CalFileInfo> files;
  if (!model.empty()) {
    Guarded(screen, [&] {
      const BusyPointer busy;
      ReadCalFileHeaders(Joined(gCalibrationDir, model),
                         [&](const CalFileInfo& file) { files.push_back(file); });
    });
  }
  return files;
}

}  // namespace tarvell
