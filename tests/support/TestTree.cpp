// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TestTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "core/files/Paths.h"
#include "core/platform/Platform.h"

namespace tarvell::test {

TestTree::TestTree() {
  const std::filesystem::path temporary = std::filesystem::temp_directory_path();
  std::random_device random;
  do {
    root_ = temporary / ("tarvell-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(root_));
  std::filesystem::create_directories(root_ / "drives" / "c");
  std::filesystem::create_directories(ProgramFolder());
  platform_.programFolder = ProgramFolder();
  platform_.userFolder = UserFolder();
  SetCurrentPlatform(&platform_);
  SetDriveFolder(root_ / "drives");
}

TestTree::~TestTree() {
  SetCurrentPlatform(nullptr);
  SetDriveFolder("");
  std::error_code code;
  std::filesystem::remove_all(root_, code);
}

std::filesystem::path TestTree::Native(std::string_view path) const {
  // Worked out here, not by the code under test.
  std::string native(path.substr(2));
  std::replace(native.begin(), native.end(), '\\', '/');
  const std::filesystem::path whole = std::u8string(native.begin(), native.end());
  return root_ / "drives" / std::string(1, path[0]) / whole.relative_path();
}

void TestTree::MakeFolders(std::string_view path) const {
  std::filesystem::create_directories(Native(path));
}

void TestTree::Write(std::string_view path, std::string_view bytes) const {
  std::filesystem::create_directories(Native(path).parent_path());
  WriteNative(Native(path), bytes);
}

std::string TestTree::Read(std::string_view path) const {
  return ReadNative(Native(path));
}

bool TestTree::Exists(std::string_view path) const {
  return std::filesystem::exists(std::filesystem::symlink_status(Native(path)));
}

std::vector<std::string> TestTree::Names(std::string_view path) const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(Native(path))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

void TestTree::InstallTemplate(std::string_view modelCode) const {
  const std::string name = "Temp" + std::string(modelCode);
  std::filesystem::copy_file(std::filesystem::path(TARVELL_TEMPLATE_FOLDER) / name,
                             ProgramFolder() / name,
                             std::filesystem::copy_options::overwrite_existing);
}

void TestTree::InstallHandbook(const std::filesystem::path& source) const {
  const std::filesystem::path installed = ProgramFolder() / "handbook";
  std::error_code code;
  std::filesystem::create_directory_symlink(source, installed, code);
  if (code) {
    std::filesystem::copy(source, installed, std::filesystem::copy_options::recursive);
  }
}

void WriteNative(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  ASSERT_TRUE(file.good()) << "cannot write " << path;
}

std::string ReadNative(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << "no file " << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\r\n";
  }
  return text;
}

}  // namespace tarvell::test
