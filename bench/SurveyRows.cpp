// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QEvent>
#include <QObject>
#include <QTimer>

#include <array>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "Ratios.h"
#include "Workplace.h"
#include "core/files/Paths.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/survey/Survey.h"
#include "screens/overview/OverviewTable.h"
#include "screens/overview/frmOverview.h"

/// The survey of a laboratory, and the start of the shell companion.
namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 11;
constexpr int kStarts = 201;
constexpr double kFirstRow = 0.1;  // seconds

/// Runs a program, whose output is thrown away.
void Start(const std::string& program, const std::vector<std::string>& arguments) {
  std::vector<char*> line = {const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) {
    line.push_back(const_cast<char*>(argument.c_str()));
  }
  line.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int status = -1;
  const bool isStarted =
      ::posix_spawn(&process, program.c_str(), &actions, nullptr, line.data(), environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  if (!isStarted || ::waitpid(process, &status, 0) != process || !WIFEXITED(status) ||
      WEXITSTATUS(status) > 1) {
    throw std::runtime_error("failed: " + program);
  }
}

/// A laboratory that scripts/laboratory makes, when the first row that needs it is measured.
class Laboratory {
 public:
  Laboratory(const std::string& name, std::vector<std::string> options)
      : folder_(DriveFolder() / name), options_(std::move(options)) {}

  [[nodiscard]] std::string Folder() {
    if (!std::filesystem::exists(folder_)) {
      std::vector<std::string> arguments = {"make", folder_.string()};
      arguments.insert(arguments.end(), options_.begin(), options_.end());
      Start(TARVELL_SOURCE_FOLDER "/scripts/laboratory", arguments);
    }
    return folder_.string();
  }

 private:
  std::filesystem::path folder_;
  std::vector<std::string> options_;
};

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

Survey NewSurvey(const std::string& folder) {
  return Survey({.calibrationDir = folder + "/calfactors",
                 .stationDir = folder + "/stations",
                 .today = {2026, 11, 22}});
}

void SurveyAll(const std::string& folder) {
  Survey survey = NewSurvey(folder);
  while (survey.Step()) {
  }
  Use(survey.Rows());
}

/// The work until the first row can be shown.
void SurveyFirstRow(const std::string& folder) {
  Survey survey = NewSurvey(folder);
  while (survey.Rows().empty() && survey.Step()) {
  }
  Use(survey.Rows());
}

/// Calls `then` when a table has been painted with a row.
class FirstRowPainted final : public QObject {
 public:
  FirstRowPainted(OverviewTable& table, std::function<void()> then)
      : table_(table), then_(std::move(then)) {
    table.viewport()->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && table_.model()->rowCount() > 0) {
      watched->removeEventFilter(this);
      QTimer::singleShot(0, this, then_);
    }
    return false;
  }

 private:
  OverviewTable& table_;
  std::function<void()> then_;
};

/// The seconds from the opened overview to its first painted row.
double OverviewFirstRow(const std::string& folder) {
  gCalibrationDir = folder + "/calfactors";
  gStationDir = folder + "/stations";
  double seconds = 0;
  const auto start = std::chrono::steady_clock::now();
  frmOverview overview(nullptr);
  const FirstRowPainted painted(*overview.findChild<OverviewTable*>(), [&] {
    seconds = SecondsSince(start);
    overview.close();
  });
  overview.ShowModally({2026, 11, 22});
  return seconds;
}

void AddSurvey(const std::string& name, const std::string& folder,
               const std::vector<std::string>& options) {
  const auto laboratory = std::make_shared<Laboratory>(folder, options);
  const auto in = [laboratory](void (*work)(const std::string&)) -> Measurement {
    return [laboratory, work] {
      const std::string path = laboratory->Folder();
      return Timed([&] { work(path); })();
    };
  };
  AddRow({.name = "survey of " + name,
          .goal = 1.5,
          .program = in(&SurveyAll),
          .limit = in(&ReadEverything),
          .repetitions = kRepetitions});
  AddRow({.name = "first row of " + name + ", of the whole survey",
          .goal = 1,
          .program = in(&SurveyFirstRow),
          .limit = in(&SurveyAll),
          .repetitions = kRepetitions});
  AddRow({.name = "F6 to the first painted row of " + name + ", compared with 100 ms",
          .goal = 1,
          .program = [laboratory] { return OverviewFirstRow(laboratory->Folder()); },
          .limit = [] { return kFirstRow; },
          .repetitions = kRepetitions});
}

}  // namespace

void AddSurveyRows() {
  AddSurvey("10,000 data sets of 250 models, 5,000 instruments", "laboratory", {"--sound"});
  AddSurvey("10,000 data sets of the 9 models with editors, 900 instruments", "known",
            {"--sound", "--known"});
  AddSurvey("100,000 data sets of 250 models, 5,000 instruments", "large",
            {"--sound", "--data-sets", "100000"});
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
