// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_SHOWNROWS_H
#define TARVELL_CORE_SURVEY_SHOWNROWS_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/survey/Finding.h"
#include "core/survey/SurveyRow.h"
#include "core/survey/SurveyTable.h"

namespace tarvell {

/// Which rows of a survey are shown.
struct RowFilter {
  std::string text = {};                  ///< see Matches; "" for every row
  bool onlyFaults = false;                ///< whether there must be something to do
  std::optional<FindingKind> state = {};  ///< a state that a row must have
  std::string station = {};               ///< a station that uses it; "" for every row
};

/// Whether a row passes a filter. Its text, without the blanks around it, must be part of the
/// model, serial number, calibration number, comment or a station, in any case.
[[nodiscard]] bool Matches(const SurveyRow& row, const RowFilter& filter);

/// The rows of a survey, and those of them that a table shows, in its order. In a sorted column,
/// dates and days are compared as such, and texts by NaturalKey; rows without a value come last in
/// both directions, and rows that are equal stay in the order of the survey.
class ShownRows {
 public:
  [[nodiscard]] const std::vector<SurveyRow>& All() const { return rows_; }
  /// The number of rows that are shown.
  [[nodiscard]] std::size_t Count() const { return shown_.size(); }
  /// The number of all rows with something to do.
  [[nodiscard]] std::size_t FaultCount() const { return faults_; }
  /// The row that is shown at `place`.
  [[nodiscard]] const SurveyRow& At(std::size_t place) const { return rows_[shown_.at(place)]; }
  /// The numbers in All of the rows that are shown.
  [[nodiscard]] const std::vector<std::size_t>& Numbers() const { return shown_; }

  /// Replaces all rows.
  void Set(std::vector<SurveyRow> rows);
  /// Lets `change` change the rows where they are.
  void Change(const std::function<void(std::vector<SurveyRow>& rows)>& change);
  /// Adds rows. Those that are shown come last, whatever the order, until Arrange.
  void Append(std::vector<SurveyRow> rows);
  /// Puts the rows of Append at their places.
  void Arrange();

  void SetFilter(RowFilter filter);
  [[nodiscard]] const RowFilter& Filter() const { return filter_; }
  /// Sorts by a column; without one, shows the order of the survey.
  void Sort(std::optional<SurveyColumn> column, bool isDescending);
  [[nodiscard]] bool IsSorted() const { return column_.has_value(); }

 private:
  /// Works everything out again for other rows.
  void Refresh();
  [[nodiscard]] bool ComesBefore(std::size_t a, std::size_t b) const;
  /// Puts the numbers at their places, of which those before `arranged` already are.
  void ArrangeFrom(std::size_t arranged, std::vector<std::size_t>& numbers) const;
  /// Finds the rows that match the filter.
  void Narrow();

  std::vector<SurveyRow> rows_;
  std::vector<std::string> keys_;    ///< of all rows, in their order; empty if not sorted
  std::vector<std::size_t> sorted_;  ///< the numbers of all rows
  std::vector<std::size_t> shown_;   ///< of those that match the filter
  std::size_t sortedBefore_ = 0;     ///< how many of each are at their places
  std::size_t shownBefore_ = 0;
  std::size_t faults_ = 0;
  RowFilter filter_;
  std::optional<SurveyColumn> column_;
  bool isDescending_ = false;
};

}  // namespace tarvell

#endif
