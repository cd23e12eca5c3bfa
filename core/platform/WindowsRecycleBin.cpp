// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <windows.h>

#include <filesystem>
#include <memory>
#include <shellapi.h>
#include <string>
#include <system_error>
#include <vector>

#include "core/platform/WindowsHandle.h"
#include "core/platform/WindowsPlatform.h"

namespace tarvell {

using windows::LastError;
using windows::ResultOf;

namespace {

struct FoundFile {
  std::wstring path;
  DWORD attributes = 0;
};

std::error_code FilesIn(const std::wstring& folder, std::vector<FoundFile>& files) {
  WIN32_FIND_DATAW entry{};
  HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return LastError();
  }
  const std::unique_ptr<void, BOOL (*)(HANDLE)> closed(search, &::FindClose);
  do {
    const std::wstring name = static_cast<const wchar_t*>(entry.cFileName);
    if (name != L"." && name != L"..") {
      files.push_back({folder + L"\\" + name, entry.dwFileAttributes});
    }
  } while (::FindNextFileW(search, &entry) != 0);
  return ::GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
}

/// Deletes a file, or a folder with its contents, for good. Links are deleted, not followed. The
/// library's own function does not end for some long paths.
std::error_code RemoveForGood(const FoundFile& file) {
  const bool isFolder = (file.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (isFolder && (file.attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    std::vector<FoundFile> inside;
    std::error_code code = FilesIn(file.path, inside);
    for (auto entry = inside.begin(); !code && entry != inside.end(); ++entry) {
      code = RemoveForGood(*entry);
    }
    if (code) {
      return code;
    }
  }
  if ((file.attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    ::SetFileAttributesW(file.path.c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  return ResultOf(isFolder ? ::RemoveDirectoryW(file.path.c_str())
                           : ::DeleteFileW(file.path.c_str()));
}

}  // namespace

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
    const std::wstring whole = windows::LongPath(path);
    return RemoveForGood({whole, ::GetFileAttributesW(whole.c_str())});
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
