// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ShownRows.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "core/text/NaturalOrder.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

bool HoldsText(const SurveyRow& row, std::string_view text) {
  const auto holds = [text](std::string_view value) { return ContainsIgnoringCase(value, text); };
  return holds(row.model) || holds(row.serialNumber) || holds(row.calibrationNumber) ||
         holds(row.comment) || std::ranges::any_of(row.stations, holds);
}

bool HasValue(const SurveyRow& row, SurveyColumn column) {
  switch (column) {
    case SurveyColumn::Kind:
    case SurveyColumn::Path:
      return true;
    case SurveyColumn::Model:
      return !row.model.empty();
    case SurveyColumn::SerialNumber:
      return !row.serialNumber.empty();
    case SurveyColumn::CalibrationNumber:
      return !row.calibrationNumber.empty();
    case SurveyColumn::Calibrated:
      return !IsoDate(row.calibrated).empty();
    case SurveyColumn::Due:
      return !IsoDate(row.due).empty();
    case SurveyColumn::DaysLeft:
      return row.daysLeft.has_value();
    case SurveyColumn::Comment:
      return !row.comment.empty();
    case SurveyColumn::Stations:
      return !row.stations.empty();
    case SurveyColumn::State:
    case SurveyColumn::ToDo:
      return !row.findings.empty();
  }
  return false;
}

std::weak_ordering OrderOf(const FileDate& a, const FileDate& b) {
  const auto years = a.year <=> b.year;
  const auto months = a.month <=> b.month;
  return years != 0 ? years : months != 0 ? months : a.day <=> b.day;
}

/// The order of two lists: that of the first entries that differ, as `orderOf` says.
template <typename List, typename Order>
std::weak_ordering OrderOf(const List& a, const List& b, const Order& orderOf) {
  return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(), orderOf);
}

std::weak_ordering OrderOf(const SurveyRow& a, const SurveyRow& b, SurveyColumn column) {
  switch (column) {
    case SurveyColumn::Kind:
      return a.kind <=> b.kind;
    case SurveyColumn::Model:
      return NaturalOrder(a.model, b.model);
    case SurveyColumn::SerialNumber:
      return NaturalOrder(a.serialNumber, b.serialNumber);
    case SurveyColumn::CalibrationNumber:
      return NaturalOrder(a.calibrationNumber, b.calibrationNumber);
    case SurveyColumn::Calibrated:
      return OrderOf(a.calibrated, b.calibrated);
    case SurveyColumn::Due:
      return OrderOf(a.due, b.due);
    case SurveyColumn::DaysLeft:
      return *a.daysLeft <=> *b.daysLeft;
    case SurveyColumn::Comment:
      return NaturalOrder(a.comment, b.comment);
    case SurveyColumn::Stations:
      return OrderOf(a.stations, b.stations, &NaturalOrder);
    case SurveyColumn::State:
    case SurveyColumn::ToDo:
      return OrderOf(a.findings, b.findings, [](const Finding& first, const Finding& second) {
        return std::weak_ordering(first.kind <=> second.kind);
      });
    case SurveyColumn::Path:
      return NaturalOrder(a.path, b.path);
  }
  return std::weak_ordering::equivalent;
}

}  // namespace

bool Matches(const SurveyRow& row, const RowFilter& filter) {
  const std::string_view text = Trim(filter.text);
  return (!filter.onlyFaults || row.HasFault()) && (!filter.state || row.Has(*filter.state)) &&
         (filter.station.empty() ||
          std::ranges::find(row.stations, filter.station) != row.stations.end()) &&
         (text.empty() || HoldsText(row, text));
}

bool ComesBefore(const SurveyRow& a, const SurveyRow& b, SurveyColumn column, bool isDescending) {
  const bool isFirstThere = HasValue(a, column);
  const bool isSecondThere = HasValue(b, column);
  if (!isFirstThere || !isSecondThere) {
    return isFirstThere && !isSecondThere;
  }
  const std::weak_ordering order = OrderOf(a, b, column);
  return isDescending ? order > 0 : order < 0;
}

void ShownRows::Set(std::vector<SurveyRow> rows) {
  rows_ = std::move(rows);
  sorted_.resize(rows_.size());
  std::iota(sorted_.begin(), sorted_.end(), std::size_t{0});
  sortedBefore_ = 0;
  Narrow();
}

void ShownRows::Append(std::vector<SurveyRow> rows) {
  for (SurveyRow& row : rows) {
    sorted_.push_back(rows_.size());
    if (Matches(row, filter_)) {
      shown_.push_back(rows_.size());
    }
    rows_.push_back(std::move(row));
  }
}

void ShownRows::Arrange() {
  ArrangeFrom(std::exchange(sortedBefore_, sorted_.size()), sorted_);
  ArrangeFrom(std::exchange(shownBefore_, shown_.size()), shown_);
}

void ShownRows::ArrangeFrom(std::size_t arranged, std::vector<std::size_t>& numbers) const {
  const auto isBefore = [this](std::size_t a, std::size_t b) {
    return column_ ? ComesBefore(rows_[a], rows_[b], *column_, isDescending_) : a < b;
  };
  const auto middle = std::next(numbers.begin(), static_cast<std::ptrdiff_t>(arranged));
  std::stable_sort(middle, numbers.end(), isBefore);
  std::inplace_merge(numbers.begin(), middle, numbers.end(), isBefore);
}

void ShownRows::SetFilter(RowFilter filter) {
  filter_ = std::move(filter);
  Narrow();
}

void ShownRows::Sort(std::optional<SurveyColumn> column, bool isDescending) {
  column_ = column;
  isDescending_ = isDescending;
  std::ranges::sort(sorted_);
  sortedBefore_ = 0;
  Narrow();
}

void ShownRows::Narrow() {
  ArrangeFrom(std::exchange(sortedBefore_, sorted_.size()), sorted_);
  shown_.clear();
  std::ranges::copy_if(sorted_, std::back_inserter(shown_),
                       [this](std::size_t number) { return Matches(rows_[number], filter_); });
  shownBefore_ = shown_.size();
}

}  // namespace tarvell
