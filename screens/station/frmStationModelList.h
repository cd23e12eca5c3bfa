// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_FRMSTATIONMODELLIST_H
#define TARVELL_SCREENS_STATION_FRMSTATIONMODELLIST_H

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidgetItem>
#include <QTimer>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/mTypeDef.h"
#include "core/station/StationFiles.h"
#include "core/station/StationIndex.h"

namespace tarvell {

namespace Ui {
class frmStationModelList;
}

/// Edits the instruments of one station. A new one is made for each visit.
class frmStationModelList final : public QDialog {
  Q_OBJECT

 public:
  explicit frmStationModelList(QWidget* parent);
  frmStationModelList(const frmStationModelList&) = delete;
  frmStationModelList& operator=(const frmStationModelList&) = delete;
  ~frmStationModelList() override;

  /// Set by the opener before the screen is shown.
  std::string StationName;

  /// Shows the screen of StationName with its list read afresh, until it is closed.
  void ShowModally();

  /// Escape and the frame do what Return does, and leave the screen also when INDEX cannot be
  /// written, which is told.
  void reject() override;

 private:
  /// A save that the user took back, as it would replace an unseen file, counts as failed.
  enum class SaveResult { Saved, InvalidDate, Failed };

  void LstInstrment_Click();
  void Field_Change();
  void cmbSerial_Click();
  void btnAdd_Click();
  void btnDelete_Click();
  void btnClear_Click();
  void btnSave_Click();
  void btnReturn_Click();

  void SetUpFields();
  /// Reports on the notice line what is shown and would be read back differently, and which file
  /// the fields mean where that is not the one that the list marks.
  void ReportNotices();
  /// Reads the list of instruments; a folder that cannot be read is told.
  void RefreshInstrumentList();
  void ReadInstrumentList();
  void ShowInstruments(const std::vector<std::string>& instruments);
  void WriteStationInstrumentIndex();
  /// Reads the serial numbers of a model's data files; what cannot be read is told.
  std::vector<std::string> ReadSerials(const std::string& model);
  void FillSerialList(const std::vector<std::string>& serials);
  [[nodiscard]] QListWidgetItem* SelectedEntry() const;
  /// The entry whose instrument the fields show becomes the selected one again.
  void SelectShownEntry();
  void LoadInstrument(QListWidgetItem* entry);
  /// Whether an entry is that of an instrument which was added and not saved.
  [[nodiscard]] bool IsUnsaved(const QListWidgetItem* entry) const;
  void MarkUnsaved(QListWidgetItem* entry, int number) const;
  void SetSaved(QListWidgetItem* entry);
  /// Keeps what the fields show, where that is an instrument that is not saved.
  void KeepUnsaved();
  void ShowUnsaved(QListWidgetItem* entry);
  /// The other instruments that are not saved, as a notice; "" when there are none.
  [[nodiscard]] QString OthersUnsaved() const;
  /// The models that an instrument can be chosen from; when there are none that is told.
  [[nodiscard]] std::vector<std::string> ModelsToPickFrom();
  void AddInstrument();
  /// Lists and shows a new instrument, whose serial number is the `row`-th of its model's.
  void ShowAdded(const CalFileInfo& picked, const std::vector<std::string>& serials, int row);
  /// Deletes as the button does; the keyboard goes to the entry that is marked.
  void DeleteByKey();
  /// Deletes the file that the fields mean; of an instrument that was added and not saved, the
  /// entry only.
  void DeleteInstrument();
  void ClearInstruments();
  /// Asks whether to leave a station whose folder is gone; false where it is there.
  bool MayLeaveWithoutIndex();
  /// Asks about an opened instrument, and saves it when that is the answer.
  bool MayLeave();
  SaveResult Save();

  [[nodiscard]] StationInstrument Shown() const;
  void Show(const StationInstrument& instrument);
  void ShowRow(const CalFileInfo& row);
  void EmptyFields();

  std::unique_ptr<Ui::frmStationModelList> ui_;
  std::array<QLineEdit*, 11> txtData_{};
  QTimer noticesAreDue_;
  std::vector<std::pair<std::string StationInstrument::*, QLineEdit*>> boxes_;
  /// An instrument that was added and not saved, and the name of its entry.
  struct Unsaved {
    std::string name;
    StationInstrument instrument;
  };
  std::map<int, Unsaved> unsaved_;  ///< by the number that the entry holds
  int lastUnsaved_ = 0;
  QListWidgetItem* shownEntry_ = nullptr;  ///< the entry whose instrument the fields show
  std::string stationFolder_;
  StoredFile file_;            ///< of the shown instrument
  StationIndex index_;         ///< what this visit knows of the list
  bool isListed_ = false;      ///< whether the list shows what the folder holds
  bool editingArmed_ = false;  ///< whether an edit enables the Save button
};

}  // namespace tarvell

#endif
