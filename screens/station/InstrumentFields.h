// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_INSTRUMENTFIELDS_H
#define TARVELL_SCREENS_STATION_INSTRUMENTFIELDS_H

#include <QLineEdit>
#include <QObject>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/mTypeDef.h"
#include "core/station/StationFiles.h"
#include "screens/station/InstrumentPick.h"

namespace tarvell {

class NoticeLine;

namespace Ui {
class frmStationModelList;
}

/// The fields of an instrument on the screen of a station.
class InstrumentFields final : public QObject {
  Q_OBJECT

 public:
  InstrumentFields(const Ui::frmStationModelList& ui, QWidget* screen);

  [[nodiscard]] StationInstrument Values() const;
  void Show(const StationInstrument& instrument);
  /// Shows what the calibration data say of an instrument; a date that is missing as 1 JAN 2000.
  void ShowCalFile(const CalFileInfo& file);
  /// Shows an instrument that was picked from the calibration data.
  void ShowPicked(PickedInstrument picked);
  /// Offers the serial numbers of these data files, and chooses none.
  void OfferSerials(std::vector<CalFileInfo> files);
  /// Empties the text boxes.
  void ClearTexts();
  /// Shows no instrument.
  void Empty();

  /// Marks and reports the fields that would be read back differently.
  void ReportNotices(NoticeLine& notices) const;

 signals:
  /// A field was changed, by the user or by the program.
  void Changed();

 private:
  void SetUpBoxes();
  void cmbSerial_Click();

  const Ui::frmStationModelList& ui_;
  std::array<QLineEdit*, 11> txtData_{};
  std::vector<std::pair<std::string StationInstrument::*, QLineEdit*>> boxes_;
  std::vector<CalFileInfo> serialFiles_;  ///< the data file of each entry of cmbSerial
};

}  // namespace tarvell

#endif
