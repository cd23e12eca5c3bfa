// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_COLOURS_H
#define TARVELL_SCREENS_WIDGETS_COLOURS_H

#include <QColor>

namespace tarvell {

/// A colour between two: `share` of the first, 0 to 1, the rest of the second.
[[nodiscard]] QColor Mixed(const QColor& first, const QColor& second, float share);

}  // namespace tarvell

#endif
