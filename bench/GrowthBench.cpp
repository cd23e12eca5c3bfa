// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <benchmark/benchmark.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "RatioReporter.h"
#include "Workplace.h"
#include "core/files/ItemReader.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"

namespace tarvell::bench {

namespace {

constexpr std::array<long, 4> kSizes = {10, 100, 1000, 10000};

/// Lists the folders of a root; of many, the first 256.
void ListModels(const std::string& root) {
  std::vector<std::string> names;
  try {
    ListModelFolders(root, names);
  } catch (const Error&) {
    // Too many are told after the listing.
  }
  Use(names);
}

void ReadItems(const std::string& path) {
  ItemReader reader(path);
  while (!reader.AtEnd()) {
    Use(reader.ReadItem());
  }
}

void AddFor(const std::string& row, long size, const std::function<void()>& work) {
  AddGrowth(row, size, [=](benchmark::State& state) { Measure(state, work); });
}

}  // namespace

void AddGrowthRows() {
  for (const long size : kSizes) {
    const std::string number = std::to_string(size);
    const std::string station = "c:\\grown\\station" + number;
    const std::string stations = "c:\\grown\\stations" + number;
    const std::string others = R"(c:\grown\others)" + number + R"(\PX12A)";
    const std::string root = "c:\\grown\\root" + number;
    const std::string file = "c:\\grown\\rows" + number;
    std::string rows;
    for (long i = 0; i < size; ++i) {
      const std::string name = "/M" + std::to_string(i);
      WriteFile(Native(station) + name, "");
      WriteFile(Native(stations) + name + "/INDEX", "");
      WriteFile(Native(root) + name + "/SN1", "");
      WriteFile(Native(others) + name, "");
      rows += "* 50.00 100.0\r\n";
    }
    WriteFile(Native(others) + "/SN12345", HeaderBytes(12345));
    WriteFile(Native(file), rows);
    AddFor("instruments listed", size, [=] { Use(ListInstruments(station)); });
    AddFor("stations listed", size, [=] { Use(ListStations(stations)); });
    AddFor("station index written", size,
           [=, names = ListStations(stations)] { WriteStationIndex(stations, names); });
    AddFor("model folders listed", size, [=] { ListModels(root); });
    AddFor("headers read in a folder of other files", size,
           [=] { Use(ReadCalFileHeaders(others)); });
    AddFor("rows of a file read", size, [=] { ReadItems(file); });
  }
}

}  // namespace tarvell::bench
