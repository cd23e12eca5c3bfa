// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_ImportPreview.h"

#include <QSignalBlocker>

#include <algorithm>
#include <utility>

#include "screens/caldata/EarlierChoice.h"
#include "screens/caldata/ImportNotes.h"
#include "screens/caldata/ImportPreview.h"
#include "screens/caldata/PlannedTables.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtText.h"

/// What an import would do, as its preview shows it.
namespace tarvell {

namespace {

using Change = PastedRow::Change;

}  // namespace

void ImportPreview::Plan() {
  error_.clear();
  plan_ = {};
  Guarded(
      this, [this] { plan_ = PlanImport(target_, certificate_, choices_); },
      [this](const Error& error) { error_ = ToQt(error.what()); });
  ForgetAnswers();
  const std::size_t missing = plan_.Count(Change::Missing);
  const QString points = HasOnlyDefaults(target_.now)
                             ? missing == 1 ? tr("point of the template")
                                            : tr("%1 points of the template").arg(missing)
                         : missing == 1 ? tr("point")
                                        : tr("%1 points").arg(missing);
  ui_->chkRemove->setText(tr("&Remove the %1 that the certificate does not have").arg(points));
  ui_->chkRemove->setVisible(!HasPages(target_.model) && missing > 0);
  ui_->chkConfirm->setVisible(!plan_.doubts.empty());
  Judge();
  ShowSummary();
  ShowPlannedHeader(ui_->tblHeader, plan_.fields);
  // The values are shown first.
  const auto changed = std::ranges::count_if(
      plan_.fields, [](const PlannedField& field) { return field.before != field.after; });
  ui_->tabs->setTabText(ui_->tabs->indexOf(ui_->tabHeader),
                        changed == 0 ? tr("&Header") : tr("&Header: %1 changed").arg(changed));
  ShowRows();
  ScrollRows();
  ShowNotes();
  ShowButtons();
}

void ImportPreview::ForgetAnswers() {
  std::vector<std::vector<std::string>> points;
  for (const PagePlan& page : plan_.pages) {
    for (const PlannedRow& planned : page.rows) {
      if (planned.row.change == Change::Missing) {
        points.push_back(planned.row.before);
      }
    }
  }
  const bool areOtherDoubts = std::exchange(askedDoubts_, plan_.doubts) != plan_.doubts;
  const bool areOtherPoints = std::exchange(askedPoints_, points) != points;
  const auto set = [](QCheckBox* box, bool isTicked) {
    const QSignalBlocker noPlanYet(box);
    box->setChecked(isTicked);
  };
  if (areOtherDoubts) {
    set(ui_->chkConfirm, false);
  }
  if (areOtherPoints) {
    set(ui_->chkRemove, HasOnlyDefaults(target_.now));
  }
}

void ImportPreview::Judge() {
  judged_.clear();
  const EditorState after = After();
  const std::unique_ptr<cifCaldata> earlier = earlier_.DataFor(after.header);
  for (const PagePlan& page : plan_.pages) {
    judged_[page.page] = JudgePage({.model = target_.model,
                                    .data = target_.data,
                                    .state = after,
                                    .earlier = earlier.get(),
                                    .limit = limit_},
                                   page.page);
  }
}

void ImportPreview::ShowSummary() {
  QStringList names;
  for (const CertificateItem& item : certificate_.items) {
    names << ItemName(item, target_.language);
  }
  ui_->lblSummary->setText(
      tr("%1 (%2): %3. Rows: %4 updated, %5 added, %6 as before.")
          .arg(fileName_, ToQt(certificate_.kind),
               names.isEmpty() ? tr("no instrument is named") : names.join(", "))
          .arg(plan_.Count(Change::Updated))
          .arg(plan_.Count(Change::Added))
          .arg(plan_.Count(Change::Unchanged)));
}

const PagePlan* ImportPreview::ShownPlan() const {
  const auto found = std::ranges::find(plan_.pages, page_, &PagePlan::page);
  return found == plan_.pages.end() ? nullptr : &*found;
}

void ImportPreview::ShowRows() {
  ShownPage page = {{}, ShownPlan(), {}, RemovesMissing()};
  for (const ModelColumn& column : ShownColumns()) {
    page.captions << ToQt(column.caption);
  }
  if (page.plan != nullptr) {
    page.marks = judged_.at(page_).slips.marks;
  }
  ShowPlannedRows(ui_->tblRows, page);
}

void ImportPreview::ScrollRows() {
  if (const PagePlan* plan = ShownPlan()) {
    ScrollToChange(ui_->tblRows, *plan);
  }
}

void ImportPreview::ShowNotes() {
  std::vector<std::string> slips;
  for (const auto& [page, judged] : judged_) {
    slips.insert(slips.end(), judged.sentences.begin(), judged.sentences.end());
  }
  ui_->txtNotes->setPlainText(
      ImportNotes({error_, OpenQuestions(certificate_, reading_), plan_, std::move(slips)}));
}

bool ImportPreview::HasOpenTables() const {
  return std::ranges::any_of(choices_.pages, &PageChoice::IsOpen);
}

bool ImportPreview::RemovesMissing() const {
  return !HasPages(target_.model) && ui_->chkRemove->isChecked();
}

void ImportPreview::ShowButtons() {
  const bool isConfirmed = plan_.doubts.empty() || ui_->chkConfirm->isChecked();
  const QString hint =
      !error_.isEmpty() ? tr("These values cannot be imported. The reason is above.")
      : !OpenQuestions(certificate_, reading_).empty()
          ? tr("Say how to read what can be read in two ways.")
      : HasOpenTables()     ? tr("Choose the table that is meant.")
      : !plan_.open.empty() ? tr("Choose the columns that can be meant in several ways.")
      : !plan_.HasValues()  ? tr("There is nothing to import into this data set.")
      : !plan_.HasPlace(RemovesMissing()) ? tr("The table has no room for all points. Remove those "
                                               "that are not in the certificate.")
      : !isConfirmed                      ? tr("Check what is said above, then confirm it.")
                                          : QString();
  ui_->lblHint->setText(hint);
  ui_->btnOk->setEnabled(hint.isEmpty());
}

}  // namespace tarvell
