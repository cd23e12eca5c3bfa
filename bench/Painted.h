// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_PAINTED_H
#define TARVELL_BENCH_PAINTED_H

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

namespace tarvell::bench {

/// Calls `then` once, after a window that `isMeant` has been painted with all it holds.
class Painted : public QObject {
 public:
  Painted(std::function<bool(const QWidget&)> isMeant, std::function<void(QWidget&)> then)
      : isMeant_(std::move(isMeant)), then_(std::move(then)) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* widget = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(watched) : nullptr;
    if (!isDone_ && widget != nullptr && isMeant_(*widget->window())) {
      isDone_ = true;
      QWidget* window = widget->window();
      // The controls of the window are painted in the same pass.
      QTimer::singleShot(0, window, [this, window] { then_(*window); });
    }
    return false;
  }

 private:
  std::function<bool(const QWidget&)> isMeant_;
  std::function<void(QWidget&)> then_;
  bool isDone_ = false;
};

/// Prints the peak of the process's own memory in kB and ends it without tidying up.
[[noreturn]] inline void Finish() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) {
      std::printf("%ld\n", std::strtol(line.c_str() + 6, nullptr, 10));
    }
  }
  std::fflush(stdout);
  std::_Exit(0);
}

}  // namespace tarvell::bench

#endif
