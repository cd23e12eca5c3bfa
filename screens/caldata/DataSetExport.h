// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_DATASETEXPORT_H
#define TARVELL_SCREENS_CALDATA_DATASETEXPORT_H

#include <QString>
#include <QWidget>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"

namespace tarvell {

/// Asks for a file and writes a data set to it: as JSON if its name says so, otherwise as CSV.
/// `data` is an object of the model, for its captions. Returns the notice about the file, "" when
/// the user chose none. Throws the error of a file that cannot be written.
[[nodiscard]] QString ExportDataSet(QWidget* owner, const Model& model, const cifCaldata& data,
                                    const EditorState& state);

}  // namespace tarvell

#endif
