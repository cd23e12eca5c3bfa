// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EditorCurve.h"

#include <QItemSelectionModel>
#include <QLayout>

#include <cstddef>

#include "core/curves/Change.h"
#include "core/curves/Curves.h"
#include "core/curves/CurvesBeside.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellEditor.h"
#include "screens/caldata/ChangeTable.h"
#include "screens/caldata/CurveSplitter.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// The subject of the notice about points that only one calibration has.
constexpr const char* kPoints = "points of one calibration";
/// The subject of the notice about a history that cannot be read.
constexpr const char* kHistory = "history";

}  // namespace

EditorCurve::EditorCurve(const Editor& editor)
    : QObject(editor.screen),
      editor_(editor),
      curve_(new CurveSplitter(editor.screen, editor.grid, editor.menu)),
      tables_(new QHBoxLayout),
      earlier_(new EarlierChoice(curve_->Side())) {
  auto* rows = new QVBoxLayout(curve_->Side());  // the side owns the layouts
  rows->setContentsMargins(0, 0, 0, 0);
  tables_->setSpacing(0);
  tables_->addWidget(editor_.grid, 1);
  rows->addLayout(tables_, 1);
  rows->addWidget(earlier_);
  GiveAltKey(&curve_->Pane(), Qt::Key_V);
  soon_.setSingleShot(true);
  Watch();
}

void EditorCurve::Watch() {
  connect(&soon_, &QTimer::timeout, this, &EditorCurve::ShowAll);
  connect(&editor_.grid->Model(), &GridModel::Changed, this, &EditorCurve::ChangedSoon);
  connect(editor_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &EditorCurve::ChangedSoon);
  connect(editor_.cells, &CellEditor::Edited, this, &EditorCurve::ChangedSoon);
  connect(editor_.cells, &CellEditor::Closed, this, &EditorCurve::ChangedSoon);
  connect(curve_, &CurveSplitter::Folded, this, &EditorCurve::ChangedSoon);
  connect(&curve_->Pane(), &CurvePane::Reached, editor_.grid, &CalGrid::SetCurrentCell);
  connect(earlier_, &EarlierChoice::Changed, this, &EditorCurve::ShowChanges);
  connect(&curve_->Pane(), &CurvePane::Chosen, this, &EditorCurve::GoTo);
}

void EditorCurve::Begin(const Model& model, const cifCaldata& data, const std::string& path) {
  model_ = &model;
  ++opened_;
  earlier_->Begin(model, data, path);
  editor_.notices->Report(
      kHistory, earlier_->Problem().empty()
                    ? QString()
                    : tr("Earlier calibrations are not compared: the history cannot be read. %1")
                          .arg(ToQt(earlier_->Problem())));
  curve_->Begin();
  ShowChanges();
}

void EditorCurve::SetDate(const FileDate& date) {
  if (model_ != nullptr) {
    earlier_->SetDate(date);
  }
}

void EditorCurve::ShowChanges() {
  const bool hasEarlier = !earlier_->isHidden();
  if (hasEarlier && changes_ == nullptr) {
    changes_ = new ChangeTable(editor_.grid, curve_->Side());
    tables_->addWidget(changes_);
  }
  if (changes_ != nullptr) {
    changes_->setVisible(hasEarlier);
  }
  if (!hasEarlier) {
    editor_.notices->Report(kPoints, {});
  }
  ChangedSoon();
}

void EditorCurve::End() {
  soon_.stop();
  model_ = nullptr;
  earlier_->End();
  curve_->End();
}

void EditorCurve::ChangedSoon() {
  // Several changes are shown at once.
  if (model_ != nullptr && (curve_->IsUnfolded() || !earlier_->isHidden())) {
    soon_.start(0);
  }
}

std::vector<std::vector<std::string>> EditorCurve::RowsNow() const {
  std::vector<std::vector<std::string>> rows = editor_.grid->Data().Rows();
  const auto [cell, text] = editor_.cells->Preview();
  if (cell.row != kCaptionRow) {
    rows.at(static_cast<std::size_t>(cell.row.number)).at(static_cast<std::size_t>(cell.column)) =
        text;
  }
  return rows;
}

void EditorCurve::ShowAll() {
  MemoryGrid now(editor_.grid->Data().ColumnCount());
  now.SetRows(RowsNow());
  MemoryGrid before;
  const bool hasEarlier = earlier_->Fill(editor_.page(), before);
  ShowCurves(now, hasEarlier ? &before : nullptr);
  if (!earlier_->isHidden()) {
    ShowChange(now, hasEarlier ? &before : nullptr);
  }
}

void EditorCurve::ShowCurves(const MemoryGrid& now, const MemoryGrid* earlier) {
  const Cell current = editor_.grid->CurrentCell();
  ShownCurves shown;
  shown.curves = CurvesBeside(CurvesOf(*model_, editor_.page(), now), current);
  if (!shown.curves.empty()) {
    const Curve& curve = shown.curves.front();
    shown.subject = QString("%1 %2 %3 %4")
                        .arg(opened_)
                        .arg(editor_.page())
                        .arg(curve.column)
                        .arg(ToQt(curve.yUnit));
    column_ = curve.column;
    if (earlier != nullptr) {
      shown.earlier = CurvesOf(*model_, editor_.page(), *earlier);
      std::erase_if(shown.earlier, [&](const Curve& other) {
        return other.column != curve.column || other.yUnit != curve.yUnit;
      });
      shown.earlierName = tr("earlier: %1").arg(earlier_->Name());
    }
  }
  curve_->Pane().Show(shown, current, editor_.cells->IsOpen());
}

void EditorCurve::ShowChange(const MemoryGrid& now, const MemoryGrid* earlier) {
  PageChange change;
  QString notice = tr("The chosen earlier calibration cannot be read, or has no such page.");
  if (earlier != nullptr) {
    change = ChangeOf({*model_, editor_.page(), now}, {*model_, editor_.page(), *earlier});
    notice = ToQt(PointsOfOneOnly(change));
  }
  changes_->Show(change, column_);
  editor_.notices->Report(kPoints, notice);
}

void EditorCurve::GoTo(Cell cell) const {
  CalGrid& grid = *editor_.grid;
  // This stores an open edit, unless it cannot be stored.
  grid.setFocus();
  if (!editor_.cells->IsOpen()) {
    grid.SetCurrentCell(cell);
    grid.scrollTo(grid.currentIndex());
  }
}

}  // namespace tarvell
