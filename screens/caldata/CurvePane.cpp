// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CurvePane.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

#include "screens/caldata/CurveDrawing.h"
#include "screens/caldata/CurveLibrary.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr double kZoomFactor = 0.7;
constexpr int kLeastWidth = 12;  // in line heights
constexpr int kFrame = 3;        // pixels around the plot, for the frame of the focus

/// The position of the point of this cell, or else of the first one in its row; that of the end if
/// none exists.
auto PositionOf(const Curve& curve, Cell cell) {
  const auto exact = std::ranges::find(curve.points, cell, &CurvePoint::cell);
  return exact != curve.points.end()
             ? exact
             : std::ranges::find(curve.points, cell.row,
                                 [](const CurvePoint& point) { return point.cell.row; });
}

}  // namespace

CurvePane::CurvePane(QWidget* parent)
    : QWidget(parent), parts_(new QVBoxLayout(this)), lblSummary_(new QLabel(this)) {
  setObjectName("curve");
  // Tab goes on from the table to the buttons, as without a curve.
  setFocusPolicy(Qt::ClickFocus);
  setAccessibleName(tr("Curve"));
  setMinimumWidth(kLeastWidth * fontMetrics().height());
  parts_->setContentsMargins(kFrame, kFrame, kFrame, kFrame);
  lblSummary_->setObjectName("lblSummary");
  lblSummary_->setWordWrap(true);
  lblSummary_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  parts_->addWidget(lblSummary_);
  MakeActions();
  ShowSummary();
}

void CurvePane::MakeActions() {
  const auto add = [this](const QString& text, const QKeySequence& key, auto act) {
    auto* action = new QAction(text, this);  // the pane owns it
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, act);
    addAction(action);
  };
  const auto zoom = [this](double factor) {
    if (plot_ != nullptr) {
      plot_->Zoom(factor);
    }
  };
  add(tr("&Whole curve"), Qt::Key_0, [this] {
    if (plot_ != nullptr) {
      plot_->ShowWhole();
    }
  });
  add(tr("Zoom &in"), Qt::Key_Plus, [zoom] { zoom(kZoomFactor); });
  add(tr("Zoom &out"), Qt::Key_Minus, [zoom] { zoom(1 / kZoomFactor); });
  add(tr("&Copy as picture"), QKeySequence::Copy, [this] { CopyPicture(); });
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

void CurvePane::Load() {
  if (isLoaded_) {
    return;
  }
  isLoaded_ = true;
  const LoadedPlot loaded = LoadPlot(this);
  if (loaded.plot == nullptr) {
    auto* message = new QLabel(loaded.message, this);  // the pane owns it
    message->setObjectName("lblNoCurve");
    message->setWordWrap(true);
    parts_->insertWidget(0, message, 1);
    return;
  }
  plot_ = loaded.plot;
  plot_->Widget().installEventFilter(this);
  plot_->Widget().addActions(actions());
  plot_->Widget().setContextMenuPolicy(Qt::ActionsContextMenu);
  parts_->insertWidget(0, &plot_->Widget(), 1);
}

void CurvePane::Show(const ShownCurves& shown, Cell current, bool keepsView) {
  const bool isOther = shown.subject != shown_.subject;
  shown_ = shown;
  if (isOther && plot_ != nullptr) {
    plot_->ShowWhole();
  }
  SetCurrent(current);
  Draw(keepsView && !isOther);
}

void CurvePane::Draw(bool keepsView) {
  if (plot_ == nullptr) {
    return;
  }
  plot_->Show(DrawingOf(shown_), keepsView);
  ShowMark();
}

void CurvePane::SetCurrent(Cell cell) {
  isMarked_ = false;
  DrawnPoint found;
  for (const Curve& curve : shown_.curves) {
    const auto position = PositionOf(curve, cell);
    if (position != curve.points.end()) {
      found.point = position - curve.points.begin();
      isMarked_ = true;
      break;
    }
    ++found.curve;
  }
  current_ = isMarked_ ? found : DrawnPoint();
  ShowMark();
  ShowSummary();
  SayPoint();
}

void CurvePane::ShowMark() {
  if (plot_ == nullptr) {
    return;
  }
  const CurvePoint* point = isMarked_ ? PointAt(current_) : nullptr;
  plot_->Mark(point != nullptr ? std::optional(QPointF(point->x, point->y)) : std::nullopt);
}

void CurvePane::ShowSummary() {
  const Curve* curve = CurveAt(current_.curve);
  QString summary = tr("The table has no values to draw");
  if (curve != nullptr) {
    summary = ToQt(Summary(*curve, EarlierOf(*curve)));
    if (shown_.curves.size() > 1) {
      summary = ToQt(curve->name) + ": " + summary;
    }
  }
  if (summary + '.' == lblSummary_->text()) {
    return;
  }
  lblSummary_->setText(summary + '.');
  setAccessibleDescription(tr("%1. The arrow keys go from point to point, Enter goes to the cell "
                              "of the point.")
                               .arg(summary));
}

void CurvePane::SayPoint() {
  const bool says = hasFocus() && isMarked_;
  setAccessibleName(says ? tr("Curve, %1").arg(TextOf(current_)) : tr("Curve"));
  if (says && plot_ != nullptr) {
    const CurvePoint& point = *PointAt(current_);
    const QPointF place = plot_->PlaceOf({point.x, point.y});
    // A point that cannot be drawn may be farther away than any pixel.
    if (QRectF(plot_->Widget().rect()).contains(place)) {
      QToolTip::showText(plot_->Widget().mapToGlobal(place.toPoint()), TextOf(current_), this);
    }
  }
}

