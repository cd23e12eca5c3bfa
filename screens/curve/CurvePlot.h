// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CURVE_CURVEPLOT_H
#define TARVELL_SCREENS_CURVE_CURVEPLOT_H

#include <QList>
#include <QPicture>
#include <QPixmap>
#include <QPointF>
#include <QSize>
#include <QString>
#include <QWidget>

#include <optional>

/// The interface of the library `tarvell_curve`, which draws curves. It is a library of its own, so
/// that the program starts without the plotting library and its memory.
namespace tarvell {

/// A curve as it is drawn.
struct DrawnCurve {
  QString name;  ///< for the legend; "" for no entry
  QList<QPointF> points;
  int look = 0;            ///< its colour and symbol; those of different numbers differ
  bool isEarlier = false;  ///< whether it is dashed and paler
};

struct Drawing {
  QList<DrawnCurve> curves;  ///< the last one is on top
  QString xCaption;
  QString yCaption;
  double xFactor = 1;          ///< the x axis shows x divided by this
  bool isLogarithmic = false;  ///< the x axis
};

/// A point of a Drawing, by the numbers of its curve and of its point there.
struct DrawnPoint {
  qsizetype curve = 0;
  qsizetype point = 0;

  bool operator==(const DrawnPoint&) const = default;
};

/// Draws curves in a widget, in the colours of the widget's palette. The wheel and a drag zoom, a
/// drag with Shift moves what is shown, a double click shows everything. The parent of the widget
/// owns it.
class CurvePlot {
 public:
  CurvePlot() = default;
  CurvePlot(const CurvePlot&) = delete;
  CurvePlot& operator=(const CurvePlot&) = delete;

  [[nodiscard]] virtual QWidget& Widget() = 0;

  /// Shows the whole of other curves, unless the user has zoomed or `keepsView` is true.
  virtual void Show(const Drawing& drawing, bool keepsView) = 0;
  /// Puts a ring around a point; nothing removes it.
  virtual void Mark(std::optional<QPointF> point) = 0;

  virtual void ShowWhole() = 0;
  /// A factor below 1 shows less in more detail.
  virtual void Zoom(double factor) = 0;

  /// The shown point nearest to this place of the widget, if one is near; none of an earlier curve.
  [[nodiscard]] virtual std::optional<DrawnPoint> PointAt(QPointF place) const = 0;
  [[nodiscard]] virtual QPointF PlaceOf(QPointF point) const = 0;

  /// What is shown, drawn in this size and with so many dots for each of its pixels.
  [[nodiscard]] virtual QPixmap Picture(QSize size, double dots) = 0;

  /// The whole of a drawing for paper, so large in points: black on white, the curves told apart by
  /// their lines and symbols. The plot is of no use on the screen afterwards.
  [[nodiscard]] virtual QPicture OnPaper(const Drawing& drawing, QSize points) = 0;

 protected:
  ~CurvePlot() = default;
};

/// The function of the library, and its name.
using NewCurvePlotFunction = CurvePlot* (*)(QWidget* parent);
inline constexpr const char* kNewCurvePlot = "TarvellNewCurvePlot";

}  // namespace tarvell

#endif
