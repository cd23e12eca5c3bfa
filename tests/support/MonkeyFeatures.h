// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEYFEATURES_H
#define TARVELL_TESTS_SUPPORT_MONKEYFEATURES_H

#include "support/RandomHands.h"

/// What random keys and clicks would hardly ever reach, because it takes several of them in order.
namespace tarvell::test {

/// Uses a feature of the screen: a filter or an order of a list, a menu, the calendar, the
/// handbook, several points, a whole table, a data set with its draft. Returns false if the chosen
/// features are not on this screen.
bool UseFeature(RandomHands& hands, QWidget& top);

/// Points with their values, as a spreadsheet puts them on the clipboard.
[[nodiscard]] QString TableOfPoints(RandomHands& hands);

}  // namespace tarvell::test

#endif
