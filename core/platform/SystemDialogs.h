// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_SYSTEMDIALOGS_H
#define TARVELL_CORE_PLATFORM_SYSTEMDIALOGS_H

namespace tarvell {

/// Whether a user of this system expects to choose files and folders in its own dialogs. Where each
/// desktop has others, those of the toolkit are the same everywhere.
[[nodiscard]] bool HasSystemDialogs();

}  // namespace tarvell

#endif
