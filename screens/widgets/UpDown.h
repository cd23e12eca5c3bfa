// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_UPDOWN_H
#define TARVELL_SCREENS_WIDGETS_UPDOWN_H

#include <QLineEdit>
#include <QWidget>

namespace tarvell {

/// The two arrow buttons beside a number's text box, its buddy. Box and spinner follow each other:
/// an arrow, or the Up or Down key in the box, writes the next number into the box; a number typed
/// there becomes the value, held within the range. The box's own text is never corrected.
class UpDown final : public QWidget {
  Q_OBJECT

 public:
  explicit UpDown(QWidget* parent = nullptr);

  void SetBuddy(QLineEdit* box);

  void SetRange(int minimum, int maximum);
  /// Leaves the box as it is.
  void SetMaximum(int maximum);
  [[nodiscard]] int Minimum() const { return minimum_; }
  [[nodiscard]] int Maximum() const { return maximum_; }

  [[nodiscard]] int Value() const { return value_; }
  /// Holds `value` within the range and writes it into the box.
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
