// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_CORE_FILES_SAVEFILESAMPLE_H
#define TARVELL_TESTS_CORE_FILES_SAVEFILESAMPLE_H

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>

/// The file that the tests of SaveFile save.
namespace tarvell::test {

inline constexpr const char* kDataFolder = "c:\\calfactors\\PX12A";
inline constexpr const char* kDataFile = R"(c:\calfactors\PX12A\SN1)";
inline constexpr std::string_view kOldBytes = "old content, of another length\r\n";
inline constexpr std::string_view kNewBytes = "#MODEL_NO : PX12A\r\n!End\r\n";

[[nodiscard]] inline struct stat StatOf(const std::filesystem::path& path) {
  struct stat facts = {};
  EXPECT_EQ(::stat(path.c_str(), &facts), 0) << path << ": " << std::strerror(errno);
  return facts;
}

}  // namespace tarvell::test

#endif
