// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/DesktopPlatform.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>
#include <unistd.h>

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

/// A name that neither half of the trash has yet.
QString FreeName(const QString& trash, const QString& name) {
  QString free = name;
  for (int number = 2; QFileInfo::exists(trash + "/files/" + free) ||
                       QFileInfo::exists(trash + "/info/" + free + ".trashinfo");
       ++number) {
    free = name + "." + QString::number(number);
  }
  return free;
}

/// Copies a file, or a folder with all it holds, into the trash. `path` is native: it may be in no
/// encoding that the toolkit knows.
std::error_code CopyIntoTrash(const std::string& path, const QString& trash) {
  const std::filesystem::path source = std::filesystem::absolute(path);
  const QString name = FreeName(trash, QFile::decodeName(source.filename().string().c_str()));
  const std::filesystem::path copy = QFile::encodeName(trash + "/files/" + name).toStdString();
  std::error_code code;
  std::filesystem::copy(
      source, copy,
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
      code);
  if (code) {
    std::error_code ignored;
    std::filesystem::remove_all(copy, ignored);
    return code;
  }
  const QByteArray info =
      "[Trash Info]\nPath=" + QByteArray::fromStdString(source.string()).toPercentEncoding("/") +
      "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n";
  SaveFile(QFile::encodeName(trash + "/info/" + name + ".trashinfo").toStdString(),
           info.toStdString());
  return {};
}

/// Whether the folder that holds `path` lets an entry be taken out.
bool CanTakeFrom(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
  return ::access(folder.c_str(), W_OK) == 0;
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
    const QString name = QFile::decodeName(path.c_str());
    const bool isKnownName = QFile::encodeName(name).toStdString() == path;
    if (isKnownName && QFile::moveToTrash(name)) {
      return {};
    }
    if (!CanTakeFrom(path)) {
      return std::make_error_code(std::errc::permission_denied);
    }
    if (const std::error_code code = CopyIntoTrash(path, trash)) {
      return code;
    }
  }
  return LinuxPlatform::Recycle(path);
}

std::error_code DesktopPlatform::RecycleCopy(const std::string& path) {
  std::string target;
  if (const std::error_code code = ResolveLinks(path, target)) {
    return code;
  }
  const QString trash = HomeTrash();
  return trash.isEmpty() ? std::error_code() : CopyIntoTrash(target, trash);
}

}  // namespace tarvell
