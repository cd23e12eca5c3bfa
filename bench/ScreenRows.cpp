// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QAbstractButton>
#include <QDialog>
#include <QListWidget>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include "Painted.h"
#include "Ratios.h"
#include "Workplace.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"

/// Starts of the program, and windows that are opened in it.
namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;

/// Runs a program, which prints its peak memory in kB at its end; returns that.
double Run(const std::string& command) {
  std::array<char, 32> line{};
  FILE* output = ::popen(command.c_str(), "r");  // NOLINT(cert-env33-c): the commands are fixed
  const bool printed = std::fgets(line.data(), line.size(), output) != nullptr;
  if (::pclose(output) != 0 || !printed) {
    throw std::runtime_error("failed: " + command);
  }
  return std::strtod(line.data(), nullptr);
}

void AddStart(const std::string& name, const std::string& program, const std::string& limit,
              bool isMemory = false) {
  const auto measurement = [&](const std::string& command) -> Measurement {
    if (isMemory) {
      return [command] { return Run(command); };
    }
    return Timed([command] { Run(command); });
  };
  AddRow({.name = name,
          .goal = 1.25,
          .program = measurement(program),
          .limit = measurement(limit),
          .repetitions = kRepetitions,
          .isMemory = isMemory});
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

/// Watches the display for windows.
class Display {
 public:
  Display() : connection_(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
    if (xcb_connection_has_error(connection_.get()) != 0) {
      throw std::runtime_error("there is no display");
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_.get());
  }

  /// Waits until a window is shown.
  void AwaitWindow(std::chrono::seconds longest) {
    using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < longest) {
      while (const Event event = {xcb_poll_for_event(connection_.get()), &std::free}) {
        if ((event->response_type & 0x7FU) == XCB_MAP_NOTIFY) {
          return;
        }
      }
      pollfd wait{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&wait, 1, 100);
    }
    throw std::runtime_error("no window was shown");
  }

 private:
  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
};

/// The seconds from the start of a program, which is then ended, to its first window.
double StartToWindow(const std::string& program, std::chrono::seconds longest) {
  Display display;
  const auto start = std::chrono::steady_clock::now();
  const pid_t process = ::fork();
  if (process == 0) {
    ::execl(program.c_str(), program.c_str(), nullptr);
    ::_exit(127);
  }
  display.AwaitWindow(longest);
  const double seconds = SecondsSince(start);
  ::kill(process, SIGKILL);
  ::waitpid(process, nullptr, 0);
  return seconds;
}

/// A measurement after ./run has built the program, so that no start that is measured builds it.
Measurement Started(const char* program) {
  return [path = TARVELL_SOURCE_FOLDER "/" + std::string(program)] {
    [[maybe_unused]] static const double built =
        StartToWindow(TARVELL_SOURCE_FOLDER "/run", std::chrono::minutes(20));
    return StartToWindow(path, std::chrono::seconds(10));
  };
}

/// Size of the editor that was painted last.
QSize& EditorSize() {
  static QSize size(800, 600);
  return size;
}

/// The seconds from the click on Edit, in a menu that has just been opened, to the painted editor.
double OpenEditor() {
  gCalibrationDir = "c:\\data";
  double seconds = 0;
  frmCalibrationMain menu(nullptr);
  std::chrono::steady_clock::time_point start;
  const Painted editorPainted(
      [](const QWidget& window) {
        return qobject_cast<const frmCalDataTabInput*>(&window) != nullptr;
      },
      [&](QWidget& editor) {
        seconds = SecondsSince(start);
        EditorSize() = editor.size();
        editor.close();
      });
  const Painted menuPainted(
      [&](const QWidget& window) { return &window == &menu; },
      [&](QWidget&) {
        auto* models = menu.findChild<QListWidget*>("LstInstrment");
        models->setCurrentItem(models->findItems("RT730A", Qt::MatchExactly).value(0));
        menu.findChild<QListWidget*>("lstSerialNumber")->setCurrentRow(0);
        QApplication::processEvents();
        start = std::chrono::steady_clock::now();
        menu.findChild<QAbstractButton*>("btnEdit")->click();
        menu.close();
      });
  menu.ShowModally();
  return seconds;
}

double PaintEmptyWindow() {
  const auto start = std::chrono::steady_clock::now();
  double seconds = 0;
  QDialog window;
  window.resize(EditorSize());
  const Painted painted([&](const QWidget& shown) { return &shown == &window; },
                        [&](QWidget&) {
                          seconds = SecondsSince(start);
                          window.close();
                        });
  window.exec();
  return seconds;
}

}  // namespace

void AddScreenRows(const std::string& drives) {
  const std::string label = TARVELL_BENCH_LABEL;
  const std::string menu = TARVELL_BENCH_SCREEN " " + drives;
  AddStart("start to the painted main menu", menu, label);
  AddStart("the same, compared with a splash and a window", menu, label + " splash");
  AddStart("the same, compared with the controls of these two screens", menu,
           label + " " TARVELL_SOURCE_FOLDER "/images/tarvell.svg");
  AddStart("peak memory of the main menu", menu, label, true);
  AddStart("peak memory with the largest data set open", menu + R"( 'c:\data\RT730A\SN12345')",
           label, true);
  AddRow({.name = "a second ./run to its first window",
          .goal = 1.5,
          .program = Started("run"),
          .limit = Started("build/release/bin/tarvell"),
          .repetitions = kRepetitions});
  AddRow({.name = "click to the painted editor of a resistor set",
          .goal = 2.0,
          .program = OpenEditor,
          .limit = PaintEmptyWindow,
          .repetitions = kRepetitions});
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

}  // namespace tarvell::bench
