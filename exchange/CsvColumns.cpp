// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvColumns.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/numbers/Numbers.h"
#include "exchange/CaptionUnit.h"
#include "exchange/CsvLines.h"

namespace tarvell {

std::string CaptionOf(const std::vector<DelimitedLine>& lines, const TablePlace& place,
                      std::size_t column) {
  std::string caption;
  for (std::size_t i = place.captions.begin; i < place.captions.end; ++i) {
    const std::string_view cell = lines[i].Cell(column);
    const bool isUnit = i > place.captions.begin;
    caption +=
        isUnit && !cell.empty() ? " [" + std::string(UnitOnly(cell)) + "]" : std::string(cell);
    if (isUnit && cell.find('=') != std::string_view::npos) {
      caption += " " + std::string(cell.substr(std::min(cell.find('('), cell.size())));
    }
  }
  // Each value gets a copy of the unit in it.
  return Shortened(caption);
}

CertificateColumn CsvColumns::Of(const TablePlace& place, std::size_t column) {
  const std::string caption = CaptionOf(lines_, place, column);
  const std::string known = UnitOfCaption(caption);
  const std::string unit = known.empty() ? UnknownUnitOf(caption) : Meant(known);
  Series series;
  for (const std::size_t row : place.rows) {
    series.values.push_back(ValueOf(lines_[row].Cell(column), unit));
  }
  return {{{"", caption}}, "", {std::move(series)}};
}

WrittenValue CsvColumns::ValueOf(std::string_view cell, const std::string& captionUnit) {
  const std::optional<NumberCell> parts = NumberIn(cell);
  std::optional<std::string> number = parts ? PlainNumber(parts->number, sign_) : std::nullopt;
  if (!number) {
    return {std::string(cell), "", false};
  }
  if (isUnchanged_ && ParseNumber(parts->number)) {
    number = parts->number;
  }
  return {*number, parts->unit.empty() ? captionUnit : Meant(std::string(parts->unit))};
}

std::string CsvColumns::Meant(std::string unit) {
  if (unit != "mHz") {
    return unit;
  }
  hasMillihertz_ = true;
  return "MHz";
}

}  // namespace tarvell
