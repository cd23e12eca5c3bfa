// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SetModels.h"

#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "core/caldata/cInstrRT730A.h"

namespace tarvell::test {

namespace {

template <typename Class>
std::unique_ptr<cifCaldata> Create() {
  return std::make_unique<Class>();
}

/// The lines that open the pages, whose serial numbers are S0, S1 and so on.
std::vector<Texts> CapacitorOpenings(const Texts& pages) {
  std::vector<Texts> openings;
  for (const std::string& page : pages) {
    openings.push_back({"#" + page + "    :     S" + std::to_string(openings.size())});
  }
  return openings;
}

SetModel CapacitorSet(const std::string& code, const std::string& otherCode,
                      std::unique_ptr<cifCaldata> (*create)(), const Texts& pages,
                      std::size_t requiredPages) {
  return {code,          otherCode,
          create,        pages,
          requiredPages, CapacitorOpenings(pages),
          {"!END", "!"}, {{"", "", "", "", ""}}};
}

}  // namespace

const SetModel& CapacitorSetA() {
  static const SetModel kSet = CapacitorSet("RT520A", "RT520C", &Create<cInstrRT520A>,
                                            {"RT521A", "RT522A", "RT523A", "RT524A"}, 4);
  return kSet;
}

const SetModel& CapacitorSetC() {
  // The last page is that of option 001.
  static const SetModel kSet = CapacitorSet("RT520C", "RT520A", &Create<cInstrRT520C>,
                                            {"RT525A", "RT526A", "RT527A", "RT528A"}, 3);
  return kSet;
}

const SetModel& ResistorSet() {
  // clang-format off
  static const SetModel kSet = {
      "RT730A",
      "RT520A",
      &Create<cInstrRT730A>,
      {"DC Registance", "Indactance / Parallel Capacitance", "HF Calibration at 10ohm",
       "HF Calibration at 100ohm", "HF Calibration at 1kohm", "HF Calibration at 10kohm",
       "HF Calibration at 100kohm"},
      7,
      {{"!", "!DC Resistance",
        "!Model     : Nominal Value : Calibrated Value : Unc.(%)"},
       {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz",
        "!Model     : Calibrated Value : Unc.(%)"},
       {"!", "!High Freqency Calibration Results", "! 10 ohm (MODEL QZ RT735A)",
        "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
       {"!", "! 100 ohm (MODEL QZ RT736A)",
        "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
       {"!", "! 1 kohm (MODEL QZ RT737A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
       {"!", "! 10 kohm (MODEL QZ RT738A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
       {"!", "! 100 kohm (MODEL QZ RT739A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"}},
      {"!END"},
      {}};
  // clang-format on
  return kSet;
}

void PrintTo(const SetModel& set, std::ostream* stream) {
  *stream << set.code;
}

}  // namespace tarvell::test
