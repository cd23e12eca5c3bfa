// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CURVEPANE_H
#define TARVELL_SCREENS_CALDATA_CURVEPANE_H

#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include <vector>

#include "core/curves/Curves.h"
#include "screens/caldata/CurveDrawing.h"
#include "screens/curve/CurvePlot.h"

namespace tarvell {

/// Curves over frequency, with one point marked. The mouse shows the numbers of a point and chooses
/// it. With the keyboard, Left and Right, Home and End go along the curve, Up and Down to the curve
/// above or below, and Enter chooses the point; a screen reader says each point. The library that
/// draws is loaded when the pane is first shown; without it, the pane says why it is empty.
class CurvePane final : public QWidget {
  Q_OBJECT

 public:
  explicit CurvePane(QWidget* parent = nullptr);

  /// With `keepsView`, the axes stay as they are even if a point is outside.
  void Show(const ShownCurves& shown, Cell current, bool keepsView = false);
  /// Marks the point of this cell, or else the first point of its row.
  void SetCurrent(Cell cell);

  /// The curves as they are on the screen.
  void CopyPicture();

 signals:
  /// A point was clicked, or Enter was pressed at it.
  void Chosen(Cell cell);
  /// A key went to a point.
  void Reached(Cell cell);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Load();
  void MakeActions();
  void Draw(bool keepsView);
  void ShowMark();
  void ShowSummary();
  void MouseMoved(const QPointF& place);
  void MouseReleased(const QMouseEvent& event);
  /// Says the current point, where the keyboard is in the pane.
  void SayPoint();

  [[nodiscard]] const Curve* CurveAt(qsizetype number) const;
  [[nodiscard]] const CurvePoint* PointAt(const DrawnPoint& point) const;
  [[nodiscard]] const Curve* EarlierOf(const Curve& curve) const;
  /// The numbers of a point.
  [[nodiscard]] QString TextOf(const DrawnPoint& point) const;
  /// The point that a key goes to from the current one.
  [[nodiscard]] DrawnPoint After(Qt::Key key) const;
  [[nodiscard]] DrawnPoint OnCurve(qsizetype curve) const;
  [[nodiscard]] bool HasPoints() const { return PointAt(current_) != nullptr; }

  ShownCurves shown_;
  DrawnPoint current_;  ///< the point of the cell; its curve counts only `shown_.curves`
  bool isMarked_ = false;
  bool isLoaded_ = false;
  CurvePlot* plot_ = nullptr;
  QPointF pressed_;
  QVBoxLayout* parts_;
  QLabel* lblSummary_;
};

}  // namespace tarvell

#endif
