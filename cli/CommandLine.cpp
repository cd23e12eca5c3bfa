// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <functional>
#include <iterator>
#include <map>
#include <new>
#include <numeric>
#include <optional>
#include <sstream>
#include <utility>

#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/dates/FileDate.h"
#include "core/platform/Error.h"
#include "core/session/Profiles.h"
#include "core/session/Version.h"
#include "core/text/Text.h"
#include "exchange/WrittenDate.h"

namespace tarvell::cli {

namespace {

constexpr int kDaysOfAWeek = 7;
constexpr int kDayLimit = 36500;

FileDate LocalDay(std::time_t now) {
  std::tm local{};
  localtime_r(&now, &local);
  return {static_cast<std::int16_t>(local.tm_year + 1900),
          static_cast<std::int16_t>(local.tm_mon + 1), static_cast<std::int16_t>(local.tm_mday)};
}

/// The number of days in "30", "30d" or "4w"; throws for any other text.
int DaysIn(const std::string& text) {
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string unit = text.substr(digits);
  if (digits == 0 || digits > 5 || (!unit.empty() && unit != "d" && unit != "w")) {
    throw CLI::ValidationError("--within", "give a number of days or weeks, such as 30d or 4w");
  }
  const int days = std::stoi(text.substr(0, digits)) * (unit == "w" ? kDaysOfAWeek : 1);
  if (days > kDayLimit) {
    throw CLI::ValidationError("--within", "give at most 36500 days");
  }
  return days;
}

/// The date in "2026-11-22"; throws for any other text.
FileDate DateIn(const char* option, const std::string& text) {
  const std::optional<FileDate> date = ExportedDate(text);
  if (!date || !Exists(*date)) {
    throw CLI::ValidationError(option, "give a day that exists, such as 2026-11-22");
  }
  return *date;
}

/// How many letters have to be inserted, removed or replaced to make one word of the other.
std::size_t EditsBetween(std::string_view a, std::string_view b) {
  std::vector<std::size_t> edits(b.size() + 1);
  std::iota(edits.begin(), edits.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(edits[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = edits[j + 1];
      edits[j + 1] = std::min({replaced, diagonal + 1, edits[j] + 1});
    }
  }
  return edits.back();
}

/// The arguments of the program, and the command that they choose.
class Arguments {
 public:
  /// `first` is the first argument, "" without one.
  Arguments(const std::string& first, std::time_t now, Console& console) : console_(console) {
    options_.now = now;
    // The library's default on Windows would take a path such as "/data/PX12A" for an option.
    app_.allow_windows_style_options(false);
    app_.require_subcommand(1);
    app_.set_help_all_flag("--help-all", "Show the options of all commands");
    app_.set_version_flag("--version", "tarvell-cli " + std::to_string(kMajorVersion) + "." +
                                           std::to_string(kMinorVersion));
    // Setting up all commands takes longer than most of them, and only help and errors need it.
    const auto* used = std::ranges::find(kCommands, first, &Addition::name);
    for (const Addition& addition : kCommands) {
      if (used == kCommands.end() || used == &addition) {
        (this->*addition.add)();
      }
    }
  }

  int Run(std::vector<std::string> arguments) {
    if (!arguments.empty() && !arguments.front().starts_with('-') &&
        std::ranges::find(kCommands, arguments.front(), &Addition::name) == kCommands.end()) {
      console_.Err(TextOfUnknownCommand(arguments.front()));
      return kCouldNotLook;
    }
    // The library takes them from the end.
    std::ranges::reverse(arguments);
    try {
      app_.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
      return Report(error);
    }
    return command_();
  }

 private:
  /// The library would say only that a command is missing.
  static std::string TextOfUnknownCommand(std::string_view word) {
    const auto* nearest = std::ranges::min_element(
        kCommands, {}, [word](const Addition& it) { return EditsBetween(word, it.name); });
    const bool isNear = EditsBetween(word, nearest->name) <= nearest->name.size() / 2;
    std::vector<std::string> names;
    std::ranges::transform(kCommands, std::back_inserter(names),
                           [](const Addition& it) { return std::string(it.name); });
    return "tarvell-cli: " + Quoted(word) + " is not a command." +
           (isNear ? " Did you mean " + Quoted(nearest->name) + "?" : "") + " The commands are " +
           Listed(names) + "; \"tarvell-cli --help\" explains them.\n";
  }

  CLI::App* Command(const char* name, const char* description, std::function<int()> run) {
    CLI::App* command = app_.add_subcommand(name, description);
    command->callback([this, run = std::move(run)] { command_ = run; });
    return command;
  }

  /// Takes the two folders of tarvell.ini. A command that needs neither starts sooner without it.
  void KnowTrees() {
    if (options_.calibrationDir.empty()) {
      ReadProfile(options_.calibrationDir, options_.stationDir);
    }
  }

  /// An empty variable of a script must not look like a folder without faults, or like no file.
  static CLI::Option* AddPath(CLI::App* command, const std::string& name, std::string& path,
                              const std::string& help, const std::string& demand) {
    return command->add_option(name, path, help)->check([demand](const std::string& text) {
      return text.empty() ? demand : std::string();
    });
  }

  static void AddFolder(CLI::App* command, const std::string& name, std::string& folder,
                        const std::string& help) {
    AddPath(command, name, folder, help, "give a folder");
  }

  static CLI::Option* AddFile(CLI::App* command, const std::string& name, std::string& file,
                              const std::string& help) {
    return AddPath(command, name, file, help, "give the name of a file");
  }

  void AddTrees(CLI::App* command) {
    KnowTrees();
    options_.today = LocalDay(options_.now);
    AddFolder(command, "--calfactors", options_.calibrationDir,
              "Folder of the calibration data (else that of tarvell.ini)");
    AddFolder(command, "--stations", options_.stationDir,
              "Folder of the stations (else that of tarvell.ini)");
    command->add_option_function<std::string>(
        "--today", [this](const std::string& text) { options_.today = DateIn("--today", text); },
        "Look as on another day, such as 2026-11-22");
    command->add_option_function<std::string>(
        "--within", [this](const std::string& text) { options_.dueSoonDays = DaysIn(text); },
        "Due soon means within this time, such as 30d or 4w (30d)");
  }

  void AddOutput(CLI::App* command) {
    CLI::Option* json = command->add_flag("--json", options_.isJson, "Write JSON, for programs");
    command
        ->add_flag("-q,--quiet", options_.isQuiet,
                   "Write nothing but errors: the exit status counts")
        ->excludes(json);
  }

  void AddCheck() {
    CLI::App* command = Command("check", "Report everything that is wrong in both trees",
                                [this] { return Check(options_, showsUnused_, console_); });
    AddTrees(command);
    AddOutput(command);
    command->add_flag("--unused", showsUnused_, "Report data sets that no station uses, too");
  }

  void AddDue() {
    CLI::App* command = Command("due", "List what is past due or due soon",
                                [this] { return Due(options_, console_); });
    AddTrees(command);
    AddOutput(command);
  }

  void AddShow() {
    CLI::App* command = Command("show", "Show a data file or an instrument's file",
                                [this] { return Show(options_, first_, console_); });
    AddOutput(command);
    AddFile(command, "FILE", first_, "The file")->required();
  }

  void AddDiff() {
    CLI::App* command = Command("diff", "Compare the values of two data files", [this] {
      return Diff(options_, first_, second_, comparesBytes_, console_);
    });
    AddOutput(command);
    command->add_flag("--bytes", comparesBytes_, "Compare the bytes");
    AddFile(command, "FIRST", first_, "A data file")->required();
    AddFile(command, "SECOND", second_, "Another one")->required();
  }

  void AddExport() {
    CLI::App* command = Command("export", "Write every data set and instrument as a file",
                                [this] { return Export(options_, format_, target_, console_); });
    AddTrees(command);
    const auto add = [&](const char* name, ExportFormat format, const char* description) {
      return command->add_flag_callback(
          name, [this, format] { format_ = format; }, description);
    };
    CLI::Option* csv = add("--csv", ExportFormat::Csv, "Comma-separated values");
    CLI::Option* json = add("--json", ExportFormat::Json, "JSON");
    CLI::Option* calendar = add("--ics", ExportFormat::Calendar, "A calendar of the due dates");
    csv->excludes(json)->excludes(calendar);
    json->excludes(calendar);
    AddFile(command, "-o,--output", target_, "Save to this file (else to standard output)");
  }

  void AddHistory() {
    CLI::App* command = Command("history", "List the earlier contents of a data file",
                                [this] { return History(options_, first_, console_); });
    AddOutput(command);
    AddFile(command, "FILE", first_, "The file")->required();
  }

  void AddImport() {
    CLI::App* command = Command("import", "Save a certificate as a new data set",
                                [this] { return Import(options_, order_, console_); });
    KnowTrees();
    AddFile(command, "FILE", order_.file, "A DCC, CSV or TSV file")->required();
    command->add_option("--model", order_.model, "The model of the data set")->required();
    AddFolder(command, "--calfactors", options_.calibrationDir,
              "Folder of the calibration data (else that of tarvell.ini)");
    command->add_option("--serial", order_.serialNumber,
                        "The serial number of the instrument (else the certificate's)");
    command
        ->add_option("--table", order_.tables,
                     "A table to take, by its title or number (else all that fit)")
        ->type_size(1)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    const auto addDate = [&](const char* name, std::optional<FileDate>& date, const char* help) {
      command->add_option_function<std::string>(
          name, [name, &date](const std::string& text) { date = DateIn(name, text); }, help);
    };
    addDate("--calibrated", order_.calibrated, "The calibration date (else the certificate's)");
    addDate("--due", order_.due, "The due date (else the certificate's)");
    command
        ->add_option("--decimal", order_.reading.sign, "The decimal sign, where two are possible")
        ->transform(CLI::CheckedTransformer(std::map<std::string, DecimalSign>{
            {"point", DecimalSign::Point}, {"comma", DecimalSign::Comma}}));
    command
        ->add_option("--dates", order_.reading.dateOrder,
                     "What comes first in dates, where two orders are possible")
        ->transform(CLI::CheckedTransformer(std::map<std::string, DateOrder>{
            {"day-first", DateOrder::DayFirst}, {"month-first", DateOrder::MonthFirst}}));
    command->add_flag("--sure", order_.isSure, "Take it in spite of the doubts that are reported");
    command->add_flag("--replace", order_.replaces, "Replace a data set that exists");
  }

  int Report(const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream err;
    const bool isHelp = app_.exit(error, out, err) == 0;
    console_.Out(out.str());
    console_.Err(err.str());
    return isHelp ? kClean : kCouldNotLook;
  }

  struct Addition {
    std::string_view name;
    void (Arguments::*add)();
  };
  static constexpr std::array<Addition, 7> kCommands = {{{"check", &Arguments::AddCheck},
                                                         {"due", &Arguments::AddDue},
                                                         {"show", &Arguments::AddShow},
                                                         {"diff", &Arguments::AddDiff},
                                                         {"export", &Arguments::AddExport},
                                                         {"history", &Arguments::AddHistory},
                                                         {"import", &Arguments::AddImport}}};

  Console& console_;
  CLI::App app_{"Looks after the calibration data of test stations", "tarvell-cli"};
  Options options_;
  std::function<int()> command_;
  bool showsUnused_ = false;
  bool comparesBytes_ = false;
  ExportFormat format_ = ExportFormat::Csv;
  ImportOrder order_;
  std::string first_;
  std::string second_;
  std::string target_;
};

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, std::time_t now, Console& console) {
  try {
    const std::string first = arguments.empty() ? std::string() : arguments.front();
    return Arguments(first, now, console).Run(arguments);
  } catch (const Error& error) {
    console.Err("tarvell-cli: " + WithoutControls(error.what()) + "\n");
    return kCouldNotLook;
  } catch (const std::bad_alloc&) {
    console.Err("tarvell-cli: There is not enough memory to do this.\n");
    return kCouldNotLook;
  } catch (const std::exception& failure) {
    console.Err("tarvell-cli: The program could not do this (" + WithoutControls(failure.what()) +
                "). Report this message to whoever looks after the program.\n");
    return kCouldNotLook;
  }
}

}  // namespace tarvell::cli
