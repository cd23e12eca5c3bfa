// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QKeyEvent>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Painted.h"
#include "Ratios.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/widgets/UserSettings.h"

/// The curve beside the table of a sensor with 51 points.
namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;
constexpr double kFrame = 0.016;  // seconds

using Act = std::function<void(frmCalDataInput& editor)>;

/// What is remembered for these rows only.
QString& SettingsFile() {
  static QString file;
  return file;
}

/// Shows the editor with or without the curve, does something when all of it is painted, and closes
/// it.
void WithEditor(bool hasCurve, const Act& act) {
  KeepUserSettingsIn(SettingsFile());
  Remember("curve/frmCalDataInput", std::vector<int>{hasCurve ? 1 : 0, 400, 400});
  gCalFiles[0].FilePath = R"(c:\data\PX12A\SN12345)";
  frmCalDataInput editor(nullptr);
  const Painted painted([&](const QWidget& window) { return &window == &editor; },
                        [&](QWidget&) {
                          // The curve is drawn after the table.
                          QApplication::processEvents();
                          act(editor);
                          editor.close();
                        });
  editor.SetupDat(0, "PX12A");
  KeepUserSettingsIn("");
}

double Open(bool hasCurve) {
  double seconds = 0;
  const auto start = std::chrono::steady_clock::now();
  WithEditor(hasCurve, [&](frmCalDataInput& /*editor*/) { seconds = SecondsSince(start); });
  return seconds;
}

/// Calls `then` after a control has been painted.
class PaintWatch final : public QObject {
 public:
  PaintWatch(QWidget* watched, std::function<void()> then) : then_(std::move(then)) {
    watched->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      // The control itself paints before.
      watched->removeEventFilter(this);
      QApplication::sendEvent(watched, event);
      then_();
      return true;
    }
    return false;
  }

 private:
  std::function<void()> then_;
};

/// The seconds from a key that is pressed in an open cell to the painted curve.
double TypeAndDraw() {
  double seconds = 0;
  WithEditor(true, [&](frmCalDataInput& editor) {
    auto* grid = editor.findChild<CalGrid*>();
    auto* plot = editor.findChild<QWidget*>("plot");
    if (plot == nullptr) {
      throw std::runtime_error("there is no curve");
    }
    const auto press = [](QWidget* target, int key, const QString& text) {
      QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
      QApplication::sendEvent(target, &event);
    };
    grid->SetCurrentCell({{26}, 1});
    grid->setFocus();
    press(grid, Qt::Key_9, "9");
    QApplication::processEvents();
    bool isPainted = false;
    const auto start = std::chrono::steady_clock::now();
    const PaintWatch watch(plot, [&] {
      isPainted = true;
      seconds = SecondsSince(start);
    });
    press(grid->viewport()->findChild<QWidget*>("txtCell"), Qt::Key_8, "8");
    while (!isPainted) {
      QApplication::processEvents();
    }
    press(grid->viewport()->findChild<QWidget*>("txtCell"), Qt::Key_Escape, {});
  });
  return seconds;
}

}  // namespace

void AddCurveRows(const std::string& drives) {
  SettingsFile() = QString::fromStdString(drives) + "/settings.ini";
  AddRow({.name = "opening a sensor's editor with its curve, compared with none",
          .goal = 1.5,
          .program = [] { return Open(true); },
          .limit = [] { return Open(false); },
          .repetitions = kRepetitions});
  AddRow({.name = "a typed digit to the painted curve of 51 points, compared with a frame",
          .goal = 2.0,
          .program = TypeAndDraw,
          .limit = [] { return kFrame; },
          .repetitions = kRepetitions});
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): std::function frees it

}  // namespace tarvell::bench
