// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CERTIFICATE_H
#define TARVELL_EXCHANGE_CERTIFICATE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/dates/FileDate.h"
#include "core/numbers/WrittenNumber.h"
#include "exchange/WrittenDate.h"

/// A calibration certificate as it was read, whatever kind of file it was in. Nothing in it depends
/// on a model of the program.
namespace tarvell {

/// A text in one language: "en", "de-CH"; "" for a text that holds for every language.
struct LocalText {
  std::string language;
  std::string text;

  bool operator==(const LocalText&) const = default;
};

/// One name in several languages.
using Names = std::vector<LocalText>;

/// The name in this language, or in a form of it, such as "de-CH" for "de"; else the one for every
/// language, the English one, or the first one.
[[nodiscard]] std::string NameIn(const Names& names, std::string_view language);

/// A value as it is written: "98.50" keeps its two decimals. The decimal sign is the point.
struct WrittenValue {
  std::string text;
  std::string unit;  ///< as written: "MHz" or "\mega\hertz"; "" where none is given
  bool isNumber = true;

  bool operator==(const WrittenValue&) const = default;
};

/// The values of a column, from the first row on.
struct Series {
  std::vector<WrittenValue> values;
  std::vector<WrittenValue> uncertainties;  ///< the expanded ones; empty, or one for each value
  /// Their coverage factor, of several the one that is farthest from 2; "" where it is not given.
  std::string coverageFactor = {};
};

struct CertificateColumn {
  Names caption;
  std::string refType;         ///< what a DCC calls it, such as "basic_measuredValue"; "" elsewhere
  std::vector<Series> series;  ///< the same values in several units; at least one
  bool isRepeated = false;     ///< the file has one value, which holds for every row
};

struct CertificateTable {
  Names name;
  std::string where;  ///< the place in the file: "line 12", "result 1, list 2"
  /// What is said above its name about its results, such as "As left", "Channel A"; "" for nothing.
  std::string section = {};
  /// What its rows have in the column that divides a larger table, as "Channel A"; "" for a whole
  /// table.
  std::string part = {};
  std::string page;  ///< the page that it names itself, "" for none
  /// The serial number of the member on that page; nothing where the table does not give it.
  std::optional<std::string> memberSerial;
  std::optional<std::size_t> item;    ///< the instrument that it is about, if it says so
  bool isOfStandards = false;         ///< whether it is in a list of the standards that were used
  bool hasCommas = false;             ///< whether commas separate its cells
  bool isItemOpen = false;            ///< whether it is about one of several, and does not say so
  std::vector<std::size_t> rowLines;  ///< the line of the file of each row; none for a DCC
  std::vector<CertificateColumn> columns;

  [[nodiscard]] std::size_t RowCount() const;
};

/// A table as messages and lists name it: its name in this language, and what divides it from other
/// tables of this name.
[[nodiscard]] std::string TitleOf(const CertificateTable& table, std::string_view language);

/// An instrument that was calibrated.
struct CertificateItem {
  Names name;
  std::string model;
  std::string serialNumber;
  std::string where = "item";  ///< the place of the serial number
};

/// A header value and the place where it was found, such as "line 3".
struct FoundText {
  std::string text;
  std::string where;
};
struct FoundDate {
  FileDate date;
  std::string where;
};

struct CertificateHeader {
  std::optional<FoundText> calibrationNumber;
  std::optional<FoundDate> calDate;
  std::optional<FoundDate> dueDate;
  /// Texts in the places of those dates that are not dates, if nothing else there is one.
  std::optional<FoundText> unreadCalDate;
  std::optional<FoundText> unreadDueDate;
  std::optional<FoundText> comment;
  std::optional<FoundText> option;
};

/// How to read what can be read in two ways.
struct ReadingChoices {
  std::optional<DecimalSign> sign = {};
  std::optional<DateOrder> dateOrder = {};
};

/// A name, a unit or a number of a file, which may be copied many times: the rest of one that is
/// longer than any real one is cut off, and "..." says so.
[[nodiscard]] std::string Shortened(std::string_view text);

/// A text with one blank for each run of blanks and line ends.
[[nodiscard]] std::string WithSingleBlanks(std::string_view text);

/// Throws a Type error for a table with more columns than any certificate has.
void CheckColumns(std::size_t columns, const std::string& where);

/// Something that can be read in two ways. The first one is the decimal point or the day before the
/// month, the second one the decimal comma or the month before the day.
struct ReadingQuestion {
  enum class About { DecimalSign, DateOrder };

  About about = About::DecimalSign;
  std::string written;
  std::string first;
  std::string second;
};

/// What the program's own exports name as their format, before their SHA-256.
inline constexpr std::string_view kExportFormat = "tarvell-data-set 1";
/// What an export names as its format: the SHA-256 is that of all lines after the first.
[[nodiscard]] std::string ExportFormat(std::string_view lines);

struct Certificate {
  bool isExport = false;     ///< it has the form of the program's own exports
  bool isUnchanged = false;  ///< of an export: its texts are those of a data set, digit by digit
  std::string kind;          ///< "DCC 3.3", "Text, UTF-8, separated by semicolons"
  CertificateHeader header;
  std::vector<CertificateItem> items;
  std::vector<FoundText> namedModels;  ///< models of the program that other header lines name
  std::vector<CertificateTable> tables;
  std::vector<std::string> doubts;         ///< what the user has to confirm, a sentence each
  std::vector<std::string> notes;          ///< what was not used and why, a sentence each
  std::vector<ReadingQuestion> questions;  ///< must be answered before the values are taken
};

/// The questions that these choices leave open.
[[nodiscard]] std::vector<ReadingQuestion> OpenQuestions(const Certificate& certificate,
                                                         const ReadingChoices& choices);

}  // namespace tarvell

#endif
