// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QObject>
#include <QProgressBar>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "Laboratory.h"
#include "Ratios.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/overview/OverviewTable.h"
#include "screens/overview/frmOverview.h"

/// The overview of a laboratory.
namespace tarvell::bench {

namespace {

constexpr int kRepetitions = 11;
constexpr double kShort = 0.1;          // seconds
constexpr double kMemory = 200 * 1024;  // kilobytes

using Clock = std::chrono::steady_clock;

/// Measures for how long the thread of the screens does not take events, such as keys.
class Holds final : public QObject {
 public:
  Holds() { startTimer(0); }
  void Forget() { longest_ = 0; }
  [[nodiscard]] double Longest() const { return longest_; }

  void timerEvent(QTimerEvent* /*event*/) override {
    longest_ = std::max(longest_, SecondsSince(last_));
    last_ = Clock::now();
  }

 private:
  Clock::time_point last_ = Clock::now();
  double longest_ = 0;
};

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

void ChooseDirectories(const std::string& folder) {
  gCalibrationDir = folder + "/calfactors";
  gStationDir = folder + "/stations";
}

/// The seconds from the opened overview to its first painted row.
double FirstRow(const std::string& folder) {
  ChooseDirectories(folder);
  double seconds = 0;
  const auto start = Clock::now();
  frmOverview overview(nullptr);
  const FirstRowPainted painted(*overview.findChild<OverviewTable*>(), [&] {
    seconds = SecondsSince(start);
    overview.close();
  });
  overview.ShowModally([] { return FileDate{2026, 11, 22}; });
  return seconds;
}

/// The longest hold while the overview fills or, when it is full, while `act` and what follows from
/// it are done.
double LongestHold(const std::string& folder,
                   const std::function<void(frmOverview& overview)>& act) {
  ChooseDirectories(folder);
  frmOverview overview(nullptr);
  const auto* progress = overview.findChild<QProgressBar*>("prgSurvey");
  Holds holds;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (progress->isVisible()) {
      return;
    }
    look.stop();
    if (act) {
      holds.Forget();
      act(overview);
    }
    // When all of it is painted.
    QTimer::singleShot(100, &overview, &QDialog::close);
  });
  look.start(20);
  overview.ShowModally([] { return FileDate{2026, 11, 22}; });
  return holds.Longest();
}

void SortBySerialNumber(frmOverview& overview) {
  overview.findChild<OverviewTable*>()->horizontalHeader()->setSortIndicator(2,
                                                                             Qt::DescendingOrder);
}

void Narrow(frmOverview& overview) {
  overview.findChild<QLineEdit*>("txtFilter")->setText("999");
}

void AddOverview(const std::string& name, const Laboratory& laboratory) {
  const auto add = [&](const std::string& work, const std::function<double(std::string)>& measure) {
    AddRow({.name = work + ", " + name + ", compared with 100 ms",
            .goal = 1,
            .program = [laboratory, measure] { return measure(laboratory.Folder()); },
            .limit = [] { return kShort; },
            .repetitions = kRepetitions});
  };
  add("F6 to the first painted row", &FirstRow);
  add("longest hold of the keys while the overview fills",
      [](const std::string& folder) { return LongestHold(folder, {}); });
  add("longest hold when it is sorted",
      [](const std::string& folder) { return LongestHold(folder, &SortBySerialNumber); });
  add("longest hold when it is narrowed",
      [](const std::string& folder) { return LongestHold(folder, &Narrow); });
  AddRow({.name = "peak memory of the overview, " + name + ", compared with 200 MB",
          .goal = 1,
          .program =
              [laboratory] { return PeakMemory(TARVELL_BENCH_OVERVIEW, {laboratory.Folder()}); },
          .limit = [] { return kMemory; },
          .repetitions = 3,
          .isMemory = true});
}

}  // namespace

void AddOverviewRows() {
  AddOverview("10,000 data sets", Laboratory("laboratory", {}));
  AddOverview("100,000 data sets", Laboratory("large", {"--data-sets", "100000"}));
}

}  // namespace tarvell::bench
