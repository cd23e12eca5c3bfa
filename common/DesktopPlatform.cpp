// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/DesktopPlatform.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace tarvell {

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
  QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
  if (QFile::moveToTrash(QFile::decodeName(path.c_str()))) {
    return {};
  }
  return LinuxPlatform::Recycle(path);
}

}  // namespace tarvell
