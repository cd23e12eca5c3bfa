// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_EDITORCURVE_H
#define TARVELL_SCREENS_CALDATA_EDITORCURVE_H

#include <QAction>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QSplitter>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <vector>

#include "core/curves/Curves.h"
#include "screens/caldata/CurvePane.h"

namespace tarvell {

class CalGrid;
class CellEditor;

/// The curve beside the table of an editor. It follows what is typed at once. A splitter divides
/// the room between both; an entry of the menu folds the curve away. Both is remembered.
class EditorCurve final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    QWidget* screen;
    CalGrid* grid;
    const CellEditor* cells;
    QMenu* menu;
  };
  /// Puts the table of the editor into a splitter, with the curve beside it.
  explicit EditorCurve(const Editor& editor);

  /// Where the curves of the shown page come from.
  struct Source {
    std::function<std::vector<Curve>(const CalDataGrid& grid)> curves;
    std::function<std::int16_t()> page;
  };
  /// Begins to show the data of a data set, in the sizes of last time. Call it when the table is
  /// filled.
  void Begin(Source source);
  /// Remembers the sizes.
  void End();

 private:
  void Watch();
  /// Makes the screen wider for the curve. Where the display is too small for that, the curve
  /// begins folded away.
  void ShareRoom();
  void Fold(bool isShown);
  void ChangedSoon();
  void ShowCurves();
  /// The curves with what is in an open cell.
  [[nodiscard]] std::vector<Curve> CurvesNow() const;
  void GoTo(Cell cell);

  Editor editor_;
  Source source_;
  QSplitter* splitter_;
  CurvePane* pane_;
  QAction* shown_;
  QList<int> sizes_;  ///< of table and curve, while both are shown
  QTimer soon_;
};

}  // namespace tarvell

#endif
