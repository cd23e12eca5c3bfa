// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/Error.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/platform/ProgramPath.h"

namespace tarvell {

namespace {

std::string ComposeMessage(const std::string& text, const std::string& path, int line) {
  std::string message = text;
  if (!path.empty()) {
    message += "\n\n" + ShownPath(path);
    if (line > 0) {
      message += ", line " + std::to_string(line);
    }
  }
  return message;
}

/// What a result of the operating system means, and what to do about it.
struct Explanation {
  std::errc result;
  ErrorKind kind;
  std::string_view reason;
};

constexpr std::string_view kRefused =
    "you have no permission to do so. Ask whoever looks after this computer for access, then try "
    "again.";
constexpr std::string_view kDevice =
    "it is a device or a pipe, not a file. Rename or remove it, then try again.";

constexpr std::array<Explanation, 16> kExplanations = {{
    {std::errc::not_a_directory, ErrorKind::NotFound,
     "where a folder is expected, there is something else. Check the folder, then try again."},
    {std::errc::no_such_file_or_directory, ErrorKind::NotFound,
     "it, or the folder it belongs in, does not exist (any more). Check the folder, then try "
     "again."},
    {std::errc::permission_denied, ErrorKind::NoPermission, kRefused},
    {std::errc::operation_not_permitted, ErrorKind::NoPermission, kRefused},
    {std::errc::read_only_file_system, ErrorKind::NoPermission,
     "it, or its disk, is read-only. Make it writable, then try again."},
    {std::errc::file_exists, ErrorKind::Name,
     "there already is one with this name, perhaps in different upper and lower case. Choose "
     "another "
     "name."},
    {std::errc::no_space_on_device, ErrorKind::System,
     "the disk is full. Free some space, then try again."},
    {std::errc::file_too_large, ErrorKind::System,
     "the file would grow beyond the size that this computer allows. Ask whoever looks after it to "
     "raise the limit, then try again."},
    {std::errc::is_a_directory, ErrorKind::NotAFile,
     "it is a folder, not a file. Rename or remove it, then try again."},
    {std::errc::not_supported, ErrorKind::NotAFile, kDevice},
    // Opening a socket, or a pipe without a reader.
    {std::errc::no_such_device_or_address, ErrorKind::NotAFile, kDevice},
    {std::errc::value_too_large, ErrorKind::NotAFile,
     "it is larger than any data file. Put the right file in its place, then try again."},
    {std::errc::too_many_symbolic_link_levels, ErrorKind::NotAFile,
     "a link on the way to it leads to itself. Remove that link, then try again."},
    {std::errc::device_or_resource_busy, ErrorKind::System,
     "another program has it open. Close it there, then try again."},
    {std::errc::operation_canceled, ErrorKind::System,
     "it was cancelled. To do it after all, try again."},
    {std::errc::filename_too_long, ErrorKind::Name, "its name is too long. Choose a shorter one."},
}};

/// A text without NULs, which would end it when it is shown. A file or the clipboard may hold one.
std::string Shown(std::string text) {
  std::ranges::replace(text, '\0', ' ');
  return text;
}

}  // namespace

Error::Error(ErrorKind kind, std::string text, std::string path, int line)
    : kind_(kind),
      text_(Shown(std::move(text))),
      path_(std::move(path)),
      line_(line),
      message_(ComposeMessage(text_, path_, line_)) {}

Error Error::Located(const std::string& path, int line) const {
  return path_.empty() ? Error(kind_, text_, path, line) : *this;
}

Error SystemError(std::error_code code, const std::string& action, std::string_view path) {
  const auto* known =
      std::ranges::find_if(kExplanations, [&](const Explanation& e) { return code == e.result; });
  if (known == kExplanations.end()) {
    return {ErrorKind::System,
            "Cannot " + action + ": " + code.message() + ". Check the disk, then try again.",
            std::string(path)};
  }
  return {known->kind, "Cannot " + action + ": " + std::string(known->reason), std::string(path)};
}

}  // namespace tarvell
