// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "RatioReporter.h"
#include "Workplace.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 41;
constexpr int kLoads = 20;  // in one measurement, so that it is long enough

void Load(benchmark::State& state, const Model& model, const std::string& path) {
  Measure(state, [&] {
    for (int i = 0; i < kLoads; ++i) {
      const std::unique_ptr<cifCaldata> data = model.create();
      data->LoadCalibrationDataFromFile(path);
    }
  });
}

/// Reads and writes again every number in a text.
void ConvertNumbers(const char* text) {
  std::array<char, 64> buffer{};
  for (const char* at = text; *at != '\0';) {
    if (std::isdigit(static_cast<unsigned char>(*at)) == 0) {
      ++at;
      continue;
    }
    char* end = nullptr;
    Use(std::snprintf(buffer.data(), buffer.size(), "%.15g", std::strtod(at, &end)));
    at = end;
  }
}

void ReadAndConvert(benchmark::State& state, const std::string& native) {
  std::string bytes;
  Measure(state, [&] {
    for (int i = 0; i < kLoads; ++i) {
      const int file = ::open(native.c_str(), O_RDONLY);
      struct stat facts {};
      ::fstat(file, &facts);
      bytes.resize(static_cast<std::size_t>(facts.st_size));
      Use(::read(file, bytes.data(), bytes.size()));
      ::close(file);
      ConvertNumbers(bytes.c_str());
    }
  });
}

void Save(benchmark::State& state, const Model& model, const std::string& path) {
  const std::unique_ptr<cifCaldata> data = model.create();
  data->LoadCalibrationDataFromFile(path);
  Measure(state, [&] { data->SaveCalibrationDataToFile(path); });
}

/// The steps without which a power cut could leave half a file or another owner's.
void WriteDurably(benchmark::State& state, const std::string& native) {
  const std::string bytes = ReadWholeFile(native);
  const std::string folder = native.substr(0, native.find_last_of('/'));
  Measure(state, [&] {
    std::string temporary = folder + "/.limit-XXXXXX";
    const int file = ::mkstemp(temporary.data());
    Use(::write(file, bytes.data(), bytes.size()));
    struct stat facts {};
    ::stat(native.c_str(), &facts);
    Use(::fchown(file, facts.st_uid, facts.st_gid));
    Use(::fchmod(file, facts.st_mode & 07777U));
    ::fstat(file, &facts);
    ::fsync(file);
    ::close(file);
    Use(::rename(temporary.c_str(), native.c_str()));
    const int open = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    ::fsync(open);
    ::close(open);
  });
}

}  // namespace

void AddFileRows() {
  for (const std::string_view code : kFamilies) {
    const Model& model = *FindModel(code);
    const std::string name(code);
    const std::string path = "c:\\data\\" + name + "\\SN12345";
    const std::string native = Native("c:\\data") + "/" + name + "/SN12345";
    WriteFile(native, "");
    LargestData(model)->SaveCalibrationDataToFile(path);
    AddRow(
        "load " + name + " (" + std::to_string(ReadWholeFile(native).size()) + " bytes)", 1.5,
        kRepetitions, [&model, path](benchmark::State& state) { Load(state, model, path); },
        [native](benchmark::State& state) { ReadAndConvert(state, native); });
    AddRow(
        "save " + name, 1.2, kRepetitions,
        [&model, path](benchmark::State& state) { Save(state, model, path); },
        [native](benchmark::State& state) { WriteDurably(state, native); });
  }
}

}  // namespace tarvell::bench
