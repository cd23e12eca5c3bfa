// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_QTPATH_H
#define TARVELL_SCREENS_WIDGETS_QTPATH_H

#include <QDir>
#include <QFile>
#include <QString>

#include <filesystem>
#include <type_traits>

#include "core/platform/SystemName.h"

/// Paths of the system and those of the toolkit. The bytes of a name in another encoding are kept.
namespace tarvell {

/// The texts that paths consist of: bytes on one system, UTF-16 on another.
[[nodiscard]] inline QString NativeText(const char* text) {
  return QFile::decodeName(text);
}
[[nodiscard]] inline QString NativeText(const wchar_t* text) {
  return QDir::fromNativeSeparators(QString::fromWCharArray(text));
}

[[nodiscard]] inline QString PathForQt(const std::filesystem::path& path) {
  return NativeText(path.c_str());
}

[[nodiscard]] inline std::filesystem::path SystemPath(const QString& path) {
  if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>) {
    // The toolkit's bytes have only the characters of one code page: another file would be meant.
    return path.toStdWString();
  } else {
    return SystemName(QFile::encodeName(path).toStdString());
  }
}

}  // namespace tarvell

#endif
