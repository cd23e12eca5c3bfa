// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <qcustomplot.h>

#include <algorithm>
#include <limits>

#include "screens/curve/BoundedGraph.h"
#include "screens/curve/CurvePlot.h"
#include "screens/curve/PlotView.h"

namespace tarvell {

namespace {

constexpr double kSymbolSize = 7;
constexpr double kPaperSymbolSize = 4.5;  // points
constexpr int kPaperFontSize = 8;         // points
constexpr double kRingSize = 15;
constexpr double kNear = 12;          // pixels
constexpr double kWheelFactor = 0.8;  // of the range, for each step of the wheel

QColor Mixed(const QColor& part, const QColor& other, float share) {
  const auto mixed = [share](float a, float b) { return share * a + (1 - share) * b; };
  return QColor::fromRgbF(mixed(part.redF(), other.redF()), mixed(part.greenF(), other.greenF()),
                          mixed(part.blueF(), other.blueF()));
}

/// A CurvePlot of the plotting library.
class QcpPlot final : public QCustomPlot, public CurvePlot {
 public:
  explicit QcpPlot(QWidget* parent) : QCustomPlot(parent) {
    setObjectName("plot");
    // Numbers look like those of the table, whatever the language of the system.
    setLocale(QLocale::c());
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    axisRect()->setRangeZoomFactor(kWheelFactor);
    axisRect()->setupFullAxesBox();
    for (QCPAxis* axis : {xAxis2, yAxis2}) {
      axis->setTicks(false);
    }
    for (QCPAxis* axis : {xAxis, yAxis}) {
      connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this,
              [this, axis] { FitTicks(axis); });
    }
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    // The library puts it over the curves.
    ShowLegend(false);
    connect(selectionRect(), &QCPSelectionRect::accepted, this, [this] { isZoomed_ = true; });
  }

  [[nodiscard]] QWidget& Widget() override { return *this; }

  void Show(const Drawing& drawing, bool keepsView) override {
    drawing_ = drawing;
    clearGraphs();
    ring_ = nullptr;
    xAxis->setLabel(drawing.xCaption);
    yAxis->setLabel(drawing.yCaption);
    Colour();
    for (const DrawnCurve& curve : drawing.curves) {
      AddCurve(curve);
    }
    ArrangeLegend();
    xAxis->setScaleType(drawing.isLogarithmic ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    if (keepsView || isZoomed_) {
      replot(rpQueuedReplot);
    } else {
      ShowWhole();
    }
  }

  void Mark(std::optional<QPointF> point) override {
    if (ring_ == nullptr) {
      ring_ = addGraph();
      ring_->removeFromLegend();
      ring_->setLineStyle(QCPGraph::lsNone);
      const QPen pen(palette().color(QPalette::Text), 2);
      ring_->setScatterStyle(
          QCPScatterStyle(QCPScatterStyle::ssCircle, pen, Qt::NoBrush, kRingSize));
    }
    ring_->data()->clear();
    if (point && CanBeDrawn(point->x()) && CanBeDrawn(point->y())) {
      ring_->addData(point->x() / drawing_.xFactor, point->y());
    }
    replot(rpQueuedReplot);
  }

  void ShowWhole() override {
    isZoomed_ = false;
    const WholeView whole = WholeViewOf(drawing_);
    xAxis->setRange(whole.x);
    yAxis->setRange(whole.y);
    replot(rpQueuedReplot);
  }

  void Zoom(double factor) override {
    isZoomed_ = true;
    const auto middle = [](const QCPAxis& axis) {
      return axis.pixelToCoord(
          (axis.coordToPixel(axis.range().lower) + axis.coordToPixel(axis.range().upper)) / 2);
    };
    xAxis->scaleRange(factor, middle(*xAxis));
    yAxis->scaleRange(factor, middle(*yAxis));
    replot(rpQueuedReplot);
  }

  [[nodiscard]] std::optional<DrawnPoint> PointAt(QPointF place) const override {
    std::optional<DrawnPoint> nearest;
    double least = kNear;
    for (qsizetype curve = 0; curve < drawing_.curves.size(); ++curve) {
      if (drawing_.curves[curve].isEarlier) {
        continue;
      }
      const QList<QPointF>& points = drawing_.curves[curve].points;
      for (qsizetype point = 0; point < points.size(); ++point) {
        const QPointF there = PlaceOf(points[point]);
        const double distance = QLineF(there, place).length();
        // Of two in the same place, the upper one.
        if (distance <= least && axisRect()->rect().contains(there.toPoint())) {
          least = distance;
          nearest = {curve, point};
        }
      }
    }
    return nearest;
  }

  [[nodiscard]] QPointF PlaceOf(QPointF point) const override {
    return {xAxis->coordToPixel(point.x() / drawing_.xFactor), yAxis->coordToPixel(point.y())};
  }

  [[nodiscard]] QPixmap Picture(QSize size, double dots) override {
    return toPixmap(size.width(), size.height(), dots);
  }

  [[nodiscard]] QPicture OnPaper(const Drawing& drawing, QSize points) override {
    isOnPaper_ = true;
    QFont font = this->font();
    font.setPixelSize(kPaperFontSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    setFont(font);
    setPalette(
        QPalette(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white));
    resize(points);
    Show(drawing, false);
    QPicture picture;
    QCPPainter painter(&picture);
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNonCosmetic);
    toPainter(&painter, points.width(), points.height());
    painter.end();
    picture.setBoundingRect(QRect(QPoint(), points));
    return picture;
  }

 protected:
  [[nodiscard]] QSize minimumSizeHint() const override {
    constexpr QSize kLines(12, 4);
    return kLines * fontMetrics().height();
  }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) {
      event->ignore();
      return;
    }
    const bool moves = event->modifiers().testFlag(Qt::ShiftModifier);
    setSelectionRectMode(moves ? QCP::srmNone : QCP::srmZoom);
    isZoomed_ = isZoomed_ || moves;
    QCustomPlot::mousePressEvent(event);
  }

