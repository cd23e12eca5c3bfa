// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Comparison.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "core/caldata/Models.h"
#include "core/dates/DueDate.h"
#include "core/files/FileNames.h"
#include "core/platform/ProgramPath.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A row with a text that others may share.
struct KeyedRow {
  std::string key;
  SurveyRow* row;
};
using RowGroup = std::span<const KeyedRow>;

/// Rows by their keys. Most come sorted, and have a key of their own: then a table is filled and
/// searched more quickly than a map.
class RowGroups {
 public:
  void Reserve(std::size_t count) { rows_.reserve(count); }
  void Add(std::string key, SurveyRow& row) { rows_.push_back({std::move(key), &row}); }
  void Add(const std::vector<KeyedRow>& rows) {
    rows_.insert(rows_.end(), rows.begin(), rows.end());
  }

  /// To be called after Add and before the functions below. Rows with the same key keep their
  /// order.
  void Sort() {
    if (!std::ranges::is_sorted(rows_, {}, &KeyedRow::key)) {
      std::ranges::stable_sort(rows_, {}, &KeyedRow::key);
    }
  }

  [[nodiscard]] RowGroup Of(std::string_view key) const {
    const auto first = std::ranges::lower_bound(rows_, key, {}, &KeyedRow::key);
    return {first, EndOfGroup(first, key)};
  }

  /// Calls `visit` with the rows of each key.
  template <typename Visit>
  void ForEach(const Visit& visit) const {
    for (auto first = rows_.begin(); first != rows_.end();) {
      const auto end = EndOfGroup(first, first->key);
      visit(RowGroup(first, end));
      first = end;
    }
  }

 private:
  using Place = std::vector<KeyedRow>::const_iterator;

  [[nodiscard]] Place EndOfGroup(Place first, std::string_view key) const {
    return std::find_if(first, rows_.end(), [key](const KeyedRow& it) { return it.key != key; });
  }

  std::vector<KeyedRow> rows_;
};

/// The separator sorts before every character of a name, so that rows in the order of folder and
/// name have sorted keys.
std::string KeyOf(std::string_view folder, std::string_view name) {
  std::string key;
  key.reserve(folder.size() + 1 + name.size());
  key += folder;
  key += '\0';
  key += name;
  return ToUpper(key);
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
    row.isDataSetOfOther = false;
    row.isCopy = false;
    if (row.kind == SurveyRow::Kind::DataSet) {
      row.stations.clear();
    }
  }

  void GroupRows() {
    dataSets_.Reserve(rows_.size());
    for (SurveyRow& row : rows_) {
      if (row.kind == SurveyRow::Kind::DataSet) {
        dataSets_.Add(KeyOf(row.model, LastNameOf(row.path)), row);
        if (row.Has(FindingKind::OtherSerial) && !row.serialNumber.empty()) {
          sameFileName_.Add(KeyOf(row.model, UncheckedDataFileName(row.serialNumber)), row);
        }
      } else if (!row.address.empty()) {
        sameAddress_.Add(KeyOf(row.stations.front(), row.address), row);
      }
    }
    dataSets_.Sort();
    sameAddress_.Sort();
    AddRightNames();
  }

  /// Most data sets have the name that their serial number gives.
  void AddRightNames() {
    sameFileName_.Sort();
    std::vector<KeyedRow> shared;
    dataSets_.ForEach([&](RowGroup group) {
      if (group.size() > 1 || !sameFileName_.Of(group.front().key).empty()) {
        std::ranges::copy_if(group, std::back_inserter(shared), [](const KeyedRow& it) {
          return !it.row->Has(FindingKind::OtherSerial) && !it.row->serialNumber.empty();
        });
      }
    });
    sameFileName_.Add(shared);
    sameFileName_.Sort();
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
    const RowGroup candidates = dataSets_.Of(KeyOf(LastNameOf(instrument.path), name));
    if (instrument.serialNumber.empty() || candidates.empty()) {
      if (IsExpected(instrument)) {
        NoteMissing(name, instrument);
      }
      return;
    }
    const auto same = std::ranges::find(candidates, instrument.serialNumber, &SerialNumberOf);
    SurveyRow& dataSet = *(same == candidates.end() ? candidates.front() : *same).row;
    instrument.dataSet = dataSet.path;
    const bool isSame = dataSet.serialNumber == instrument.serialNumber;
    instrument.isDataSetOfOther = !isSame && !dataSet.serialNumber.empty();
    // A data set that cannot be read, or has no date, must not hide what is due at the station.
    instrument.isCopy = isSame && !IsBroken(dataSet) && DaysLeft(dataSet.due, kAnyDay).has_value();
    const std::string& station = instrument.stations.front();
    if (dataSet.stations.empty() || dataSet.stations.back() != station) {
      dataSet.stations.push_back(station);
    }
    CompareWith(dataSet, instrument);
  }

  static const std::string& SerialNumberOf(const KeyedRow& it) { return it.row->serialNumber; }

  static void NoteMissing(const std::string& name, SurveyRow& instrument) {
    instrument.Add(FindingKind::DataSetMissing,
                   instrument.serialNumber.empty()
                       ? "The instrument has no serial number, so that it has no data set. Choose "
                         "its serial number at the station."
                       : "The calibration data have no " +
                             NameText(Joined(LastNameOf(instrument.path), name)) +
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

  /// Whether a station may use a data set although no row says so.
  [[nodiscard]] bool IsAnyUseUnknown() const {
    return !trees_.hasStations || trees_.hasUnlistedStation ||
           std::ranges::any_of(rows_, [](const SurveyRow& row) {
             return row.kind == SurveyRow::Kind::Instrument && IsBroken(row) &&
                    row.serialNumber.empty();
           });
  }

  void NoteUnused() {
    if (IsAnyUseUnknown()) {
      return;
    }
    for (SurveyRow& row : rows_) {
      if (row.kind == SurveyRow::Kind::DataSet && row.stations.empty() && !IsBroken(row)) {
        row.Add(FindingKind::NotUsed,
                "No station uses the data set. If a station should, add the instrument there.");
      }
    }
  }

  static void NoteShared(const RowGroups& groups, FindingKind kind) {
    groups.ForEach([kind](RowGroup group) {
      if (group.size() > 1) {
        for (const KeyedRow& it : group) {
          it.row->Add(kind, TextOfShared(kind, *it.row, group));
        }
      }
    });
  }

  /// The name of another row's file, with its folder where that is another one: two folders of a
  /// model can differ only in case.
  static std::string NameFrom(const SurveyRow& row, const SurveyRow& other) {
    const std::string_view name = LastNameOf(other.path);
    const std::string_view folder = LastNameOf(FolderOf(other.path));
    return NameText(folder == LastNameOf(FolderOf(row.path)) ? std::string(name)
                                                             : Joined(folder, name));
  }

  static std::string TextOfShared(FindingKind kind, const SurveyRow& row, RowGroup group) {
    std::string others;
    for (const KeyedRow& other : group) {
      if (other.row != &row) {
        others += (others.empty() ? "" : ", ") + NameFrom(row, *other.row);
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
