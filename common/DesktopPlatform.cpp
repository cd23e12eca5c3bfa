// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/DesktopPlatform.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <unistd.h>

namespace tarvell {

namespace {

/// Whether files can be put into the home trash. The toolkit tries for ever where they cannot.
bool HomeTrashTakesFiles(const QString& data) {
  for (const char* folder : {"", "/Trash", "/Trash/files", "/Trash/info"}) {
    const QByteArray path = QFile::encodeName(data + folder);
    if (::faccessat(AT_FDCWD, path.constData(), W_OK | X_OK, AT_EACCESS) != 0 &&
        (*folder == '\0' || ::access(path.constData(), F_OK) == 0)) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::error_code DesktopPlatform::Recycle(const std::string& path) {
  EntryFacts facts;
  if (const std::error_code code = Facts(path, facts)) {
    return code;
  }
  // The trash would look at what a link leads to.
  if (facts.isLink) {
    return RemoveFile(path);
  }
  // The home trash is made on first use, but not the folder that it lies in.
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  QDir().mkpath(data);
  if (HomeTrashTakesFiles(data) && QFile::moveToTrash(QFile::decodeName(path.c_str()))) {
    return {};
  }
  return LinuxPlatform::Recycle(path);
}

}  // namespace tarvell
