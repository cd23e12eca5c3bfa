// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/Shift.h"

#include <cmath>

namespace tarvell {

namespace {

/// If only one value is in the wrong row, a slip in that value is more likely.
constexpr int kLeastWrong = 2;

bool Fits(const std::optional<double>& value, const ShiftRow& row) {
  return value && row.earlier && std::abs(*value - *row.earlier) <= row.limit;
}

/// The first of the rows up to `end` that all fit the row `step` rows on, if enough of them do not
/// fit their own.
std::optional<std::size_t> FirstShifted(const std::vector<ShiftRow>& rows, std::size_t end,
                                        int step) {
  std::optional<std::size_t> first;
  int wrong = 0;
  for (std::size_t row = end; row > 0; --row) {
    const auto other = static_cast<std::ptrdiff_t>(row) - 1 + step;
    if (other < 0 || other >= static_cast<std::ptrdiff_t>(rows.size()) ||
        !Fits(rows[row - 1].now, rows[static_cast<std::size_t>(other)])) {
      break;
    }
    if (!Fits(rows[row - 1].now, rows[row - 1])) {
      ++wrong;
      first = row - 1;
    }
  }
  return wrong >= kLeastWrong ? first : std::nullopt;
}

}  // namespace

std::optional<Shift> FindShift(const std::vector<ShiftRow>& rows) {
  std::size_t end = rows.size();
  while (end > 0 && !rows[end - 1].now) {
    --end;
  }
  // Nothing comes after the last row, so that its own value stays when a row was left out.
  const std::size_t endOfLeftOut = end == rows.size() && end > 0 ? end - 1 : end;
  if (const auto first = FirstShifted(rows, endOfLeftOut, 1)) {
    return Shift{*first, true};
  }
  if (const auto first = FirstShifted(rows, end, -1)) {
    return Shift{*first, false};
  }
  return std::nullopt;
}

}  // namespace tarvell
