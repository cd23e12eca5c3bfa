// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ASKREPLACEMENT_H
#define TARVELL_SCREENS_WIDGETS_ASKREPLACEMENT_H

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

#include "core/history/Replacement.h"

namespace tarvell {

/// Whether a save may continue. If `look` finds a file that the user has not seen, asks the user
/// whether to replace it. `agreed` is what MayReplace says. Throws what `look` throws.
[[nodiscard]] bool UserLetsReplace(QWidget* owner, const std::function<Replacement()>& look,
                                   std::optional<std::string>& agreed);

}  // namespace tarvell

#endif
