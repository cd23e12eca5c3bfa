// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_VALUESTOENTER_H
#define TARVELL_CORE_CALDATA_VALUESTOENTER_H

#include <string>

namespace tarvell {

/// What nobody has entered yet in a data set.
struct ValuesToEnter {
  int defaults = 0;  ///< cells with the value of the template
  bool isCalDateDefault = false;
  bool isDueDateDefault = false;
  int earlier = 0;  ///< cells whose value was taken over
};

/// The sentences that report it, "" when everything is entered.
[[nodiscard]] std::string RemarkOn(const ValuesToEnter& values);

}  // namespace tarvell

#endif
