// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_PAGEPLANNING_H
#define TARVELL_EXCHANGE_PAGEPLANNING_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/PagePlan.h"

namespace tarvell {

/// A number in another unit; nothing where the units cannot be converted. A value without a unit,
/// or in one that is not known, is in the wanted one.
[[nodiscard]] std::optional<std::string> Converted(const WrittenValue& value, const Unit& wanted);

/// Whether the text of a cell holds another number than this one.
[[nodiscard]] bool IsRounded(const std::string& number, std::string_view stored);

/// The number that is to be stored in a cell, and the unit that its format needs for it.
struct NumberToStore {
  std::string number;
  std::string unit;
};

/// What the plans of all pages have in common: the values of the certificate, and the sentences
/// about its columns and rows.
class PagePlanning {
 public:
  /// `source` must outlive it.
  explicit PagePlanning(const PageSource& source);

 protected:
  /// Says which columns are not used, and which ones the user has to confirm.
  void JudgeColumns();

  /// The value for a column of the table; nullptr for none.
  [[nodiscard]] const WrittenValue* ValueAt(std::size_t row, std::size_t column) const;

  /// The page as the beginning of a sentence.
  [[nodiscard]] std::string Where() const;
  /// The point of a row of the certificate as messages name it: "50 MHz", or its line.
  [[nodiscard]] std::string PointName(std::size_t row) const;
  [[nodiscard]] std::string Refusal(std::size_t row, const WrittenValue& value,
                                    const std::string& why) const;

  /// The line of the file. The rows of a DCC, which are in no lines, are counted.
  [[nodiscard]] std::size_t LineInFile(std::size_t row) const;

  /// Asks about a value that cannot be right. `why` is the end of a sentence, "" for a value that
  /// can. Those of an unchanged export were entered so.
  void DoubtValue(std::size_t row, std::size_t column, const std::string& why);
  /// Says how many more values such doubts are about.
  void FinishDoubts();

  void NoteIfRounded(std::size_t row, std::size_t column, const std::string& number,
                     const std::string& stored);

  /// Notes that a value was rounded; `converted` is the number that was, "" if it is the value's.
  void NoteRounded(std::size_t row, std::size_t column, const std::string& converted,
                   const std::string& stored);

  /// What a cell stores of a number.
  [[nodiscard]] std::string Store(Cell cell, const NumberToStore& number) const;

  const PageSource& source_;
  std::vector<ModelColumn> columns_;
  PagePlan plan_;

 private:
  [[nodiscard]] bool HasPoint(std::size_t row) const;
  void NoteUnusedColumns();
  /// Only a user who chose such a column has it taken.
  void DoubtUnknownUnits();
  /// Takes numbers without a unit as ratios where per cent would be far from any factor.
  void TakeRatios();
  /// Numbers without a unit are taken in that of the table, or as ratios, only if the user says so.
  void DoubtMissingUnits();
  /// Numbers in a column after the captions may come from a comma that is both in the numbers and
  /// between them.
  void DoubtCellsBesideTheCaptions();
  /// The same where the column after the numbers has a caption of its own.
  void DoubtCutDecimals();
  /// "5 %" of a dissipation factor may be 0.05, or a part of it.
  void DoubtPartsOfRatios();
  /// One value for all rows may have been measured at one of them only.
  void DoubtRepeatedValues();
  void DoubtStandardUncertainties();
  /// The expanded uncertainties of certificates have coverage factors of about 2.
  void DoubtCoverageFactors();
  /// A column that nobody chose by hand is taken without a question only if every word of its
  /// caption is known for it. Many quantities are in per cent or decibel.
  void DoubtCaptions();
  void DoubtCaption(std::size_t index);
  /// Whether only the title of the table can name what a column such as "Measured [dB]" holds, and
  /// does not name the column's quantity.
  [[nodiscard]] bool IsTitledAsOther(std::size_t index) const;
  /// The source of a column as messages name it.
  [[nodiscard]] std::string ColumnTitle(std::size_t column) const;

  std::size_t doubtedValues_ = 0;
  std::vector<const std::vector<WrittenValue>*> values_;     ///< of each column, nullptr for none
  std::map<std::size_t, std::vector<WrittenValue>> ratios_;  ///< the values of such columns
};

}  // namespace tarvell

#endif
