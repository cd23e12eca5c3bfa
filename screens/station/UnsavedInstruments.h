// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_UNSAVEDINSTRUMENTS_H
#define TARVELL_SCREENS_STATION_UNSAVEDINSTRUMENTS_H

#include <QListWidget>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

#include "core/station/StationFiles.h"

namespace tarvell {

/// The instruments of a station that were added and not saved, with the contents of their fields.
/// Each has a marked entry in the list of instruments.
class UnsavedInstruments {
 public:
  /// Adds the instrument of a new entry, whose name is the model number.
  void Add(QListWidgetItem* entry, const StationInstrument& instrument);
  [[nodiscard]] bool Contains(const QListWidgetItem* entry) const;
  [[nodiscard]] const std::string& ModelOf(const QListWidgetItem* entry) const;
  [[nodiscard]] const StationInstrument& InstrumentOf(const QListWidgetItem* entry) const;
  /// Keeps the contents of the fields, if the instrument of this entry is not saved.
  void Keep(const QListWidgetItem* entry, const StationInstrument& instrument);
  /// The instrument of this entry is saved now.
  void Saved(QListWidgetItem* entry);
  void Forget(const std::string& name);
  void Clear() { unsaved_.clear(); }

  /// Shows these instruments, then the ones that are not saved and not among them.
  void ShowWith(const std::vector<std::string>& instruments, QListWidget* list,
                const std::string& placeholder) const;
  /// The names of those in the list, except that of `entry`.
  [[nodiscard]] QStringList NamesWithout(const QListWidgetItem* entry,
                                         const QListWidget* list) const;

 private:
  struct Unsaved {
    std::string name;
    StationInstrument instrument;
  };

  std::map<int, Unsaved> unsaved_;  ///< by the number stored in the entry
  int last_ = 0;
};

}  // namespace tarvell

#endif
