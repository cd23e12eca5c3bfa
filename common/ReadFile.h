// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_READFILE_H
#define TARVELL_COMMON_READFILE_H

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvell {

/// Reads the ordinary file at the native `path` to its end, block by block.
[[nodiscard]] std::error_code ReadNativeBlocks(
    const std::string& path, const std::function<void(std::string_view block)>& take);

/// Reads the whole ordinary file at the native `path` into `bytes`.
[[nodiscard]] std::error_code ReadNativeFile(const std::string& path, std::string& bytes);

}  // namespace tarvell

#endif
