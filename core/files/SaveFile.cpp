// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/SaveFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <system_error>

#include "core/files/FileText.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

namespace {

[[nodiscard]] std::error_code WriteAll(OutputFile& file, std::string_view bytes) {
  while (!bytes.empty()) {
    std::size_t count = 0;
    if (const std::error_code code = file.Write(bytes, count)) {
      return code;
    }
    if (count == 0) {
      return std::make_error_code(std::errc::io_error);
    }
    bytes.remove_prefix(count);
  }
  return {};
}

[[nodiscard]] std::error_code CheckLength(OutputFile& file, std::size_t expected) {
  std::uintmax_t length = 0;
  if (const std::error_code code = file.Length(length)) {
    return code;
  }
  return length == expected ? std::error_code() : std::make_error_code(std::errc::io_error);
}

/// Writes, checks, syncs and closes a temporary file.
[[nodiscard]] std::error_code Fill(OutputFile& file, std::string_view bytes) {
  std::error_code code = WriteAll(file, bytes);
  if (!code) {
    code = CheckLength(file, bytes.size());
  }
  if (!code) {
    code = file.Sync();
  }
  return code ? code : file.Close();
}

/// Sets `touched` to whether the file was opened.
[[nodiscard]] std::error_code OverwriteInPlace(const std::filesystem::path& target, EntryKind kind,
                                               std::string_view bytes, bool& touched) {
  std::unique_ptr<OutputFile> file;
  std::error_code code = CurrentPlatform().OpenInPlace(target, file);
  touched = !code;
  if (!code) {
    code = WriteAll(*file, bytes);
  }
  if (!code) {
    code = file->TruncateHere();
  }
  if (!code && kind == EntryKind::File) {
    code = CheckLength(*file, bytes.size());
  }
  if (!code) {
    code = file->Sync();
  }
  if (!code) {
    code = file->Close();
  }
  return code;
}

/// Writes a target that cannot be replaced by another file.
[[nodiscard]] std::error_code WriteInPlace(const std::filesystem::path& target, EntryKind kind,
                                           std::string_view bytes) {
  bool touched = false;
  if (kind != EntryKind::File) {
    return OverwriteInPlace(target, kind, bytes, touched);
  }
  std::string earlier;
  if (const std::error_code code = ReadNativeFile(target, earlier)) {
    return code;
  }
  const std::error_code code = OverwriteInPlace(target, kind, bytes, touched);
  if (code && touched && OverwriteInPlace(target, kind, earlier, touched)) {
    throw Error(ErrorKind::WriteFailed,
                "Saving failed (" + code.message() +
                    "), and the earlier content could not be put back. Keep this screen open, "
                    "free or repair the disk, and save again.",
                PathText(target));
  }
  return code;
}

/// Whether the folder, or the owner of the file, does not permit a replacement.
bool ForbidsReplacement(std::error_code code) {
  return code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
         code == std::errc::read_only_file_system;
}

}  // namespace

std::error_code SaveNativeFile(const std::filesystem::path& native, std::string_view bytes,
                               const BeforeSaving& before) {
  Platform& platform = CurrentPlatform();
  std::filesystem::path target;
  EntryFacts facts;
  if (const std::error_code code = platform.ResolveLinks(native, target)) {
    return code;
  }
  if (const std::error_code code = platform.Facts(target, facts)) {
    return code;
  }
  if (facts.kind == EntryKind::Folder) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  if (before) {
    before(target, facts.kind);
  }
  if (facts.kind == EntryKind::Other || facts.linkCount > 1) {
    return WriteInPlace(target, facts.kind, bytes);
  }

  const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
  const bool replaces = facts.kind == EntryKind::File;
  std::filesystem::path temporary;
  std::unique_ptr<OutputFile> file;
  std::error_code code = platform.CreateTemporary(folder, temporary, file);
  const bool created = !code;
  if (!code && replaces) {
    code = file->TakeAttributesOf(target);
  }
  bool refused = ForbidsReplacement(code);
  if (!code) {
    code = Fill(*file, bytes);
  }
  if (!code) {
    code = platform.Replace(temporary, target);
    // A folder in which users may replace only their own files, or none.
    refused = ForbidsReplacement(code);
  }
  if (!code) {
    return platform.SyncFolder(folder);
  }
  file.reset();
  const std::error_code removed = created ? platform.RemoveFile(temporary) : std::error_code();
  if (!refused || !replaces) {
    // The first failure is the one to report.
    return code;
  }
  return removed ? removed : WriteInPlace(target, facts.kind, bytes);
}

std::error_code AppendLine(const std::filesystem::path& native, std::string_view line) {
  std::unique_ptr<OutputFile> file;
  bool beginsLine = true;
  std::uintmax_t length = 0;
  std::error_code code = CurrentPlatform().OpenForAppending(native, file, beginsLine);
  if (!code) {
    code = file->Length(length);
  }
  if (code) {
    return code;
  }
  FileText text;
  if (!beginsLine) {
    text.RawLine("");
  }
  text.RawLine(line);
  code = WriteAll(*file, text.Bytes());
  if (!code) {
    code = CheckLength(*file, static_cast<std::size_t>(length) + text.Bytes().size());
  }
  if (!code) {
    code = file->Sync();
  }
  return code ? code : file->Close();
}

void SaveFile(std::string_view path, std::string_view bytes, const BeforeSaving& before) {
  if (const std::error_code code = SaveNativeFile(NativePath(path), bytes, before)) {
    const Error reason = SystemError(code, "save the file", path);
    throw Error(ErrorKind::WriteFailed, reason.Text(), std::string(path));
  }
}

}  // namespace tarvell
