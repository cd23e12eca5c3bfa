// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccItems.h"

#include <algorithm>
#include <string_view>

#include "exchange/DccXml.h"

namespace tarvell {

DccItems::DccItems(pugi::xml_node root, const std::vector<CertificateItem>& items) {
  for (const pugi::xml_node item :
       root.child("dcc:administrativeData").child("dcc:items").children("dcc:item")) {
    ids_.emplace_back(item.attribute("id").value());
  }
  for (const CertificateItem& item : items) {
    serials_.push_back(item.serialNumber);
  }
}

std::optional<std::size_t> DccItems::Of(pugi::xml_node list, const Names& name) const {
  std::optional<std::size_t> item = ReferredBy(list.child("dcc:quantity"));
  for (pugi::xml_node node = list; !item && !node.empty(); node = node.parent()) {
    item = ReferredBy(node);
  }
  item = item ? item : NamedIn(name);
  for (pugi::xml_node node = list; !item && !node.empty(); node = node.parent()) {
    item = NamedIn(NamesOf(node.child("dcc:name")));
  }
  return item;
}

std::optional<std::size_t> DccItems::ReferredBy(pugi::xml_node node) const {
  std::string_view ids = node.attribute("refId").value();
  while (!ids.empty()) {
    const std::string_view id = ids.substr(0, ids.find(' '));
    const auto found = id.empty() ? ids_.end() : std::ranges::find(ids_, id);
    if (found != ids_.end()) {
      return static_cast<std::size_t>(found - ids_.begin());
    }
    ids.remove_prefix(std::min(id.size() + 1, ids.size()));
  }
  return std::nullopt;
}

std::optional<std::size_t> DccItems::NamedIn(const Names& name) const {
  std::optional<std::size_t> named;
  for (std::size_t i = 0; i < serials_.size(); ++i) {
    const bool isNamed =
        !serials_[i].empty() && std::ranges::any_of(name, [&](const LocalText& text) {
          return text.text.find(serials_[i]) != std::string::npos;
        });
    if (isNamed && named) {
      return std::nullopt;
    }
    named = isNamed ? std::optional(i) : named;
  }
  return named;
}

}  // namespace tarvell
