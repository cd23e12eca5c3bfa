// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_OPENEDDATASET_H
#define TARVELL_CORE_CALDATA_OPENEDDATASET_H

#include <memory>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"
#include "core/dates/FileDate.h"

namespace tarvell {

/// A data set that was opened to be edited.
struct OpenedDataSet {
  std::unique_ptr<cifCaldata> data;
  /// What to report before the data are edited, one or more sentences each.
  std::vector<std::string> notices;
  /// Whether the file is named after the serial number, which then must not be changed.
  bool isNamedBySerial = false;
  /// Where the values that the file holds come from. Those of the template are known to `data`.
  Origin fileValues = Origin::File;
};

/// New data of a model: those of its template. Throws as SetInitialDefaultData does.
[[nodiscard]] OpenedDataSet NewDataSet(const Model& model);

/// The data set of a listed file; `listed` is its entry. The file of a set is read over the model's
/// template: where the file lacks data, those of the template are shown, and reported. A template
/// that is missing or refused is reported, too. The serial number never comes from the template: if
/// the file has none, it is that of the entry, or "".
///
/// Throws the error of a file that cannot be read, and a NotAFile error for one in the old style.
[[nodiscard]] OpenedDataSet OpenDataSet(const Model& model, const CalFileInfo& listed);

/// The same to be looked at, not edited: without the template, so that a value which the file lacks
/// is not there.
[[nodiscard]] OpenedDataSet OpenVersion(const Model& model, const CalFileInfo& listed);

/// The data set of a listed file, to enter a new calibration of its instrument on the day `today`:
/// calibrated today, due as DueAgain says (after a year where the earlier dates give no interval,
/// which is reported), without a calibration number, and with earlier values. Everything else, and
/// the file that it is saved to, is that of OpenDataSet, which also says what is thrown.
[[nodiscard]] OpenedDataSet NewCalibration(const Model& model, const CalFileInfo& listed,
                                           const FileDate& today);

/// The same for another instrument: also without a serial number, those of members and a comment.
/// It does not belong to the listed file: a save asks before it replaces that.
[[nodiscard]] OpenedDataSet CopyOfDataSet(const Model& model, const CalFileInfo& listed,
                                          const FileDate& today);

}  // namespace tarvell

#endif
