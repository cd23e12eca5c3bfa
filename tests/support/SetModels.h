// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SETMODELS_H
#define TARVELL_TESTS_SUPPORT_SETMODELS_H

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/caldata/cifCaldata.h"

namespace tarvell::test {

using Texts = std::vector<std::string>;

/// A set of standards, and in what its file differs from that of another set.
struct SetModel {
  std::string code;
  std::string otherCode;  ///< of another set
  std::unique_ptr<cifCaldata> (*create)();
  Texts pages;                   ///< names of the pages of its file
  std::size_t requiredPages;     ///< how many of them no file may lack
  std::vector<Texts> openings;   ///< lines that stand before the rows of each page
  Texts closing;                 ///< lines that stand after them
  std::vector<Texts> emptyPage;  ///< what is shown of a page without rows
};

[[nodiscard]] const SetModel& CapacitorSetA();
[[nodiscard]] const SetModel& CapacitorSetC();
[[nodiscard]] const SetModel& ResistorSet();

void PrintTo(const SetModel& set, std::ostream* stream);

}  // namespace tarvell::test

#endif
