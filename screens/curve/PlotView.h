// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CURVE_PLOTVIEW_H
#define TARVELL_SCREENS_CURVE_PLOTVIEW_H

#include <QColor>
#include <QPalette>
#include <QPen>
#include <qcustomplot.h>

#include "screens/curve/CurvePlot.h"

/// What a plot shows of its curves, and how.
namespace tarvell {

/// Whether the plotting library can calculate with a number.
[[nodiscard]] bool CanBeDrawn(double number);

/// The ranges of both axes that show every point, with a margin.
struct WholeView {
  QCPRange x;
  QCPRange y;
};
[[nodiscard]] WholeView WholeViewOf(const Drawing& drawing);

/// The colour of a look, easy to see on the background of the palette and to tell from the others,
/// also by people who see fewer colours.
[[nodiscard]] QColor ColourOf(int look, const QPalette& palette);
/// The symbol of a look. Looks of the same colour have different symbols.
[[nodiscard]] QCPScatterStyle::ScatterShape SymbolOf(int look);

/// The line of a curve on paper. Lines of looks with the same symbol differ, and all of them from
/// those of earlier curves.
[[nodiscard]] QPen PaperPenOf(const DrawnCurve& curve);

/// Significant digits that tell the numbers on an axis of this range apart.
[[nodiscard]] int DigitsFor(const QCPRange& range);

}  // namespace tarvell

#endif
