// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_TESTTREE_H
#define TARVELL_TESTS_SUPPORT_TESTTREE_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell::test {

/// The system with another program folder.
class TestPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] std::filesystem::path ProgramFolder() override { return programFolder; }

  std::filesystem::path programFolder;
};

/// Drives of a test's own in a temporary folder, and an empty program folder. While it lives,
/// every path with a drive letter lies there; it leaves nothing behind.
class TestTree {
 public:
  TestTree();
  TestTree(const TestTree&) = delete;
  TestTree& operator=(const TestTree&) = delete;
  ~TestTree();

  /// Native path of a path text of the program.
  [[nodiscard]] std::filesystem::path Native(std::string_view path) const;

  /// Makes a folder with all its parents.
  void MakeFolders(std::string_view path) const;
  /// Writes a file exactly; its folder is made first.
  void Write(std::string_view path, std::string_view bytes) const;
  /// The whole file; a failure of the test when there is none.
  [[nodiscard]] std::string Read(std::string_view path) const;
  [[nodiscard]] bool Exists(std::string_view path) const;
  /// Names in a folder, sorted, hidden ones included.
  [[nodiscard]] std::vector<std::string> Names(std::string_view path) const;

  /// Native folder of the whole tree, and of the program in it.
  [[nodiscard]] const std::filesystem::path& Root() const { return root_; }
  [[nodiscard]] std::filesystem::path ProgramFolder() const { return root_ / "program"; }

  /// Copies a template of the program into the program folder.
  void InstallTemplate(std::string_view modelCode) const;

 private:
  std::filesystem::path root_;
  TestPlatform platform_;
};

/// Writes and reads a native file exactly.
void WriteNative(const std::filesystem::path& path, std::string_view bytes);
[[nodiscard]] std::string ReadNative(const std::filesystem::path& path);

/// Lines joined, each ended by CR LF, as data files have them.
[[nodiscard]] std::string Lines(const std::vector<std::string>& lines);

}  // namespace tarvell::test

#endif
