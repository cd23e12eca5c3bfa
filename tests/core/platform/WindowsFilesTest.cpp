// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>
#include <windows.h>

#include <aclapi.h>
#include <algorithm>
#include <filesystem>
#include <sddl.h>
#include <set>
#include <shlobj.h>
#include <shlwapi.h>
#include <string>
#include <system_error>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "core/files/FolderNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/SystemName.h"
#include "core/platform/WindowsHandle.h"
#include "core/survey/ExportFile.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::TestTree;

constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN1)";

/// A save over a file, with what only Windows knows of files.
class SaveOnWindows : public testing::Test {
 protected:
  SaveOnWindows() { tree_.Write(kFile, "old"); }

  [[nodiscard]] std::wstring File() const { return (tree_.Native(kFolder) / "SN1").native(); }
  void SetAttributes(DWORD attributes) const {
    ASSERT_NE(::SetFileAttributesW(File().c_str(), attributes), 0);
  }

  /// The access rules of the file, as a text.
  [[nodiscard]] std::wstring Rules() const {
    PSECURITY_DESCRIPTOR found = nullptr;
    EXPECT_EQ(::GetNamedSecurityInfoW(File().c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                      nullptr, nullptr, nullptr, nullptr, &found),
              DWORD{ERROR_SUCCESS});
    wchar_t* text = nullptr;
    EXPECT_NE(::ConvertSecurityDescriptorToStringSecurityDescriptorW(
                  found, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr),
              0);
    const std::wstring rules = text == nullptr ? L"" : text;
    ::LocalFree(text);
    ::LocalFree(found);
    return rules;
  }

  TestTree tree_;
};

