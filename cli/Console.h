// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CLI_CONSOLE_H
#define TARVELL_CLI_CONSOLE_H

#include <string>
#include <string_view>
#include <system_error>

namespace tarvell::cli {

/// Where a command writes: standard output and standard error. Tests collect both.
class Console {
 public:
  Console() = default;
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  virtual ~Console() = default;

  virtual void Out(std::string_view text) = 0;
  virtual void Err(std::string_view text) = 0;
  /// Whether somebody watches standard error.
  [[nodiscard]] virtual bool ErrIsTerminal() const = 0;
};

/// That of the process.
class SystemConsole final : public Console {
 public:
  void Out(std::string_view text) override;
  void Err(std::string_view text) override;
  [[nodiscard]] bool ErrIsTerminal() const override;
  /// Returns whether everything could be written to standard output; reports what could not on
  /// standard error.
  [[nodiscard]] bool Close();

 private:
  void NoteFailure();

  std::error_code failure_;
};

/// A bar on standard error while a command works, only where somebody watches it.
class ProgressBar {
 public:
  /// `console` must outlive the object. No bar is shown unless `isWanted`.
  ProgressBar(Console& console, bool isWanted)
      : console_(console), isWatched_(isWanted && console.ErrIsTerminal()) {}
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  /// Removes the bar.
  ~ProgressBar();

  /// Shows how much is done, from 0 to 1.
  void Show(double done);

 private:
  Console& console_;
  bool isWatched_;
  int shown_ = -1;
};

}  // namespace tarvell::cli

#endif
