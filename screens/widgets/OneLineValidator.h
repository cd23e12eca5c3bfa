// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ONELINEVALIDATOR_H
#define TARVELL_SCREENS_WIDGETS_ONELINEVALIDATOR_H

#include <QLineEdit>
#include <QValidator>

namespace tarvell {

/// Lets a text box take what a spreadsheet copies: one line end after the pasted text is dropped. A
/// text with another line end is refused.
class OneLineValidator : public QValidator {
  Q_OBJECT

 public:
  explicit OneLineValidator(QLineEdit* box) : QValidator(box) {}

  /// Drops a line end that stands before the cursor, where a paste leaves it.
  static void DropPastedLineEnd(QString& text, int& position);

  [[nodiscard]] State validate(QString& text, int& position) const override;
};

}  // namespace tarvell

#endif
