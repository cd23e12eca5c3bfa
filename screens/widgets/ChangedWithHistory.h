// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_CHANGEDWITHHISTORY_H
#define TARVELL_SCREENS_WIDGETS_CHANGEDWITHHISTORY_H

#include <QString>
#include <QWidget>

#include <functional>

#include "core/history/History.h"

namespace tarvell {

/// Runs `change`, which saves or deletes data and keeps the earlier ones. If the history cannot
/// take them, asks whether to `act` ("save", "delete") without it, and after a yes runs `change`
/// again to let them go. Returns whether it has run to its end. Throws what else `change` throws.
[[nodiscard]] bool ChangedWithHistory(QWidget* owner, const QString& act,
                                      const std::function<void(Earlier earlier)>& change);

}  // namespace tarvell

#endif
