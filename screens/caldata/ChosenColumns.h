// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CHOSENCOLUMNS_H
#define TARVELL_SCREENS_CALDATA_CHOSENCOLUMNS_H

#include <QString>

#include <cstdint>
#include <map>
#include <string>

#include "exchange/ImportPlan.h"

namespace tarvell {

/// The columns that a user chose for tables of certificates: in one preview, and in those that were
/// accepted before. Tables with the same captions share them, and those without any have none.
class ChosenColumns {
 public:
  /// `target` must outlive it.
  explicit ChosenColumns(const ImportTarget& target) : target_(target) {}

  /// The columns for a table on a page, as MatchText gives them; "" for none.
  [[nodiscard]] std::string Of(const CertificateTable& table, std::int16_t page) const;

  void Choose(const CertificateTable& table, std::int16_t page, const ColumnMatch& match);

  /// Keeps what was chosen in this preview for the next ones.
  void Keep() const;

 private:
  /// The name under which the columns of a table are remembered for a page.
  [[nodiscard]] QString SettingOf(const CertificateTable& table, std::int16_t page) const;

  const ImportTarget& target_;
  std::map<QString, std::string> chosen_;  ///< in this preview, by their settings
};

}  // namespace tarvell

#endif
