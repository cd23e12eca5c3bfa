// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EditorCurve.h"

#include <QItemSelectionModel>
#include <QLayout>
#include <QScreen>

#include <utility>

#include "core/curves/CurvesBeside.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellEditor.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

/// Width of the curve at first, in line heights.
constexpr int kCurve = 26;
/// The usual width of a window's frame, in pixels.
constexpr int kFrame = 16;

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
  delete editor_.screen->layout()->replaceWidget(editor_.grid, splitter_);
  splitter_->setObjectName("splitter");
  splitter_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(editor_.grid);
  splitter_->addWidget(pane_);
  splitter_->setStretchFactor(0, 1);
  splitter_->setStretchFactor(1, 1);
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
  connect(&soon_, &QTimer::timeout, this, &EditorCurve::ShowCurves);
  const GridModel* model = &editor_.grid->Model();
  connect(model, &QAbstractItemModel::dataChanged, this, &EditorCurve::ChangedSoon);
  connect(model, &QAbstractItemModel::rowsInserted, this, &EditorCurve::ChangedSoon);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &EditorCurve::ChangedSoon);
  connect(model, &QAbstractItemModel::modelReset, this, &EditorCurve::ChangedSoon);
  connect(editor_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &EditorCurve::ChangedSoon);
  connect(editor_.cells, &CellEditor::Edited, this, &EditorCurve::ChangedSoon);
  connect(editor_.cells, &CellEditor::Closed, this, &EditorCurve::ChangedSoon);
  connect(shown_, &QAction::toggled, this, &EditorCurve::Fold);
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { sizes_ = splitter_->sizes(); });
  connect(pane_, &CurvePane::Reached, editor_.grid, &CalGrid::SetCurrentCell);
  connect(pane_, &CurvePane::Chosen, this, &EditorCurve::GoTo);
}

void EditorCurve::Begin(Source source) {
  source_ = std::move(source);
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
  source_ = {};
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
  if (source_.curves && shown_->isChecked()) {
    soon_.start(0);
  }
}

std::vector<Curve> EditorCurve::CurvesNow() const {
  const MemoryGrid& grid = editor_.grid->Data();
  const auto [cell, text] = editor_.cells->Preview();
  if (cell.row == kCaptionRow) {
    return source_.curves(grid);
  }
  MemoryGrid typed(grid.ColumnCount());
  typed.SetRows(grid.Rows());
  typed.SetCellText(cell.row.number, cell.column, text);
  return source_.curves(typed);
}

void EditorCurve::ShowCurves() {
  const Cell current = editor_.grid->CurrentCell();
  ShownCurves shown;
  shown.curves = CurvesBeside(CurvesNow(), current);
  if (!shown.curves.empty()) {
    const Curve& curve = shown.curves.front();
    shown.subject = QString("%1 %2 %3")
                        .arg(source_.page())
                        .arg(curve.column)
                        .arg(QString::fromStdString(curve.yUnit));
  }
  pane_->SetCurrent(current);
  pane_->Show(shown, editor_.cells->IsOpen());
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