const Curve* CurvePane::CurveAt(qsizetype number) const {
  const auto index = static_cast<std::size_t>(number);
  return index < shown_.curves.size() ? &shown_.curves[index] : nullptr;
}

const CurvePoint* CurvePane::PointAt(const DrawnPoint& point) const {
  const Curve* curve = CurveAt(point.curve);
  const auto index = static_cast<std::size_t>(point.point);
  return curve != nullptr && index < curve->points.size() ? &curve->points[index] : nullptr;
}

const Curve* CurvePane::EarlierOf(const Curve& curve) const {
  return FindCurve(shown_.earlier, curve);
}

QString CurvePane::TextOf(const DrawnPoint& point) const {
  const Curve& curve = *CurveAt(point.curve);
  const CurvePoint& now = *PointAt(point);
  const auto withUnit = [&](const std::string& value) {
    return ToQt(curve.yUnit.empty() ? value : value + " " + curve.yUnit);
  };
  QString text = ToQt(now.at) + ": " + withUnit(now.value);
  if (shown_.curves.size() > 1) {
    text = ToQt(curve.name) + ", " + text;
  }
  if (const Curve* earlier = EarlierOf(curve)) {
    const auto pairs = CommonPoints(curve, *earlier);
    const auto pair = std::ranges::find(pairs, &now, &PointPair::first);
    if (pair != pairs.end()) {
      text += tr(" (earlier %1)").arg(withUnit(pair->second->value));
    }
  }
  return text;
}

DrawnPoint CurvePane::OnCurve(qsizetype curve) const {
  const auto& points = CurveAt(curve)->points;
  const double x = PointAt(current_)->x;
  const auto nearest = std::ranges::min_element(
      points, {}, [x](const CurvePoint& point) { return std::abs(point.x - x); });
  return {curve, nearest - points.begin()};
}

DrawnPoint CurvePane::After(Qt::Key key) const {
  const auto last = static_cast<qsizetype>(CurveAt(current_.curve)->points.size()) - 1;
  const auto lastCurve = static_cast<qsizetype>(shown_.curves.size()) - 1;
  switch (key) {
    case Qt::Key_Left:
      return {current_.curve, std::max<qsizetype>(current_.point - 1, 0)};
    case Qt::Key_Right:
      return {current_.curve, std::min(current_.point + 1, last)};
    case Qt::Key_Home:
      return {current_.curve, 0};
    case Qt::Key_End:
      return {current_.curve, last};
    case Qt::Key_Up:
      return OnCurve(std::max<qsizetype>(current_.curve - 1, 0));
    default:
      return OnCurve(std::min(current_.curve + 1, lastCurve));
  }
}

void CurvePane::keyPressEvent(QKeyEvent* event) {
  const auto key = static_cast<Qt::Key>(event->key());
  const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
  constexpr std::array kAlong = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                                 Qt::Key_End,  Qt::Key_Up,    Qt::Key_Down};
  if (isPlain && HasPoints() && std::ranges::find(kAlong, key) != kAlong.end()) {
    const Cell cell = PointAt(After(key))->cell;
    SetCurrent(cell);
    emit Reached(cell);
  } else if (isPlain && HasPoints() && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    emit Chosen(PointAt(current_)->cell);
  } else {
    QWidget::keyPressEvent(event);
  }
}

bool CurvePane::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      pressed_ = static_cast<QMouseEvent*>(event)->position();
      break;
    case QEvent::MouseButtonRelease:
      MouseReleased(*static_cast<QMouseEvent*>(event));
      break;
    case QEvent::MouseMove:
      MouseMoved(static_cast<QMouseEvent*>(event)->position());
      break;
    case QEvent::PaletteChange:
    case QEvent::FontChange:
      Draw(true);
      break;
    case QEvent::Leave:
      QToolTip::hideText();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void CurvePane::MouseMoved(const QPointF& place) {
  QWidget& plot = plot_->Widget();
  auto point = plot_->PointAt(place);
  plot.setCursor(point ? Qt::PointingHandCursor : Qt::CrossCursor);
  if (!point) {
    QToolTip::hideText();
    return;
  }
  point->curve -= static_cast<qsizetype>(shown_.earlier.size());
  QToolTip::showText(plot.mapToGlobal(place).toPoint(), TextOf(*point), &plot);
}

void CurvePane::MouseReleased(const QMouseEvent& event) {
  const bool isClick = (event.position() - pressed_).manhattanLength() <
                       static_cast<double>(QApplication::startDragDistance());
  auto point = plot_->PointAt(event.position());
  if (event.button() == Qt::LeftButton && isClick && point) {
    point->curve -= static_cast<qsizetype>(shown_.earlier.size());
    emit Chosen(PointAt(*point)->cell);
  }
}

void CurvePane::CopyPicture() {
  constexpr double kDots = 2;  // sharp on paper too
  if (plot_ != nullptr) {
    const QSize size = plot_->Widget().size();
    QApplication::clipboard()->setPixmap(plot_->Picture(size, kDots));
  }
}

void CurvePane::showEvent(QShowEvent* event) {
  Load();
  Draw(false);
  QWidget::showEvent(event);
}

void CurvePane::resizeEvent(QResizeEvent* event) {
  constexpr int kLinesForSummary = 12;
  lblSummary_->setVisible(height() > kLinesForSummary * fontMetrics().height());
  QWidget::resizeEvent(event);
}

void CurvePane::paintEvent(QPaintEvent* /*event*/) {
  if (hasFocus()) {
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void CurvePane::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  SayPoint();
  update();
}

void CurvePane::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  SayPoint();
  QToolTip::hideText();
  update();
}

}  // namespace tarvell
