// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_QTPATH_H
#define TARVELL_SCREENS_WIDGETS_QTPATH_H

#include <QFile>
#include <QString>

#include <filesystem>

/// Paths of the system and those of the toolkit. The bytes of a name in another encoding are kept.
namespace tarvell {

[[nodiscard]] inline QString PathForQt(const std::filesystem::path& path) {
  return QFile::decodeName(path.c_str());
}

[[nodiscard]] inline std::filesystem::path SystemPath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

}  // namespace tarvell

#endif
