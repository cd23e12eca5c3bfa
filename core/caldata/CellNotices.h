// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CELLNOTICES_H
#define TARVELL_CORE_CALDATA_CELLNOTICES_H

#include <string>
#include <string_view>

#include "core/caldata/cifCaldata.h"

/// What an editor reports about values that are stored, or will be read back, differently from what
/// the user sees. Each function returns a sentence, or "" when there is nothing to report.
namespace tarvell {

/// The parts of a cell's text: "Ls/-0.5 nH" has "Ls/", "-0.5" and " nH". A text without a digit is
/// all `before`.
struct CellParts {
  std::string_view before;
  std::string_view number;
  std::string_view after;
};
[[nodiscard]] CellParts PartsOfCell(std::string_view text);

/// A value without blanks around it, and without these texts before and after its number.
[[nodiscard]] std::string_view WithoutUnit(std::string_view value, const CellAffixes& affixes);

/// Whether a cell holds zero, or no number at all.
[[nodiscard]] bool HoldsZero(std::string_view text);

/// Reports that `stored`, the text of a cell, is not the number `typed`, beyond the rounding of its
/// format. The unit of the cell may be typed with the number.
[[nodiscard]] std::string StoredDifferently(std::string_view typed, std::string_view stored);

/// Reports that the point `added`, "" for none, is not the number `typed` in the dialog for it.
[[nodiscard]] std::string PointTakenDifferently(std::string_view typed, std::string_view added);

/// Reports that `readBack` will be read back for a cell that shows `shown`.
[[nodiscard]] std::string ReadDifferently(std::string_view shown, std::string_view readBack);

/// Reports that only the first word of a header value, or of a member's serial number, is read
/// back.
[[nodiscard]] std::string HeaderReadDifferently(std::string_view field, std::string_view value);
/// The same for a serial or calibration number. Reports a comma, which the save would refuse.
[[nodiscard]] std::string NameReadDifferently(std::string_view field, std::string_view name);

/// Reports that a date does not exist, or that the file cannot keep its year. Day and year are the
/// texts of their boxes. If one of them is not a whole number, the save refuses it, and nothing is
/// reported here. `month` is a name, or "" for no month.
[[nodiscard]] std::string MissingDay(std::string_view field, std::string_view day,
                                     std::string_view month, std::string_view year);

}  // namespace tarvell

#endif
