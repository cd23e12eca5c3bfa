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

/// The distances of the values from some row on to the last from the earlier calibration.
struct Distances {
  double inOwnRow = 0;
  double inOtherRow = 0;
  int differing = 0;  ///< how many values are not those of their own rows
};

/// Whether the rows before `first` are much nearer to the earlier calibration than the rows from
/// there to `end`, whose distances are `after`. If all values have changed alike, they are not.
bool FitBefore(const std::vector<ShiftRow>& rows, std::size_t first, std::size_t end,
               const Distances& after) {
  constexpr double kNearer = 3;
  double before = 0;
  for (std::size_t row = 0; row < first; ++row) {
    if (!rows[row].now || !rows[row].earlier) {
      return false;
    }
    before += std::abs(*rows[row].now - *rows[row].earlier);
  }
  return first > 0 && kNearer * before / static_cast<double>(first) <=
                          after.inOwnRow / static_cast<double>(end - first);
}

/// The first of the rows up to `end` that are all several times nearer to the row `step` rows on
/// than to their own.
std::optional<std::size_t> FirstNearerElsewhere(const std::vector<ShiftRow>& rows, std::size_t end,
                                                int step) {
  constexpr int kLeastDiffering = 4;
  constexpr double kNearer = 3;
  std::optional<std::size_t> first;
  Distances sum;
  for (std::size_t row = end; row > 0; --row) {
    const ShiftRow& own = rows[row - 1];
    const auto other = static_cast<std::ptrdiff_t>(row) - 1 + step;
    if (other < 0 || other >= static_cast<std::ptrdiff_t>(rows.size()) || !own.earlier ||
        !Fits(own.now, rows[static_cast<std::size_t>(other)])) {
      break;
    }
    const double inOwnRow = std::abs(*own.now - *own.earlier);
    const double inOtherRow = std::abs(*own.now - *rows[static_cast<std::size_t>(other)].earlier);
    sum.inOwnRow += inOwnRow;
    sum.inOtherRow += inOtherRow;
    sum.differing += inOwnRow > 0 ? 1 : 0;
    if (inOtherRow < inOwnRow && sum.differing >= kLeastDiffering &&
        kNearer * sum.inOtherRow <= sum.inOwnRow && FitBefore(rows, row - 1, end, sum)) {
      first = row - 1;
    }
  }
  return first;
}

std::optional<std::size_t> FirstElsewhere(const std::vector<ShiftRow>& rows, std::size_t end,
                                          int step) {
  const auto beyondLimit = FirstShifted(rows, end, step);
  return beyondLimit ? beyondLimit : FirstNearerElsewhere(rows, end, step);
}

}  // namespace

std::optional<Shift> FindShift(const std::vector<ShiftRow>& rows) {
  std::size_t end = rows.size();
  while (end > 0 && !rows[end - 1].now) {
    --end;
  }
  // Nothing comes after the last row, so that its own value stays when a row was left out.
  const std::size_t endOfLeftOut = end == rows.size() && end > 0 ? end - 1 : end;
  if (const auto first = FirstElsewhere(rows, endOfLeftOut, 1)) {
    return Shift{*first, true};
  }
  if (const auto first = FirstElsewhere(rows, end, -1)) {
    return Shift{*first, false};
  }
  return std::nullopt;
}

}  // namespace tarvell
