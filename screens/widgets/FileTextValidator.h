// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_FILETEXTVALIDATOR_H
#define TARVELL_SCREENS_WIDGETS_FILETEXTVALIDATOR_H

#include <QLineEdit>
#include <QValidator>

namespace tarvell {

/// Refuses typed or pasted text that a line of a data file cannot hold. Drops one line end after a
/// pasted text.
class FileTextValidator final : public QValidator {
  Q_OBJECT

 public:
  /// Makes `box` refuse such text and show a message that names the character.
  static void Attach(QLineEdit* box);

  [[nodiscard]] State validate(QString& text, int& position) const override;

 private:
  explicit FileTextValidator(QLineEdit* box);

  void ShowRefusal();

  QLineEdit* box_;
  mutable QString refusal_;  ///< describes the refused character
  QList<uint> shown_;        ///< the characters in the box
};

}  // namespace tarvell

#endif
