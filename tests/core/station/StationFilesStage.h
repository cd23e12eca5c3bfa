// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_CORE_STATION_STATIONFILESSTAGE_H
#define TARVELL_TESTS_CORE_STATION_STATIONFILESSTAGE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

namespace tarvell::test {

using Names = std::vector<std::string>;

inline constexpr const char* kRoot = "c:\\stations";
inline constexpr const char* kStation = R"(c:\stations\ST1)";
inline constexpr const char* kFile = R"(c:\stations\ST1\PX12A)";
inline constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";
inline constexpr std::string_view kOld =
    "MODEL NUMBER an earlier file, of another length\r\n\r\n\r\n";

/// An instrument with only these fields.
[[nodiscard]] inline StationInstrument With(
    const std::vector<std::pair<std::string StationInstrument::*, std::string>>& fields) {
  StationInstrument instrument;
  for (const auto& [field, text] : fields) {
    instrument.*field = text;
  }
  return instrument;
}

/// The sample with another text in one field.
[[nodiscard]] inline StationInstrument SampleWith(std::string StationInstrument::*field,
                                                  const std::string& text) {
  StationInstrument instrument = SampleInstrument();
  instrument.*field = text;
  return instrument;
}

/// Every field of `instrument`, in the order of the file.
[[nodiscard]] inline Names FieldsOf(const StationInstrument& instrument) {
  return {instrument.ModelNumber,  instrument.SerialNumber, instrument.AddressType,
          instrument.Address,      instrument.Station,      instrument.Options,
          instrument.Availability, instrument.DueDay,       instrument.DueMonth,
          instrument.DueYear,      instrument.Asset,        instrument.Trace,
          instrument.Comment,      instrument.CalData};
}

[[nodiscard]] inline Names Sorted(Names names) {
  std::sort(names.begin(), names.end());
  return names;
}

inline bool Load(StationInstrument& instrument) {
  StoredFile file;
  return LoadInstrumentFile(kFile, instrument, file);
}

inline void Save(const StationInstrument& instrument) {
  StoredFile file;
  SaveInstrumentFile(kStation, instrument, file);
}

class StationFiles : public testing::Test {
 protected:
  StationFiles() { tree_.MakeFolders(kStation); }

  /// `instrument` after a file with these bytes was read over it.
  [[nodiscard]] StationInstrument Loaded(std::string_view bytes,
                                         StationInstrument instrument = {}) const {
    tree_.Write(kFile, bytes);
    EXPECT_TRUE(Load(instrument));
    return instrument;
  }
  /// The same of one line, followed by one that is never interpreted.
  [[nodiscard]] StationInstrument LoadedLine(const std::string& line) const {
    return Loaded(Lines({line, "CAL DATA last"}));
  }

  /// Reading the instrument's file fails with an error of this kind, and leaves the instrument
  /// as it was.
  static Error ExpectUnreadable(ErrorKind kind) {
    StationInstrument instrument = SampleInstrument();
    const Error error = ErrorOf([&] { Load(instrument); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(SampleInstrument()));
    return error;
  }

  /// Saving under this model number fails for the reason `why`, and writes nothing.
  void ExpectRefusedModel(const std::string& model, const std::string& why) const {
    SCOPED_TRACE(model);
    const Names before = tree_.Names(kStation);
    const Error error = ErrorOf([&] { Save(SampleWith(&StationInstrument::ModelNumber, model)); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name);
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kStation), before);
  }

  /// Making a station of this name fails with an error of this kind and for the reason `why`, and
  /// makes nothing.
  void ExpectRefusedStation(const std::string& name, ErrorKind kind, const std::string& why) const {
    SCOPED_TRACE(name);
    const Names before = tree_.Names(kRoot);
    const Error error = ErrorOf([&] { MakeStation(kRoot, name); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kRoot), before);
  }

  TestTree tree_;
};

}  // namespace tarvell::test

#endif
