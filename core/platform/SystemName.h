// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_SYSTEMNAME_H
#define TARVELL_CORE_PLATFORM_SYSTEMNAME_H

#include <filesystem>
#include <string_view>

namespace tarvell {

/// The name or path of the system that `text`, in UTF-8, spells. A path of the standard library
/// that is made directly from such a text is not the same on every system. Of a text that is not
/// UTF-8, a system whose names are bytes keeps the bytes, and one whose names are characters takes
/// those of the files.
[[nodiscard]] std::filesystem::path SystemName(std::string_view text);

}  // namespace tarvell

#endif
