// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Console.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace tarvell::cli {

namespace {

constexpr int kBarWidth = 40;
constexpr double kPercent = 100;

}  // namespace

void SystemConsole::Out(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    NoteFailure();
  }
}

void SystemConsole::Err(std::string_view text) {
  // There is no other place where a failure could be reported.
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

bool SystemConsole::ErrIsTerminal() const {
  return ::isatty(STDERR_FILENO) == 1;
}

bool SystemConsole::Close() {
  if (std::fflush(stdout) != 0) {
    NoteFailure();
  }
  if (failure_) {
    Err("tarvell-cli: Standard output could not be written: " + failure_.message() + ".\n");
  }
  return !failure_;
}

void SystemConsole::NoteFailure() {
  // The first failure is the reason for the others.
  failure_ = failure_ ? failure_ : std::error_code(errno, std::generic_category());
}

ProgressBar::~ProgressBar() {
  if (shown_ >= 0) {
    console_.Err("\r" + std::string(kBarWidth + 7, ' ') + "\r");
  }
}

void ProgressBar::Show(double done) {
  const int percent = static_cast<int>(done * kPercent);
  if (percent == shown_ || !isWatched_) {
    return;
  }
  shown_ = percent;
  const auto filled = static_cast<std::size_t>(done * kBarWidth);
  console_.Err("\r[" + std::string(filled, '=') + std::string(kBarWidth - filled, ' ') + "] " +
               std::to_string(percent) + "%");
}

}  // namespace tarvell::cli
