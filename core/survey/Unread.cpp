// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Unread.h"

#include <algorithm>

namespace tarvell {

namespace {

bool IsDamage(const Finding& finding) {
  return finding.kind == FindingKind::Unreadable || finding.kind == FindingKind::CutOff ||
         finding.kind == FindingKind::NoSuchDate;
}

/// Whether nobody knows when an instrument is due, because its file or the date is damaged.
bool LacksDueDate(const SurveyRow& row) {
  return row.kind != SurveyRow::Kind::Place && !row.daysLeft && !row.isCopy &&
         std::ranges::any_of(row.findings, &IsDamage);
}

}  // namespace

bool LacksSomething(const SurveyRow& row, Unread unread) {
  return row.isFolder || (unread == Unread::DueDates && LacksDueDate(row));
}

std::string TextOfDamage(const SurveyRow& row) {
  return std::ranges::find_if(row.findings, &IsDamage)->text;
}

}  // namespace tarvell
