// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/SlipWatch.h"

#include <QItemSelectionModel>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

#include "core/caldata/TableRows.h"
#include "core/curves/SlipReport.h"
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
  connect(editor_.earlier, &EarlierChoice::Changed, this, [this] {
    pages_.clear();
    LookSoon();
  });
  connect(editor_.grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &SlipWatch::Report);
}

void SlipWatch::Begin(const Model& model, const cifCaldata& data) {
  model_ = &model;
  data_ = &data;
  isLoaded_ = false;
  pages_.clear();
  LookSoon();
}

void SlipWatch::End() {
  soon_.stop();
  model_ = nullptr;
  data_ = nullptr;
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
  const std::int16_t count = data_->GetCalPageCount();
  std::erase_if(pages_, [count](const auto& page) { return page.first >= count; });
  for (std::int16_t page = 0; page < count; ++page) {
    Judge(page);
  }
  MarkTable();
  if (editor_.tabs != nullptr) {
    MarkTabs();
  }
  Report();
}

void SlipWatch::Judge(std::int16_t page) {
  const bool isShown = page == editor_.page();
  const MemoryGrid& shown = editor_.grid->Data();
  MemoryGrid now(isShown ? shown.ColumnCount() : kTableColumns);
  if (isShown) {
    now.SetRows(shown.Rows());
  } else {
    data_->GetCalData(page, now);
  }
  const CellOrigins& origins = isShown ? editor_.grid->Model().Origins() : editor_.origins(page);
  JudgedPage& judged = pages_[page];
  if (judged.grid.Rows() == now.Rows() && judged.origins == origins) {
    return;
  }
  MemoryGrid before;
  std::optional<PageTable> earlier;
  if (editor_.earlier->Fill(page, before)) {
    earlier.emplace(PageTable{*model_, page, before});
  }
  judged.grid.Clear(now.ColumnCount());
  judged.grid.SetRows(now.Rows());
  judged.origins = origins;
  judged.slips = FindSlips({.table = {*model_, page, judged.grid},
                            .origins = origins,
                            .earlier = earlier ? &*earlier : nullptr,
                            .limit = limit_});
}

void SlipWatch::MarkTable() {
  CellNotes marks;
  for (const auto& [cell, why] : pages_[editor_.page()].slips.marks) {
    marks[cell] = ToQt(why);
  }
  editor_.grid->Model().SetSlips(std::move(marks));
}

void SlipWatch::MarkTabs() {
  for (int tab = 0; tab < editor_.tabs->count(); ++tab) {
    const Slips& slips = pages_[static_cast<std::int16_t>(tab)].slips;
    const auto count = static_cast<int>(slips.marks.size());
    const QString text = count == 1  ? tr("1 value may be a slip of typing.")
                         : count > 1 ? tr("%1 values may be slips of typing.").arg(count)
                                     : ToQt(slips.notice);
    if (text == editor_.tabs->tabToolTip(tab)) {
      continue;
    }
    editor_.tabs->setTabToolTip(tab, text);
    editor_.tabs->setTabIcon(tab, text.isEmpty() ? QIcon() : SlipIcon());
    // The name of a tab is its title unless it has another one.
    editor_.tabs->setAccessibleTabName(
        tab, text.isEmpty()
                 ? QString()
                 : ToQt(data_->GetCalPageName(static_cast<std::int16_t>(tab))) + ", " + text);
  }
}

void SlipWatch::Report() {
  // Between a change and the next look, the marks are those of other rows.
  if (model_ == nullptr || soon_.isActive()) {
    return;
  }
  std::vector<PageSlips> found;
  for (const auto& [page, judged] : pages_) {
    found.push_back({{*model_, page, judged.grid},
                     editor_.tabs == nullptr ? std::string() : data_->GetCalPageName(page),
                     judged.slips});
  }
  editor_.notices->Report(kSlips,
                          ToQt(SlipReport(found, editor_.page(), editor_.grid->CurrentCell())));
  // What a cell does not hold as it was typed is certain; a slip is only likely.
  editor_.notices->ShowAbout(kCellNotice);
}

}  // namespace tarvell
