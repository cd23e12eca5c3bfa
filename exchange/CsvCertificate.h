// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVCERTIFICATE_H
#define TARVELL_EXCHANGE_CSVCERTIFICATE_H

#include <string_view>

#include "exchange/Certificate.h"

namespace tarvell {

/// Reads the bytes of a CSV or TSV file: lines of a key and a value, and tables whose captions may
/// name units. Every number is read with the same decimal sign. Throws a Type error for a file that
/// is too large or is not text.
[[nodiscard]] Certificate CsvCertificate(std::string_view bytes, const ReadingChoices& choices);

}  // namespace tarvell

#endif
