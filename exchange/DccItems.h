// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DCCITEMS_H
#define TARVELL_EXCHANGE_DCCITEMS_H

#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "exchange/Certificate.h"

namespace tarvell {

/// The instruments of a DCC, and which results are about which of them.
class DccItems {
 public:
  /// `items` are those of the certificate with this root, in the same order.
  DccItems(pugi::xml_node root, const std::vector<CertificateItem>& items);

  /// The item that a list is about: the one that it, or an element around it, refers to, or the one
  /// whose serial number their names have; nothing where they say nothing.
  [[nodiscard]] std::optional<std::size_t> Of(pugi::xml_node list, const Names& name) const;

 private:
  [[nodiscard]] std::optional<std::size_t> ReferredBy(pugi::xml_node node) const;
  [[nodiscard]] std::optional<std::size_t> NamedIn(const Names& name) const;

  std::vector<std::string> ids_;
  std::vector<std::string> serials_;
};

}  // namespace tarvell

#endif
