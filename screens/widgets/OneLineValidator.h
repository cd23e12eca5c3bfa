// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ONELINEVALIDATOR_H
#define TARVELL_SCREENS_WIDGETS_ONELINEVALIDATOR_H

#include <QLineEdit>
#include <QValidator>

namespace tarvell {

/// Drops one line end after a pasted text, which spreadsheets add when they copy a cell. Refuses
/// any other text with a line end.
class OneLineValidator : public QValidator {
  Q_OBJECT

 public:
  explicit OneLineValidator(QLineEdit* box) : QValidator(box) {}

  /// Drops a line end directly before the cursor, which is where a paste ends.
  static void DropPastedLineEnd(QString& text, int& position);

  [[nodiscard]] State validate(QString& text, int& position) const override;
};

}  // namespace tarvell

#endif
