// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_FRMSTATIONMODELLIST_H
#define TARVELL_SCREENS_STATION_FRMSTATIONMODELLIST_H

#include <QDialog>
#include <QListWidgetItem>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

#include "core/station/StationFiles.h"
#include "core/station/StationIndex.h"
#include "screens/station/InstrumentPick.h"
#include "screens/station/UnsavedInstruments.h"

namespace tarvell {

class InstrumentFields;
class ListHead;

namespace Ui {
class frmStationModelList;
}

/// Edits the instruments of one station. Each visit to the screen makes a new object.
class frmStationModelList final : public QDialog {
  Q_OBJECT

 public:
  explicit frmStationModelList(QWidget* parent);
  frmStationModelList(const frmStationModelList&) = delete;
  frmStationModelList& operator=(const frmStationModelList&) = delete;
  ~frmStationModelList() override;

  /// Set by the opener before the screen is shown.
  std::string StationName;
  /// The same: the instrument that is selected at first, "" for none.
  std::string InstrumentName;

  /// Reads the list of the station StationName and shows the screen until it is closed.
  void ShowModally();

  /// Escape and the window frame do what Return does, but close the screen even when INDEX cannot
  /// be written to the folder; the error is shown.
  void reject() override;

 private:
  /// A save that the user cancelled, because it would replace an unseen file, counts as failed.
  enum class SaveResult { Saved, InvalidDate, Failed };

  void LstInstrment_Click();
  void Field_Change();
  void btnAdd_Click();
  void btnDelete_Click();
  void btnClear_Click();
  void btnSave_Click();
  void btnReturn_Click();

  /// Reports on the notice line which values would be read back differently, and which file Save
  /// and Delete act on when it is not the selected one.
  void ReportNotices();
  /// Whether Save and Delete would act on the file of an entry while the fields show this model. A
  /// name from an older system has the same text in other bytes.
  [[nodiscard]] bool IsFileOf(const std::string& entry, const std::string& model) const;
  /// Reads the list of instruments; shows the error when the folder cannot be read.
  void RefreshInstrumentList();
  void ReadInstrumentList();
  void ShowInstruments(const std::vector<std::string>& instruments);
  void WriteStationInstrumentIndex();
  [[nodiscard]] QListWidgetItem* SelectedEntry() const;
  /// Selects the entry whose instrument the fields show.
  void SelectShownEntry();
  void LoadInstrument(QListWidgetItem* entry);
  /// Name of the file whose instrument the fields show, "" for none.
  [[nodiscard]] std::string ShownFile() const;
  /// Reads the list and the shown instrument again.
  void ReadShownAgain();
  /// Marks the entries by the due dates in their files.
  void MarkDueDates();
  static void MarkInstrument(QListWidgetItem* entry, const StationInstrument& instrument);
  /// If the fields show an instrument that is not saved, keeps their contents.
  void KeepUnsaved();
  void ShowUnsaved(QListWidgetItem* entry);
  /// A sentence about the other instruments that are not saved; "" when there are none.
  [[nodiscard]] QString OthersUnsaved() const;
  /// Adds a new instrument to the list and shows it.
  void ShowAdded(PickedInstrument picked);
  /// Loads the current entry, unless it is the shown one.
  void OpenByKey();
  /// Makes the entry of the shown instrument the current one, then deletes as the button does. Does
  /// nothing while the filter hides that entry.
  void DeleteByKey();
  /// Deletes the file that the model number names. For an instrument that was added and not saved,
  /// removes only its entry.
  void DeleteInstrument();
  /// Forgets the shown instrument, whose file was deleted.
  void ShowNone();
  void ClearInstruments();
  /// If the station's folder is gone, asks whether to leave; false when the folder exists.
  bool MayLeaveWithoutIndex();
  /// If an instrument is open, asks whether to save it, and saves it on Yes. False when the screen
  /// must stay open.
  bool MayLeave();
  SaveResult Save();

  std::unique_ptr<Ui::frmStationModelList> ui_;
  ListHead* head_;
  InstrumentFields* fields_;
  QTimer noticesAreDue_;
  UnsavedInstruments unsaved_;
  QListWidgetItem* shownEntry_ = nullptr;  ///< the entry whose instrument the fields show
  std::string stationFolder_;
  StoredFile file_;               ///< of the shown instrument
  StationIndex index_;            ///< merges the list with what others wrote to INDEX
  bool isListed_ = false;         ///< whether the list shows what the folder holds
  bool editsEnableSave_ = false;  ///< whether an edit enables the Save button
};

}  // namespace tarvell

#endif
