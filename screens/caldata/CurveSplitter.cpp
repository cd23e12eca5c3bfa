// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CurveSplitter.h"

#include <QLayout>
#include <QScreen>

#include <vector>

#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

/// Width of the curve at first, in line heights.
constexpr int kCurve = 26;
/// The usual width of a window's frame, in pixels.
constexpr int kFrame = 16;

}  // namespace

CurveSplitter::CurveSplitter(QWidget* screen, QWidget* table, QMenu* menu)
    : QSplitter(screen),
      screen_(screen),
      table_(table),
      side_(new QWidget),
      pane_(new CurvePane),
      shown_(new QAction(tr("&Curve"), this)) {
  delete screen->layout()->replaceWidget(table, this);
  setObjectName("splitter");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setChildrenCollapsible(false);
  addWidget(side_);
  addWidget(pane_);
  setStretchFactor(0, 1);
  setStretchFactor(1, 1);
  shown_->setObjectName("mnuCurve");
  shown_->setCheckable(true);
  shown_->setChecked(true);
  shown_->setShortcut(Qt::Key_F8);
  menu->addAction(shown_);
  // The key also works while the menu is closed.
  screen->addAction(shown_);
  connect(shown_, &QAction::toggled, this, &CurveSplitter::Fold);
  connect(this, &QSplitter::splitterMoved, this, [this] { sizes_ = sizes(); });
}

QString CurveSplitter::Setting() const {
  return "curve/" + screen_->objectName();
}

void CurveSplitter::Begin() {
  const std::vector<int> remembered = RememberedNumbers(Setting());
  // The setting may be damaged.
  if (remembered.size() == 3 && remembered[1] > 0 && remembered[2] > 0) {
    sizes_ = {remembered[1], remembered[2]};
    shown_->setChecked(remembered[0] != 0);
  } else {
    ShareRoom();
  }
  setSizes(sizes_);
}

void CurveSplitter::ShareRoom() {
  const int curve = kCurve * screen_->fontMetrics().height();
  const int table = width();
  const int display = screen_->screen()->availableGeometry().width();
  const bool hasRoom = screen_->width() + curve + kFrame <= display;
  if (hasRoom) {
    screen_->resize(screen_->width() + curve, screen_->height());
  }
  shown_->setChecked(hasRoom);
  sizes_ = {table, curve};
}

void CurveSplitter::End() {
  Remember(Setting(), std::vector<int>{IsUnfolded() ? 1 : 0, sizes_[0], sizes_[1]});
}

void CurveSplitter::Fold(bool isShown) {
  if (!isShown && pane_->hasFocus()) {
    table_->setFocus();
  }
  pane_->setVisible(isShown);
  setSizes(sizes_);
  emit Folded();
}

}  // namespace tarvell
