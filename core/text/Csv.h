// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_CSV_H
#define TARVELL_CORE_TEXT_CSV_H

#include <string>
#include <string_view>

/// Comma-separated values as RFC 4180 describes them.
namespace tarvell {

inline constexpr std::string_view kCsvLineEnd = "\r\n";

/// Appends a field, in quotes if it holds a comma, a quote or a line end.
void AppendCsvField(std::string& csv, std::string_view field);

}  // namespace tarvell

#endif
