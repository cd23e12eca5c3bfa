// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/station/StationFiles.h"

#include <algorithm>
#include <array>
#include <optional>
#include <sstream>
#include <string>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/FileNames.h"
#include "core/text/Text.h"

/// The files of the stations' instruments. An input is one, which is loaded, saved, loaded and
/// saved.
namespace tarvell::fuzz {
namespace {

constexpr const char* kStation = "c:\\root\\S1";

std::string Saved(const MemoryPlatform& disk, const StationInstrument& instrument) {
  StoredFile file;
  SaveInstrumentFile(kStation, instrument, file);
  return *disk.Find("root/S1/" + instrument.ModelNumber);
}

bool IsUsable(const std::string& modelNumber) {
  return !EqualsIgnoringCase(modelNumber, kIndexName) &&
         Accepts([&] { CheckFileName(modelNumber, "The name"); });
}

/// Replaces values that are known not to be read back:
/// - CAL DATA is the last line of a saved file, which is never interpreted;
/// - an empty address type means "NONE", a missing due date the 1st of "1" 2000;
/// - a due date without its month or year is read from the words that are left;
/// - a comma, which a quoted line may hold, ends the model number and with it the file's name.
void Settle(StationInstrument& instrument) {
  for (std::string* text :
       {&instrument.ModelNumber, &instrument.AddressType, &instrument.DueMonth}) {
    std::replace(text->begin(), text->end(), ',', ';');
  }
  instrument.CalData.clear();
  if (instrument.AddressType.empty()) {
    instrument.AddressType = "NONE";
  }
  if (instrument.DueDay.empty() || instrument.DueMonth.empty() || instrument.DueYear.empty()) {
    instrument.DueDay = "5";
    instrument.DueMonth = "MAR";
    instrument.DueYear = "2002";
  }
}

using Texts = std::array<std::string*, 11>;

/// The fields that are written as they are.
Texts TextsOf(StationInstrument& instrument) {
  return {&instrument.ModelNumber,  &instrument.SerialNumber, &instrument.AddressType,
          &instrument.Address,      &instrument.Station,      &instrument.Options,
          &instrument.Availability, &instrument.DueMonth,     &instrument.Asset,
          &instrument.Trace,        &instrument.Comment};
}

bool HoldsComma(StationInstrument instrument) {
  const Texts texts = TextsOf(instrument);
  return std::any_of(texts.begin(), texts.end(),
                     [](const std::string* text) { return text->find(',') != std::string::npos; });
}

/// A saved file without what follows the first comma of each line.
std::string CutAtCommas(const std::string& bytes) {
  std::string cut;
  std::istringstream lines(bytes);
  for (std::string line; std::getline(lines, line);) {
    line.resize(line.find_first_of(",\r"));
    cut += Stripped(line) + "\n";
  }
  return cut;
}

void CheckSaving(MemoryPlatform& disk, const StationInstrument& instrument) {
  std::string first;
  if (!Accepts([&] { first = Saved(disk, instrument); })) {
    Require(HoldsComma(instrument), "only text after a comma is refused");
    return;
  }
  StationInstrument again;
  StoredFile file;
  Require(LoadInstrumentFile("c:\\root\\S1\\" + instrument.ModelNumber, again, file),
          "a saved file is loaded");
  Require(file.Unread().empty(), "a saved file has its end", file.Unread());
  const std::string second = Saved(disk, again);
  Require(HoldsComma(instrument) ? CutAtCommas(first) == CutAtCommas(second) : first == second,
          "a saved file is saved again as it was, up to the first comma of each line",
          first + "\n" + second);
}

}  // namespace

void Run(Input input) {
  const std::string bytes = input.Rest();
  if (const std::optional<StationInstrument> plain = PlainInstrumentIn(bytes)) {
    const StationInstrument whole = InstrumentIn(bytes, "");
    Require(InstrumentBytes(*plain) == bytes && InstrumentBytes(whole) == bytes,
            "a plain file is read as a whole and written as it was");
  }
  MemoryPlatform disk;
  disk.Put("root/S1/other", bytes);
  StationInstrument instrument;
  StoredFile file;
  bool found = false;
  if (!Accepts([&] { found = LoadInstrumentFile("c:\\root\\S1\\other", instrument, file); })) {
    return;
  }
  Require(found == !bytes.empty(), "only an empty file gives nothing");
  static_cast<void>(Accepts([&] { static_cast<void>(HasValidDueDate(instrument)); }));

  if (!IsUsable(instrument.ModelNumber)) {
    instrument.ModelNumber = "PX12A";
  }
  Settle(instrument);
  CheckSaving(disk, instrument);
  // Again with a text in every field, so that one that is never read back is noticed.
  for (std::string* text : TextsOf(instrument)) {
    *text += text->empty() ? "x" : "";
  }
  CheckSaving(disk, instrument);
}

}  // namespace tarvell::fuzz
