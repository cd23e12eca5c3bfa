// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/SlipWatch.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QStringList>

#include <optional>
#include <utility>

#include "core/caldata/EarlierCalibration.h"
#include "core/dates/Months.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

// Subjects of notices.
constexpr const char* kSlips = "slips";
constexpr const char* kLimits = "limits";

/// No table has more columns.
constexpr std::int16_t kColumnCount = 5;

}  // namespace

SlipWatch::SlipWatch(const Editor& editor, QObject* parent) : QObject(parent), editor_(editor) {
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &SlipWatch::Look);
  const GridModel* model = &editor_.grid->Model();
  connect(model, &QAbstractItemModel::dataChanged, this, &SlipWatch::LookSoon);
  connect(model, &QAbstractItemModel::rowsInserted, this, &SlipWatch::LookSoon);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &SlipWatch::LookSoon);
  connect(model, &QAbstractItemModel::modelReset, this, &SlipWatch::LookSoon);
  connect(editor_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &SlipWatch::Report);
}

void SlipWatch::Begin(const cifCaldata& data, const Model& model, const std::string& path) {
  model_ = &model;
  path_ = path;
  std::string month;
  data.GetCalDate(date_.year, month, date_.day);
  date_.month = MonthToNumber(month);
  isLoaded_ = false;
  slips_ = {};
  LookSoon();
}

void SlipWatch::End() {
  soon_.stop();
  model_ = nullptr;
  earlier_.reset();
}

void SlipWatch::LookSoon() {
  if (model_ != nullptr && !isMarking_) {
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
  earlier_.reset();
  if (!path_.empty()) {
    const std::vector<Calibration> calibrations = CalibrationsOf(path_);
    if (const Calibration* earlier = EarlierCalibration(calibrations, date_)) {
      earlier_ = LoadCalibration(*model_, *earlier);
    }
  }
  isLoaded_ = true;
}

void SlipWatch::Look() {
  if (!isLoaded_) {
    Load();
  }
  MemoryGrid grid(kColumnCount);
  std::optional<PageTable> earlier;
  if (earlier_ && editor_.page() < earlier_->GetCalPageCount()) {
    earlier_->GetCalData(editor_.page(), grid);
    earlier.emplace(PageTable{*model_, editor_.page(), grid});
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
  {
    const QScopedValueRollback<bool> marking(isMarking_, true);
    model.SetSlips(std::move(marks));
  }
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
