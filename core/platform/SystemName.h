// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_SYSTEMNAME_H
#define TARVELL_CORE_PLATFORM_SYSTEMNAME_H

#include <filesystem>
#include <string_view>

namespace tarvell {

/// The name or path of the system that `text`, in UTF-8, spells. A path of the standard library
/// that is made directly from such a text is not the same on every system.
[[nodiscard]] std::filesystem::path SystemName(std::string_view text);

}  // namespace tarvell

#endif
