// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CAPACITORSET_H
#define TARVELL_CORE_CALDATA_CAPACITORSET_H

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/Cell.h"
#include "core/caldata/Table.h"
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

/// How the capacitor sets differ from each other.
struct CapacitorSetTraits {
  std::string_view modelCode;
  std::array<std::string_view, 4> pageNames;
  std::array<std::string_view, 4> units;  ///< of the capacitance, by page
  std::string_view otherUnit;             ///< of the capacitance on any other page
  /// Whether a capacitance is edited as its shortest text and with its unit.
  bool normalisesCapacitance;
  bool hasOption;  ///< whether page 3 exists only with option 001
  std::span<const CapacitorFormat> capacitance;
  std::span<const CapacitorFormat> uncertainty;
  std::span<const CapacitorFormat> dissipation;  ///< has a rule for every cell
};

/// A set of standard capacitors, with one page per member: the capacitance, the dissipation factor
/// and their uncertainties at each frequency. The cells are kept as they are shown.
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
  /// The serial number of the page's member; "*" for page 3 while the set is without its option.
  [[nodiscard]] std::string GetCalPageSerial(std::int16_t page) const final;
  /// Sets the serial number of the page's member. If page 3 exists only with the option, "*" for it
  /// switches the option off, and "/" switches it on again with its earlier serial number; any
  /// other text switches it on and becomes its serial number.
  void SetCalPageSerial(std::int16_t page, const std::string& serial) final;
  [[nodiscard]] std::int16_t GetCalPageCount() const final;

 protected:
  /// `traits` must outlive the object.
  explicit CapacitorSet(const CapacitorSetTraits& traits)
      : CalDataFile(traits.modelCode), traits_(traits) {}

 private:
  static constexpr std::int16_t kPages = 5;
  static constexpr std::int16_t kColumns = kTableColumns;

  using Row = Table<kColumns>::Row;
  class Reader;

  /// The code of the class, whatever model number was set.
  [[nodiscard]] std::string_view WrittenModel() const final { return ModelCode(); }
  [[nodiscard]] std::unique_ptr<BodyReader> NewBodyReader(LoadNotes& notes) final;
  void WriteBody(FileText& text) const final;

  /// The cells of a row, made from the words of its data line.
  [[nodiscard]] Row CellsOf(std::int16_t page, GridRow gridRow,
                            std::span<const std::string> words) const;
  [[nodiscard]] std::string DataLine(const Row& row) const;
  [[nodiscard]] std::string_view CapacitanceUnit(std::int16_t page) const;
  /// The text of an uncertainty's cell; `unit` is what the user chose, or kPpm or kPercent.
  [[nodiscard]] std::string UncertaintyText(std::int16_t page, GridRow row, double number,
                                            std::string_view unit) const;
  /// The cell's text as GetCalibrationDataFormat returns it, without its unit.
  [[nodiscard]] std::string Edited(std::int16_t column, const std::string& text) const;

  const CapacitorSetTraits& traits_;
  std::array<std::string, kPages> pageSerial_;
  std::array<Table<kColumns>, kPages> tables_;
  bool optionInstalled_ = false;
  std::string optionSerial_;
};

}  // namespace tarvell

#endif
