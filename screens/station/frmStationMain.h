// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_FRMSTATIONMAIN_H
#define TARVELL_SCREENS_STATION_FRMSTATIONMAIN_H

#include <QDialog>

#include <memory>
#include <string>

#include "core/station/StationIndex.h"

namespace tarvell {

class ListHead;

namespace Ui {
class frmStationMain;
}

/// Lists the stations of the station data root; adds, opens and deletes them.
class frmStationMain final : public QDialog {
  Q_OBJECT

 public:
  explicit frmStationMain(QWidget* parent);
  frmStationMain(const frmStationMain&) = delete;
  frmStationMain& operator=(const frmStationMain&) = delete;
  ~frmStationMain() override;

  /// Reads the list of stations and shows the screen until it is closed.
  void ShowModally();

  /// Escape and the window frame close the screen without saving INDEX; they ask first if stations
  /// were added or deleted.
  void reject() override;

 signals:
  /// The user wants to see the overview, by its button or F6.
  void OverviewWanted();

 private:
  void btnAdd_Click();
  void btnEdit_Click();
  void btnDelete_Click();
  void btnReturn_Click();

  /// Reads the list of stations; shows the error when the root cannot be read.
  void RefreshStationList();
  void ReadStationList();
  /// The same for F5, which keeps the selection.
  void RefreshSelecting();
  void WriteStationIndex();
  void AddStation();
  void DeleteStation();
  /// The selected station, "" when none is.
  [[nodiscard]] std::string SelectedStation() const;

  std::unique_ptr<Ui::frmStationMain> ui_;
  ListHead* head_;
  StationIndex index_;      ///< merges the list with what others wrote to INDEX
  bool isListed_ = false;   ///< whether the list shows what the root holds
  bool isChanged_ = false;  ///< whether a station was added or deleted since INDEX was saved
};

}  // namespace tarvell

#endif