  void mouseDoubleClickEvent(QMouseEvent* /*event*/) override { ShowWhole(); }

  void wheelEvent(QWheelEvent* event) override {
    isZoomed_ = true;
    QCustomPlot::wheelEvent(event);
  }

  void resizeEvent(QResizeEvent* event) override {
    ArrangeLegend();
    QCustomPlot::resizeEvent(event);
  }

 private:
  void AddCurve(const DrawnCurve& curve) {
    auto* graph = new BoundedGraph(xAxis, yAxis);  // the plot owns it
    graph->setName(curve.name);
    if (curve.name.isEmpty()) {
      graph->removeFromLegend();
    }
    const QPen pen = isOnPaper_ ? PaperPenOf(curve) : ScreenPenOf(curve);
    graph->setPen(pen);
    if (!curve.isEarlier) {
      const QPen outline(pen.color(), pen.widthF());
      graph->setScatterStyle(QCPScatterStyle(SymbolOf(curve.look), outline, pen.color(),
                                             isOnPaper_ ? kPaperSymbolSize : kSymbolSize));
    }
    for (const QPointF& point : curve.points) {
      if (CanBeDrawn(point.x()) && CanBeDrawn(point.y())) {
        graph->addData(point.x() / drawing_.xFactor, point.y());
      }
    }
  }

  [[nodiscard]] QPen ScreenPenOf(const DrawnCurve& curve) const {
    const QColor full = ColourOf(curve.look, palette());
    return curve.isEarlier
               ? QPen(Mixed(full, palette().color(QPalette::Base), 0.85F), 1.5, Qt::DashLine)
               : QPen(full, 1.5);
  }

  /// Takes the colours and the font of the widget.
  void Colour() {
    const QColor text = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    setBackground(QBrush(base));
    for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
      const QPen pen(Mixed(text, base, 0.6F));
      axis->setBasePen(pen);
      axis->setTickPen(pen);
      axis->setSubTickPen(pen);
      axis->setTickLabelColor(text);
      axis->setLabelColor(text);
      axis->setTickLabelFont(font());
      axis->setLabelFont(font());
      axis->grid()->setPen(QPen(Mixed(text, base, 0.2F), 1, Qt::DotLine));
      axis->grid()->setZeroLinePen(QPen(Mixed(text, base, 0.4F)));
    }
    legend->setFont(font());
    legend->setTextColor(text);
    legend->setBrush(base);
    legend->setBorderPen(Qt::NoPen);
    selectionRect()->setPen(QPen(palette().color(QPalette::Highlight)));
  }

  /// As many entries of the legend in a row as there is room for. A legend that would take more
  /// than a third of the height is not shown.
  void ArrangeLegend() {
    constexpr int kGap = 12;
    int widest = 0;
    for (const DrawnCurve& curve : drawing_.curves) {
      widest = std::max(widest, fontMetrics().horizontalAdvance(curve.name));
    }
    const int entry = widest + legend->iconSize().width() + legend->iconTextPadding() + kGap;
    const int columns = std::max(1, width() / entry);
    const int rows = (legend->itemCount() + columns - 1) / columns;
    legend->setWrap(columns);
    // The entries are in the rows of the wrap with which they were added.
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst, true);
    ShowLegend(legend->itemCount() > 1 &&
               rows * (fontMetrics().height() + legend->rowSpacing()) < height() / 3);
  }

  /// The legend has a row of its own below the curves.
  void ShowLegend(bool isShown) {
    constexpr double kLeast = 0.001;
    const bool hasRow = legend->layout() != nullptr;
    legend->setVisible(isShown);
    if (isShown && !hasRow) {
      plotLayout()->addElement(1, 0, legend);
      plotLayout()->setRowStretchFactor(1, kLeast);
    } else if (!isShown && hasRow) {
      legend->layout()->take(legend);
      plotLayout()->simplify();
    }
  }

  /// Powers of ten are too far apart for a part of a logarithmic axis.
  void FitTicks(QCPAxis* axis) const {
    constexpr double kFewPowers = 20;
    const QCPRange range = axis->range();
    const bool powers =
        axis == xAxis && drawing_.isLogarithmic && range.upper / range.lower > kFewPowers;
    if (powers) {
      axis->setTicker(QSharedPointer<QCPAxisTickerLog>::create());
    } else {
      axis->setTicker(QSharedPointer<QCPAxisTicker>::create());
    }
    axis->setNumberFormat("gb");
    // With more than one digit, some of the powers would be written out.
    axis->setNumberPrecision(powers ? 1 : DigitsFor(range));
  }

  Drawing drawing_;
  QCPGraph* ring_ = nullptr;  ///< around the marked point
  bool isZoomed_ = false;     ///< whether the user chose what is shown
  bool isOnPaper_ = false;
};

}  // namespace

extern "C" Q_DECL_EXPORT CurvePlot* TarvellNewCurvePlot(QWidget* parent) {
  return new QcpPlot(parent);  // the parent owns it
}

}  // namespace tarvell
