// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "Laboratory.h"
#include "Ratios.h"
#include "core/survey/Survey.h"

/// The survey of a laboratory, and the start of the shell companion.
namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 21;
constexpr int kStarts = 201;
constexpr double kMemory = 200 * 1024;  // kilobytes

/// Opens and reads every file below `path` once.
void ReadEverything(const std::string& path) {
  static std::array<char, 16384> buffer;
  DIR* folder = ::opendir(path.c_str());
  while (const dirent* entry = ::readdir(folder)) {
    const auto* name = static_cast<const char*>(entry->d_name);
    if (name[0] == '.') {
      continue;
    }
    if (entry->d_type == DT_DIR) {
      ReadEverything(path + "/" + name);
      continue;
    }
    const int file = ::openat(::dirfd(folder), name, O_RDONLY);
    while (file >= 0 && ::read(file, buffer.data(), buffer.size()) > 0) {
    }
    ::close(file);
  }
  ::closedir(folder);
}

SurveyOrder OrderOf(const std::string& folder) {
  return {.calibrationDir = folder + "/calfactors",
          .stationDir = folder + "/stations",
          .today = {2026, 11, 22}};
}

void SurveyInSteps(const std::string& folder) {
  Survey survey(OrderOf(folder));
  while (survey.Step()) {
  }
  Use(survey.Rows());
}

/// The work until the first row can be shown.
void SurveyFirstRow(const std::string& folder) {
  Survey survey(OrderOf(folder));
  while (survey.Rows().empty() && survey.Step()) {
  }
  Use(survey.Rows());
}

std::vector<std::string> CheckOf(const std::string& folder) {
  return {"check",        "--quiet",
          "--calfactors", folder + "/calfactors",
          "--stations",   folder + "/stations",
          "--today",      "2026-11-22"};
}

void Check(const std::string& folder) {
  Start(TARVELL_BENCH_CLI, CheckOf(folder));
}

/// A measurement of `work` in the folder of a laboratory, which is made before.
template <typename Work>
Measurement In(const Laboratory& laboratory, Work work) {
  return [laboratory, work] {
    const std::string folder = laboratory.Folder();
    return Timed([&] { work(folder); })();
  };
}

void AddSurvey(const std::string& name, const Laboratory& laboratory) {
  AddRow({.name = "tarvell-cli check of " + name,
          .goal = 1.5,
          .program = In(laboratory, &Check),
          .limit = In(laboratory, &ReadEverything),
          .repetitions = kRepetitions});
  AddRow({.name = "in one thread, " + name,
          .goal = 1.5,
          .program = In(laboratory, &SurveyInSteps),
          .limit = In(laboratory, &ReadEverything),
          .repetitions = kRepetitions});
  AddRow({.name = "first row of " + name + ", of the whole survey",
          .goal = 1,
          .program = In(laboratory, &SurveyFirstRow),
          .limit = In(laboratory, &SurveyInSteps),
          .repetitions = kRepetitions});
  AddRow({.name = "peak memory of the check of " + name + ", compared with 200 MB",
          .goal = 1,
          .program =
              [laboratory] { return PeakMemory(TARVELL_BENCH_CLI, CheckOf(laboratory.Folder())); },
          .limit = [] { return kMemory; },
          .repetitions = 3,
          .isMemory = true});
}

}  // namespace

void AddSurveyRows() {
  AddSurvey("10,000 data sets", Laboratory("laboratory", {}));
  AddSurvey("10,000 data sets with editors", Laboratory("known", {"--known"}));
  AddSurvey("100,000 data sets", Laboratory("large", {"--data-sets", "100000"}));
  const std::string file = TARVELL_SOURCE_FOLDER "/docs/examples/PX12A/SN12345";
  AddRow({.name = "tarvell-cli show of a file",
          .goal = 1.5,
          .program = Timed([file] {
            Start(TARVELL_BENCH_CLI, {"show", file});
          }),
          .limit = Timed([file] { Start(TARVELL_BENCH_READFILE, {file}); }),
          .repetitions = kStarts});
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

}  // namespace tarvell::bench
