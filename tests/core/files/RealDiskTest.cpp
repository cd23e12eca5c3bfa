// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "support/ErrorOf.h"
#include "support/RealDisk.h"
#include "support/TestTree.h"

/// Saves that the operating system itself refuses: the system's own platform must report them.
namespace tarvell {
namespace {

using test::TestTree;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(RealDisk, AFileThatMayNotGrowSoFarIsAnErrorAndStaysAsItWas) {
  const TestTree tree;
  const std::string old(500, 'o');
  tree.Write("c:\\a\\SN1", old);
  tree.Write("c:\\a\\SN2", old);
  fs::create_hard_link(tree.Native("c:\\a\\SN2"), tree.Native("c:\\a\\SN3"));  // written in place
  for (const char* path : {"c:\\a\\SN1", "c:\\a\\SN2", "c:\\a\\SN9"}) {
    const Error error = test::ErrorOf([&] {
      const test::FileSizeLimit limit(1000);
      SaveFile(path, std::string(1001, 'n'));
    });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << path;
    EXPECT_EQ(tree.Names("c:\\a"), (Names{"SN1", "SN2", "SN3"}));
  }
  EXPECT_EQ(tree.Read("c:\\a\\SN1"), old);
  EXPECT_EQ(tree.Read("c:\\a\\SN2"), old);
  {
    const test::FileSizeLimit limit(1000);
    SaveFile("c:\\a\\SN1", std::string(1000, 'n'));
  }
  EXPECT_EQ(tree.Read("c:\\a\\SN1"), std::string(1000, 'n'));
}

/// What is wrong after a save that a full disk must refuse, "" if nothing is.
std::string AfterRefusal(const TestTree& tree, const std::string& path, const std::string& bytes,
                         const std::string& old) {
  const std::string what = path + ", " + std::to_string(bytes.size()) + " bytes: ";
  bool isRefused = false;
  try {
    SaveFile(path, bytes);
  } catch (const Error& error) {
    isRefused = error.Kind() == ErrorKind::WriteFailed;
  }
  if (!isRefused) {
    return what + "no error of a failed write\n";
  }
  const bool isAsBefore = old.empty() ? !tree.Exists(path) : tree.Read(path) == old;
  const bool hasSameNames = tree.Names("c:\\full") == Names{"SN1", "SN2", "SN3", "filler"};
  return isAsBefore && hasSameNames ? "" : what + "the files are not as they were\n";
}

std::string AfterAllRefusals(const TestTree& tree, const std::string& old,
                             const std::string& bytes) {
  return AfterRefusal(tree, "c:\\full\\SN1", bytes, old) +
         AfterRefusal(tree, "c:\\full\\SN2", bytes, old) +
         AfterRefusal(tree, "c:\\full\\SN9", bytes, "");
}

/// Runs in a process of its own, which cannot use the checks of the test.
std::string OnAFullDisk(const TestTree& tree) {
  const std::string trouble = test::MountTinyDisk(tree.Native("c:\\full"));
  if (!trouble.empty()) {
    return "this test needs a disk that can be filled, and " + trouble;
  }
  const std::string old(100, 'o');
  const std::string large(40000, 'n');
  tree.Write("c:\\full\\SN1", old);
  tree.Write("c:\\full\\SN2", old);
  fs::create_hard_link(tree.Native("c:\\full\\SN2"), tree.Native("c:\\full\\SN3"));
  const fs::path filler = tree.Native("c:\\full\\filler");
  if (!test::FillDisk(filler)) {
    return "the disk could not be filled";
  }
  std::string wrong =
      AfterRefusal(tree, "c:\\full\\SN1", "ten bytes.", old) + AfterAllRefusals(tree, old, large);
  fs::resize_file(filler, fs::file_size(filler) - 8192);  // room for the beginning of a file
  wrong += AfterAllRefusals(tree, old, large);
  fs::remove(filler);
  SaveFile("c:\\full\\SN1", large);
  return wrong + (tree.Read("c:\\full\\SN1") == large ? "" : "with room again: another content");
}

TEST(RealDisk, AFullDiskIsAnErrorAndEveryFileStaysAsItWas) {
  const TestTree tree;
  tree.MakeFolders("c:\\full");
  test::InAnotherProcess([&] { tree.Write("c:\\result", "wrong: " + OnAFullDisk(tree)); });
  EXPECT_EQ(tree.Read("c:\\result"), "wrong: ");
}

}  // namespace
}  // namespace tarvell
