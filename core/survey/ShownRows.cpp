// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ShownRows.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "core/text/NaturalOrder.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

bool HoldsText(const SurveyRow& row, std::string_view part) {
  const auto holds = [part](std::string_view value) { return ContainsIgnoringCase(value, part); };
  return holds(row.model) || holds(row.serialNumber) || holds(row.calibrationNumber) ||
         holds(row.comment) || std::ranges::any_of(row.stations, holds);
}

/// Bytes in the order of the numbers.
void AppendNumber(std::string& key, std::int32_t number) {
  constexpr unsigned kByte = 8;
  // Negative numbers come first.
  const std::uint32_t bits = static_cast<std::uint32_t>(number) ^ 0x80000000U;
  for (unsigned shift = 4 * kByte; shift > 0; shift -= kByte) {
    key += static_cast<char>(bits >> (shift - kByte));
  }
}

std::string KeyOf(const FileDate& date) {
  std::string key;
  if (date != FileDate()) {
    for (const std::int16_t number : {date.year, date.month, date.day}) {
      AppendNumber(key, number);
    }
  }
  return key;
}

/// The keys of some texts, one after the other.
std::string KeyOf(const std::vector<std::string>& texts) {
  std::string key;
  for (const std::string& text : texts) {
    // A text that goes on comes after one that ends.
    key += NaturalKey(text) + '\0';
  }
  return key;
}

std::string KeyOf(const std::vector<Finding>& findings) {
  std::string key;
  for (const Finding& finding : findings) {
    key += static_cast<char>(finding.kind);
  }
  return key;
}

/// Bytes in the order of a column's values; "" for a row without a value.
std::string KeyOf(const SurveyRow& row, SurveyColumn column) {
  std::string key;
  switch (column) {
    case SurveyColumn::Kind:
      key = static_cast<char>(row.kind);
      break;
    case SurveyColumn::Model:
      return NaturalKey(row.model);
    case SurveyColumn::SerialNumber:
      return NaturalKey(row.serialNumber);
    case SurveyColumn::CalibrationNumber:
      return NaturalKey(row.calibrationNumber);
    case SurveyColumn::Calibrated:
      return KeyOf(row.calibrated);
    case SurveyColumn::Due:
      return KeyOf(row.due);
    case SurveyColumn::DaysLeft:
      if (row.daysLeft) {
        AppendNumber(key, *row.daysLeft);
      }
      break;
    case SurveyColumn::Comment:
      return NaturalKey(row.comment);
    case SurveyColumn::Stations:
      return KeyOf(row.stations);
    case SurveyColumn::State:
    case SurveyColumn::ToDo:
      return KeyOf(row.findings);
    case SurveyColumn::Path:
      return NaturalKey(row.path);
  }
  return key;
}

}  // namespace

bool Matches(const SurveyRow& row, const RowFilter& filter) {
  const std::string_view text = Trim(filter.text);
  return (!filter.onlyFaults || row.HasFault()) && (!filter.state || row.Has(*filter.state)) &&
         (filter.station.empty() ||
          std::ranges::find(row.stations, filter.station) != row.stations.end()) &&
         (text.empty() || HoldsText(row, text));
}

void ShownRows::Set(std::vector<SurveyRow> rows) {
  rows_ = std::move(rows);
  Refresh();
}

void ShownRows::Change(const std::function<void(std::vector<SurveyRow>& rows)>& change) {
  change(rows_);
  Refresh();
}

void ShownRows::Refresh() {
  faults_ = static_cast<std::size_t>(std::ranges::count_if(rows_, &SurveyRow::HasFault));
  Sort(column_, isDescending_);
}

void ShownRows::Append(std::vector<SurveyRow> rows) {
  for (SurveyRow& row : rows) {
    faults_ += row.HasFault() ? 1 : 0;
    sorted_.push_back(rows_.size());
    if (Matches(row, filter_)) {
      shown_.push_back(rows_.size());
    }
    if (column_) {
      keys_.push_back(KeyOf(row, *column_));
    }
    rows_.push_back(std::move(row));
  }
}

void ShownRows::Arrange() {
  ArrangeFrom(std::exchange(sortedBefore_, sorted_.size()), sorted_);
  ArrangeFrom(std::exchange(shownBefore_, shown_.size()), shown_);
}

bool ShownRows::ComesBefore(std::size_t a, std::size_t b) const {
  if (!column_) {
    return a < b;
  }
  const std::string& first = keys_[a];
  const std::string& second = keys_[b];
  if (first.empty() || second.empty()) {
    return !first.empty() && second.empty();
  }
  return isDescending_ ? second < first : first < second;
}

void ShownRows::ArrangeFrom(std::size_t arranged, std::vector<std::size_t>& numbers) const {
  const auto isBefore = [this](std::size_t a, std::size_t b) { return ComesBefore(a, b); };
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
  keys_.clear();
  for (std::size_t number = 0; column && number < rows_.size(); ++number) {
    keys_.push_back(KeyOf(rows_[number], *column));
  }
  sorted_.resize(rows_.size());
  std::iota(sorted_.begin(), sorted_.end(), std::size_t{0});
  sortedBefore_ = column ? 0 : sorted_.size();
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
