// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_CHANGEDWITHHISTORY_H
#define TARVELL_SCREENS_WIDGETS_CHANGEDWITHHISTORY_H

#include <QString>
#include <QWidget>

#include <functional>
#include <string>

#include "core/history/History.h"
#include "core/history/Replacement.h"

namespace tarvell {

/// Runs `change`, which deletes data or puts them back, and keeps the earlier ones. If the history
/// cannot take them, asks whether to `act` ("save", "delete") without it, and after a yes runs
/// `change` again to let them go, if `mayLetGo` agrees: anything may have happened while the box
/// was open. Returns whether `change` has run to its end. Throws what else it throws.
[[nodiscard]] bool ChangedWithHistory(
    QWidget* owner, const QString& act, const std::function<void(Earlier earlier)>& change,
    const std::function<bool()>& mayLetGo = [] { return true; });

/// The same for `save`. Before it keeps the earlier data, and again before it lets them go, asks as
/// UserLetsReplace does about a file that the user has not seen, which `look` finds.
[[nodiscard]] bool SavedWithHistory(QWidget* owner, const std::function<Replacement()>& look,
                                    const std::function<void(Earlier earlier)>& save);

/// A check for ChangedWithHistory: whether the file at `path` holds what it holds now. If not,
/// tells the user that nothing was done.
[[nodiscard]] std::function<bool()> UnlessChanged(QWidget* owner, const std::string& path);

}  // namespace tarvell

#endif
