// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "Ratios.h"
#include "Workplace.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"

/// Lists, loads and saves.
namespace tarvell::bench {

namespace {

constexpr const char* kModelFolder = R"(c:\headers\PX12A)";
constexpr const char* kModels = "c:\\models";
constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kVersions = R"(c:\versions\PX12A\SN12345)";
constexpr const char* kVersionFolder = R"(c:\versions\history.tarvell\PX12A\SN12345)";
constexpr std::size_t kSeenVersions = 8;  // rows of the list that a screen shows at once
constexpr int kLoads = 20;                // in one measurement, so that it is long enough

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  DIR* open = ::opendir(folder.c_str());
  while (const dirent* entry = ::readdir(open)) {
    names.emplace_back(static_cast<const char*>(entry->d_name));
  }
  ::closedir(open);
  return names;
}

/// Makes the folders that are listed, when the first row that needs them is measured.
Measurement InTrees(const Measurement& measurement) {
  return [measurement] {
    static bool areMade = false;
    if (!std::exchange(areMade, true)) {
      for (int i = 10000; i < 10051; ++i) {
        WriteFile(Native(kModelFolder) + "/SN" + std::to_string(i), HeaderBytes(i));
      }
      for (int i = 0; i < 250 * 1000; ++i) {
        WriteFile(Native(kModels) + "/M" + std::to_string(i % 250) + "/SN" + std::to_string(i), "");
      }
      for (int i = 0; i < 10000; ++i) {
        WriteFile(Native(kStation) + "/M" + std::to_string(i), "");
      }
      WriteFile(Native(kStation) + "/INDEX", "");
    }
    return measurement();
  };
}

/// Saves the file whose history is listed, when the first row that needs it is measured.
Measurement InHistory(const Measurement& measurement) {
  return [measurement] {
    static bool isMade = false;
    if (!std::exchange(isMade, true)) {
      WriteFile(Native(kVersions), "");
      const std::unique_ptr<cifCaldata> data = LargestData(*FindModel("PX12A"));
      for (int i = 0; i < 1000; ++i) {
        data->SetComment(std::to_string(i));
        data->SaveCalibrationDataToFile(kVersions);
      }
    }
    return measurement();
  };
}

void ReadFiles(const std::string& folder) {
  std::array<char, 16384> buffer{};
  for (const std::string& name : NamesIn(folder)) {
    const int file = ::open((folder + "/" + name).c_str(), O_RDONLY);
    Use(::read(file, buffer.data(), buffer.size()));
    ::close(file);
  }
}

void ReadFirstEntries() {
  const std::string root = Native(kModels);
  for (const std::string& name : NamesIn(root)) {
    DIR* open = ::opendir((root + "/" + name).c_str());
    Use(::readdir(open));
    ::closedir(open);
  }
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

void ReadAndConvert(const std::string& native) {
  const int file = ::open(native.c_str(), O_RDONLY);
  struct stat facts {};
  ::fstat(file, &facts);
  std::string bytes(static_cast<std::size_t>(facts.st_size), '\0');
  Use(::read(file, bytes.data(), bytes.size()));
  ::close(file);
  ConvertNumbers(bytes.c_str());
}

/// The steps without which a power cut could leave half a file or another owner's than that of
/// `like`.
void WriteDurably(const std::string& native, std::string_view bytes, const std::string& like) {
  const std::string folder = native.substr(0, native.find_last_of('/'));
  std::string temporary = folder + "/.limit-XXXXXX";
  const int file = ::mkstemp(temporary.data());
  Use(::write(file, bytes.data(), bytes.size()));
  struct stat facts {};
  ::stat(like.c_str(), &facts);
  Use(::fchown(file, facts.st_uid, facts.st_gid));
  Use(::fchmod(file, facts.st_mode & 07777U));
  ::fstat(file, &facts);
  ::fsync(file);
  ::close(file);
  Use(::rename(temporary.c_str(), native.c_str()));
  const int open = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  ::fsync(open);
  ::close(open);
}

void AddRowsOf(const Model& model) {
  const std::string name(model.code);
  const std::string path = "c:\\data\\" + name + "\\SN12345";
  const std::string native = Native("c:\\data") + "/" + name + "/SN12345";
  WriteFile(native, "");
  LargestData(model)->SaveCalibrationDataToFile(path);
  const std::string bytes = ReadWholeFile(native);
  const auto load = [&model, path] {
    std::shared_ptr<cifCaldata> data = model.create();
    data->LoadCalibrationDataFromFile(path);
    return data;
  };
  const auto many = [](const auto& work) {
    return Timed([work] {
      for (int i = 0; i < kLoads; ++i) {
        work();
      }
    });
  };
  AddRow({.name = "load " + name + " (" + std::to_string(bytes.size()) + " bytes)",
          .goal = 1.5,
          .program = many([load] { Use(load()); }),
          .limit = many([native] { ReadAndConvert(native); })});
  AddRow({.name = "save " + name,
          .goal = 1.2,
          .program = Timed(
              [path, data = load()] { data->SaveCalibrationDataToFile(path, Earlier::LetGo); }),
          .limit = Timed([native, bytes] { WriteDurably(native, bytes, native); })});
  // Each save has another content, so that each keeps a version.
  const auto number = std::make_shared<int>(0);
  const std::string kept = Native("c:\\data") + "/kept " + name + "/";
  std::filesystem::create_directories(kept);
  AddRow({.name = "save " + name + " with the history",
          .goal = 1.6,
          .program = Timed([path, number, data = load()] {
            data->SetComment(std::to_string(++*number));
            data->SaveCalibrationDataToFile(path);
          }),
          .limit = Timed([native, bytes, kept, number] {
            WriteDurably(kept + std::to_string(++*number), bytes, native);
            WriteDurably(native, bytes, native);
          })});
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

}  // namespace

void AddFileRows() {
  AddRow({.name = "headers of 51 data files",
          .goal = 1.3,
          .program = InTrees(Timed([] { Use(ReadCalFileHeaders(kModelFolder)); })),
          .limit = InTrees(Timed([] { ReadFiles(Native(kModelFolder)); }))});
  AddRow({.name = "history of 1,000 versions",
          .goal = 1.3,
          .program = InHistory(Timed([] {
            // The screen reads the versions that are seen, and works out their states.
            std::vector<Calibration> calibrations = CalibrationsIn(HistoryOf(kVersions), kVersions);
            for (std::size_t row = 0; row < kSeenVersions; ++row) {
              ReadHeader(calibrations.at(row));
              Use(calibrations.at(row).State());
            }
          })),
          .limit = InHistory(Timed([] {
            ReadFiles(Native(kVersionFolder));
            Use(ReadWholeFile(Native(R"(c:\versions\history.tarvell\journal.txt)")));
          }))});
  AddRow({.name = "model list of 250 folders of 1,000 files",
          .goal = 1.3,
          .program = InTrees(Timed([] {
            std::vector<std::string> names;
            Use(ListModelFolders(kModels, names));
          })),
          .limit = InTrees(Timed(ReadFirstEntries))});
  AddRow({.name = "instrument list of 10,000 files",
          .goal = 1.3,
          .program = InTrees(Timed([] { Use(ListInstruments(kStation)); })),
          .limit = InTrees(Timed([] { Use(NamesIn(Native(kStation))); }))});
  for (const std::string_view code : kFamilies) {
    AddRowsOf(*FindModel(code));
  }
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

}  // namespace tarvell::bench
