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
#include <optional>
#include <string>
#include <string_view>

#include "core/files/SaveFile.h"
#include "core/text/PercentEscapes.h"
#include "screens/widgets/QtPath.h"

namespace tarvell {

namespace {

/// The two folders of a desktop's trash.
struct TrashFolders {
  std::filesystem::path files;
  std::filesystem::path info;  ///< where each entry of `files` came from
};

std::filesystem::path InfoOf(const TrashFolders& trash, const std::filesystem::path& name) {
  return trash.info / (name.string() + ".trashinfo");
}

/// The trash in the user's home; nullopt if it does not exist and cannot be made.
std::optional<TrashFolders> HomeTrash() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const std::filesystem::path trash = SystemPath(data) / "Trash";
  for (const char* name : {"files", "info"}) {
    const QString folder = PathForQt(trash / name);
    if (data.isEmpty() || !QDir().mkpath(folder) || !QFileInfo(folder).isWritable()) {
      return std::nullopt;
    }
  }
  return TrashFolders{trash / "files", trash / "info"};
}

// Leaves room for a number and an ending in the longest name that a file can have.
constexpr qsizetype kNameBytesLimit = 200;

/// Whether the toolkit can move an entry of this name to the trash. It does not find an entry whose
/// name is not UTF-8. For a name that is too long, it never stops looking for a free name.
bool TakesName(const std::string& name) {
  const QByteArray bytes = QByteArray::fromStdString(name);
  return bytes.size() <= kNameBytesLimit && QFile::encodeName(QFile::decodeName(bytes)) == bytes;
}

/// A name that neither folder of the trash has yet.
std::filesystem::path FreeName(const TrashFolders& trash, QString name) {
  while (QFile::encodeName(name).size() > kNameBytesLimit) {
    name.chop(1);
  }
  QString free = name;
  for (int number = 2; QFileInfo::exists(PathForQt(trash.files / SystemPath(free))) ||
                       QFileInfo::exists(PathForQt(InfoOf(trash, SystemPath(free))));
       ++number) {
    free = name + "." + QString::number(number);
  }
  return SystemPath(free);
}

/// A path as the format writes it: as in a URL, with "/" between folders on every system.
std::string InUrl(std::string_view path) {
  return PercentEscaped(path, [](unsigned char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.' || byte == '_' ||
           byte == '~' || byte == '/';
  });
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
  if (!CurrentPlatform().Replace(from, to)) {
    return {};
  }
  // The trash may be on another disk.
  std::error_code code = Copy(from, to);
  if (!code) {
    std::filesystem::remove_all(from, code);
  }
  return code;
}

/// Moves an entry into the trash under a free name. The toolkit cannot move an entry of every name,
/// and cannot always move from another disk.
std::error_code MoveToTrash(const std::filesystem::path& path, const TrashFolders& trash) {
  const std::filesystem::path name = FreeName(trash, PathForQt(path.filename()));
  const std::filesystem::path info = InfoOf(trash, name);
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(path, code);
  if (code) {
    return code;
  }
  code = SaveNativeFile(
      info, "[Trash Info]\nPath=" + InUrl(whole.lexically_normal().string()) + "\nDeletionDate=" +
                QDateTime::currentDateTime().toString(Qt::ISODate).toStdString() + "\n");
  const std::filesystem::path kept = trash.files / name;
  if (!code) {
    code = Move(path, kept);
  }
  std::error_code ignored;
  if (code && !std::filesystem::exists(kept, ignored)) {
    std::filesystem::remove(info, ignored);
  }
  return code;
}

}  // namespace

std::error_code DesktopPlatform::Recycle(const std::filesystem::path& path) {
  if (HasRecycleBin()) {
    return ForwardingPlatform::Recycle(path);
  }
  EntryFacts facts;
  if (const std::error_code code = Facts(path, facts)) {
    return code;
  }
  // The toolkit would follow a link.
  if (facts.isLink) {
    return RemoveFile(path);
  }
  const std::optional<TrashFolders> trash = HomeTrash();
  if (!trash) {
    return ForwardingPlatform::Recycle(path);
  }
  if (TakesName(path.filename().string()) && QFile::moveToTrash(PathForQt(path))) {
    return {};
  }
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(path, code);
  if (!code) {
    // Otherwise the error would be that of the copy in the trash.
    code = MayChange(whole.parent_path());
  }
  return code ? code : MoveToTrash(path, *trash);
}

}  // namespace tarvell
