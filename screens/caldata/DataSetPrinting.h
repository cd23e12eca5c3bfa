// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_DATASETPRINTING_H
#define TARVELL_SCREENS_CALDATA_DATASETPRINTING_H

#include <QMenu>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

#include "core/caldata/Draft.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/Models.h"
#include "screens/widgets/PaperOutput.h"

/// "Print..." and "Save as PDF..." of the screens that show data sets.
namespace tarvell {

class CalHeaderBlock;
class EarlierChoice;

struct PrintedEditor {
  QWidget* screen;
  QMenu* menu;
  const CalHeaderBlock* header;
  const EarlierChoice* earlier;
  std::function<const Model&()> model;
  std::function<const cifCaldata&()> data;
  std::function<EditorState()> contents;  ///< after an open edit of a cell was stored
  /// What a save would write; throws the error of data that cannot be saved.
  std::function<std::string()> bytesToSave;
  std::function<std::string()> path;  ///< of the file, "" for none
};

/// Adds both entries to the menu of an editor.
void OfferPrinting(const PrintedEditor& editor);

/// A version of the file at `path`, which is row `selected.front()` of `versions`, the latest
/// first. It is compared with the second row that is selected, or else with the next earlier
/// calibration. Throws the error of a version that cannot be read, and an Index error unless one or
/// two rows are selected. `model` is nullptr for an unknown one.
[[nodiscard]] PaperWork WorkOfVersion(const Model* model, const std::string& path,
                                      const std::vector<Calibration>& versions,
                                      const std::vector<int>& selected);

}  // namespace tarvell

#endif
