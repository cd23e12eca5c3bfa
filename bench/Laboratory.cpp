// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Laboratory.h"

#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "core/files/Paths.h"

namespace tarvell::bench {

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

double PeakMemory(const std::string& program, const std::vector<std::string>& arguments) {
  // A program inherits the peak of the one that starts it: that of GNU time is small.
  const std::string result = (DriveFolder() / "peak").string();
  std::vector<std::string> line = {"--quiet", "--format=%M", "--output=" + result, program};
  line.insert(line.end(), arguments.begin(), arguments.end());
  Start("/usr/bin/time", line);
  double kilobytes = 0;
  std::ifstream(result) >> kilobytes;
  return kilobytes;
}

Laboratory::Laboratory(const std::string& folder, std::vector<std::string> options)
    : folder_(DriveFolder() / folder), options_(std::move(options)) {}

std::string Laboratory::Folder() const {
  if (!std::filesystem::exists(folder_)) {
    std::vector<std::string> arguments = {"make", folder_.string(), "--sound"};
    arguments.insert(arguments.end(), options_.begin(), options_.end());
    Start(TARVELL_SOURCE_FOLDER "/scripts/laboratory", arguments);
  }
  return folder_.string();
}

}  // namespace tarvell::bench
