// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/SetPages.h"

#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

std::string PpmOfPercent(std::string_view percent) {
  return ShortestText(NumericValue(percent) * kPpmPerPercent);
}

std::size_t PageIndex(std::int16_t page, std::int16_t pages) {
  if (page < 0 || page >= pages) {
    throw Error(ErrorKind::Index, "The data set has no page " + std::to_string(page) + ".");
  }
  return static_cast<std::size_t>(page);
}

void WriteTableCaption(FileText& text) {
  text.Line("!");
  text.Line("!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)");
  text.Line("!");
}

bool ReadToEnd(ItemReader& reader, const std::function<void(const std::string& item)>& take) {
  if (reader.AtEnd()) {
    return false;
  }
  std::string item = reader.ReadItem();
  while (!EqualsIgnoringCase(item, "!End")) {
    if (reader.AtEnd()) {
      return false;
    }
    reader.AtThisLine([&] { take(item); });
    item = reader.ReadItem();
  }
  return true;
}

}  // namespace tarvell
