// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <optional>

#include "core/dates/FileDate.h"
#include "core/platform/ProgramPath.h"
#include "core/station/StationFiles.h"
#include "core/survey/FileCheck.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kLastKeyword = "CAL DATA";

/// Whether the last line is the one that ends every instrument's file.
bool HasLastLine(std::string_view bytes) {
  std::string_view last;
  while (!bytes.empty()) {
    last = TakeLine(bytes);
  }
  return ParseKeywordLine(DecodeFileText(last)).keyword == kLastKeyword;
}

/// The address of an instrument with its bus, "" for one that is on no bus.
std::string AddressOf(const StationInstrument& instrument) {
  const std::string_view type = Trim(instrument.AddressType);
  const std::string_view address = Trim(instrument.Address);
  return type.empty() || type == "NONE" || address.empty()
             ? std::string()
             : std::string(type) + " " + std::string(address);
}

/// An instrument that is not calibrated has no due date, or the one that an empty line stands for.
bool HasDueDate(const StationInstrument& instrument) {
  return !(instrument.DueDay + instrument.DueMonth + instrument.DueYear).empty() &&
         instrument.DueMonth != "1";
}

void CheckDueDate(const StationInstrument& instrument, SurveyRow& row) {
  if (!HasDueDate(instrument)) {
    return;
  }
  row.due = DueDateOf(instrument);
  if (!Exists(row.due)) {
    row.Add(FindingKind::NoSuchDate,
            "The due date " +
                Quoted(instrument.DueDay + " " + instrument.DueMonth + " " + instrument.DueYear) +
                " does not exist. Correct it at the station.");
  }
}

void CheckInstrument(std::string_view bytes, SurveyRow& row) {
  const std::optional<StationInstrument> plain = PlainInstrumentIn(bytes);
  const StationInstrument instrument = plain ? *plain : InstrumentIn(bytes, row.path);
  const std::string name(LastNameOf(row.path));
  row.model = instrument.ModelNumber.empty() ? name : instrument.ModelNumber;
  row.serialNumber = instrument.SerialNumber;
  row.comment = instrument.Comment;
  row.address = AddressOf(instrument);
  CheckDueDate(instrument, row);
  if (!EqualsIgnoringCase(row.model, name)) {
    row.Add(FindingKind::OtherModel, "The file holds an instrument of the model " +
                                         Quoted(row.model) +
                                         ". Save the instrument again at the station, then "
                                         "delete this file there.");
  }
  if (!plain) {
    CheckRewritten(
        bytes, [&] { return InstrumentBytes(instrument); }, HasLastLine(bytes), row);
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
