// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_PERCENTESCAPES_H
#define TARVELL_CORE_TEXT_PERCENTESCAPES_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tarvell {

/// `text` with "%" and two hexadecimal digits for each "%", and for each byte that `isKept` does
/// not keep.
[[nodiscard]] std::string PercentEscaped(std::string_view text,
                                         const std::function<bool(unsigned char byte)>& isKept);

/// The text that was escaped; nullopt where two hexadecimal digits do not follow a "%".
[[nodiscard]] std::optional<std::string> WithoutPercentEscapes(std::string_view escaped);

}  // namespace tarvell

#endif
