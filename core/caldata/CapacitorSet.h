// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CAPACITORSET_H
#define TARVELL_CORE_CALDATA_CAPACITORSET_H

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/NumberPattern.h"

namespace tarvell {

inline constexpr std::int16_t kAnyPage = -1;
inline constexpr std::int16_t kFirstRow = std::numeric_limits<std::int16_t>::min();
inline constexpr std::int16_t kLastRow = std::numeric_limits<std::int16_t>::max();

/// The digit pattern of a column in a range of grid rows of one page, or of any page.
struct CapacitorFormat {
  std::int16_t page;
  std::int16_t firstRow;
  std::int16_t lastRow;
  NumberPattern pattern;
  NumberPattern ppmPattern = pattern;  ///< for an uncertainty in ppm
};

/// In what the standard capacitor sets differ.
struct CapacitorSetTraits {
  std::string_view modelCode;
  std::array<std::string_view, 4> pageNames;
  std::array<std::string_view, 4> units;  ///< of the capacitance, by page
  std::string_view otherUnit;             ///< of the capacitance on any other page
  /// Whether the capacitance to edit is normalised, and tells its unit.
  bool normalisesCapacitance;
  bool hasOption;  ///< whether page 3 comes with option 001 only
  std::span<const CapacitorFormat> capacitance;
  std::span<const CapacitorFormat> uncertainty;
  std::span<const CapacitorFormat> dissipation;  ///< with a rule for every cell
};

/// A set of standard capacitors: one page per member, with the capacitance, the dissipation factor
/// and their uncertainties against the frequency. The cells are kept as they are shown.
class CapacitorSet : public CalDataFile {
 public:
  void GetCalData(std::int16_t page, CalDataGrid& grid) const final;
  void SetCalData(std::int16_t page, const CalDataGrid& grid) final;
  [[nodiscard]] std::string GetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     std::string& unit) const final;
  [[nodiscard]] std::string SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     const std::string& unit) const final;
  [[nodiscard]] std::string CellReadBack(std::int16_t page, Cell cell,
                                         const std::string& text) const final;
  [[nodiscard]] std::optional<CellAffixes> AffixesOf(std::int16_t page, Cell cell,
                                                     std::string_view unit) const final;
  std::int16_t GetCalibrationUnit(std::int16_t page, std::int16_t column,
                                  std::vector<std::string>& units) const final;
  [[nodiscard]] std::string GetCalPageName(std::int16_t page) const final;
  /// Page 3 of a set with option answers "*" when the option is absent.
  [[nodiscard]] std::string GetCalPageSerial(std::int16_t page) const final;
  /// For page 3 of a set with option "*" switches the option off, "/" on again with the serial
  /// number that it had; any other text switches it on with that.
  void SetCalPageSerial(std::int16_t page, const std::string& serial) final;
  [[nodiscard]] std::int16_t GetCalPageCount() const final;

 protected:
  /// `traits` outlives the object.
  explicit CapacitorSet(const CapacitorSetTraits& traits)
      : CalDataFile(traits.modelCode), traits_(traits) {}

 private:
  static constexpr std::int16_t kPages = 5;
  static constexpr std::int16_t kColumns = 5;

  using Row = std::array<std::string, kColumns>;
  /// The rows of a page run up to the first empty frequency.
  using Page = std::array<Row, kTableRows>;

  /// Its own code, whatever it was told.
  [[nodiscard]] std::string_view WrittenModel() const final { return ModelCode(); }
  void BeginRead() final;
  void TakePageLine(const LineWords& words, ItemReader& reader) final;
  bool EndRead(const std::string& lastItem, bool hasEnd) final;
  void WriteBody(FileText& text) const final;

  void ReadCalPage(std::int16_t page, ItemReader& reader);
  /// Takes a line as the row `row` of a page.
  void TakeRow(std::int16_t page, std::size_t row, std::string_view line);
  [[nodiscard]] Row ReadRow(std::int16_t page, std::int16_t gridRow,
                            std::span<const std::string> words) const;
  void NoteRowsOf(std::size_t page);
  void WriteCalPage(std::int16_t page, FileText& text) const;
  [[nodiscard]] std::string DataLine(std::int16_t page, std::int16_t gridRow, const Row& row) const;
  [[nodiscard]] std::string_view CapacitanceUnit(std::int16_t page) const;
  /// The cell's text as GetCalibrationDataFormat gives it, less its unit.
  [[nodiscard]] std::string Edited(std::int16_t page, std::int16_t column, std::int16_t row,
                                   const std::string& text) const;

  const CapacitorSetTraits& traits_;
  std::array<std::string, kPages> pageSerial_;
  std::array<Page, kPages> calTable_;
  bool optionInstalled_ = false;
  std::string optionSerial_;
  std::array<int, kPages> pageLines_{};        ///< page lines of the file that is being read
  std::array<bool, kPages> pageEnded_{};       ///< pages whose end it has
  std::array<DoubtfulRows, kPages> pageRows_;  ///< their rows
};

}  // namespace tarvell

#endif
