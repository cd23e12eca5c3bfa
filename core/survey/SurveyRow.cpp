// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/SurveyRow.h"

#include <algorithm>
#include <utility>

namespace tarvell {

void SurveyRow::Add(FindingKind kindOfFinding, std::string text) {
  const auto place = std::ranges::upper_bound(findings, kindOfFinding, {}, &Finding::kind);
  findings.insert(place, {kindOfFinding, std::move(text)});
}

bool SurveyRow::Has(FindingKind kindOfFinding) const {
  return std::ranges::find(findings, kindOfFinding, &Finding::kind) != findings.end();
}

bool SurveyRow::HasFault() const {
  return std::ranges::any_of(findings, &IsFault, &Finding::kind);
}

}  // namespace tarvell
