// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "RatioReporter.h"
#include "Workplace.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"

namespace tarvell::bench {

namespace {

constexpr const char* kModelFolder = R"(c:\headers\PX12A)";
constexpr const char* kModels = "c:\\models";
constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr int kDataFiles = 51;
constexpr int kFolders = 250;
constexpr int kFilesPerFolder = 1000;
constexpr int kInstruments = 10000;
constexpr int kRepetitions = 41;

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  DIR* open = ::opendir(folder.c_str());
  while (const dirent* entry = ::readdir(open)) {
    names.emplace_back(static_cast<const char*>(entry->d_name));
  }
  ::closedir(open);
  return names;
}

/// Makes the trees, when the first row that needs them is measured.
void Prepare() {
  static bool isPrepared = false;
  if (std::exchange(isPrepared, true)) {
    return;
  }
  for (int i = 0; i < kDataFiles; ++i) {
    WriteFile(Native(kModelFolder) + "/SN" + std::to_string(10000 + i), HeaderBytes(10000 + i));
  }
  for (int folder = 0; folder < kFolders; ++folder) {
    const std::string path = Native(kModels) + "/M" + std::to_string(folder);
    for (int i = 0; i < kFilesPerFolder; ++i) {
      WriteFile(path + "/SN" + std::to_string(i), "");
    }
  }
  for (int i = 0; i < kInstruments; ++i) {
    WriteFile(Native(kStation) + "/M" + std::to_string(i), "");
  }
  WriteFile(Native(kStation) + "/INDEX", "");
}

void ReadHeaders(benchmark::State& state) {
  Prepare();
  Measure(state, [] { Use(ReadCalFileHeaders(kModelFolder)); });
}

/// Opens, reads and closes every file whose name the folder tells.
void ReadFiles(benchmark::State& state) {
  Prepare();
  const std::string folder = Native(kModelFolder);
  Measure(state, [&] {
    std::array<char, 16384> buffer{};
    for (const std::string& name : NamesIn(folder)) {
      const int file = ::open((folder + "/" + name).c_str(), O_RDONLY);
      Use(::read(file, buffer.data(), buffer.size()));
      ::close(file);
    }
  });
}

void ListModels(benchmark::State& state) {
  Prepare();
  Measure(state, [] {
    std::vector<std::string> names;
    Use(ListModelFolders(kModels, names));
    Use(names);
  });
}

/// Opens every folder and reads its first entry.
void ReadFirstEntries(benchmark::State& state) {
  Prepare();
  const std::string root = Native(kModels);
  Measure(state, [&] {
    for (const std::string& name : NamesIn(root)) {
      DIR* open = ::opendir((root + "/" + name).c_str());
      Use(::readdir(open));
      ::closedir(open);
    }
  });
}

void ListStation(benchmark::State& state) {
  Prepare();
  Measure(state, [] { Use(ListInstruments(kStation)); });
}

void ReadFolder(benchmark::State& state) {
  Prepare();
  const std::string folder = Native(kStation);
  Measure(state, [&] { Use(NamesIn(folder)); });
}

}  // namespace

void AddTreeRows() {
  AddRow("headers of 51 data files", 1.5, kRepetitions, ReadHeaders, ReadFiles);
  AddRow("model list of 250 folders of 1,000 files", 1.3, kRepetitions, ListModels,
         ReadFirstEntries);
  AddRow("instrument list of 10,000 files", 1.3, kRepetitions, ListStation, ReadFolder);
}

}  // namespace tarvell::bench
