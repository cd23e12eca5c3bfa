// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVHEADER_H
#define TARVELL_EXCHANGE_CSVHEADER_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"
#include "exchange/CsvInstruments.h"
#include "exchange/DelimitedText.h"
#include "exchange/HeaderDates.h"
#include "exchange/UnusedLines.h"
#include "exchange/Words.h"

namespace tarvell {

/// What the lines above a table say about it.
struct TableHead {
  std::string page;
  std::optional<std::string> memberSerial;
  std::string title;           ///< the last line of one cell
  std::string section;         ///< what the lines say about the results, as "As left"
  bool isOfStandards = false;  ///< whether the table is in a list of the standards that were used
  std::vector<std::size_t> items;  ///< the instruments whose serial numbers they have
};

/// Reads the lines of a CSV file that are not in a table: keys with their values, and titles.
class CsvHeader {
 public:
  /// `text` is the whole file. Both must outlive it.
  CsvHeader(std::string_view text, const ReadingChoices& choices, Certificate& certificate)
      : text_(text), certificate_(certificate), dates_(choices.dateOrder) {}

  void TakeLine(const DelimitedLine& line);

  /// Takes what a column of a table says of all its rows, which `line` is the first of.
  void TakeColumn(const DelimitedLine& line, std::string_view caption, std::string_view value);

  /// What the lines since the table before say about the next one.
  [[nodiscard]] TableHead TakeHead();

  /// The index of the instrument that rows of a table name.
  [[nodiscard]] std::size_t ItemOf(const InstrumentRows& instrument, const DelimitedLine& line);

  /// Stores the dates, and notes what no field takes.
  void Finish();

 private:
  /// Whether a line is about a standard that was used, in a list of them or by itself.
  [[nodiscard]] bool IsOfStandards(const DelimitedLine& line);
  /// Keeps the serial numbers in such a line.
  void KeepStandard(const DelimitedLine& line);
  /// Takes the serial numbers of such lines for want of others, or notes them.
  void FinishStandards();
  [[nodiscard]] bool IsTaken(const DelimitedLine& line);
  [[nodiscard]] bool TakeCell(const DelimitedLine& line);
  [[nodiscard]] bool TakePairs(const DelimitedLine& line);
  [[nodiscard]] bool Take(const DelimitedLine& line, std::string_view key, std::string_view value);
  [[nodiscard]] bool TakeColon(const DelimitedLine& line, std::string_view cell);
  void TakeField(KeyField field, const DelimitedLine& line, std::string_view key,
                 std::string_view value);
  void TakeFormat(std::string_view value);
  void TakeDate(KeyField field, const DelimitedLine& line, std::string_view key,
                std::string_view value);
  /// Takes the first number of a certificate; rather one with a key that says so.
  void FinishNumbers();
  void Keep(std::string_view value, const DelimitedLine& line, std::optional<FoundText>& target);

  struct FoundItem {
    std::size_t index;
    bool isNew;  ///< whether the certificate did not have it before
  };
  /// The instrument with this model or serial number. Another one than that of the instrument
  /// before begins the next instrument.
  [[nodiscard]] FoundItem ItemWith(std::string CertificateItem::*field, std::string_view value);

  /// Keeps the models of the program that a line names.
  void KeepModels(const DelimitedLine& line);
  void DropTitle();
  /// Takes what a line says about the results of the tables below it.
  void TakeSection(const DelimitedLine& line);

  std::string_view text_;
  Certificate& certificate_;
  HeaderDates dates_;
  UnusedLines unused_;
  TableHead head_;                        ///< of the next table
  bool isInStandards_ = false;            ///< in a list of the standards that were used
  bool isStandardInHeading_ = false;      ///< the heading of the list names one itself
  std::size_t standardLines_ = 0;         ///< of that list
  std::vector<FoundText> numbers_;        ///< of certificates, with keys that say so
  std::vector<FoundText> likelyNumbers_;  ///< with a key such as "Certificate"
  std::vector<FoundText> standards_;      ///< serial numbers that are likely those of standards
  std::optional<DelimitedLine> title_;    ///< which is not known to be used yet
  // They hold for all tables up to the next such line.
  std::string state_;
  bool isStateOfOneTable_ = false;  ///< whether it is the title of a table, up to the next title
  std::string channel_;
};

/// The place of a line as messages name it: "line 3".
[[nodiscard]] std::string WhereOf(const DelimitedLine& line);

}  // namespace tarvell

#endif
