// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ProgramLibrary.h"

#include <QCoreApplication>
#include <QLibrary>

namespace tarvell {

namespace {

QString& LibraryFolder() {
  static QString folder;
  return folder;
}

}  // namespace

LibraryFunction FunctionOf(const QString& library, const char* name) {
  const QString folder =
      LibraryFolder().isEmpty() ? QCoreApplication::applicationDirPath() : LibraryFolder();
  QLibrary file(folder + '/' + library);
  const QFunctionPointer function = file.resolve(name);
  return {function, function == nullptr ? file.errorString() : QString()};
}

void TakeLibrariesFrom(const QString& folder) {
  LibraryFolder() = folder;
}

}  // namespace tarvell
