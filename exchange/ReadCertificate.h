// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_READCERTIFICATE_H
#define TARVELL_EXCHANGE_READCERTIFICATE_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "exchange/Certificate.h"

namespace tarvell {

/// A larger file is refused. A certificate with pictures in it is much smaller.
inline constexpr std::size_t kCertificateLimit = 1U << 26U;

/// The bytes of the certificate at a path of the system. Throws the error of a file that cannot be
/// read or is larger than kCertificateLimit.
[[nodiscard]] std::string CertificateBytes(const std::filesystem::path& path);

/// Reads a certificate, a DCC, CSV or TSV, whatever its name is. Throws a Type error for bytes of
/// any other kind, which says what they are, if that is known.
[[nodiscard]] Certificate ReadCertificate(std::string_view bytes,
                                          const ReadingChoices& choices = {});

}  // namespace tarvell

#endif
