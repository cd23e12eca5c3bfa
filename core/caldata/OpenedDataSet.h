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

/// A data set that was opened to be edited.
struct OpenedDataSet {
  std::unique_ptr<cifCaldata> data;
  /// What to report before the data are edited, one or more sentences each.
  std::vector<std::string> notices;
  /// Whether the file has its name from the serial number, which must not be changed then.
  bool isNamedBySerial = false;
};

/// New data of a model: those of its template. Throws as SetInitialDefaultData does.
[[nodiscard]] OpenedDataSet NewDataSet(const Model& model);

/// The data set of a file whose header a list has read. The file of a set is read over the model's
/// template: the template's data that the file lacks are shown, and reported. A template that is
/// missing or refused is reported, too. The serial number never comes from the template: where the
/// file has none, it is that of the list, or "".
///
/// Throws the error of a file that cannot be read, and a NotAFile error for one in the old style.
[[nodiscard]] OpenedDataSet OpenDataSet(const Model& model, const CalFileInfo& listed);

}  // namespace tarvell

#endif
