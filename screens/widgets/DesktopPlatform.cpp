// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/DesktopPlatform.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"

namespace tarvell {

namespace {

/// The trash of the user's home, "" where there is none and none can be made.
QString HomeTrash() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  QString trash = data + "/Trash";
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

std::error_code Copy(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code code;
  std::filesystem::copy(
      from, to,
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
      code);
  if (code) {
    std::error_code ignored;
    std::filesystem::remove_all(to, ignored);
  }
  return code;
}

std::error_code Move(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (!CurrentPlatform().Replace(from.string(), to.string())) {
    return {};
  }
  // Another disk.
  std::error_code code = Copy(from, to);
  if (!code) {
    std::filesystem::remove_all(from, code);
  }
  return code;
}

/// Copies a file that is replaced as soon as this returns: the copy is on the disk by then.
std::error_code CopyForGood(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::string bytes;
  std::error_code code = ReadNativeFile(from.string(), bytes);
  if (!code) {
    code = SaveNativeFile(to.string(), bytes);
  }
  if (!code) {
    const std::filesystem::perms mode = std::filesystem::status(from, code).permissions();
    if (!code) {
      std::filesystem::permissions(to, mode, code);
    }
  }
  if (code) {
    std::error_code ignored;
    std::filesystem::remove(to, ignored);
  }
  return code;
}

/// Fills a free place of the trash by `take`. The toolkit has no copy into it, and does not move
/// what has an odd name or, sometimes, lies on another disk.
std::error_code FillTrash(const std::filesystem::path& path, const QString& trash,
                          std::error_code (*take)(const std::filesystem::path& from,
                                                  const std::filesystem::path& to)) {
  const QString name =
      FreeName(trash, QFile::decodeName(QByteArray::fromStdString(path.filename().string())));
  const QString info = trash + "/info/" + name + ".trashinfo";
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(path, code);
  if (code) {
    return code;
  }
  const QByteArray origin = QByteArray::fromStdString(whole.lexically_normal().string());
  code = SaveNativeFile(QFile::encodeName(info).toStdString(),
                        ("[Trash Info]\nPath=" + origin.toPercentEncoding("/") + "\nDeletionDate=" +
                         QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n")
                            .toStdString());
  const std::filesystem::path kept = QFile::encodeName(trash + "/files/" + name).toStdString();
  if (!code) {
    code = take(path, kept);
  }
  std::error_code ignored;
  if (code && !std::filesystem::exists(kept, ignored)) {
    QFile::remove(info);
  }
  return code;
}

/// Whether the folder that holds `path` lets an entry be taken out.
bool CanTakeFrom(const std::filesystem::path& path) {
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(path, code);
  return !code && ::access(whole.parent_path().c_str(), W_OK) == 0;
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
    if (!CanTakeFrom(native)) {
      return std::make_error_code(std::errc::permission_denied);
    }
    return FillTrash(native, trash, &Move);
  }
  return LinuxPlatform::Recycle(path);
}

std::error_code DesktopPlatform::RecycleCopy(const std::string& path) {
  std::string target;
  if (const std::error_code code = ResolveLinks(path, target)) {
    return code;
  }
  const QString trash = HomeTrash();
  if (trash.isEmpty()) {
    return {};
  }
  return FillTrash(target, trash, &CopyForGood);
}

}  // namespace tarvell
