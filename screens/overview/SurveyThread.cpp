// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/SurveyThread.h"

#include <QMetaObject>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

namespace tarvell {

namespace {

/// The time between two reports of rows, in which the screen handles keys.
constexpr std::chrono::milliseconds kPause(50);

}  // namespace

SurveyThread::SurveyThread(SurveyOrder order, Reports reports)
    : reports_(std::move(reports)),
      thread_([this, order = std::move(order)](const std::stop_token& stop) {
        try {
          Run(order, stop);
        } catch (...) {
          Hand([this, failure = std::current_exception()] { reports_.failed(failure); });
        }
      }) {}

void SurveyThread::Run(const SurveyOrder& order, const std::stop_token& stop) {
  Survey survey(order);
  std::size_t handed = 0;
  while (survey.Step()) {
    if (stop.stop_requested()) {
      return;
    }
    if (survey.Rows().size() == handed || !isReady_.exchange(false)) {
      continue;
    }
    const auto first = std::next(survey.Rows().begin(), static_cast<std::ptrdiff_t>(handed));
    const auto rows = std::make_shared<std::vector<SurveyRow>>(first, survey.Rows().end());
    Hand([this, rows, done = survey.Progress()] {
      reports_.found(std::move(*rows), done);
      QTimer::singleShot(kPause, this, [this] { isReady_ = true; });
    });
    handed = survey.Rows().size();
  }
  const auto result = std::make_shared<SurveyResult>(survey.TakeResult());
  Hand([this, result] { reports_.finished(std::move(*result)); });
}

void SurveyThread::Hand(std::function<void()> report) {
  QMetaObject::invokeMethod(this, std::move(report), Qt::QueuedConnection);
}

}  // namespace tarvell
