// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/OverviewTable.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "screens/widgets/EnterKey.h"
#include "screens/widgets/PaleSelection.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

// Settings.
constexpr const char* kWidths = "columns/frmOverview";
constexpr const char* kPlaces = "overview/places";
constexpr const char* kSorting = "overview/sort";

constexpr int kRowPadding = 3;

/// How many characters a column has room for at first, in the order of the columns.
constexpr std::array<int, kOverviewColumns> kCharacters = {10, 8, 13, 12, 11, 11, 5, 16, 14, 20};

/// Whether the numbers are 0, 1, 2 ... in any order.
bool ArePlaces(std::vector<int> numbers) {
  std::ranges::sort(numbers);
  for (std::size_t place = 0; place < numbers.size(); ++place) {
    if (numbers[place] != static_cast<int>(place)) {
      return false;
    }
  }
  return numbers.size() == kOverviewColumns;
}

}  // namespace

OverviewTable::OverviewTable(QWidget* parent)
    : QTableView(parent), model_(new OverviewModel(this)) {
  setModel(model_);
  setItemDelegate(new PaleSelection(this));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kRowPadding);
  const int size = fontMetrics().height();
  setIconSize({size, size});
  SetUpColumns();
  TakeRememberedColumns();
  model_->SetLook(palette(), *style());
}

void OverviewTable::SetUpColumns() {
  QHeaderView& header = *horizontalHeader();
  header.setSectionsMovable(true);
  header.setHighlightSections(false);
  header.setStretchLastSection(true);
  // Captions need room for it.
  header.setSortIndicatorShown(true);
  header.setSortIndicatorClearable(true);
  header.setSortIndicator(-1, Qt::AscendingOrder);
  for (int column = 0; column < kOverviewColumns; ++column) {
    const int text =
        fontMetrics().averageCharWidth() * (kCharacters.at(static_cast<std::size_t>(column)) + 2);
    setColumnWidth(column, std::max(text, header.sectionSizeHint(column)));
  }
}

void OverviewTable::TakeRememberedColumns() {
  QHeaderView& header = *horizontalHeader();
  const std::vector<int> widths = RememberedNumbers(kWidths);
  const auto isWidth = [](int width) { return width > 0 && width < QWIDGETSIZE_MAX; };
  if (widths.size() == kOverviewColumns && std::ranges::all_of(widths, isWidth)) {
    for (int column = 0; column < kOverviewColumns; ++column) {
      setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
    }
  }
  if (const std::vector<int> places = RememberedNumbers(kPlaces); ArePlaces(places)) {
    for (int place = 0; place < kOverviewColumns; ++place) {
      header.moveSection(header.visualIndex(places[static_cast<std::size_t>(place)]), place);
    }
  }
  const std::vector<int> sorting = RememberedNumbers(kSorting);
  if (sorting.size() == 2 && sorting[0] >= 0 && sorting[0] < kOverviewColumns) {
    header.setSortIndicator(sorting[0], sorting[1] == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
  }
  setSortingEnabled(true);
}

void OverviewTable::RememberColumns() const {
  const QHeaderView& header = *horizontalHeader();
  std::vector<int> widths;
  std::vector<int> places;
  for (int column = 0; column < kOverviewColumns; ++column) {
    widths.push_back(columnWidth(column));
    places.push_back(header.logicalIndex(column));
  }
  Remember(kWidths, widths);
  Remember(kPlaces, places);
  Remember(kSorting, std::vector<int>{header.sortIndicatorSection(),
                                      header.sortIndicatorOrder() == Qt::AscendingOrder ? 0 : 1});
}

const SurveyRow* OverviewTable::Current() const {
  return currentIndex().isValid() ? &model_->RowAt(currentIndex().row()) : nullptr;
}

std::vector<SurveyRow> OverviewTable::Selected() const {
  std::vector<SurveyRow> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) {
    rows.push_back(model_->RowAt(index.row()));
  }
  return rows;
}

void OverviewTable::KeepingTheRow(const std::function<void()>& reset) {
  const std::string path = Current() != nullptr ? Current()->path : std::string();
  const int row = std::max(currentIndex().row(), 0);
  const int column = std::max(currentIndex().column(), 0);
  reset();
  const int place = path.empty() ? -1 : model_->PlaceOf(path);
  const int last = model_->rowCount() - 1;
  setCurrentIndex(model_->index(place >= 0 ? place : std::min(row, last), column));
  emit CurrentChanged();
}

void OverviewTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  emit CurrentChanged();
}

void OverviewTable::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
    model_->SetLook(palette(), *style());
  }
}

void OverviewTable::keyPressEvent(QKeyEvent* event) {
  if (!IsPlainEnter(*event)) {
    QTableView::keyPressEvent(event);
  } else if (!event->isAutoRepeat()) {
    emit OpenWanted();
  }
}

void OverviewTable::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) {
    emit OpenWanted();
  }
}

}  // namespace tarvell
