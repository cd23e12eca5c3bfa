// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CINSTRRT730A_H
#define TARVELL_CORE_CALDATA_CINSTRRT730A_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/TableRows.h"

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

  using Row = std::array<std::string, kColumns>;
  /// The rows of a page run up to the first empty first column.
  using Page = std::array<Row, kTableRows>;

  /// Its own code, whatever it was told.
  [[nodiscard]] std::string_view WrittenModel() const override { return ModelCode(); }
  void BeginRead() override;
  void TakeCommentLine(const std::string& item, ItemReader& reader) override;
  bool EndRead(const std::string& lastItem, bool hasEnd) override;
  void WriteBody(FileText& text) const override;

  void ReadCalPage(std::int16_t page, int linesToSkip, ItemReader& reader);
  void ReadRow(std::int16_t page, std::size_t index, std::string_view line);
  /// Takes the fields of a row's line, which are separated by ":", up to the first empty one.
  /// Returns their number.
  std::size_t TakeFields(std::int16_t page, std::size_t index, std::string_view fields);
  void NoteRowsOf(std::size_t page);
  [[nodiscard]] std::string UncertaintyRead(std::int16_t page, std::int16_t column,
                                            std::int16_t gridRow, std::string_view field) const;
  [[nodiscard]] std::string DataLine(std::int16_t page, std::int16_t gridRow, const Row& row) const;
  void AppendUncertainty(std::string& line, std::int16_t page, std::int16_t gridRow,
                         const std::string& text) const;

  std::array<std::string, kPages> pageSerial_;
  std::array<Page, kPages> table_;
  std::array<int, kPages> sections_{};       ///< sections of the file that is being read
  std::array<bool, kPages> sectionEnded_{};  ///< pages whose "!END" it has
  std::array<DoubtfulRows, kPages> sectionRows_;
  /// For each row the number of columns that the file fills.
  std::array<std::array<std::size_t, kTableRows>, kPages> filled_{};
};

}  // namespace tarvell

#endif
