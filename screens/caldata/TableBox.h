// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_TABLEBOX_H
#define TARVELL_SCREENS_CALDATA_TABLEBOX_H

#include <QComboBox>
#include <QString>

#include <cstddef>
#include <string>
#include <vector>

#include "exchange/ImportPlan.h"

namespace tarvell {

/// "3 rows"
[[nodiscard]] QString RowsText(std::size_t count);

/// The box in which the user chooses which tables of a certificate go into a page.
class TableBox {
 public:
  TableBox() = default;
  explicit TableBox(QComboBox* box) : box_(box) {}

  /// Shows the tables of a certificate, those that go in together, and what is chosen for a page.
  void Show(const Certificate& certificate, const PageChoice& choice, const std::string& language);

  /// The tables of an entry.
  [[nodiscard]] const std::vector<std::size_t>& TablesOf(int entry) const;
  /// Whether an entry leaves the choice to be made.
  [[nodiscard]] bool IsOpen(int entry) const { return entry == 0 && offersOpen_; }

 private:
  void Offer(std::vector<std::size_t> tables, const QString& name);

  QComboBox* box_ = nullptr;
  std::vector<std::vector<std::size_t>> offered_;  ///< the tables of each entry
  bool offersOpen_ = false;                        ///< whether the first entry chooses nothing yet
};

}  // namespace tarvell

#endif
