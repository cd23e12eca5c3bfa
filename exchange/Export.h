// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_EXPORT_H
#define TARVELL_EXCHANGE_EXPORT_H

#include <string>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"

/// Data sets in forms that other programs read.
namespace tarvell {

/// A data set in a table of text by RFC 4180, in UTF-8: a line for each header field, and each page
/// as a table with the units in its captions, or with each value where a column has several.
/// Numbers have a decimal point. ReadCertificate and PlanImport take it back without loss. `data`
/// is an object of the model, for its captions.
[[nodiscard]] std::string CsvOf(const Model& model, const cifCaldata& data,
                                const EditorState& state);

/// The same as JSON, in UTF-8, as docs/data-set.schema.json describes it.
[[nodiscard]] std::string JsonOf(const Model& model, const cifCaldata& data,
                                 const EditorState& state);

/// The same of a file whose values the program cannot read: only its header.
[[nodiscard]] std::string JsonOf(const CalFileInfo& header);

/// The header and pages of a data set as an editor shows them. The data set is the same afterwards.
[[nodiscard]] EditorState StateOf(const Model& model, cifCaldata& data);

/// Puts a header and pages into a data set of the model. Throws a Type error for a date box without
/// a number.
void StoreState(const EditorState& state, const Model& model, cifCaldata& data);

}  // namespace tarvell

#endif
