// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/SurveyThread.h"

#include <QMetaObject>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <iterator>
#include <memory>
#include <system_error>
#include <utility>

namespace tarvell {

namespace {

/// The time between two reports of rows, in which the screen handles keys.
constexpr std::chrono::milliseconds kPause(50);

/// The time that the survey takes between two events of the screens, without a thread of its own.
constexpr std::chrono::milliseconds kTimeBetweenEvents(20);

}  // namespace

std::jthread StartSurveyThread(const std::function<void(std::stop_token stop)>& work) {
  return std::jthread(work);
}

SurveyThread::SurveyThread(SurveyOrder order, Reports reports, const SurveyThreadStarter& start)
    : reports_(std::move(reports)), survey_(std::move(order)) {
  try {
    thread_ = start(
        [this](const std::stop_token& stop) { Run([&stop] { return stop.stop_requested(); }); });
  } catch (const std::system_error&) {
    RunBetweenEvents();
  }
}

void SurveyThread::RunBetweenEvents() {
  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [this, timer] {
    const auto end = std::chrono::steady_clock::now() + kTimeBetweenEvents;
    if (!Run([end] { return std::chrono::steady_clock::now() >= end; })) {
      timer->stop();
    }
  });
  timer->start();
}

bool SurveyThread::Run(const std::function<bool()>& isEnough) {
  try {
    while (survey_.Step()) {
      HandRows();
      if (isEnough()) {
        return true;
      }
    }
    const auto result = std::make_shared<SurveyResult>(survey_.TakeResult());
    Hand([this, result] { reports_.finished(std::move(*result)); });
  } catch (...) {
    Hand([this, failure = std::current_exception()] { reports_.failed(failure); });
  }
  return false;
}

void SurveyThread::HandRows() {
  if (survey_.Rows().size() == handed_ || !isReady_.exchange(false)) {
    return;
  }
  const auto first = std::next(survey_.Rows().begin(), static_cast<std::ptrdiff_t>(handed_));
  const auto rows = std::make_shared<std::vector<SurveyRow>>(first, survey_.Rows().end());
  Hand([this, rows, done = survey_.Progress()] {
    reports_.found(std::move(*rows), done);
    QTimer::singleShot(kPause, this, [this] { isReady_ = true; });
  });
  handed_ = survey_.Rows().size();
}

void SurveyThread::Hand(std::function<void()> report) {
  QMetaObject::invokeMethod(this, std::move(report), Qt::QueuedConnection);
}

}  // namespace tarvell
