// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QAbstractButton>
#include <QDialog>
#include <QListWidget>
#include <benchmark/benchmark.h>

#include <chrono>

#include "Painted.h"
#include "RatioReporter.h"
#include "Workplace.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"

namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 31;

/// Size of the editor that was painted last.
QSize& EditorSize() {
  static QSize size(800, 600);
  return size;
}

/// From the click on Edit, in a menu that has just been opened, to the painted editor.
void OpenEditor(benchmark::State& state) {
  gCalibrationDir = "c:\\data";
  for (auto iteration : state) {
    static_cast<void>(iteration);
    frmCalibrationMain menu(nullptr);
    std::chrono::steady_clock::time_point start;
    const Painted editorPainted(
        [](const QWidget& window) {
          return qobject_cast<const frmCalDataTabInput*>(&window) != nullptr;
        },
        [&](QWidget& editor) {
          state.SetIterationTime(SecondsSince(start));
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
  }
}

void PaintEmptyWindow(benchmark::State& state) {
  for (auto iteration : state) {
    static_cast<void>(iteration);
    const auto start = std::chrono::steady_clock::now();
    QDialog window;
    window.resize(EditorSize());
    const Painted painted([&](const QWidget& shown) { return &shown == &window; },
                          [&](QWidget&) {
                            state.SetIterationTime(SecondsSince(start));
                            window.close();
                          });
    window.exec();
  }
}

}  // namespace

void AddEditorRows() {
  AddRow("click to the painted editor of a resistor set", 2.0, kRepetitions, OpenEditor,
         PaintEmptyWindow);
}

}  // namespace tarvell::bench
