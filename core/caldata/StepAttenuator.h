// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_STEPATTENUATOR_H
#define TARVELL_CORE_CALDATA_STEPATTENUATOR_H

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/Table.h"

namespace tarvell {

/// How the step attenuator models differ from each other.
struct StepAttenuatorTraits {
  std::string_view modelCode;
  std::string_view noteLine;  ///< a further comment line of the file, "" for none
  std::string_view frequencyCaption;
  std::string_view presetFrequency;  ///< proposed for a new point
  /// By how much each column is narrower than a third of the grid.
  std::array<float, 3> narrowing;
};

/// Calibrated attenuation in dB for each setting in dB and frequency in Hz. All three are kept as
/// the texts that were read or typed.
class StepAttenuator : public CalDataFile {
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
  explicit StepAttenuator(const StepAttenuatorTraits& traits)
      : CalDataFile(traits.modelCode), traits_(traits) {}

 private:
  using Row = Table<3>::Row;

  /// A header line ends at its first NUL.
  [[nodiscard]] std::string_view HeaderText(std::string_view item) const final;
  [[nodiscard]] std::unique_ptr<BodyReader> NewBodyReader(LoadNotes& notes) final;
  void WriteBody(FileText& text) const final;
  [[nodiscard]] std::string DataLine(const Row& row) const;

  const StepAttenuatorTraits& traits_;
  Table<3> table_;
};

}  // namespace tarvell

#endif
