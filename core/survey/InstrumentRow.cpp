// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "core/dates/FileDate.h"
#include "core/platform/ProgramPath.h"
#include "core/station/InstrumentEnd.h"
#include "core/station/StationFiles.h"
#include "core/survey/FileCheck.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// The address of an instrument with its bus, "" for one that is on no bus.
std::string AddressOf(const StationInstrument& instrument) {
  const std::string_view type = Trim(instrument.AddressType);
  const std::string_view address = Trim(instrument.Address);
  return type.empty() || type == "NONE" || address.empty()
             ? std::string()
             : std::string(type) + " " + std::string(address);
}

/// An instrument that is not calibrated has no due date. An empty line is read as 1 1 2000, and a
/// save writes that.
bool HasDueDate(const StationInstrument& instrument) {
  const bool isEmpty = (instrument.DueDay + instrument.DueMonth + instrument.DueYear).empty();
  const bool standsForEmpty =
      instrument.DueDay == "1" && instrument.DueMonth == "1" && instrument.DueYear == "2000";
  return !isEmpty && !standsForEmpty;
}

/// The due date as the file has it. The fields of an instrument complete one that lacks a part.
std::string DueDateIn(std::string_view bytes) {
  const FileSummary summary = SummaryOfInstrument(bytes);
  return std::ranges::find(summary.fields, "CAL DUE DATE", &FileSummary::Field::name)->value;
}

void CheckDueDate(std::string_view bytes, const StationInstrument& instrument, SurveyRow& row) {
  if (!HasDueDate(instrument)) {
    return;
  }
  const FileDate due = DueDateOf(instrument);
  if (Exists(due)) {
    row.due = due;
    return;
  }
  const std::string text = DueDateIn(bytes);
  const bool isComplete = std::ranges::count(text, ' ') >= 2;
  const bool hasMonth = due.month != 0;
  if (isComplete && hasMonth) {
    row.due = due;
  }
  const std::string problem =
      !isComplete ? "The due date " + Quoted(text) + " is not complete"
      : hasMonth  ? "The due date " + Quoted(text) + " does not exist"
                  : "The month of the due date " + Quoted(text) +
                       " must be one of JAN to DEC in capitals, as in \"5 MAR 2027\"";
  row.Add(FindingKind::NoSuchDate, problem + ". Correct it at the station.");
}

/// Compares the model in the file with the file's name, which the station's list shows.
void CheckModel(const std::string& model, SurveyRow& row) {
  const std::string name = NameText(row.model);
  if (EqualsIgnoringCase(model, name)) {
    return;
  }
  if (model.empty()) {
    row.Add(FindingKind::OtherModel, "The file has no MODEL NUMBER. Select " + Quoted(name) +
                                         " at the station, enter " + Quoted(name) +
                                         " as MODEL NUMBER, and save.");
    return;
  }
  row.Add(FindingKind::OtherModel,
          "The file is called " + Quoted(name) + ", but the MODEL NUMBER in it is " +
              Quoted(model) + ". Select " + Quoted(name) +
              " at the station. If that is the model, enter it as MODEL NUMBER, and save. If not, "
              "save it as it is, then enter " +
              Quoted(name) + " as MODEL NUMBER and delete that instrument.");
}

void CheckInstrument(std::string_view bytes, SurveyRow& row) {
  std::optional<StationInstrument> plain = PlainInstrumentIn(bytes);
  const StationInstrument instrument = plain ? std::move(*plain) : InstrumentIn(bytes, row.path);
  row.serialNumber = instrument.SerialNumber;
  row.comment = instrument.Comment;
  row.address = AddressOf(instrument);
  CheckDueDate(bytes, instrument, row);
  const bool hasEnd = plain || NoticeOfMissingEnd(bytes).empty();
  // The missing end explains a missing model.
  if (hasEnd || !instrument.ModelNumber.empty()) {
    CheckModel(instrument.ModelNumber, row);
  }
  if (!plain) {
    CheckRewritten(
        bytes, [&] { return InstrumentBytes(instrument); }, hasEnd, row);
  }
}

}  // namespace

SurveyRow InstrumentRow(const std::string& station, const std::string& path,
                        std::string_view bytes) {
  SurveyRow row;
  row.kind = SurveyRow::Kind::Instrument;
  row.model = LastNameOf(path);
  row.path = path;
  row.stations = {station};
  if (bytes.empty()) {
    row.Add(FindingKind::CutOff,
            "The file is empty. Enter the instrument again, or delete it at the station.");
    return row;
  }
  try {
    CheckInstrument(bytes, row);
  } catch (const Error& error) {
    AddUnreadable(error, row);
  }
  return row;
}

}  // namespace tarvell
