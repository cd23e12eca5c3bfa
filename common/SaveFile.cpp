// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/SaveFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <system_error>

#include "common/Error.h"
#include "common/Paths.h"
#include "common/Platform.h"
#include "common/ReadFile.h"

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

/// `touched` tells whether the file was opened at all.
[[nodiscard]] std::error_code OverwriteInPlace(const std::string& target, EntryKind kind,
                                               std::string_view bytes, bool& touched) {
  std::unique_ptr<OutputFile> file;
  std::error_code code = CurrentPlatform().OpenInPlace(target, file);
  touched = !code;
  if (!code) {
    code = WriteAll(*file, bytes);
  }
  if (!code) {
    code = file->CutHere();
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

/// For the targets that nothing can replace.
[[nodiscard]] std::error_code WriteInPlace(const std::string& path, const std::string& target,
                                           EntryKind kind, std::string_view bytes) {
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
                    "see to the disk and save again.",
                path);
  }
  return code;
}

/// Whether the folder, or the file's owner, admits no new file in the place of the old one.
bool AdmitsNoNewFile(std::error_code code) {
  return code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
         code == std::errc::read_only_file_system;
}

[[nodiscard]] std::error_code Save(const std::string& path, std::string_view bytes) {
  Platform& platform = CurrentPlatform();
  std::string target;
  EntryFacts facts;
  if (const std::error_code code = platform.ResolveLinks(NativePath(path), target)) {
    return code;
  }
  if (const std::error_code code = platform.Facts(target, facts)) {
    return code;
  }
  if (facts.kind == EntryKind::Folder) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  if (facts.kind == EntryKind::Other || facts.linkCount > 1) {
    return WriteInPlace(path, target, facts.kind, bytes);
  }

  const std::string folder = target.substr(0, target.find_last_of('/') + 1);
  std::string temporary;
  std::unique_ptr<OutputFile> file;
  std::error_code code = platform.CreateTemporary(folder.empty() ? "." : folder, temporary, file);
  if (!code && facts.kind == EntryKind::File) {
    code = file->TakeAttributesOf(target);
  }
  if (AdmitsNoNewFile(code) && facts.kind == EntryKind::File) {
    if (file) {
      file.reset();
      if (const std::error_code removed = platform.RemoveFile(temporary)) {
        return removed;
      }
    }
    return WriteInPlace(path, target, facts.kind, bytes);
  }
  if (!file) {
    return code;
  }
  if (!code) {
    code = Fill(*file, bytes);
  }
  if (!code) {
    code = platform.Replace(temporary, target);
  }
  if (code) {
    file.reset();
    // The failure that is told is the one that came first.
    static_cast<void>(platform.RemoveFile(temporary));
    return code;
  }
  return platform.SyncFolder(folder.empty() ? "." : folder);
}

}  // namespace

void SaveFile(const std::string& path, std::string_view bytes) {
  if (const std::error_code code = Save(path, bytes)) {
    const Error reason = SystemError(code, "save the file", path);
    throw Error(ErrorKind::WriteFailed, reason.Text(), path);
  }
}

}  // namespace tarvell
