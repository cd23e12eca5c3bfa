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

/// Runs what the user asked for. An error that ends it is shown, by `show` where one is given,
/// and stops there; so does any other standard exception, as an Error of its own. Returns whether
/// the action ran to its end.
bool Guarded(QWidget* owner, const std::function<void()>& action,
             const std::function<void(const Error& error)>& show = nullptr);

}  // namespace tarvell

#endif
