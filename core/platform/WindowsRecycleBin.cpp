// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <windows.h>

#include <filesystem>
#include <shellapi.h>
#include <string>
#include <system_error>

#include "core/platform/WindowsHandle.h"
#include "core/platform/WindowsPlatform.h"

namespace tarvell {

std::error_code WindowsPlatform::Recycle(const std::filesystem::path& path) {
  EntryFacts facts;
  if (const std::error_code code = Facts(path, facts)) {
    return code;
  }
  if (facts.isLink) {
    return RemoveFile(path);
  }
  if (facts.kind == EntryKind::None) {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }
  std::wstring names = windows::PlainPath(windows::LongPath(path));
  if (names.size() >= MAX_PATH) {
    // The recycle bin does not take longer paths.
    std::error_code code;
    std::filesystem::remove_all(windows::LongPath(path), code);
    return code;
  }
  names += L'\0';  // the end of the list of names
  SHFILEOPSTRUCTW operation{};
  operation.wFunc = FO_DELETE;
  operation.pFrom = names.c_str();
  // Where there is no recycle bin, as on a share, the shell asks before it deletes for good.
  operation.hwnd = ::GetActiveWindow();
  operation.fFlags =
      FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_WANTNUKEWARNING;
  const int result = ::SHFileOperationW(&operation);
  if (result != 0) {
    return windows::ShellError(result);
  }
  return operation.fAnyOperationsAborted != 0 ? std::make_error_code(std::errc::operation_canceled)
                                              : std::error_code();
}

bool WindowsPlatform::HasRecycleBin() {
  return true;
}

}  // namespace tarvell