TEST_F(SaveOnWindows, KeepsAHiddenFileHidden) {
  SetAttributes(FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
  SaveFile(kFile, "new");
  EXPECT_EQ(::GetFileAttributesW(File().c_str()) & FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(tree_.Read(kFile), "new");
}

TEST_F(SaveOnWindows, LeavesAReadOnlyFile) {
  SetAttributes(FILE_ATTRIBUTE_READONLY);
  const Error error = ErrorOf([] { SaveFile(kFile, "new"); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree_.Read(kFile), "old");
  EXPECT_EQ(tree_.Names(kFolder), std::vector<std::string>{"SN1"});
  SetAttributes(FILE_ATTRIBUTE_NORMAL);
  SaveFile(kFile, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
}

TEST_F(SaveOnWindows, ReportsThatAnotherProgramHasTheFileOpen) {
  // As a program does that lets nobody else use the file, and as a virus scanner does.
  for (const DWORD others : {0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}) {
    tree_.Write(kFile, "old");
    const HANDLE other = ::CreateFileW(File().c_str(), GENERIC_READ, others, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    const Error error = ErrorOf([] { SaveFile(kFile, "new"); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_TRUE(Contains(error.Text(), "another program has it open")) << error.Text();
    ::CloseHandle(other);
    EXPECT_EQ(tree_.Read(kFile), "old");
    EXPECT_EQ(tree_.Names(kFolder), std::vector<std::string>{"SN1"});
    SaveFile(kFile, "new");
    EXPECT_EQ(tree_.Read(kFile), "new");
  }
}

TEST_F(SaveOnWindows, WorksAtAPathOfMoreThan260Characters) {
  std::string folder = kFolder;
  for (int depth = 0; depth < 6; ++depth) {
    folder += "\\" + std::string(60, static_cast<char>('a' + depth));
    MakeFolder(folder);
  }
  const std::string file = folder + "\\SN2";
  for (const std::string text : {"first", "second"}) {
    SaveFile(file, text);
    std::string bytes;
    EXPECT_EQ(ReadNativeFile(NativePath(file), bytes), std::error_code());
    EXPECT_EQ(bytes, text);
    std::set<std::string> names;
    EXPECT_EQ(ListNames(NativePath(folder), names), std::error_code());
    EXPECT_EQ(names, std::set<std::string>{"SN2"});
  }
  // The test's own folder cannot be deleted while it has such paths.
  const auto prefixed = [](const std::string& path) {
    return L"\\\\?\\" + NativePath(path).make_preferred().native();
  };
  EXPECT_NE(::DeleteFileW(prefixed(file).c_str()), 0);
  for (; folder != kFolder; folder.resize(folder.rfind('\\'))) {
    EXPECT_NE(::RemoveDirectoryW(prefixed(folder).c_str()), 0) << folder;
  }
}

TEST_F(SaveOnWindows, SaysThatAReadOnlyFileIsReadOnly) {
  SetAttributes(FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(
      ErrorOf([] { SaveFile(kFile, "new"); }).Text(),
      "Cannot save the file: it, or its disk, is read-only. Make it writable, then try again.");
  SetAttributes(FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SaveOnWindows, KeepsTheAccessRulesOfAFile) {
  // Everybody may do everything, unlike in other files of the folder.
  const std::wstring ofFolder = Rules();
  const std::wstring rules = ofFolder.substr(0, ofFolder.rfind('(')) + L"(A;;FA;;;WD)";
  PSECURITY_DESCRIPTOR given = nullptr;
  ASSERT_NE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(rules.c_str(), SDDL_REVISION_1,
                                                                   &given, nullptr),
            0);
  ASSERT_NE(::SetFileSecurityW(File().c_str(), DACL_SECURITY_INFORMATION, given), 0);
  ::LocalFree(given);
  const std::wstring before = Rules();
  EXPECT_NE(before, ofFolder);
  SaveFile(kFile, "new");
  EXPECT_EQ(Rules(), before);
  EXPECT_EQ(tree_.Read(kFile), "new");
}

/// The program on a Windows whose drives are its own.
class OnRealDrives : public testing::Test {
 protected:
  OnRealDrives() { SetDriveFolder(""); }

  /// A path with a drive letter, of the test's own folder.
  [[nodiscard]] std::string Path(const std::string& name) const {
    return (tree_.Root() / name).make_preferred().string();
  }

  TestTree tree_;
};

TEST_F(OnRealDrives, APathIsWhatWindowsHas) {
  for (const char* path :
       {R"(c:\calfactors\PX12A\SN1)", R"(\\server\share\calfactors)", R"(\\?\C:\calfactors)",
        R"(\\?\UNC\server\share\SN1)", R"(\calfactors)", "calfactors", "c:"}) {
    EXPECT_EQ(NativePath(path).string(), path);
    EXPECT_EQ(PathText(NativePath(path)), path);
  }
  EXPECT_EQ(FullPathText(R"(c:\calfactors\..\stations)"), R"(c:\stations)");
  EXPECT_EQ(FullPathText(R"(\\server\share\a\..\b)"), R"(\\server\share\b)");
  EXPECT_NO_THROW(CheckNamesNoShare(R"(\\server\share)"));
}

TEST_F(OnRealDrives, APathOfAnyLengthHasThePrefixOfLongPaths) {
  EXPECT_EQ(windows::LongPath(LR"(c:\calfactors/PX12A\.\SN1)"), LR"(\\?\c:\calfactors\PX12A\SN1)");
  EXPECT_EQ(windows::LongPath(LR"(\\server\share\SN1)"), LR"(\\?\UNC\server\share\SN1)");
  EXPECT_EQ(windows::LongPath(LR"(\\?\C:\SN1)"), LR"(\\?\C:\SN1)");
  for (const std::wstring path : {LR"(c:\SN1)", LR"(\\server\share\SN1)"}) {
    EXPECT_EQ(windows::PlainPath(windows::LongPath(path)), path);
  }
}

TEST_F(OnRealDrives, FilesAreSavedFoundAndReadWhateverTheirCaseAndLength) {
  const std::string folder = Path("calfactors");
  ASSERT_EQ(folder[1], ':');
  MakeFolder(folder);
  SaveFile(folder + "\\SN1", "first");
  SaveFile(Path("CALFACTORS") + "\\sn1", "second");
  std::set<std::string> names;
  EXPECT_EQ(ListNames(NativePath(folder), names), std::error_code());
  EXPECT_EQ(names, std::set<std::string>{"SN1"});
  EXPECT_EQ(test::ReadNative(tree_.Root() / "calfactors" / "SN1"), "second");
  EXPECT_TRUE(FolderExists(R"(\\?\)" + folder));
  SaveFile(R"(\\?\)" + folder + "\\SN2", "third");
  EXPECT_EQ(test::ReadNative(tree_.Root() / "calfactors" / "SN2"), "third");
}

/// The names in the recycle bin, as the desktop shows them.
std::vector<std::wstring> NamesInRecycleBin() {
  std::vector<std::wstring> names;
  IShellFolder* desktop = nullptr;
  IShellFolder* bin = nullptr;
  IEnumIDList* entries = nullptr;
  LPITEMIDLIST place = nullptr;
  EXPECT_EQ(::SHGetDesktopFolder(&desktop), S_OK);
  EXPECT_EQ(::SHGetFolderLocation(nullptr, CSIDL_BITBUCKET, nullptr, 0, &place), S_OK);
  EXPECT_EQ(desktop->BindToObject(place, nullptr, IID_IShellFolder,
                                  static_cast<void**>(static_cast<void*>(&bin))),
            S_OK);
  EXPECT_EQ(bin->EnumObjects(nullptr, SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, &entries), S_OK);
  LPITEMIDLIST entry = nullptr;
  while (entries != nullptr && entries->Next(1, &entry, nullptr) == S_OK) {
    STRRET text{};
    wchar_t* name = nullptr;
    if (bin->GetDisplayNameOf(entry, SHGDN_INFOLDER, &text) == S_OK &&
        ::StrRetToStrW(&text, entry, &name) == S_OK) {
      names.emplace_back(name);
      ::CoTaskMemFree(name);
    }
    ::CoTaskMemFree(entry);
  }
  if (entries != nullptr) {
    entries->Release();
  }
  ::CoTaskMemFree(place);
  bin->Release();
  desktop->Release();
  return names;
}

TEST_F(OnRealDrives, WhatIsDeletedIsInTheRecycleBin) {
  // Names that nothing else there has.
  const std::string unique = tree_.Root().filename().string();
  test::WriteNative(tree_.Root() / ("file-" + unique), "x");
  MakeFolder(Path("folder-" + unique));
  test::WriteNative(tree_.Root() / ("folder-" + unique) / "SN1", "x");
  for (const std::string& name : {"file-" + unique, "folder-" + unique}) {
    Recycle(Path(name));
    EXPECT_FALSE(std::filesystem::exists(tree_.Root() / name));
    const std::vector<std::wstring> names = NamesInRecycleBin();
    EXPECT_NE(std::ranges::find(names, std::wstring(name.begin(), name.end())), names.end());
  }
  EXPECT_EQ(ErrorOf([&] { Recycle(Path("file-" + unique)); }).Kind(), ErrorKind::NotFound);
}

TEST_F(OnRealDrives, AFileThatTheRecycleBinDoesNotTakeIsDeleted) {
  const std::string first = Path(std::string(60, 'a'));
  std::string folder = first;
  for (const char letter : {'b', 'c', 'd', 'e', 'f'}) {
    MakeFolder(folder);
    folder += "\\" + std::string(60, letter);
  }
  MakeFolder(folder);
  SaveFile(folder + "\\SN1", "x");
  Recycle(folder);
  EXPECT_FALSE(FolderExists(folder));
  // The test's own folder cannot be deleted while it has such paths.
  folder.resize(folder.rfind('\\'));
  for (; folder != first; folder.resize(folder.rfind('\\'))) {
    EXPECT_NE(::RemoveDirectoryW(windows::LongPath(NativePath(folder)).c_str()), 0) << folder;
  }
}

TEST_F(OnRealDrives, NoExportGoesIntoAShareThatStationsRead) {
  for (const std::string tree : {R"(\\server\share\calfactors)", R"(\\server\share\calfactors\)"}) {
    const std::vector<std::string> trees{tree};
    for (const char* target : {R"(\\SERVER\share\calfactors\PX12A\all.csv)",
                               R"(\\server\share\x\..\calfactors\PX12A\SN1)"}) {
      EXPECT_EQ(ErrorOf([&] { SaveExport(SystemName(target), "x", trees); }).Kind(),
                ErrorKind::Name)
          << target;
    }
  }
}

TEST(ShellError, HasThePlainMessageOfEachNumberOfTheShell) {
  const auto text = [](int result) {
    return SystemError(windows::ShellError(result), "delete it", "").Text();
  };
  const std::string refused = "Cannot delete it: you have no permission to do so.";
  for (const int number : {0x78, 0x10078, static_cast<int>(ERROR_ACCESS_DENIED)}) {
    EXPECT_TRUE(text(number).starts_with(refused)) << text(number);
  }
  EXPECT_EQ(text(0x75), "Cannot delete it: it was cancelled. To do it after all, try again.");
  EXPECT_TRUE(
      text(0x7C).starts_with("Cannot delete it: it, or the folder it belongs in, does not"));
  EXPECT_EQ(text(0x81), "Cannot delete it: its name is too long. Choose a shorter one.");
  EXPECT_TRUE(text(0x86).starts_with("Cannot delete it: it, or its disk, is read-only."));
  EXPECT_TRUE(
      text(ERROR_SHARING_VIOLATION).starts_with("Cannot delete it: another program has it"));
  for (const int unexplained : {0x71, 0x74, 0xB7, 0x10000, 0x10074}) {
    EXPECT_EQ(windows::ShellError(unexplained), std::errc::io_error) << unexplained;
  }
}

}  // namespace
}  // namespace tarvell
