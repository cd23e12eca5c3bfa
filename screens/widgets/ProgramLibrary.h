// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_PROGRAMLIBRARY_H
#define TARVELL_SCREENS_WIDGETS_PROGRAMLIBRARY_H

#include <QFunctionPointer>
#include <QString>

/// The libraries of the program that are loaded when they are first needed, and stay loaded.
namespace tarvell {

struct LibraryFunction {
  QFunctionPointer function = nullptr;
  QString error;  ///< why there is no function
};
/// The function `name` of the library `library`, a file name without its ending.
[[nodiscard]] LibraryFunction FunctionOf(const QString& library, const char* name);

/// The libraries are in this folder, from now on; at first, and for "", in that of the program.
void TakeLibrariesFrom(const QString& folder);

}  // namespace tarvell

#endif
