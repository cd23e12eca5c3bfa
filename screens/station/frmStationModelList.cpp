// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/frmStationModelList.h"

#include "ui_frmStationModelList.h"

#include <QShortcut>
#include <QSignalBlocker>

#include <optional>
#include <utility>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "screens/station/InstrumentFields.h"
#include "screens/station/InstrumentHistory.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

constexpr const char* kPlaceholder = "No Model";
constexpr const char* kEntryNotice = "entry";

}  // namespace

frmStationModelList::frmStationModelList(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStationModelList>()) {
  ui_->setupUi(this);
  head_ =
      new ListHead(ui_->LstInstrment, {Qt::Key_K, Qt::Key_W}, ListHead::Orders::ByNameOrDueDate);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  MakeScrollable(ui_->record);
  // One action may change several fields: the notices wait until it has changed all of them.
  noticesAreDue_.setSingleShot(true);
  connect(&noticesAreDue_, &QTimer::timeout, this, &frmStationModelList::ReportNotices);
  fields_ = new InstrumentFields(*ui_, this);
  connect(fields_, &InstrumentFields::Changed, this, &frmStationModelList::Field_Change);
  SetUpSerialList(ui_->LstInstrment);
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          &frmStationModelList::RefreshInstrumentList);
  OnChoice(ui_->LstInstrment, [this] { LstInstrment_Click(); });
  OnEntry(ui_->LstInstrment,
          {.open = [this] { OpenByKey(); }, .remove = [this] { DeleteByKey(); }});
  OfferHandbook(this, chapter::kInstruments);
  new InstrumentHistory({.screen = this,
                         .button = ui_->btnHistory,
                         .list = ui_->LstInstrment,
                         .station = [this] { return StationName; },
                         .shown = [this] { return ShownFile(); },
                         .isChanged = [this] { return ui_->btnSave->isEnabled(); },
                         .readAgain = [this] { ReadShownAgain(); }});
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmStationModelList::btnAdd_Click);
  connect(ui_->btnDelete, &QPushButton::clicked, this, &frmStationModelList::btnDelete_Click);
  connect(ui_->btnClear, &QPushButton::clicked, this, &frmStationModelList::btnClear_Click);
  connect(ui_->btnSave, &QPushButton::clicked, this, &frmStationModelList::btnSave_Click);
  connect(ui_->btnReturn, &QPushButton::clicked, this, &frmStationModelList::btnReturn_Click);
}

frmStationModelList::~frmStationModelList() = default;

void frmStationModelList::ShowModally() {
  const QString station = ToQt(NameText(StationName));
  setWindowTitle(station + " - Station Data Edit - " + ToQt(kApplicationTitle));
  ui_->lbStation->setText("StationName :  " + station);
  stationFolder_ = Joined(gStationDir, StationName);
  fields_->Empty();
  {
    const BusyPointer busy;
    index_.Begin(stationFolder_);
  }
  RefreshInstrumentList();
  editsEnableSave_ = false;
  ui_->btnSave->setEnabled(false);
  // In an empty station the first step is to add an instrument.
  if (ui_->LstInstrment->isEnabled()) {
    ui_->LstInstrment->setFocus();
  } else {
    ui_->btnAdd->setFocus();
  }
  SelectIfShown(ui_->LstInstrment, InstrumentName);
  exec();
}

void frmStationModelList::RefreshInstrumentList() {
  Guarded(this, [this] { ReadInstrumentList(); });
}

void frmStationModelList::ReadInstrumentList() {
  isListed_ = false;
  const FocusKeeper keyboard(ui_->LstInstrment, ui_->btnAdd);
  KeepUnsaved();
  const std::string shown = shownEntry_ == nullptr ? std::string() : NameOfEntry(shownEntry_);
  ShowInstruments({});
  const BusyPointer busy;
  const std::vector<std::string> instruments = ListInstruments(stationFolder_);
  index_.WasListed(instruments);
  ShowInstruments(instruments);
  isListed_ = true;
  const QSignalBlocker blocker(ui_->LstInstrment);
  if (shownEntry_ == nullptr && !shown.empty() && SelectName(ui_->LstInstrment, shown)) {
    shownEntry_ = SelectedEntry();
  }
}

void frmStationModelList::ShowInstruments(const std::vector<std::string>& instruments) {
  const QSignalBlocker blocker(ui_->LstInstrment);
  shownEntry_ = nullptr;
  // An instrument that was added and not saved stays in the list, although it has no file yet.
  unsaved_.ShowWith(instruments, ui_->LstInstrment, kPlaceholder);
  MarkDueDates();
  head_->Apply();
  noticesAreDue_.start();
}

