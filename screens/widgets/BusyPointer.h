// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_BUSYPOINTER_H
#define TARVELL_SCREENS_WIDGETS_BUSYPOINTER_H

#include <QGuiApplication>

namespace tarvell {

/// Shows the busy pointer as long as the object exists. Use it around work on files, which may be
/// slow on a share, but never around a message or a screen.
class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace tarvell

#endif
