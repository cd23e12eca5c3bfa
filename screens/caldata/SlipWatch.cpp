// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/SlipWatch.h"

#include <QItemSelectionModel>
#include <QStringList>

#include <optional>
#include <utility>

#include "core/caldata/MemoryGrid.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

// Subjects of notices.
constexpr const char* kSlips = "slips";
constexpr const char* kLimits = "limits";

}  // namespace

SlipWatch::SlipWatch(const Editor& editor, QObject* parent) : QObject(parent), editor_(editor) {
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &SlipWatch::Look);
  connect(&editor_.grid->Model(), &GridModel::Changed, this, &SlipWatch::LookSoon);
  connect(editor_.earlier, &EarlierChoice::Changed, this, &SlipWatch::LookSoon);
  connect(editor_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &SlipWatch::Report);
}

void SlipWatch::Begin(const Model& model) {
  model_ = &model;
  isLoaded_ = false;
  slips_ = {};
  LookSoon();
}

void SlipWatch::End() {
  soon_.stop();
  model_ = nullptr;
}

void SlipWatch::LookSoon() {
  if (model_ != nullptr) {
    soon_.start(0);
  }
}

void SlipWatch::Load() {
  const SlipLimits limits = LoadSlipLimits(gCalibrationDir);
  limit_ = limits.Of(*model_);
  QStringList problems;
  for (const std::string& problem : limits.problems) {
    problems << ToQt(problem);
  }
  editor_.notices->Report(kLimits, problems.join(' '));
  isLoaded_ = true;
}

void SlipWatch::Look() {
  if (!isLoaded_) {
    Load();
  }
  MemoryGrid before;
  std::optional<PageTable> earlier;
  if (editor_.earlier->Fill(editor_.page(), before)) {
    earlier.emplace(PageTable{*model_, editor_.page(), before});
  }
  GridModel& model = editor_.grid->Model();
  slips_ = FindSlips({.table = ShownTable(),
                      .origins = model.Origins(),
                      .earlier = earlier ? &*earlier : nullptr,
                      .limit = limit_});
  CellNotes marks;
  for (const auto& [cell, why] : slips_.marks) {
    marks[cell] = ToQt(why);
  }
  model.SetSlips(std::move(marks));
  Report();
}

void SlipWatch::Report() {
  // Between a change and the next look, the marks are those of other rows.
  if (model_ != nullptr && !soon_.isActive()) {
    editor_.notices->Report(kSlips,
                            ToQt(SlipReport(slips_, ShownTable(), editor_.grid->CurrentCell())));
  }
}

PageTable SlipWatch::ShownTable() const {
  return {*model_, editor_.page(), editor_.grid->Data()};
}

}  // namespace tarvell