void frmStationModelList::MarkDueDates() {
  for (int row = 0; ui_->LstInstrment->isEnabled() && row < ui_->LstInstrment->count(); ++row) {
    QListWidgetItem* entry = ui_->LstInstrment->item(row);
    StationInstrument instrument;
    StoredFile file;
    const auto read = [&] {
      LoadInstrumentFile(Joined(stationFolder_, NameOfEntry(entry)), instrument, file);
      MarkInstrument(entry, instrument);
    };
    if (!unsaved_.Contains(entry)) {
      // Choosing an entry that cannot be read says why.
      Guarded(this, read, [](const Error&) {});
    }
  }
}

void frmStationModelList::MarkInstrument(QListWidgetItem* entry,
                                         const StationInstrument& instrument) {
  const FileDate due = DueDateOf(instrument);
  const std::string words(DueWords(DueStateOf(due, Today())));
  MarkDueDate(entry, due);
  entry->setToolTip(ToQt("Due: " + DateText(due) + (words.empty() ? "" : ", " + words)));
}

void frmStationModelList::WriteStationInstrumentIndex() {
  if (!isListed_) {
    // Without the real list, INDEX would be replaced by an empty one.
    ReadInstrumentList();
  }
  // The list is disabled while it holds only the placeholder.
  const bool hasInstruments = ui_->LstInstrment->isEnabled();
  const std::vector<std::string> shown =
      hasInstruments ? NamesIn(ui_->LstInstrment) : std::vector<std::string>();
  const BusyPointer busy;
  tarvell::WriteStationInstrumentIndex(stationFolder_,
                                       index_.Merged(shown, ListInstruments(stationFolder_)));
}

QListWidgetItem* frmStationModelList::SelectedEntry() const {
  return ui_->LstInstrment->selectedItems().value(0);
}

void frmStationModelList::SelectShownEntry() {
  const QSignalBlocker blocker(ui_->LstInstrment);
  // The current entry stays, so that the arrow keys go on from there even if it cannot be read.
  ui_->LstInstrment->clearSelection();
  if (shownEntry_ != nullptr) {
    shownEntry_->setSelected(true);
  }
}

void frmStationModelList::LstInstrment_Click() {
  QListWidgetItem* entry = SelectedEntry();
  // An instrument that was never saved has no file to read again.
  if (entry != nullptr && !(entry == shownEntry_ && unsaved_.Contains(entry))) {
    ui_->lblNotice->Report(kEntryNotice, "");
    Guarded(this, [&] { LoadInstrument(entry); });
  }
  SelectShownEntry();
  noticesAreDue_.start();
}

void frmStationModelList::LoadInstrument(QListWidgetItem* entry) {
  const std::string name = NameOfEntry(entry);
  KeepUnsaved();
  if (unsaved_.Contains(entry)) {
    ShowUnsaved(entry);
    return;
  }
  StationInstrument instrument = fields_->Values();
  bool isEmpty = false;
  {
    const BusyPointer busy;
    isEmpty = !LoadInstrumentFile(Joined(stationFolder_, name), instrument, file_);
  }
  editsEnableSave_ = false;
  if (isEmpty) {
    ui_->lblNotice->Report(kEntryNotice, "The file \"" + ToQt(NameText(name)) +
                                             "\" is empty: nothing was read from it.");
  } else {
    fields_->OfferSerials(ReadCalFiles(this, instrument.ModelNumber));
    fields_->Show(instrument);
    ui_->btnSave->setEnabled(false);
    shownEntry_ = entry;
  }
  editsEnableSave_ = true;
}

std::string frmStationModelList::ShownFile() const {
  return shownEntry_ == nullptr ? std::string() : NameOfEntry(shownEntry_);
}

void frmStationModelList::ReadShownAgain() {
  ReadInstrumentList();
  // What is typed and not saved stays.
  if (shownEntry_ != nullptr && !ui_->btnSave->isEnabled()) {
    LoadInstrument(shownEntry_);
    SelectShownEntry();
  }
}

void frmStationModelList::KeepUnsaved() {
  unsaved_.Keep(shownEntry_, fields_->Values());
}

void frmStationModelList::ShowUnsaved(QListWidgetItem* entry) {
  fields_->OfferSerials(ReadCalFiles(this, unsaved_.ModelOf(entry)));
  fields_->Show(unsaved_.InstrumentOf(entry));
  file_ = StoredFile();
  shownEntry_ = entry;
  editsEnableSave_ = true;
  ui_->btnSave->setEnabled(true);
}

QString frmStationModelList::OthersUnsaved() const {
  const QStringList names = unsaved_.NamesWithout(shownEntry_, ui_->LstInstrment);
  return names.isEmpty() ? QString()
                         : "These instruments were added but not saved: " + names.join(", ") +
                               ". Yes and No both lose them. To keep them, choose Cancel and save "
                               "each one.";
}

