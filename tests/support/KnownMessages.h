// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_KNOWNMESSAGES_H
#define TARVELL_TESTS_SUPPORT_KNOWNMESSAGES_H

#include <QString>

namespace tarvell::test {

/// Whether random input may cause this message.
[[nodiscard]] bool IsKnownMessage(const QString& text);

}  // namespace tarvell::test

#endif
