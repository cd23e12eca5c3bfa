// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DCCXML_H
#define TARVELL_EXCHANGE_DCCXML_H

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"

/// The XML of a Digital Calibration Certificate, whoever wrote it.
namespace tarvell {

/// Parses `bytes` into `document`. Afterwards the elements of a certificate are named "dcc:..." and
/// "si:...", whatever prefixes the file uses, and no other element has such a name. Returns what
/// the user should know. No entity and no address is resolved. Throws a Type error for bytes that
/// are not such a certificate, and for elements that are too many or too deep.
[[nodiscard]] std::vector<std::string> LoadDcc(std::string_view bytes,
                                               pugi::xml_document& document);

/// The text of an element without blanks around it, comments left out.
[[nodiscard]] std::string TextOf(pugi::xml_node node);

/// The `content` texts below an element.
[[nodiscard]] Names NamesOf(pugi::xml_node node);

/// Whether the attribute refType of an element holds this word.
[[nodiscard]] bool HasRefType(pugi::xml_node node, std::string_view word);

}  // namespace tarvell

#endif
