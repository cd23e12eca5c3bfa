// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_UPDOWN_H
#define TARVELL_SCREENS_WIDGETS_UPDOWN_H

#include <QLineEdit>
#include <QWidget>

namespace tarvell {

/// Replaces the text of a box as a user does: whatever follows typing follows this too, and the box
/// can undo it.
void TypeInto(QLineEdit* box, int number);

/// Two arrow buttons for a text box with a number, the buddy. An arrow button, or the Up or Down
/// key in the box, writes the next number into the box. A number typed into the box becomes the
/// value, limited to the range. The typed text is never corrected.
class UpDown final : public QWidget {
  Q_OBJECT

 public:
  explicit UpDown(QWidget* parent = nullptr);

  void SetBuddy(QLineEdit* box);

  void SetRange(int minimum, int maximum);
  /// Does not change the text of the box.
  void SetMaximum(int maximum);
  [[nodiscard]] int Maximum() const { return maximum_; }

  [[nodiscard]] int Value() const { return value_; }
  /// Limits `value` to the range and writes it into the box.
  void SetValue(int value);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FollowBox(const QString& text);

  QLineEdit* box_ = nullptr;
  int minimum_ = 0;
  int maximum_ = 0;
  int value_ = 0;
};

}  // namespace tarvell

#endif
