// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_TESTTREE_H
#define TARVELL_TESTS_SUPPORT_TESTTREE_H

#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell::test {

/// Who works in a test, on which computer and when: 5 March 2026, 14:03:07 UTC.
inline constexpr const char* kUser = "anna";
inline constexpr const char* kHost = "bench3";
inline constexpr std::time_t kNow = 1772719387;

/// The system with another program folder and another user's folder.
class TestPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] std::filesystem::path ProgramFolder() override { return programFolder; }

  [[nodiscard]] std::filesystem::path UserFolder() override { return userFolder; }

  [[nodiscard]] std::string WindowsDirectory() override { return "c:\\windows"; }
  [[nodiscard]] std::string OwnWindowsDirectory() override { return {}; }

  [[nodiscard]] std::string UserName() override { return userName; }
  [[nodiscard]] std::string HostName() override { return kHost; }
  [[nodiscard]] std::time_t Now() override { return now; }

  std::filesystem::path programFolder;
  std::filesystem::path userFolder;
  std::string userName = kUser;
  std::time_t now = kNow;
};

/// A temporary folder with the drives and an empty program folder of a test. While it lives, every
/// path with a drive letter leads there. The destructor deletes it.
class TestTree {
 public:
  TestTree();
  TestTree(const TestTree&) = delete;
  TestTree& operator=(const TestTree&) = delete;
  ~TestTree();

  /// The path of the system for a path of the program.
  [[nodiscard]] std::filesystem::path Native(std::string_view path) const;

  /// Makes a folder and its parents.
  void MakeFolders(std::string_view path) const;
  /// Writes exactly these bytes to a file, and makes its folder.
  void Write(std::string_view path, std::string_view bytes) const;
  /// The content of a file. The test fails if it does not exist.
  [[nodiscard]] std::string Read(std::string_view path) const;
  [[nodiscard]] bool Exists(std::string_view path) const;
  /// Names in a folder, sorted, with hidden ones.
  [[nodiscard]] std::vector<std::string> Names(std::string_view path) const;

  /// The temporary folder, and the program folder in it.
  [[nodiscard]] const std::filesystem::path& Root() const { return root_; }
  [[nodiscard]] std::filesystem::path ProgramFolder() const { return root_ / "program"; }
  /// Where the user's drafts are. The folder does not exist at first.
  [[nodiscard]] std::filesystem::path UserFolder() const { return root_ / "user"; }

  /// Copies a template of the program into the program folder.
  void InstallTemplate(std::string_view modelCode) const;
  /// Puts the handbook into the program folder: by a link, where the system has links.
  void InstallHandbook(const std::filesystem::path& source) const;

 private:
  std::filesystem::path root_;
  TestPlatform platform_;
};

/// Writes and reads exactly the bytes of a file.
void WriteNative(const std::filesystem::path& path, std::string_view bytes);
[[nodiscard]] std::string ReadNative(const std::filesystem::path& path);

/// The lines, each with CR LF, as in data files.
[[nodiscard]] std::string Lines(const std::vector<std::string>& lines);

}  // namespace tarvell::test

#endif
