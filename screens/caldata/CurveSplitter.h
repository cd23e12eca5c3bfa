// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CURVESPLITTER_H
#define TARVELL_SCREENS_CALDATA_CURVESPLITTER_H

#include <QAction>
#include <QList>
#include <QMenu>
#include <QSplitter>

#include "screens/caldata/CurvePane.h"

namespace tarvell {

/// The curve of a screen beside its table. A splitter divides the room between them; an entry of a
/// menu, and F8, fold the curve away. Both is remembered for the screen.
class CurveSplitter final : public QSplitter {
  Q_OBJECT

 public:
  /// Takes the place of `table` in the layout of `screen`. `table`, or what will be put around it,
  /// has to be added to Side().
  CurveSplitter(QWidget* screen, QWidget* table, QMenu* menu);

  /// What is left of the curve.
  [[nodiscard]] QWidget* Side() const { return side_; }
  [[nodiscard]] CurvePane& Pane() const { return *pane_; }
  /// Whether the curve is not folded away.
  [[nodiscard]] bool IsUnfolded() const { return shown_->isChecked(); }

  /// Takes the sizes of last time.
  void Begin();
  /// Remembers the sizes.
  void End();

 signals:
  /// The curve was folded away, or shown again.
  void Folded();

 private:
  [[nodiscard]] QString Setting() const;
  /// Makes the screen wider for the curve. Where the display is too small for that, the curve
  /// begins folded away.
  void ShareRoom();
  void Fold(bool isShown);

  QWidget* screen_;
  QWidget* table_;
  QWidget* side_;
  CurvePane* pane_;
  QAction* shown_;
  QList<int> sizes_;  ///< of the side and the curve, while both are shown
};

}  // namespace tarvell

#endif
