// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/DesktopPlatform.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>
#include <string>

#include "common/SaveFile.h"

namespace tarvell {

namespace {

/// The trash of the user's home, "" where there is none and none can be made.
QString HomeTrash() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString trash = data + "/Trash";
  for (const QString& folder : {trash + "/files", trash + "/info"}) {
    if (data.isEmpty() || !QDir().mkpath(folder) || !QFileInfo(folder).isWritable()) {
      return {};
    }
  }
  return trash;
}

// So that a number and the ending of its other half fit behind it.
constexpr qsizetype kMostNameBytes = 200;

/// Whether the toolkit can move what has this name. It cannot tell a name that is no UTF-8, and
/// never comes back from looking for the free place of one that is too long.
bool TakesName(const std::string& name) {
  const QByteArray bytes = QByteArray::fromStdString(name);
  return bytes.size() <= kMostNameBytes && QFile::encodeName(QFile::decodeName(bytes)) == bytes;
}

/// A name that neither half of the trash has yet.
QString FreeName(const QString& trash, QString name) {
  while (QFile::encodeName(name).size() > kMostNameBytes) {
    name.chop(1);
  }
  QString free = name;
  for (int number = 2; QFileInfo::exists(trash + "/files/" + free) ||
                       QFileInfo::exists(trash + "/info/" + free + ".trashinfo");
       ++number) {
    free = name + "." + QString::number(number);
  }
  return free;
}

/// Takes into the trash what the toolkit does not: what lies on another disk, or has an odd name.
std::error_code TakeIntoTrash(const std::filesystem::path& path, const QString& trash) {
  const QString name =
      FreeName(trash, QFile::decodeName(QByteArray::fromStdString(path.filename().string())));
  const QString info = trash + "/info/" + name + ".trashinfo";
  const QByteArray origin =
      QByteArray::fromStdString(std::filesystem::absolute(path).lexically_normal().string());
  SaveFile(QFile::encodeName(info).toStdString(),
           ("[Trash Info]\nPath=" + origin.toPercentEncoding("/") +
            "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n")
               .toStdString());
  const std::filesystem::path kept = QFile::encodeName(trash + "/files/" + name).toStdString();
  std::error_code code;
  std::filesystem::rename(path, kept, code);
  if (!code) {
    return code;
  }
  std::filesystem::copy(
      path, kept,
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
      code);
  std::error_code ignored;
  if (!code) {
    std::filesystem::remove_all(path, code);
    return code;
  }
  std::filesystem::remove_all(kept, ignored);
  QFile::remove(info);
  return code;
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
  const QString trash = HomeTrash();
  if (!trash.isEmpty()) {
    const std::filesystem::path native = path;
    if (TakesName(native.filename().string()) &&
        QFile::moveToTrash(QFile::decodeName(path.c_str()))) {
      return {};
    }
    if (!QFileInfo(QFile::decodeName(native.parent_path().c_str())).isWritable()) {
      return std::make_error_code(std::errc::permission_denied);
    }
    return TakeIntoTrash(native, trash);
  }
  return LinuxPlatform::Recycle(path);
}

}  // namespace tarvell
