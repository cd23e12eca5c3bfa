// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/station/StationFiles.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/FileNames.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

/// The files of the stations. The first byte of an input chooses: an instrument file of the bytes
/// that follow is loaded, saved, loaded and saved, or the lines that follow are the names in the
/// two INDEX files.
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
  const std::string second = Saved(disk, again);
  Require(HoldsComma(instrument) ? CutAtCommas(first) == CutAtCommas(second) : first == second,
          "a saved file is saved again as it was, up to the first comma of each line",
          first + "\n" + second);
}

void CheckInstrument(const std::string& bytes) {
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

/// The names as they are given.
void CheckIndexes(Input& input) {
  std::vector<std::string> names;
  std::string expected;
  for (std::string line = input.Line(); !line.empty(); line = input.Line()) {
    names.push_back(DecodeFileText(line));
    expected += line + "\r\n";
  }
  MemoryPlatform disk;
  disk.MakeFolders("root/S1");
  const bool areLines = std::none_of(names.begin(), names.end(), [](const std::string& name) {
    return name.find_first_of("\r\n") != std::string::npos;
  });
  Require(Accepts([&] { WriteStationIndex("c:\\root", names); }) == areLines,
          "only a name with a line end is refused");
  if (areLines) {
    Require(*disk.Find("root/INDEX") == expected, "the root's INDEX has a line for each station");
    WriteStationInstrumentIndex(kStation, names);
    Require(*disk.Find("root/S1/INDEX") == expected + "INDEX\r\n",
            "a station's INDEX has a line for each instrument and ends with its own name");
    Require(ListStations("c:\\root") == std::vector<std::string>{"S1"}, "INDEX is no station");
    Require(ListInstruments(kStation).empty(), "INDEX is no instrument");
  }
}

}  // namespace

void Run(Input input) {
  if (input.Byte() % 3 == 0) {
    CheckInstrument(input.Rest());
  } else {
    CheckIndexes(input);
  }
}

}  // namespace tarvell::fuzz
