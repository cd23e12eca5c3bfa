// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/ValuesToEnter.h"

namespace tarvell {

namespace {

std::string Count(int values) {
  return values == 0 ? "" : values == 1 ? "1 value" : std::to_string(values) + " values";
}

std::string Dates(const ValuesToEnter& values) {
  if (values.isCalDateDefault && values.isDueDateDefault) {
    return "both dates";
  }
  return values.isCalDateDefault   ? "the calibration date"
         : values.isDueDateDefault ? "the due date"
                                   : "";
}

std::string Defaults(const ValuesToEnter& values) {
  const std::string count = Count(values.defaults);
  const std::string dates = Dates(values);
  std::string things = count + (count.empty() || dates.empty() ? "" : " and ") + dates;
  if (things.empty()) {
    return {};
  }
  const bool isOne = things == "1 value" || (count.empty() && dates != "both dates");
  if (count.empty()) {
    things.front() = dates.front() == 'b' ? 'B' : 'T';
  }
  return things + (isOne ? " is a default" : " are defaults") + " that nobody has entered.";
}

std::string Earlier(int values) {
  return values == 0 ? ""
                     : Count(values) + (values == 1 ? " is" : " are") + " taken over, not entered.";
}

}  // namespace

std::string RemarkOn(const ValuesToEnter& values) {
  const std::string defaults = Defaults(values);
  const std::string earlier = Earlier(values.earlier);
  return defaults + (defaults.empty() || earlier.empty() ? "" : " ") + earlier;
}

}  // namespace tarvell
