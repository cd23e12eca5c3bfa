// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/Error.h"

#include <utility>

namespace tarvell {

namespace {

std::string ComposeMessage(const std::string& text, const std::string& path, int line) {
  std::string message = text;
  if (!path.empty()) {
    message += "\n\n" + path;
    if (line > 0) {
      message += ", line " + std::to_string(line);
    }
  }
  return message;
}

struct Explanation {
  ErrorKind kind;
  std::string reason;
};

Explanation Explain(std::error_code code) {
  if (code == std::errc::not_a_directory) {
    return {ErrorKind::NotFound,
            "where a folder is expected, there is something else. Check the folder, then try "
            "again."};
  }
  if (code == std::errc::no_such_file_or_directory) {
    return {ErrorKind::NotFound,
            "it, or the folder it belongs in, does not exist (any more). Check the folder, then "
            "try again."};
  }
  if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted) {
    return {ErrorKind::NoPermission,
            "you have no permission to do so. Ask whoever looks after this computer for access, "
            "then try again."};
  }
  if (code == std::errc::read_only_file_system) {
    return {ErrorKind::NoPermission, "the disk is read-only. Make it writable, then try again."};
  }
  if (code == std::errc::file_exists) {
    return {ErrorKind::Name,
            "there is one of this name already, perhaps in other upper and lower case. Choose "
            "another name."};
  }
  if (code == std::errc::no_space_on_device) {
    return {ErrorKind::System, "the disk is full. Free some space, then try again."};
  }
  if (code == std::errc::file_too_large) {
    return {ErrorKind::System,
            "the file would grow beyond the size that this computer allows. Ask whoever looks "
            "after it to raise the limit, then try again."};
  }
  if (code == std::errc::is_a_directory) {
    return {ErrorKind::NotAFile,
            "it is a folder, not a file. Rename or remove it, then try again."};
  }
  // Opening a socket, or a pipe that nobody reads for writing, is "no such device".
  if (code == std::errc::not_supported || code == std::errc::no_such_device_or_address) {
    return {ErrorKind::NotAFile,
            "it is a device or a pipe, not a file. Rename or remove it, then try again."};
  }
  if (code == std::errc::value_too_large) {
    return {ErrorKind::NotAFile,
            "it is larger than any data file. Put the right file in its place, then try again."};
  }
  if (code == std::errc::too_many_symbolic_link_levels) {
    return {ErrorKind::NotAFile,
            "a link on the way to it leads to itself. Remove that link, then try again."};
  }
  if (code == std::errc::filename_too_long) {
    return {ErrorKind::Name, "its name is too long. Choose a shorter one."};
  }
  return {ErrorKind::System, code.message() + ". Check the disk, then try again."};
}

}  // namespace

Error::Error(ErrorKind kind, std::string text, std::string path, int line)
    : kind_(kind),
      text_(std::move(text)),
      path_(std::move(path)),
      line_(line),
      message_(ComposeMessage(text_, path_, line_)) {}

Error Error::Located(const std::string& path, int line) const {
  return path_.empty() ? Error(kind_, text_, path, line) : *this;
}

Error SystemError(std::error_code code, const std::string& action, const std::string& path) {
  Explanation explanation = Explain(code);
  return {explanation.kind, "Cannot " + action + ": " + explanation.reason, path};
}

}  // namespace tarvell
