// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_FRMSTATIONGETINSTR_H
#define TARVELL_SCREENS_STATION_FRMSTATIONGETINSTR_H

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/mTypeDef.h"

namespace tarvell {

class ListHead;

namespace Ui {
class frmStationGetInstr;
}

/// Picks an instrument from the calibration data tree. It writes nothing.
class frmStationGetInstr final : public QDialog {
  Q_OBJECT

 public:
  static constexpr std::int16_t kCancelled = 9999;

  explicit frmStationGetInstr(QWidget* parent);
  frmStationGetInstr(const frmStationGetInstr&) = delete;
  frmStationGetInstr& operator=(const frmStationGetInstr&) = delete;
  ~frmStationGetInstr() override;

  /// Row of `gCalFiles` that was picked, 51 when no row matched, kCancelled when the dialog was
  /// cancelled.
  std::int16_t Result = kCancelled;

  /// The data file of the picked row; none when no row matched or the dialog was cancelled.
  [[nodiscard]] const std::optional<CalFileInfo>& PickedFile() const { return pickedFile_; }

  /// Shows the dialog with these models of the calibration data tree, until it is closed.
  void ShowModally(const std::vector<std::string>& models);

  /// Whether only data sets that match a filter were listed when the file was picked.
  [[nodiscard]] bool WasFiltered() const;

  void reject() override;

 private:
  void LstInstrment_Click();
  void ListSerials(bool isTyping);
  void ShowModels(const std::vector<std::string>& models);
  /// Reads both lists again and selects what was selected.
  void RefreshLists();
  void btnAdd_Click();
  void btnCancel_Click();

  std::unique_ptr<Ui::frmStationGetInstr> ui_;
  ListHead* modelHead_;
  ListHead* serialHead_;
  std::optional<CalFileInfo> pickedFile_;
};

}  // namespace tarvell

#endif
