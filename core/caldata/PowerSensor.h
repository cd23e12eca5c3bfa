// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_POWERSENSOR_H
#define TARVELL_CORE_CALDATA_POWERSENSOR_H

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

/// How the power sensor models differ from each other.
struct PowerSensorTraits {
  std::string_view modelCode;
  std::string_view frequencyUnit;  ///< "MHz" or "GHz", of the table and its captions
  double referenceFrequency;       ///< the row marked "(Ref.)", in that unit
  /// Whether reading an empty cell clears the unit and GetCalibrationUnit does not change the list;
  /// otherwise the unit does not change, and the list is "*".
  bool clearsUnit;
};

/// Calibration factors in per cent at each frequency. The uncertainty and reflection coefficient
/// columns of the file are constants: they are written, and ignored when read.
class PowerSensor : public CalDataFile {
 public:
  void GetCalData(std::int16_t page, CalDataGrid& grid) const final;
  void SetCalData(std::int16_t page, const CalDataGrid& grid) final;
  [[nodiscard]] std::string GetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     std::string& unit) const final;
  [[nodiscard]] std::string SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                     std::int16_t row, const std::string& text,
                                                     const std::string& unit) const final;
  [[nodiscard]] std::optional<CellAffixes> AffixesOf(std::int16_t page, Cell cell,
                                                     std::string_view unit) const final;
  std::int16_t GetCalibrationUnit(std::int16_t page, std::int16_t column,
                                  std::vector<std::string>& units) const final;

 protected:
  /// `traits` must outlive the object.
  explicit PowerSensor(const PowerSensorTraits& traits)
      : CalDataFile(traits.modelCode), traits_(traits) {}

 private:
  using Row = Table<2>::Row;

  [[nodiscard]] std::unique_ptr<BodyReader> NewBodyReader(LoadNotes& notes) final;
  [[nodiscard]] std::size_t ShownCells() const final { return 2; }
  void WriteBody(FileText& text) const final;
  [[nodiscard]] std::string DataLine(const Row& row) const;

  const PowerSensorTraits& traits_;
  Table<2> table_;
};

}  // namespace tarvell

#endif
