// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_OPENEDDATASET_H
#define TARVELL_CORE_CALDATA_OPENEDDATASET_H

#include <memory>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"

namespace tarvell {

/// A data set as it is opened to be edited.
struct OpenedDataSet {
  std::unique_ptr<cifCaldata> data;
  /// What is reported before the data are edited, a sentence or several each.
  std::vector<std::string> notices;
  /// Whether the serial number names the file, and must not be changed.
  bool isNamedBySerial = false;
};

/// New data of a model: those of its template. Throws as SetInitialDefaultData does.
[[nodiscard]] OpenedDataSet NewDataSet(const Model& model);

/// The data set of a file, as the list of data sets read its header. The file of a set is read over
/// the model's template, whose data show what the file lacks, and are reported then; where the
/// template is missing or refused, nothing of it is in the data. The serial number is never the
/// template's: where the file has none, it is the list's, or "".
///
/// Throws the error of a file that cannot be read, and a NotAFile error for one in the old style.
[[nodiscard]] OpenedDataSet OpenDataSet(const Model& model, const CalFileInfo& listed);

}  // namespace tarvell

#endif
