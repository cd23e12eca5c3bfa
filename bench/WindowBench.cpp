// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include "RatioReporter.h"
#include "Workplace.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;
constexpr auto kLongestStart = std::chrono::seconds(10);
/// The first start may have to build the program.
constexpr auto kLongestBuild = std::chrono::minutes(20);

/// Watches the display for windows that come up.
class Display {
 public:
  Display() : connection_(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
    if (!IsOpen()) {
      return;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_.get());
  }

  [[nodiscard]] bool IsOpen() const { return xcb_connection_has_error(connection_.get()) == 0; }

  void ForgetWindows() {
    while (Next()) {
    }
  }

  /// Returns false when no window comes up in time.
  [[nodiscard]] bool AwaitWindow(std::chrono::milliseconds longest) {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (std::chrono::steady_clock::now() < end) {
      while (const Event event = Next()) {
        if ((event->response_type & 0x7FU) == XCB_MAP_NOTIFY) {
          return true;
        }
      }
      pollfd wait{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&wait, 1, 100);
    }
    return false;
  }

 private:
  using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;

  [[nodiscard]] Event Next() {
    return {IsOpen() ? xcb_poll_for_event(connection_.get()) : nullptr, &std::free};
  }

  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
};

/// A program in a process of its own, which is ended with this.
class Started {
 public:
  explicit Started(const std::string& program) : process_(::fork()) {
    if (process_ == 0) {
      ::execl(program.c_str(), program.c_str(), nullptr);
      ::_exit(127);
    }
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;
  ~Started() {
    if (process_ > 0) {
      ::kill(process_, SIGKILL);
      ::waitpid(process_, nullptr, 0);
    }
  }

 private:
  pid_t process_;
};

void Start(benchmark::State& state, const std::string& program) {
  Display display;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    display.ForgetWindows();
    const auto start = std::chrono::steady_clock::now();
    const Started started(program);
    if (!display.AwaitWindow(kLongestStart)) {
      state.SkipWithError("no window came up");
      break;
    }
    state.SetIterationTime(SecondsSince(start));
  }
}

/// Builds what ./run would build, so that every counted start finds nothing changed.
void BuildOnce(const std::string& run) {
  [[maybe_unused]] static const bool shown = [&] {
    Display display;
    const Started started(run);
    return display.AwaitWindow(kLongestBuild);
  }();
}

}  // namespace

void AddWindowRows() {
  const std::string run = TARVELL_SOURCE_FOLDER "/run";
  const std::string program = TARVELL_SOURCE_FOLDER "/build/release/bin/tarvell";
  AddRow(
      "a second ./run to its first window", 1.5, kRepetitions,
      [=](benchmark::State& state) {
        BuildOnce(run);
        Start(state, run);
      },
      [=](benchmark::State& state) {
        BuildOnce(run);
        Start(state, program);
      });
}

}  // namespace tarvell::bench
