// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_GUARD_H
#define TARVELL_SCREENS_WIDGETS_GUARD_H

#include <QWidget>

#include <functional>

#include "core/platform/Error.h"

namespace tarvell {

/// Shows an error: what happened, where, and what to do.
void ShowError(QWidget* owner, const Error& error);

/// Runs an action of the user. If it throws an Error, shows that error, with `show` if given, and
/// returns false. Any other standard exception is shown as an Error too. Returns true when the
/// action ran to its end.
bool Guarded(QWidget* owner, const std::function<void()>& action,
             const std::function<void(const Error& error)>& show = nullptr);

}  // namespace tarvell

#endif
