// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_DRAFTSTRIP_H
#define TARVELL_SCREENS_CALDATA_DRAFTSTRIP_H

#include <QDateTime>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <cstddef>

namespace tarvell {

/// The newest of the drafts that can be restored.
struct OfferedDraft {
  QDateTime written;
  QString serial;  ///< the serial number in it, "" where all drafts have the same
  std::size_t count = 1;
  bool isOutdated = false;  ///< whether the data set has been saved since
};

/// A strip that offers a draft: when it was written, whose it is, and the buttons Restore and
/// Discard. It is hidden while there is nothing to offer, takes no focus when it appears, and asks
/// nothing. A screen reader announces it.
class DraftStrip final : public QFrame {
  Q_OBJECT

 public:
  explicit DraftStrip(QWidget* parent = nullptr);

  void Offer(const OfferedDraft& draft);
  /// Hides the strip. If it has the focus, the focus goes to the next control.
  void Withdraw();

 signals:
  void Restore();
  void Discard();

 private:
  QLabel* text_;
};

}  // namespace tarvell

#endif
