// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DECODEDTEXT_H
#define TARVELL_EXCHANGE_DECODEDTEXT_H

#include <string>
#include <string_view>

namespace tarvell {

/// The text of a file as UTF-8, without its byte order mark. `encoding` is how it was read.
struct DecodedText {
  std::string text;
  std::string_view encoding;
};

/// Reads UTF-8 and UTF-16 with or without a mark; anything else is Windows-1252.
[[nodiscard]] DecodedText Decoded(std::string_view bytes);

}  // namespace tarvell

#endif
