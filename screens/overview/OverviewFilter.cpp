// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/OverviewFilter.h"

#include <QEvent>
#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/text/FileCharacters.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

// Settings.
constexpr const char* kState = "overview/state";
constexpr const char* kStation = "overview/station";

constexpr const char* kToDo = "to-do";

// The first entries of the list of states; then comes one for each state.
constexpr int kAllStates = 0;
constexpr int kAnyFault = 1;
constexpr int kFirstState = 2;

QString Words(FindingKind kind) {
  const QString words = ToQt(WordsOf(kind));
  return words.left(1).toUpper() + words.mid(1);
}

FindingKind KindAt(int entry) {
  return static_cast<FindingKind>(entry - kFirstState);
}

QString WithCount(const QString& words, std::ptrdiff_t count) {
  return QString("%1 (%2)").arg(words).arg(count);
}

}  // namespace

OverviewFilter::OverviewFilter(const Controls& controls, QObject* parent)
    : QObject(parent), controls_(controls) {
  AddStates();
  controls_.state->setCurrentIndex(
      std::max(controls_.state->findData(RememberedText(kState)), kAllStates));
  controls_.station->addItem(tr("All"), QByteArray());
  if (const std::string station = FromQt(RememberedText(kStation)); !station.empty()) {
    AddStation(station);
    controls_.station->setCurrentIndex(1);
  }
  isDue_.setSingleShot(true);
  connect(&isDue_, &QTimer::timeout, this, &OverviewFilter::Changed);
  // Several keys that wait are one change.
  connect(controls_.text, &QLineEdit::textChanged, this, [this] { isDue_.start(0); });
  for (const QComboBox* list : {controls_.state, controls_.station}) {
    connect(list, &QComboBox::currentIndexChanged, this, &OverviewFilter::Changed);
  }
  controls_.text->installEventFilter(this);
}

void OverviewFilter::AddStates() const {
  controls_.state->addItem(tr("All"), QString());
  controls_.state->addItem(tr("Something to do"), QString(kToDo));
  for (std::size_t kind = 0; kind < kFindingKinds; ++kind) {
    const auto state = static_cast<FindingKind>(kind);
    controls_.state->addItem(Words(state), ToQt(CodeOf(state)));
  }
}

RowFilter OverviewFilter::Filter() const {
  RowFilter filter = {.text = FromQt(controls_.text->text()),
                      .station = controls_.station->currentData().toByteArray().toStdString()};
  const int state = controls_.state->currentIndex();
  filter.onlyFaults = state == kAnyFault;
  if (state >= kFirstState) {
    filter.state = KindAt(state);
  }
  return filter;
}

void OverviewFilter::AddStation(const std::string& name) {
  if (stations_.insert(name).second) {
    controls_.station->addItem(ToQt(NameText(name)), QByteArray::fromStdString(name));
  }
}

void OverviewFilter::AddStations(const std::vector<SurveyRow>& rows) {
  for (const SurveyRow& row : rows) {
    if (row.kind != SurveyRow::Kind::DataSet && !row.stations.empty()) {
      AddStation(row.stations.front());
    }
  }
}

void OverviewFilter::ShowSurveyed(const std::vector<SurveyRow>& rows) {
  AddStations(rows);
  std::array<std::ptrdiff_t, kFindingKinds> counts{};
  for (const SurveyRow& row : rows) {
    for (const Finding& finding : row.findings) {
      ++counts.at(static_cast<std::size_t>(finding.kind));
    }
  }
  controls_.state->setItemText(
      kAnyFault,
      WithCount(tr("Something to do"), std::ranges::count_if(rows, &SurveyRow::HasFault)));
  for (int entry = kFirstState; entry < controls_.state->count(); ++entry) {
    const FindingKind kind = KindAt(entry);
    controls_.state->setItemText(entry,
                                 WithCount(Words(kind), counts.at(static_cast<std::size_t>(kind))));
  }
  const std::string chosen = Filter().station;
  const bool exists = chosen.empty() || std::ranges::any_of(rows, [&](const SurveyRow& row) {
                        return std::ranges::find(row.stations, chosen) != row.stations.end();
                      });
  if (!exists) {
    controls_.station->setCurrentIndex(0);
  }
}

void OverviewFilter::RememberChoices() const {
  Remember(kState, controls_.state->currentData().toString());
  Remember(kStation, QString::fromUtf8(controls_.station->currentData().toByteArray()));
}

bool OverviewFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) {
    return QObject::eventFilter(watched, event);
  }
  const auto& key = *static_cast<QKeyEvent*>(event);
  const bool clears = key.key() == Qt::Key_Escape && !controls_.text->text().isEmpty();
  const bool leaves = IsPlainEnter(key) || key.key() == Qt::Key_Down;
  if (event->type() == QEvent::ShortcutOverride) {
    if (clears) {
      event->accept();
    }
    return clears;
  }
  if (clears) {
    controls_.text->clear();
  } else if (leaves) {
    emit Left();
  }
  return clears || leaves;
}

}  // namespace tarvell
