// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Comparison.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "core/caldata/Models.h"
#include "core/dates/DueDate.h"
#include "core/files/FileNames.h"
#include "core/platform/ProgramPath.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Rows by a text that some of them share.
using RowGroups = std::unordered_map<std::string, std::vector<SurveyRow*>>;

std::string KeyOf(std::string_view model, std::string_view fileName) {
  return ToUpper(model) + "\\" + ToUpper(fileName);
}

/// Whether the due date of a row can be compared. In the old style it may be 29 FEB of a common
/// year.
bool HasRightDueDate(const SurveyRow& row) {
  return Exists(row.due) || !row.Has(FindingKind::NoSuchDate);
}

bool IsBroken(const SurveyRow& row) {
  return row.Has(FindingKind::Unreadable) || row.Has(FindingKind::CutOff);
}

bool IsOfAComparison(FindingKind kind) {
  switch (kind) {
    case FindingKind::DueDateDiffers:
    case FindingKind::SerialDiffers:
    case FindingKind::DataSetMissing:
    case FindingKind::NotUsed:
    case FindingKind::SharedFileName:
    case FindingKind::SharedAddress:
      return true;
    default:
      return false;
  }
}

class Comparison {
 public:
  Comparison(const SurveyedTrees& trees, std::vector<SurveyRow>& rows)
      : trees_(trees), rows_(rows) {}

  void Run() {
    std::ranges::for_each(rows_, &Forget);
    GroupRows();
    for (SurveyRow& row : rows_) {
      if (row.kind == SurveyRow::Kind::Instrument) {
        FindDataSet(row);
      }
    }
    NoteUnused();
    NoteShared(sameFileName_, FindingKind::SharedFileName);
    NoteShared(sameAddress_, FindingKind::SharedAddress);
  }

 private:
  static void Forget(SurveyRow& row) {
    std::erase_if(row.findings, [](const Finding& it) { return IsOfAComparison(it.kind); });
    row.dataSet.clear();
    if (row.kind == SurveyRow::Kind::DataSet) {
      row.stations.clear();
    }
  }

  void GroupRows() {
    dataSets_.reserve(rows_.size());
    for (SurveyRow& row : rows_) {
      if (row.kind == SurveyRow::Kind::DataSet) {
        dataSets_[KeyOf(row.model, LastNameOf(row.path))].push_back(&row);
        if (row.Has(FindingKind::OtherSerial) && !row.serialNumber.empty()) {
          sameFileName_[KeyOf(row.model, UncheckedDataFileName(row.serialNumber))].push_back(&row);
        }
      } else if (!row.address.empty()) {
        sameAddress_[KeyOf(row.stations.front(), row.address)].push_back(&row);
      }
    }
    // Most data sets have the name that their serial number gives.
    for (const auto& [key, rows] : dataSets_) {
      if (rows.size() > 1 || sameFileName_.contains(key)) {
        for (SurveyRow* row : rows) {
          if (!row->Has(FindingKind::OtherSerial) && !row->serialNumber.empty()) {
            sameFileName_[key].push_back(row);
          }
        }
      }
    }
  }

  /// Whether the calibration tree should have the data set of an instrument.
  [[nodiscard]] bool IsExpected(const SurveyRow& instrument) const {
    const std::string model = ToUpper(LastNameOf(instrument.path));
    return trees_.hasDataSets && !trees_.unlisted.contains(model) &&
           (trees_.models.contains(model) || FindModel(model) != nullptr);
  }

  void FindDataSet(SurveyRow& instrument) {
    if (IsBroken(instrument) && instrument.serialNumber.empty()) {
      return;
    }
    const std::string name = UncheckedDataFileName(instrument.serialNumber);
    // The file of an instrument is named after its model.
    const auto found = dataSets_.find(KeyOf(LastNameOf(instrument.path), name));
    if (instrument.serialNumber.empty() || found == dataSets_.end()) {
      if (IsExpected(instrument)) {
        NoteMissing(name, instrument);
      }
      return;
    }
    const std::vector<SurveyRow*>& candidates = found->second;
    const auto same =
        std::ranges::find(candidates, instrument.serialNumber, &SurveyRow::serialNumber);
    SurveyRow& dataSet = same == candidates.end() ? *candidates.front() : **same;
    instrument.dataSet = dataSet.path;
    const std::string& station = instrument.stations.front();
    if (dataSet.stations.empty() || dataSet.stations.back() != station) {
      dataSet.stations.push_back(station);
    }
    CompareWith(dataSet, instrument);
  }

  static void NoteMissing(const std::string& name, SurveyRow& instrument) {
    instrument.Add(FindingKind::DataSetMissing,
                   instrument.serialNumber.empty()
                       ? "The instrument has no serial number, so that it has no data set. Choose "
                         "its serial number at the station."
                       : "The calibration data have no " +
                             Joined(LastNameOf(instrument.path), name) +
                             ". Enter its data set, or correct the serial number at the station.");
  }

  static void CompareWith(const SurveyRow& dataSet, SurveyRow& instrument) {
    if (IsBroken(dataSet) || IsBroken(instrument) || dataSet.Has(FindingKind::OtherSerial)) {
      return;
    }
    if (instrument.serialNumber != dataSet.serialNumber) {
      instrument.Add(FindingKind::SerialDiffers, "The station has the serial number " +
                                                     instrument.serialNumber + ", the data set " +
                                                     dataSet.serialNumber +
                                                     ". Choose the right one at the station.");
      return;
    }
    const bool areDates = HasRightDueDate(instrument) && HasRightDueDate(dataSet);
    if (areDates && DaysLeft(dataSet.due, kAnyDay) && instrument.due != dataSet.due) {
      instrument.Add(FindingKind::DueDateDiffers, "The station says " + DateText(instrument.due) +
                                                      ", the data set " + DateText(dataSet.due) +
                                                      ". Update the station.");
    }
  }

  void NoteUnused() {
    for (SurveyRow& row : rows_) {
      if (trees_.hasStations && row.kind == SurveyRow::Kind::DataSet && row.stations.empty() &&
          !IsBroken(row)) {
        row.Add(FindingKind::NotUsed,
                "No station uses the data set. If a station should, add the instrument there.");
      }
    }
  }

  static void NoteShared(const RowGroups& groups, FindingKind kind) {
    for (const auto& [key, rows] : groups) {
      if (rows.size() > 1) {
        for (SurveyRow* row : rows) {
          row->Add(kind, TextOfShared(kind, *row, rows));
        }
      }
    }
  }

  static std::string TextOfShared(FindingKind kind, const SurveyRow& row,
                                  const std::vector<SurveyRow*>& rows) {
    std::string others;
    for (const SurveyRow* other : rows) {
      if (other != &row) {
        others += (others.empty() ? "" : ", ") + std::string(LastNameOf(other->path));
      }
    }
    return kind == FindingKind::SharedAddress
               ? others + " has the same address, " + row.address +
                     ". Give each instrument of the station an address of its own."
               : others +
                     " holds a serial number with the same last five characters, which name "
                     "the file: saving one data set would replace the other. Check both "
                     "serial numbers.";
  }

  static constexpr FileDate kAnyDay = {2000, 1, 1};

  const SurveyedTrees& trees_;
  std::vector<SurveyRow>& rows_;
  RowGroups dataSets_;      ///< by model and file name
  RowGroups sameFileName_;  ///< by model and the file name that the serial number gives
  RowGroups sameAddress_;   ///< by station and address
};

}  // namespace

void CompareRows(const SurveyedTrees& trees, std::vector<SurveyRow>& rows) {
  Comparison(trees, rows).Run();
}

}  // namespace tarvell
