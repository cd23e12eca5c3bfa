// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CIFCALDATA_H
#define TARVELL_CORE_CALDATA_CIFCALDATA_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/Origin.h"
#include "core/history/History.h"
#include "core/history/Replacement.h"

namespace tarvell {

/// What a load found out about its file's header.
struct LoadedHeader {
  bool isOldStyle = false;       ///< the file is from before the header lines
  bool hasSerialNumber = false;  ///< there is a serial number line with a value
  bool isComplete = false;       ///< there is every line that ends the file or a page
  bool lacksCalDate = false;     ///< the calibration date is that of the template
  bool lacksDueDate = false;     ///< the same for the due date
  std::string otherModel;        ///< the model that the file names, if it is another one
};

/// The texts around the number of a cell, such as "Ls/" before it and " nH" after it.
struct CellAffixes {
  std::string_view before;
  std::string_view after;
};

/// Calibration data of one instrument or one set of standards, that is, of one data file. The
/// editors use every model only through this interface.
///
/// Pages count from 0; each page is the table of one standard. A model with a single table has one
/// page without name and serial number. Rows and columns are those of a grid. Months are the names
/// "JAN" to "DEC". Every function with an integer result returns 0, except GetCalPageCount. A
/// failure is an Error; a load that fails keeps what it has read.
class cifCaldata {
 public:
  cifCaldata() = default;
  cifCaldata(const cifCaldata&) = delete;
  cifCaldata& operator=(const cifCaldata&) = delete;
  virtual ~cifCaldata() = default;

  [[nodiscard]] virtual const std::string& Path() const = 0;
  virtual void SetPath(const std::string& value) = 0;
  [[nodiscard]] virtual const std::string& ModelNumber() const = 0;
  virtual void SetModelNumber(const std::string& value) = 0;
  [[nodiscard]] virtual const std::string& SerialNumber() const = 0;
  virtual void SetSerialNumber(const std::string& value) = 0;
  [[nodiscard]] virtual const std::string& CalibrationNumber() const = 0;
  virtual void SetCalibrationNumber(const std::string& value) = 0;
  [[nodiscard]] virtual const std::string& Comment() const = 0;
  virtual void SetComment(const std::string& value) = 0;

  virtual void GetCalDate(std::int16_t& year, std::string& month, std::int16_t& day) const = 0;
  /// Stores the date as it is given, without any test.
  virtual void SetCalDate(std::int16_t year, const std::string& month, std::int16_t day) = 0;
  virtual void GetDueDate(std::int16_t& year, std::string& month, std::int16_t& day) const = 0;
  /// Stores the date as it is given, without any test.
  virtual void SetDueDate(std::int16_t year, const std::string& month, std::int16_t day) = 0;

  /// Reads a whole file over what the object holds. "NEW", in any case, means the default data.
  virtual std::int32_t LoadCalibrationDataFromFile(const std::string& fileName) = 0;
  /// Reads the content of a data file in the same way. Errors name it as `fileName`. The object
  /// does not belong to that file.
  virtual void LoadFromBytes(std::string_view bytes, const std::string& fileName) = 0;
  /// Writes the whole object, replacing any file of that name, whose content goes into the history.
  /// When it throws, the earlier file is whole; a NotKept error says that only the history failed.
  std::int32_t SaveCalibrationDataToFile(const std::string& fileName) {
    return SaveCalibrationDataToFile(fileName, Earlier::Keep);
  }
  /// The same, also without the history if the user agrees.
  virtual std::int32_t SaveCalibrationDataToFile(const std::string& fileName, Earlier earlier) = 0;
  /// What a save writes. Throws the error of data that cannot be saved.
  [[nodiscard]] virtual std::string BytesToSave() const = 0;

  /// What saving to this file would replace without the user having seen it. Throws the error of a
  /// save that is not possible, and a WriteFailed error for a file that cannot be read.
  [[nodiscard]] virtual Replacement WouldReplace(const std::string& fileName) const = 0;

  /// Remembers what a save would write if the user changed nothing.
  virtual void RememberUnchangedSave() = 0;

  /// From now on the data set does not belong to the file that it was read from.
  virtual void LeaveFile() = 0;

  /// What the last load found doubtful in its file, to be reported before the data are edited.
  [[nodiscard]] virtual const std::vector<std::string>& LoadNotices() const = 0;

  /// What the last load found out about its file's header. A field whose line the file lacks keeps
  /// its value.
  [[nodiscard]] virtual const LoadedHeader& HeaderOfLoad() const = 0;

  /// Whether a cell's value came from the file of the last load, or from the template: because that
  /// was loaded last, or because the file lacks the value.
  [[nodiscard]] virtual Origin OriginOfLoad(std::int16_t page, Cell cell) const = 0;

  /// Fills the grid with the page's captions and rows.
  virtual void GetCalData(std::int16_t page, CalDataGrid& grid) const = 0;
  /// Replaces the page's table by the grid's rows.
  virtual void SetCalData(std::int16_t page, const CalDataGrid& grid) = 0;

  /// Fills the object with the model's default data: its template file.
  virtual std::int32_t SetInitialDefaultData() = 0;

  /// The text to edit for a cell that holds `text`; "" for a column without a rule.
  [[nodiscard]] virtual std::string GetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                             std::int16_t row,
                                                             const std::string& text,
                                                             std::string& unit) const = 0;
  /// The text to store in a cell when the user typed `text`; "" for a column without a rule.
  [[nodiscard]] virtual std::string SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                             std::int16_t row,
                                                             const std::string& text,
                                                             const std::string& unit) const = 0;
  /// The text that a cell which holds `text` has after the data set is saved and loaded again.
  [[nodiscard]] virtual std::string CellReadBack(std::int16_t page, Cell cell,
                                                 const std::string& text) const = 0;
  /// What SetCalibrationDataFormat puts around the number of a cell; nothing where the cell has no
  /// format for numbers.
  [[nodiscard]] virtual std::optional<CellAffixes> AffixesOf(std::int16_t page, Cell cell,
                                                             std::string_view unit) const = 0;
  /// The units that the user may choose for a column; the one entry "*" means no choice.
  virtual std::int16_t GetCalibrationUnit(std::int16_t page, std::int16_t column,
                                          std::vector<std::string>& units) const = 0;

  [[nodiscard]] virtual std::string GetCalPageName(std::int16_t page) const = 0;
  [[nodiscard]] virtual std::string GetCalPageSerial(std::int16_t page) const = 0;
  virtual void SetCalPageSerial(std::int16_t page, const std::string& serial) = 0;
  [[nodiscard]] virtual std::int16_t GetCalPageCount() const = 0;
};

}  // namespace tarvell

#endif
