// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CurveDrawing.h"

#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

QList<QPointF> PlacesOf(const Curve& curve) {
  QList<QPointF> places;
  for (const CurvePoint& point : curve.points) {
    places << QPointF(point.x, point.y);
  }
  return places;
}

}  // namespace

Drawing DrawingOf(const ShownCurves& shown) {
  Drawing drawing;
  bool isFirst = true;
  auto ownLook = static_cast<int>(shown.curves.size());
  for (const Curve& earlier : shown.earlier) {
    const Curve* now = FindCurve(shown.curves, earlier);
    const int look = now != nullptr ? static_cast<int>(now - shown.curves.data()) : ownLook++;
    drawing.curves << DrawnCurve{isFirst ? shown.earlierName : QString(), PlacesOf(earlier), look,
                                 true};
    isFirst = false;
  }
  int look = 0;
  for (const Curve& curve : shown.curves) {
    drawing.curves << DrawnCurve{ToQt(curve.name), PlacesOf(curve), look++, false};
  }
  if (!shown.curves.empty()) {
    const Curve& first = shown.curves.front();
    drawing.xCaption = ToQt(XCaption(first));
    drawing.yCaption = ToQt(YCaption(first));
    drawing.xFactor = first.xFactor;
    std::vector<Curve> all = shown.curves;
    all.insert(all.end(), shown.earlier.begin(), shown.earlier.end());
    drawing.isLogarithmic = IsLogarithmic(all);
  }
  return drawing;
}

}  // namespace tarvell
