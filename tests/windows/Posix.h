// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_WINDOWS_POSIX_H
#define TARVELL_TESTS_WINDOWS_POSIX_H

#ifdef __cplusplus

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

/// Calls of Linux that tests use and Windows does not have. Each fails, so that a test that needs
/// it fails, too: such tests are in not-run.txt, with the reason. The few that Windows has under
/// another name work.

using uid_t = unsigned;
using gid_t = unsigned;
using rlim_t = std::uint64_t;

inline int Missing() {
  errno = ENOSYS;
  return -1;
}

inline pid_t fork() {
  return Missing();
}
inline pid_t waitpid(pid_t, int*, int) {
  return Missing();
}
inline int kill(pid_t, int) {
  return Missing();
}
inline int pipe(int*) {
  return Missing();
}
template <typename Path>
int mkfifo(Path, unsigned) {
  return Missing();
}
template <typename Path>
int chown(Path, uid_t, gid_t) {
  return Missing();
}
template <typename Path>
int lchown(Path, uid_t, gid_t) {
  return Missing();
}
template <typename... Arguments>
int fcntl(Arguments...) {
  return Missing();
}
template <typename... Arguments>
int mount(Arguments...) {
  return Missing();
}
inline int unshare(int) {
  return Missing();
}
inline int setegid(gid_t) {
  return Missing();
}
inline int seteuid(uid_t) {
  return Missing();
}
// Nobody is root.
inline uid_t geteuid() {
  return 1000;
}
inline uid_t getuid() {
  return 1000;
}
inline gid_t getegid() {
  return 1000;
}
inline unsigned alarm(unsigned) {
  return 0;
}
inline int setenv(const char* name, const char* value, int) {
  return ::_putenv_s(name, value);
}
inline int unsetenv(const char* name) {
  return ::_putenv_s(name, "");
}
inline int chmod(const wchar_t* path, int mode) {
  return ::_wchmod(path, mode);
}
inline int open(const wchar_t* path, int flags, int mode = 0) {
  return ::_wopen(path, flags | _O_BINARY, mode);
}
inline int stat(const wchar_t* path, struct stat* facts) {
  struct _stat64i32 found {};
  const int result = ::_wstat64i32(path, &found);
  facts->st_mode = found.st_mode;
  facts->st_size = found.st_size;
  facts->st_nlink = found.st_nlink;
  facts->st_mtime = found.st_mtime;
  return result;
}

struct rlimit {
  rlim_t rlim_cur;
  rlim_t rlim_max;
};
inline int getrlimit(int, rlimit*) {
  return Missing();
}
inline int setrlimit(int, const rlimit*) {
  return Missing();
}
struct rusage {
  long ru_maxrss;
};
inline int getrusage(int, rusage*) {
  return Missing();
}
struct utsname {
  char sysname[8];
  char release[8];
  char nodename[8];
};
inline int uname(utsname*) {
  return Missing();
}

#define O_CLOEXEC 0
#define O_NONBLOCK 0
#define F_GETFL 3
#define CLONE_NEWNS 0
#define CLONE_NEWUSER 0
#define MS_REC 0
#define MS_PRIVATE 0
#define RLIMIT_FSIZE 0
#define RUSAGE_SELF 0
#define SIGKILL 9
#define SIGXFSZ 25
#define WNOHANG 1
#define S_ISGID 02000
#define S_ISUID 04000
#define WIFEXITED(status) ((status) == 0)
#define WEXITSTATUS(status) (status)
#define WIFSIGNALED(status) ((status) != 0)
#define WTERMSIG(status) (status)

#endif

#endif
