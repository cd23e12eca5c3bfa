// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SAMPLEINSTRUMENT_H
#define TARVELL_TESTS_SUPPORT_SAMPLEINSTRUMENT_H

#include <string>

#include "core/station/StationFiles.h"

namespace tarvell::test {

/// An instrument of a station without an empty field.
[[nodiscard]] inline StationInstrument SampleInstrument() {
  return {.ModelNumber = "PX12A",
          .SerialNumber = "3318A12345",
          .AddressType = "GP-IB",
          .Address = "13",
          .Station = "rack 2",
          .Options = "001",
          .Availability = "yes",
          .DueDay = "5",
          .DueMonth = "MAR",
          .DueYear = "2002",
          .Asset = "A-77",
          .Trace = "lab 4",
          .Comment = "factory",
          .CalData = "own file"};
}

/// Its file.
inline constexpr const char* kSampleInstrumentFile =
    "MODEL NUMBER PX12A\r\n"
    "SERIAL NUMBER 3318A12345\r\n"
    "ADDRESS TYPE GP-IB\r\n"
    "ADDRESS 13\r\n"
    "STATION rack 2\r\n"
    "OPTIONS 001\r\n"
    "AVAILABILITY yes\r\n"
    "CAL DUE DATE 5 MAR 2002\r\n"
    "ASSET A-77\r\n"
    "TRACE lab 4\r\n"
    "COMMENT factory\r\n"
    "CAL DATA own file\r\n";

}  // namespace tarvell::test

#endif
