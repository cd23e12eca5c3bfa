// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRRT730A_H
#define TARVELL_CORE_CALDATA_CINSTRRT730A_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/Table.h"

namespace tarvell {

/// The set of standard resistors: two pages of all members at direct current and at 1 MHz, and
/// one page of each member at high frequencies. Page serial numbers are kept, but the file has no
/// place for them.
class cInstrRT730A final : public CalDataFile {
 public:
  cInstrRT730A() : CalDataFile("RT730A") {}

  void GetCalData(std::int16_t page, CalDataGrid& grid) const override;
  void SetCalData(std::int16_t page, const CalDataGrid& grid) override;
  [[nodiscard]] std::string GetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     std::string& unit) const override;
  [[nodiscard]] std::string SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     const std::string& unit) const override;
  [[nodiscard]] std::string CellReadBack(std::int16_t page, Cell cell,
                                         const std::string& text) const override;
  [[nodiscard]] std::optional<CellAffixes> AffixesOf(std::int16_t page, Cell cell,
                                                     std::string_view unit) const override;
  std::int16_t GetCalibrationUnit(std::int16_t page, std::int16_t column,
                                  std::vector<std::string>& units) const override;
  [[nodiscard]] std::string GetCalPageName(std::int16_t page) const override;
  [[nodiscard]] std::string GetCalPageSerial(std::int16_t page) const override;
  void SetCalPageSerial(std::int16_t page, const std::string& serial) override;
  [[nodiscard]] std::int16_t GetCalPageCount() const override;

 private:
  static constexpr std::int16_t kPages = 8;
  static constexpr std::size_t kColumns = 6;

  using Row = Table<kColumns>::Row;
  class Reader;

  /// The code of the class, whatever model number was set.
  [[nodiscard]] std::string_view WrittenModel() const override { return ModelCode(); }
  [[nodiscard]] std::unique_ptr<BodyReader> NewBodyReader(LoadNotes& notes) override;
  void WriteBody(FileText& text) const override;

  std::array<std::string, kPages> pageSerial_;
  std::array<Table<kColumns>, kPages> tables_;
};

}  // namespace tarvell

#endif
