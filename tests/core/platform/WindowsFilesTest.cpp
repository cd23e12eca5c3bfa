// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "core/files/FolderNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
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

}  // namespace
}  // namespace tarvell
