// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_SURVEYTABLE_H
#define TARVELL_CORE_SURVEY_SURVEYTABLE_H

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "core/survey/SurveyRow.h"

/// The rows of a survey as a table of texts.
namespace tarvell {

enum class SurveyColumn {
  Kind,
  Model,
  SerialNumber,
  CalibrationNumber,
  Calibrated,
  Due,
  DaysLeft,
  Comment,
  Stations,
  State,
  ToDo,
  Path
};
inline constexpr std::size_t kSurveyColumns = 12;

/// The captions, in the order of SurveyColumn.
extern const std::array<std::string_view, kSurveyColumns> kSurveyCaptions;

/// What a row is about: "data set", "instrument", "list" (an INDEX) or "folder".
[[nodiscard]] std::string_view WordsOf(const SurveyRow& row);

/// The text of a cell, in UTF-8. A date is that of IsoDate; stations and states are
/// separated by ", ". After the states of a row without a serial number comes its path.
[[nodiscard]] std::string SurveyCell(const SurveyRow& row, SurveyColumn column);

/// The same for programs: "data-set", "instrument" or "place". It never changes.
[[nodiscard]] std::string_view CodeOf(SurveyRow::Kind kind);

/// The table as comma-separated values (RFC 4180), in UTF-8, with the captions in its first line.
[[nodiscard]] std::string SurveyCsv(std::span<const SurveyRow> rows);

}  // namespace tarvell

#endif
