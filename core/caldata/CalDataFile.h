// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALDATAFILE_H
#define TARVELL_CORE_CALDATA_CALDATAFILE_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/BodyReader.h"
#include "core/caldata/LoadNotes.h"
#include "core/caldata/cifCaldata.h"
#include "core/files/FileText.h"
#include "core/history/StoredFile.h"

namespace tarvell {

/// What the data files of all models share: their header, and how they are read and written. A
/// model adds a reader for the body of its file, and writes that body.
///
/// The last item of a file, its terminator line, is never interpreted. A load does not clear the
/// object first.
class CalDataFile : public cifCaldata {
 public:
  /// `modelCode` must outlive the object.
  explicit CalDataFile(std::string_view modelCode) : modelCode_(modelCode) {}

  [[nodiscard]] const std::string& Path() const final { return path_; }
  void SetPath(const std::string& value) final { path_ = value; }
  [[nodiscard]] const std::string& ModelNumber() const final { return modelNumber_; }
  void SetModelNumber(const std::string& value) final { modelNumber_ = value; }
  [[nodiscard]] const std::string& SerialNumber() const final { return serialNumber_; }
  void SetSerialNumber(const std::string& value) final { serialNumber_ = value; }
  [[nodiscard]] const std::string& CalibrationNumber() const final { return calibrationNumber_; }
  void SetCalibrationNumber(const std::string& value) final { calibrationNumber_ = value; }
  [[nodiscard]] const std::string& Comment() const final { return comment_; }
  void SetComment(const std::string& value) final { comment_ = value; }

  void GetCalDate(std::int16_t& year, std::string& month, std::int16_t& day) const final;
  void SetCalDate(std::int16_t year, const std::string& month, std::int16_t day) final;
  void GetDueDate(std::int16_t& year, std::string& month, std::int16_t& day) const final;
  void SetDueDate(std::int16_t year, const std::string& month, std::int16_t day) final;

  std::int32_t LoadCalibrationDataFromFile(const std::string& fileName) final;
  using cifCaldata::SaveCalibrationDataToFile;
  std::int32_t SaveCalibrationDataToFile(const std::string& fileName, Earlier earlier) final;
  [[nodiscard]] Replacement WouldReplace(const std::string& fileName) const final;
  void RememberUnchangedSave() final;
  void LeaveFile() final { file_ = StoredFile(); }
  [[nodiscard]] const std::vector<std::string>& LoadNotices() const final { return notices_; }
  [[nodiscard]] const LoadedHeader& HeaderOfLoad() const final { return header_; }
  [[nodiscard]] Origin OriginOfLoad(std::int16_t page, Cell cell) const final;
  /// Throws a NotFound error when the template is missing, and a Template error when it is that of
  /// another model or is not complete: "!End" is missing or, in a set, a page or its "!END". The
  /// model's name may be in any case and may follow the maker's name; header lines may be missing.
  /// What was read of a refused template stays in the object.
  std::int32_t SetInitialDefaultData() final;

  [[nodiscard]] std::string GetCalPageName(std::int16_t /*page*/) const override { return {}; }
  [[nodiscard]] std::string GetCalPageSerial(std::int16_t /*page*/) const override { return {}; }
  void SetCalPageSerial(std::int16_t /*page*/, const std::string& /*serial*/) override {}
  [[nodiscard]] std::int16_t GetCalPageCount() const override { return 1; }

  [[nodiscard]] std::string CellReadBack(std::int16_t /*page*/, Cell /*cell*/,
                                         const std::string& text) const override {
    return text;
  }

  /// Path of the model's template file: "Temp" and the model code, beside the program.
  [[nodiscard]] std::string TemplatePath() const;

 protected:
  [[nodiscard]] std::string_view ModelCode() const { return modelCode_; }

 private:
  struct Date {
    std::int16_t year = 0;
    std::string month;
    std::int16_t day = 0;

    [[nodiscard]] static Date From(std::string_view digits);
    [[nodiscard]] std::string Digits() const;
  };

  class Load;

  /// The code on the model line that is written.
  [[nodiscard]] virtual std::string_view WrittenModel() const { return modelNumber_; }

  /// The part of a header line that counts, its "#" included.
  [[nodiscard]] virtual std::string_view HeaderText(std::string_view item) const { return item; }

  /// A reader for the body of one file. `notes` must outlive it.
  [[nodiscard]] virtual std::unique_ptr<BodyReader> NewBodyReader(LoadNotes& notes) = 0;

  /// How many cells of a data line a table shows; the others are always written the same.
  [[nodiscard]] virtual std::size_t ShownCells() const {
    return std::numeric_limits<std::size_t>::max();
  }

  /// Appends everything after the header lines.
  virtual void WriteBody(FileText& text) const = 0;

  void WriteHeader(FileText& text) const;
  /// What a save writes.
  [[nodiscard]] std::string Bytes() const;

  std::string_view modelCode_;
  std::string path_;
  std::string modelNumber_;
  std::string serialNumber_;
  std::string calibrationNumber_;
  std::string comment_;
  Date calDate_;
  Date dueDate_;
  std::vector<std::string> notices_;
  LoadedHeader header_;
  bool holdsDefaults_ = false;
  bool holdsOnlyDefaults_ = false;  ///< the template was loaded last
  LackedCells lackedCells_;         ///< by the file that was loaded last
  StoredFile file_;
};

}  // namespace tarvell

#endif
