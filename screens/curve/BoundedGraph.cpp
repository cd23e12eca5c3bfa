// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/curve/BoundedGraph.h"

#include <algorithm>
#include <cmath>

namespace tarvell {

namespace {

/// How far a line goes beyond the axes, in pixels.
constexpr double kBeyond = 1000;

/// Where the line from `far`, which is beyond `bound`, to a neighbour crosses it.
QPointF CrossingOf(QPointF far, QPointF neighbour, double bound) {
  const bool isCrossed = (far.y() - bound) * (neighbour.y() - bound) < 0;
  const double share = isCrossed ? (bound - far.y()) / (neighbour.y() - far.y()) : 0;
  return {far.x() + share * (neighbour.x() - far.x()), bound};
}

}  // namespace

void BoundedGraph::drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const {
  const QRect axes = keyAxis()->axisRect()->rect();
  const double top = axes.top() - kBeyond;
  const double bottom = axes.bottom() + kBeyond;
  QVector<QPointF> bounded;
  bounded.reserve(lines.size());
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QPointF point = lines[i];
    // A gap in the line is not a number.
    const double bound = std::isnan(point.y()) ? point.y() : std::clamp(point.y(), top, bottom);
    if (std::isnan(bound) || bound == point.y()) {
      bounded.append(point);
      continue;
    }
    bounded.append(CrossingOf(point, lines[std::max<qsizetype>(i - 1, 0)], bound));
    bounded.append(CrossingOf(point, lines[std::min(i + 1, lines.size() - 1)], bound));
  }
  QCPGraph::drawLinePlot(painter, bounded);
}

}  // namespace tarvell
