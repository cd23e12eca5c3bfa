// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DCCCERTIFICATE_H
#define TARVELL_EXCHANGE_DCCCERTIFICATE_H

#include <string_view>

#include "exchange/Certificate.h"

namespace tarvell {

/// Reads the bytes of a Digital Calibration Certificate, schema versions 2.4 to 3.x. What is not
/// named in the header or the results is passed over. Throws a Type error for bytes that are not
/// such a certificate.
[[nodiscard]] Certificate DccCertificate(std::string_view bytes);

}  // namespace tarvell

#endif
