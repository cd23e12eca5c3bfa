// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_SHA256_H
#define TARVELL_CORE_TEXT_SHA256_H

#include <string>
#include <string_view>

namespace tarvell {

/// The SHA-256 of `bytes` (FIPS 180-4) as 64 hexadecimal digits in lower case, as the command
/// sha256sum writes it.
[[nodiscard]] std::string Sha256(std::string_view bytes);

}  // namespace tarvell

#endif
