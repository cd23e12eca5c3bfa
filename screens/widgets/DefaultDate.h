// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DEFAULTDATE_H
#define TARVELL_SCREENS_WIDGETS_DEFAULTDATE_H

#include <QObject>

#include "screens/widgets/DateBoxes.h"

namespace tarvell {

/// Marks a date that nobody has entered yet: its boxes are slanted, and a screen reader says so.
/// The mark goes when one of the boxes changes.
class DefaultDate final : public QObject {
  Q_OBJECT

 public:
  /// The boxes must live as long as `parent`.
  DefaultDate(const DateControls& date, QObject* parent);

  void Mark(bool isDefault);
  [[nodiscard]] bool IsDefault() const { return isDefault_; }

 signals:
  void Entered();

 private:
  DateControls date_;
  bool isDefault_ = false;
};

/// Whether the date of this box for the day is marked as one that nobody has entered.
[[nodiscard]] bool IsDefaultDate(const QLineEdit* day);

}  // namespace tarvell

#endif
