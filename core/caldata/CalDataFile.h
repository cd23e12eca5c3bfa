// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALDATAFILE_H
#define TARVELL_CORE_CALDATA_CALDATAFILE_H

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/DoubtfulRows.h"
#include "core/caldata/cifCaldata.h"
#include "core/files/FileText.h"
#include "core/files/ItemReader.h"
#include "core/files/StoredFile.h"
#include "core/platform/Error.h"

namespace tarvell {

/// The words that a header or data line is split into; those that it lacks are "".
inline constexpr std::size_t kLineWords = 21;
using LineWords = std::array<std::string, kLineWords>;

/// A line's words: its colons count as blanks, its first character only says its class. Throws an
/// Index error when there are more than kLineWords.
[[nodiscard]] LineWords WordsOf(std::string_view item);

/// Throws a Character error when a header line could not be read back as one line with this value:
/// more words before its first comma than a line may have, or a comma (which ends an item) with
/// something after it that would be taken for a line of its own. The message calls the value
/// `field`.
void CheckHeaderValue(const std::string& field, std::string_view value);

/// The same of a name, which has no comma at all: the lists of data sets take what stands behind it
/// for the next line.
void CheckHeaderName(const std::string& field, std::string_view name);

/// What a load gives back of a value on a header line: its first word. A colon counts as a blank,
/// and a comma ends the line.
[[nodiscard]] std::string HeaderValueRead(std::string_view value);

/// Appends a data line. Throws a Character error when a cell holds a comma, as one from a quoted
/// line may: what stands behind it would be lost, or taken for a line of its own.
void WriteDataLine(FileText& text, std::string_view line);

/// What is told about a table that has no place for another row.
[[nodiscard]] Error FullTableError();

/// Calls `take` for each data row of a grid, with its place in a table and its row in the grid.
/// Throws FullTableError behind the last one that a table has a place for.
void TakeDataRows(const CalDataGrid& grid,
                  const std::function<void(std::size_t index, std::int16_t row)>& take);

/// What the data files of all models share: the header, the reader loop and the writer. A model
/// adds its data lines and the body of its file, and its pages where it has more than one table.
///
/// The reader holds one item ahead: the last item of a file, its terminator line, is never
/// interpreted. It does not clear the object first. What a reader of the file would want to know
/// of such a reading is kept as notices.
class CalDataFile : public cifCaldata {
 public:
  /// `modelCode` outlives the object.
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
  std::int32_t SaveCalibrationDataToFile(const std::string& fileName) final;
  [[nodiscard]] Replacement WouldReplace(const std::string& fileName) const final;
  void RememberUnchangedSave() final;
  [[nodiscard]] const std::vector<std::string>& LoadNotices() const final { return notices_; }
  [[nodiscard]] const HeaderSeen& LoadedHeader() const final { return header_; }
  /// Throws a NotFound error when the template is missing, and a Template error when it is one of
  /// another model, or not complete: without its "!End", or for a set without one of its pages or
  /// the "!END" of one. The model's name may be in any case and have the maker's before it,
  /// and the template may lack header lines, the model line too. What was read of a template that
  /// is refused stays in the object.
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
  /// What the notices of a table's rows say.
  struct TableTexts {
    std::string table;             ///< the table, at the beginning of a sentence
    std::string_view firstColumn;  ///< what a row is not shown without
    std::string_view emptyField;   ///< what became of the values after an empty field
    std::string_view missing;      ///< what stands in for missing values
    std::string_view beyond = "";  ///< what became of values that there is no format for
  };

  [[nodiscard]] std::string_view ModelCode() const { return modelCode_; }

  /// Keeps a notice of the load that is going on.
  void Note(std::string notice) { notices_.push_back(std::move(notice)); }
  /// Keeps a notice that ends with these rows, when there are any.
  void NoteRows(const std::string& notice, const RowSet& rows);
  /// Notes what is doubtful about the rows of a table, of which the first `shown` ones are shown.
  void NoteDoubtfulRows(const DoubtfulRows& rows, std::size_t shown, const TableTexts& texts);

  /// The file has been read; notes what it lacks. `lastItem` is the one that was held at its end,
  /// and was not interpreted; `hasEnd` says whether a line "!End" stood by itself. Returns whether
  /// the file is complete, as a template must be.
  virtual bool EndRead(const std::string& lastItem, bool hasEnd);

  /// Whether the default data lay in the object when the load began.
  [[nodiscard]] bool IsReadOverDefaults() const { return holdsDefaults_; }

 private:
  struct Date {
    std::int16_t year = 0;
    std::string month;
    std::int16_t day = 0;

    [[nodiscard]] static Date From(std::string_view digits);
    [[nodiscard]] std::string Digits() const;
  };

  static constexpr std::size_t kHeaderLines = 6;

  /// What a load saw on its way.
  struct Seen {
    std::string model;                 ///< the model that the model line names, "" without one
    std::bitset<kHeaderLines> header;  ///< the header lines, in the order of the file
    bool hasEnd = false;
    bool isComplete = false;
  };

  /// The code on the model line that is written.
  [[nodiscard]] virtual std::string_view WrittenModel() const { return modelNumber_; }

  /// What counts of a header line, its "#" included.
  [[nodiscard]] virtual std::string_view HeaderText(std::string_view item) const { return item; }

  // What a model reads besides the header. All may read on, and throw an Index error when there
  // is no row for a line. By default such lines are passed over.

  /// The file is about to be read.
  virtual void BeginRead() {}
  /// A data line that stands by itself, the `index`-th, counted from 0, its "*" included.
  virtual void TakeDataLine(std::size_t /*index*/, std::string_view /*item*/) {}
  /// A header line whose keyword is none of the header's.
  virtual void TakePageLine(const LineWords& /*words*/, ItemReader& /*reader*/) {}
  /// A comment line, its "!" included.
  virtual void TakeCommentLine(const std::string& /*item*/, ItemReader& /*reader*/) {}

  /// How many cells of a data line a table shows; the others are always written alike.
  [[nodiscard]] virtual std::size_t ShownCells() const {
    return std::numeric_limits<std::size_t>::max();
  }

  /// Appends everything behind the header lines.
  virtual void WriteBody(FileText& text) const = 0;

  Seen Read(const std::string& fileName, FileStamp& stamp);
  void NoteHeader(const std::string& firstItem, const Seen& seen);
  void Interpret(const std::string& item, ItemReader& reader, std::size_t& dataLines, Seen& seen);
  void TakeHeaderLine(const LineWords& words, ItemReader& reader, Seen& seen);
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
  bool hasDataLines_ = false;  ///< of the file that was read last
  HeaderSeen header_;
  bool holdsDefaults_ = false;
  StoredFile file_;
};

}  // namespace tarvell

#endif
