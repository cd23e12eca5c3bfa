// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_SURVEYROW_H
#define TARVELL_CORE_SURVEY_SURVEYROW_H

#include <optional>
#include <string>
#include <vector>

#include "core/dates/FileDate.h"
#include "core/survey/Finding.h"

namespace tarvell {

/// One line of the overview.
struct SurveyRow {
  enum class Kind {
    DataSet,
    Instrument,  ///< of a station
    Place        ///< an INDEX or a folder; only those with findings have a row
  };

  Kind kind = Kind::DataSet;
  bool isFolder = false;  ///< of a Place: whether it is a folder that cannot be listed
  std::string path;       ///< of the file or folder, a path of the program
  std::string model;      ///< of a data set, the name of its folder
  std::string serialNumber;
  std::string calibrationNumber;  ///< of a data set
  FileDate calibrated;            ///< of a data set
  FileDate due;
  std::optional<int> daysLeft;  ///< until `due`; nothing if that is not a day
  std::string comment;
  std::string address;  ///< of an instrument on a bus, such as "GP-IB 713"; "" for others
  /// Those that use a data set; of an instrument or an INDEX, its own.
  std::vector<std::string> stations;
  /// The path of the file that the instrument's data set should be in, "" if that was not found.
  std::string dataSet;
  /// Whether `dataSet` holds the serial number of another instrument.
  bool isDataSetOfOther = false;
  /// Of an instrument: its due date is a copy of that of its data set, which is judged instead.
  bool isCopy = false;
  std::vector<Finding> findings;  ///< in the order of FindingKind

  /// Adds a finding at its place.
  void Add(FindingKind kindOfFinding, std::string text);
  [[nodiscard]] bool Has(FindingKind kindOfFinding) const;
  /// Whether there is something to do.
  [[nodiscard]] bool HasFault() const;
};

}  // namespace tarvell

#endif
