// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_ORIGIN_H
#define TARVELL_CORE_CALDATA_ORIGIN_H

#include <map>

#include "core/caldata/Cell.h"

namespace tarvell {

/// Where the value of a cell comes from.
enum class Origin {
  Template,  ///< a default that nobody has entered: the template's, or that of a new point
  Earlier,   ///< taken over from an earlier calibration, or from another instrument
  File,      ///< read from the data file
  Operator   ///< typed or pasted
};

/// Whether the operator still has to enter a value of this origin.
[[nodiscard]] constexpr bool IsToEnter(Origin origin) {
  return origin == Origin::Template || origin == Origin::Earlier;
}

/// The origins of the cells of a table. A cell that is not in it comes from the file.
using CellOrigins = std::map<Cell, Origin>;

}  // namespace tarvell

#endif
