// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EditorCurve.h"

#include <QItemSelectionModel>
#include <QLayout>
#include <QScreen>

#include <cstddef>

#include "core/curves/Change.h"
#include "core/curves/Curves.h"
#include "core/curves/CurvesBeside.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellEditor.h"
#include "screens/caldata/ChangeTable.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

/// Width of the curve at first, in line heights.
constexpr int kCurve = 26;
/// The usual width of a window's frame, in pixels.
constexpr int kFrame = 16;

/// The subject of the notice about points that only one calibration has.
constexpr const char* kPoints = "points of one calibration";

QString SettingOf(const QWidget& screen) {
  return "curve/" + screen.objectName();
}

}  // namespace

EditorCurve::EditorCurve(const Editor& editor)
    : QObject(editor.screen),
      editor_(editor),
      splitter_(new QSplitter(editor.screen)),
      pane_(new CurvePane),
      shown_(new QAction(tr("&Curve"), this)) {
  auto* side = new QWidget;
  delete editor_.screen->layout()->replaceWidget(editor_.grid, splitter_);
  splitter_->setObjectName("splitter");
  splitter_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(side);
  splitter_->addWidget(pane_);
  splitter_->setStretchFactor(0, 1);
  splitter_->setStretchFactor(1, 1);
  auto* rows = new QVBoxLayout(side);  // the side owns the layouts
  auto* tables = new QHBoxLayout;
  rows->setContentsMargins(0, 0, 0, 0);
  tables->setSpacing(0);
  tables->addWidget(editor_.grid, 1);
  changes_ = new ChangeTable(editor_.grid, side);
  tables->addWidget(changes_);
  earlier_ = new EarlierChoice(side);
  rows->addLayout(tables, 1);
  rows->addWidget(earlier_);
  GiveAltKey(pane_, Qt::Key_V);
  shown_->setObjectName("mnuCurve");
  shown_->setCheckable(true);
  shown_->setChecked(true);
  shown_->setShortcut(Qt::Key_F8);
  editor_.menu->addAction(shown_);
  // The key also works while the menu is closed.
  editor_.screen->addAction(shown_);
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
  connect(shown_, &QAction::toggled, this, &EditorCurve::Fold);
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { sizes_ = splitter_->sizes(); });
  connect(pane_, &CurvePane::Reached, editor_.grid, &CalGrid::SetCurrentCell);
  connect(earlier_, &EarlierChoice::Changed, this, &EditorCurve::ChangedSoon);
  connect(pane_, &CurvePane::Chosen, this, &EditorCurve::GoTo);
}

void EditorCurve::Begin(const Model& model, const cifCaldata& data, const std::string& path) {
  model_ = &model;
  earlier_->Begin(model, data, path);
  changes_->setVisible(!earlier_->isHidden());
  const std::vector<int> remembered = RememberedNumbers(SettingOf(*editor_.screen));
  // The setting may be damaged.
  if (remembered.size() == 3 && remembered[1] > 0 && remembered[2] > 0) {
    sizes_ = {remembered[1], remembered[2]};
    shown_->setChecked(remembered[0] != 0);
  } else {
    ShareRoom();
  }
  splitter_->setSizes(sizes_);
  ChangedSoon();
}

void EditorCurve::ShareRoom() {
  QWidget& screen = *editor_.screen;
  const int curve = kCurve * screen.fontMetrics().height();
  const int table = splitter_->width();
  const int display = screen.screen()->availableGeometry().width();
  const bool hasRoom = screen.width() + curve + kFrame <= display;
  if (hasRoom) {
    screen.resize(screen.width() + curve, screen.height());
  }
  shown_->setChecked(hasRoom);
  sizes_ = {table, curve};
}

void EditorCurve::End() {
  soon_.stop();
  model_ = nullptr;
  earlier_->End();
  const int isShown = shown_->isChecked() ? 1 : 0;
  Remember(SettingOf(*editor_.screen), std::vector<int>{isShown, sizes_[0], sizes_[1]});
}

void EditorCurve::Fold(bool isShown) {
  if (!isShown && pane_->hasFocus()) {
    editor_.grid->setFocus();
  }
  pane_->setVisible(isShown);
  splitter_->setSizes(sizes_);
  ChangedSoon();
}

void EditorCurve::ChangedSoon() {
  // Several changes are shown at once.
  if (model_ != nullptr && (shown_->isChecked() || !earlier_->isHidden())) {
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
    shown.subject =
        QString("%1 %2 %3").arg(editor_.page()).arg(curve.column).arg(ToQt(curve.yUnit));
    column_ = curve.column;
    if (earlier != nullptr) {
      shown.earlier = CurvesOf(*model_, editor_.page(), *earlier);
      std::erase_if(shown.earlier, [&](const Curve& other) {
        return other.column != curve.column || other.yUnit != curve.yUnit;
      });
      shown.earlierName = tr("earlier: %1").arg(earlier_->Name());
    }
  }
  pane_->SetCurrent(current);
  pane_->Show(shown, editor_.cells->IsOpen());
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

void EditorCurve::GoTo(Cell cell) {
  CalGrid& grid = *editor_.grid;
  // This stores an open edit, unless it cannot be stored.
  grid.setFocus();
  if (!editor_.cells->IsOpen()) {
    grid.SetCurrentCell(cell);
    grid.scrollTo(grid.currentIndex());
  }
}

}  // namespace tarvell