void frmStationModelList::Field_Change() {
  if (editsEnableSave_) {
    ui_->btnSave->setEnabled(true);
  }
  noticesAreDue_.start();
}

bool frmStationModelList::IsFileOf(const std::string& entry, const std::string& model) const {
  return EqualsIgnoringCase(entry, model) ||
         (EqualsIgnoringCase(NameText(entry), model) && !HasName(ui_->LstInstrment, model));
}

void frmStationModelList::ReportNotices() {
  fields_->ReportNotices(*ui_->lblNotice);
  ui_->lblNotice->Report("end", ToQt(file_.Unread()));
  const StationInstrument shown = fields_->Values();
  const std::string entry = shownEntry_ == nullptr ? std::string() : NameOfEntry(shownEntry_);
  const bool isOther =
      !entry.empty() && !shown.ModelNumber.empty() && !IsFileOf(entry, shown.ModelNumber);
  const QString file = "\"" + ToQt(shown.ModelNumber) + "\"";
  ui_->lblNotice->Report(
      "file", isOther
                  ? "The fields belong to the file " + file + ", not \"" + ToQt(NameText(entry)) +
                        "\", which the list marks: Save and Delete act on " + file + "."
                  : QString());
}

void frmStationModelList::btnAdd_Click() {
  Guarded(this, [this] {
    if (std::optional<PickedInstrument> picked = PickInstrument(this, ui_->LstInstrment)) {
      ShowAdded(std::move(*picked));
    }
  });
}

void frmStationModelList::ShowAdded(PickedInstrument picked) {
  KeepUnsaved();
  if (!ui_->LstInstrment->isEnabled()) {
    ui_->LstInstrment->clear();
    ui_->LstInstrment->setEnabled(true);
  }
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    // What was added must be seen.
    head_->ClearFilter();
    AddName(ui_->LstInstrment, picked.file.ModelNumber);
    ui_->LstInstrment->setCurrentRow(ui_->LstInstrment->count() - 1);
    head_->Apply();
  }
  fields_->ShowPicked(std::move(picked));
  file_ = StoredFile();
  editsEnableSave_ = true;
  ui_->btnSave->setEnabled(true);
  shownEntry_ = SelectedEntry();
  unsaved_.Add(shownEntry_, fields_->Values());
  ui_->lblNotice->Report(kEntryNotice, "");
}

void frmStationModelList::btnSave_Click() {
  Save();
}

frmStationModelList::SaveResult frmStationModelList::Save() {
  const StationInstrument instrument = fields_->Values();
  SaveResult result = SaveResult::Failed;
  Guarded(
      this,
      [&] {
        if (!HasValidDueDate(instrument)) {
          CurrentQuestions().Ask(
              this, {.text = "Error: Invailed Input Date", .icon = QMessageBox::Warning});
          result = SaveResult::InvalidDate;
          return;
        }
        const bool isSaved = SavedWithHistory(
            this, [&] { return InstrumentWouldReplace(stationFolder_, instrument, file_); },
            [&](Earlier earlier) {
              SaveInstrumentFile(stationFolder_, instrument, file_, earlier);
            });
        if (!isSaved) {
          return;
        }
        index_.WasListed({instrument.ModelNumber});
        ui_->btnSave->setEnabled(false);
        if (unsaved_.Contains(shownEntry_) && NameOfEntry(shownEntry_) == instrument.ModelNumber) {
          unsaved_.Saved(shownEntry_);
        }
        QListWidgetItem* saved = EntryOf(ui_->LstInstrment, instrument.ModelNumber);
        if (saved == nullptr && IsFileOf(ShownFile(), instrument.ModelNumber)) {
          saved = shownEntry_;
        }
        if (saved != nullptr && !unsaved_.Contains(saved)) {
          MarkInstrument(saved, instrument);
          const QSignalBlocker blocker(ui_->LstInstrment);
          head_->Apply();
        }
        result = SaveResult::Saved;
      },
      [this](const Error& error) {
        CurrentQuestions().Ask(this, {.text = "Error: Cannot save ",
                                      .icon = QMessageBox::Warning,
                                      .detail = ToQt(error.what())});
      });
  return result;
}

void frmStationModelList::btnDelete_Click() {
  Guarded(this, [this] { DeleteInstrument(); });
}

void frmStationModelList::OpenByKey() {
  // After a filter, or an entry that could not be read, the current entry is not the shown one.
  if (ui_->LstInstrment->currentItem() != shownEntry_) {
    ui_->LstInstrment->currentItem()->setSelected(true);
  }
}

