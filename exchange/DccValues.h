// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DCCVALUES_H
#define TARVELL_EXCHANGE_DCCVALUES_H

#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "exchange/Certificate.h"

/// The values of the quantities of a DCC.
namespace tarvell {

/// Counts the values of a certificate.
class ValueCount {
 public:
  /// Throws a Type error for more values than any certificate has.
  void Add(std::size_t values);

 private:
  std::size_t count_ = 0;
};

/// Adds the values of a quantity, in each of its units. Where there are uncertainties, each value
/// has one; it is empty where the certificate has none. Returns why values cannot be used, "" if
/// all can.
[[nodiscard]] std::string AddSeries(pugi::xml_node quantity, std::vector<Series>& series,
                                    ValueCount& count);

/// Adds a value and its uncertainty, if it has one.
void AppendValue(const WrittenValue& value, const std::optional<WrittenValue>& uncertainty,
                 Series& series);

}  // namespace tarvell

#endif
