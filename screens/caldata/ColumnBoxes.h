// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_COLUMNBOXES_H
#define TARVELL_SCREENS_CALDATA_COLUMNBOXES_H

#include <QComboBox>
#include <QLabel>
#include <QWidget>

#include <string>
#include <utility>
#include <vector>

#include "exchange/ImportPlan.h"
#include "exchange/ModelColumns.h"

namespace tarvell {

/// Shows or hides a box and its label.
void ShowPair(QWidget* label, QWidget* box, bool isShown);

/// The boxes in which the user chooses which column of a certificate goes into each column of a
/// page.
class ColumnBoxes {
 public:
  using Box = std::pair<QLabel*, QComboBox*>;

  ColumnBoxes() = default;
  explicit ColumnBoxes(std::vector<Box> boxes) : boxes_(std::move(boxes)) {}

  [[nodiscard]] const std::vector<Box>& All() const { return boxes_; }

  /// Shows the columns of a page and what is chosen for them, with captions in this language.
  void Show(const std::vector<ModelColumn>& columns, const Certificate& certificate,
            const PageChoice& choice, const std::string& language) const;

  /// Puts what the user chose into `choice`, whose table is `table`.
  void Take(const CertificateTable& table, PageChoice& choice) const;

 private:
  std::vector<Box> boxes_;
};

}  // namespace tarvell

#endif