void frmStationModelList::DeleteByKey() {
  if (shownEntry_ != nullptr && shownEntry_->isHidden()) {
    // The user sees others in the list, and would take the question for one of those.
    return;
  }
  // The current entry may be another one, which could not be read.
  if (shownEntry_ != nullptr) {
    const QSignalBlocker blocker(ui_->LstInstrment);
    ui_->LstInstrment->setCurrentItem(shownEntry_);
  }
  btnDelete_Click();
}

void frmStationModelList::DeleteInstrument() {
  const QString model = ui_->txtData_0->text();
  if (model.isEmpty() || model == kPlaceholder) {
    Tell(this, "No model is selected.");
    return;
  }
  const std::string name = FromQt(model);
  const auto mayLetGo = UnlessChanged(this, Joined(stationFolder_, name));
  const auto answer =
      CurrentQuestions().Ask(this, {.text = "Are you sure to want to delete " + model + "?",
                                    .icon = QMessageBox::Warning,
                                    .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                                    .defaultButton = QMessageBox::Cancel});
  if (answer != QMessageBox::Ok) {
    return;
  }
  KeepUnsaved();
  // If an instrument that was added here and not saved has a file, another user has saved it: that
  // file is not deleted.
  if (!unsaved_.Contains(shownEntry_) || NameOfEntry(shownEntry_) != name) {
    const bool isDeleted = ChangedWithHistory(
        this, "delete",
        [&](Earlier earlier) { DeleteInstrumentFile(stationFolder_, name, earlier); }, mayLetGo);
    if (!isDeleted) {
      return;
    }
    index_.WasListed({name});
  }
  unsaved_.Forget(name);
  ShowNone();
  RefreshInstrumentList();
  fields_->Empty();
}

void frmStationModelList::ShowNone() {
  shownEntry_ = nullptr;
  file_ = StoredFile();
  ui_->lblNotice->Clear();
}

void frmStationModelList::btnClear_Click() {
  Guarded(this, [this] { ClearInstruments(); });
}

void frmStationModelList::ClearInstruments() {
  const auto answer = CurrentQuestions().Ask(
      this, {.text = "This action is current station instrment data be all lost.\r\n"
                     "Do you wish to continue?",
             .title = "Station Data Delete",
             .icon = QMessageBox::Warning,
             .buttons = QMessageBox::Yes | QMessageBox::No,
             .defaultButton = QMessageBox::No});
  if (answer != QMessageBox::Yes) {
    return;
  }
  bool deleted = false;
  Guarded(this, [&] {
    deleted = ChangedWithHistory(this, "delete", [&](Earlier earlier) {
      DeleteAllInstrumentFiles(stationFolder_, earlier);
    });
  });
  if (deleted) {
    unsaved_.Clear();
    ShowNone();
  }
  RefreshInstrumentList();
  if (!deleted) {
    return;
  }
  fields_->ClearTexts();
  ui_->btnSave->setEnabled(false);
  Tell(this, "Current station data delete completed.");
}

void frmStationModelList::btnReturn_Click() {
  Guarded(this, [this] {
    if (MayLeave() &&
        (Guarded(this, [this] { WriteStationInstrumentIndex(); }) || MayLeaveWithoutIndex())) {
      accept();
    }
  });
}

bool frmStationModelList::MayLeaveWithoutIndex() {
  return !FolderExists(stationFolder_) &&
         CurrentQuestions().Ask(
             this, {.text = "The folder of this station is not there any more. Leave the station "
                            "without writing its list INDEX?",
                    .icon = QMessageBox::Warning,
                    .buttons = QMessageBox::Yes | QMessageBox::No,
                    .defaultButton = QMessageBox::No}) == QMessageBox::Yes;
}

void frmStationModelList::reject() {
  Guarded(this, [this] {
    if (MayLeave()) {
      // The user can leave even if INDEX cannot be written. Without the folder, as by Return, that
      // is asked.
      if (Guarded(this, [this] { WriteStationInstrumentIndex(); }) ||
          FolderExists(stationFolder_) || MayLeaveWithoutIndex()) {
        accept();
      }
    }
  });
}

bool frmStationModelList::MayLeave() {
  if (!editsEnableSave_) {
    return true;
  }
  const auto answer = CurrentQuestions().Ask(
      this, {.text = "Instruemnt Data was changed. Do you want to save it?",
             .title = "Instrument data was changed.",
             .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
             .defaultButton = QMessageBox::Yes,
             .detail = OthersUnsaved()});
  // After an invalid date the screen closes without saving; after a failed save it stays open.
  return answer == QMessageBox::No || (answer == QMessageBox::Yes && Save() != SaveResult::Failed);
}

}  // namespace tarvell
