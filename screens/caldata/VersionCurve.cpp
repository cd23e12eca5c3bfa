// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/VersionCurve.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/curves/Curves.h"
#include "core/curves/CurvesBeside.h"
#include "screens/caldata/CurveSplitter.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// A value of two versions has three columns: earlier, later, difference.
constexpr std::size_t kColumnsOfValue = 3;

std::vector<Curve> CurvesOfRows(const Model& model, std::int16_t page, const TableRowList& rows) {
  MemoryGrid grid(kTableColumns);
  grid.SetRowCount(static_cast<std::int16_t>(rows.size()));
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      grid.SetCellText(static_cast<std::int16_t>(row), static_cast<std::int16_t>(column),
                       rows[row][column]);
    }
  }
  return CurvesOf(model, page, grid);
}

}  // namespace

VersionCurve::VersionCurve(QDialog* screen, QTableWidget* table, QMenu* menu)
    : QObject(screen), table_(table), curve_(new CurveSplitter(screen, table, menu)) {
  auto* layout = new QVBoxLayout(curve_->Side());  // the side owns it
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table);
  GiveAltKey(&curve_->Pane(), Qt::Key_U);
  // The sizes of last time are for a table that has its place.
  screen->layout()->activate();
  curve_->Begin();
  connect(screen, &QDialog::finished, curve_, &CurveSplitter::End);
  connect(table_, &QTableWidget::currentCellChanged, this, &VersionCurve::Draw);
  connect(curve_, &CurveSplitter::Folded, this, &VersionCurve::Draw);
  connect(&curve_->Pane(), &CurvePane::Reached, this, [this](Cell cell) { GoTo(cell, false); });
  connect(&curve_->Pane(), &CurvePane::Chosen, this, [this](Cell cell) { GoTo(cell, true); });
}

void VersionCurve::Show(Page page) {
  page_ = std::move(page);
  ++shownPages_;
  Draw();
}

Cell VersionCurve::Current() const {
  const auto row = static_cast<std::size_t>(std::max(table_->currentRow(), 0));
  auto column = static_cast<std::size_t>(std::max(table_->currentColumn(), 0));
  if (page_.isCompared && column >= page_.keys) {
    column = page_.keys + (column - page_.keys) / kColumnsOfValue;
  }
  return {row < page_.inTable.size() ? page_.inTable[row] : kCaptionRow,
          static_cast<std::int16_t>(column)};
}

void VersionCurve::Draw() {
  ShownCurves shown;
  if (page_.model != nullptr) {
    shown.curves = CurvesBeside(CurvesOfRows(*page_.model, page_.page, page_.rows), Current());
  }
  if (!shown.curves.empty() && !page_.earlierRows.empty()) {
    const Curve& curve = shown.curves.front();
    shown.earlier = CurvesOfRows(*page_.model, page_.page, page_.earlierRows);
    std::erase_if(shown.earlier, [&](const Curve& other) {
      return other.column != curve.column || other.yUnit != curve.yUnit;
    });
    shown.earlierName = tr("earlier: %1").arg(ToQt(page_.earlierName));
  }
  shown.subject = QString::number(shownPages_);
  curve_->Pane().Show(shown, Current());
}

void VersionCurve::GoTo(Cell cell, bool takesKeyboard) {
  const auto found = std::ranges::find(page_.inTable, cell.row);
  auto column = static_cast<std::size_t>(cell.column);
  if (page_.isCompared && column >= page_.keys) {
    // The later value.
    column = page_.keys + (column - page_.keys) * kColumnsOfValue + 1;
  }
  if (found != page_.inTable.end()) {
    table_->setCurrentCell(static_cast<int>(found - page_.inTable.begin()),
                           static_cast<int>(column));
  }
  if (takesKeyboard) {
    table_->setFocus();
  }
}

}  // namespace tarvell
