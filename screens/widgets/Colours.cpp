// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/Colours.h"

namespace tarvell {

QColor Mixed(const QColor& first, const QColor& second, float share) {
  const auto mixed = [share](float one, float other) { return share * one + (1 - share) * other; };
  return QColor::fromRgbF(mixed(first.redF(), second.redF()),
                          mixed(first.greenF(), second.greenF()),
                          mixed(first.blueF(), second.blueF()));
}

}  // namespace tarvell
