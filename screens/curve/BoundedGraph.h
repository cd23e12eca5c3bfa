// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CURVE_BOUNDEDGRAPH_H
#define TARVELL_SCREENS_CURVE_BOUNDEDGRAPH_H

#include <qcustomplot.h>

namespace tarvell {

/// A curve whose line ends a little above and below the axes. While a value is typed, its point may
/// be millions of pixels away, and the toolkit needs seconds to paint a line to it.
class BoundedGraph final : public QCPGraph {
 public:
  /// The plot of the axes owns it.
  using QCPGraph::QCPGraph;

 protected:
  void drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const override;
};

}  // namespace tarvell

#endif
