// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_BUSYPOINTER_H
#define TARVELL_SCREENS_WIDGETS_BUSYPOINTER_H

#include <QGuiApplication>

namespace tarvell {

/// Shows the busy pointer while it lives: around work on files, which a slow share may draw out,
/// and around that alone, so that no message is shown under it.
class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace tarvell

#endif
