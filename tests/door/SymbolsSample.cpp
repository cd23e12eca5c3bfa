// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compiled, never linked or run: names every way of writing that the look at the objects must
// find, most of them in ways that a search of sources passes by.

#include <QDataStream>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QImage>
#include <QImageWriter>
#include <QLibrary>
#include <QLockFile>
#include <QPdfWriter>
#include <QPicture>
#include <QPixmap>
#include <QPluginLoader>
#include <QProcess>
#include <QSaveFile>
#include <QSettings>
#include <QSharedMemory>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTextDocumentWriter>
#include <QTextStream>
#include <QUrl>
#include <QXmlStreamWriter>

#include <aio.h>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sched.h>
#include <spawn.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utime.h>

// What a build that checks lengths of buffers calls instead; no header tells them otherwise.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" int __open_2(const char* path, int flags);
extern "C" int __open64_2(const char* path, int flags);
extern "C" int __openat_2(int folder, const char* path, int flags);
extern "C" int __openat64_2(int folder, const char* path, int flags);
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace tarvell {

using Function = void (*)();

template <typename Any>
Function At(Any* function) {
  return reinterpret_cast<Function>(function);
}

/// The functions of the C library and the system, by their addresses.
const Function* OfTheSystem() {
  static const std::array<Function, 105> kFunctions = {
      At(::open),
      At(::open64),
      At(::openat),
      At(::openat64),
      At(::__open_2),
      At(::__open64_2),
      At(::__openat_2),
      At(::__openat64_2),
      At(::creat),
      At(::creat64),
      At(::fopen),
      At(::fopen64),
      At(::fdopen),
      At(::freopen),
      At(::freopen64),
      At(::tmpfile),
      At(::tmpfile64),
      At(::mktemp),
      At(::mkdtemp),
      At(::mkstemp),
      At(::mkstemp64),
      At(::mkstemps),
      At(::mkstemps64),
      At(::mkostemp),
      At(::mkostemp64),
      At(::mkostemps),
      At(::mkostemps64),
      At(::rename),
      At(::renameat),
      At(::renameat2),
      At(::remove),
      At(::unlink),
      At(::unlinkat),
      At(::mkdir),
      At(::mkdirat),
      At(::rmdir),
      At(::link),
      At(::linkat),
      At(::symlink),
      At(::symlinkat),
      At(::mkfifo),
      At(::mkfifoat),
      At(::mknod),
      At(::mknodat),
      At(::truncate),
      At(::truncate64),
      At(::ftruncate),
      At(::ftruncate64),
      At(::fallocate),
      At(::fallocate64),
      At(::posix_fallocate),
      At(::posix_fallocate64),
      At(::write),
      At(::writev),
      At(::pwrite),
      At(::pwrite64),
      At(::pwritev),
      At(::pwritev64),
      At(::pwritev2),
      At(::pwritev64v2),
      At(::sendfile),
      At(::sendfile64),
      At(::splice),
      At(::vmsplice),
      At(::copy_file_range),
      At(::aio_write),
      At(::aio_write64),
      At(::chmod),
      At(::fchmod),
      At(::fchmodat),
      At(::lchmod),
      At(::chown),
      At(::fchown),
      At(::lchown),
      At(::fchownat),
      At(::utime),
      At(::utimes),
      At(::lutimes),
      At(::futimes),
      At(::futimesat),
      At(::utimensat),
      At(::futimens),
      At(::setxattr),
      At(::lsetxattr),
      At(::fsetxattr),
      At(::posix_spawn),
      At(::posix_spawnp),
      At(::execl),
      At(::execle),
      At(::execlp),
      At(::execv),
      At(::execve),
      At(::execvp),
      At(::execvpe),
      At(::fexecve),
      At(::execveat),
      At(::system),
      At(::popen),
      At(::fork),
      At(::vfork),
      At(::clone),
      At(::syscall),
      At(::dlopen),
      At(::dlmopen),
      At(::dlsym),
  };
  return kFunctions.data();
}

namespace disk = std::filesystem;

void OfTheLanguage(const disk::path& path) {
  using disk::rename;
  rename(path, path);
  disk::copy(path, path);
  disk::copy_file(path, path);
  disk::copy_symlink(path, path);
  disk::create_directories(path);
  disk::create_directory(path);
  disk::create_directory_symlink(path, path);
  disk::create_hard_link(path, path);
  disk::create_symlink(path, path);
  disk::last_write_time(path, disk::file_time_type());
  disk::permissions(path, disk::perms::all);
  disk::remove(path);
  disk::remove_all(path);
  disk::resize_file(path, 0);
  const std::ofstream out(path);
  const std::fstream both(path);
  const std::ifstream in(path, std::ios::out);
  std::filebuf().open(path, std::ios::out);
}

void OfTheToolkit(const QString& name) {
  const auto file = std::make_unique<QFile>(name);
  const QFileDevice& device = *file;
  static_cast<void>(device.error());
  const QSaveFile safe(name);
  const QTemporaryFile temporary;
  const QTemporaryDir folder;
  const QLockFile lock(name);
  const QSettings settings;
  const QProcess process;
  const QTextStream text(file.get());
  const QDataStream data(file.get());
  const QXmlStreamWriter xml(file.get());
  const QImageWriter image(name);
  const QPdfWriter pdf(name);
  const QTextDocumentWriter document(name);
  const QSharedMemory memory(name);
  const QLibrary library(name);
  const QPluginLoader plugin(name);
  const QFileSystemModel model;
  QDesktopServices::openUrl(QUrl(name));
  QDir place;
  static_cast<void>(place.mkdir(name) && place.mkpath(name) && place.rmdir(name) &&
                    place.rmpath(name) && place.remove(name) && place.removeRecursively() &&
                    place.rename(name, name));
  QPicture picture;
  static_cast<void>(QPixmap().save(name) && QImage().save(name) && picture.save(name));
}

}  // namespace tarvell
