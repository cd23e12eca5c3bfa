// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/frmStationModelList.h"

#include "ui_frmStationModelList.h"

#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/HeaderLines.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/station/frmStationGetInstr.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/AskReplacement.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/CalendarButton.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/DateBoxes.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenReaders.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

constexpr const char* kPlaceholder = "No Model";
constexpr const char* kNoAddressType = "NONE";
constexpr const char* kEntryNotice = "entry";

/// Number of an entry that is not saved.
constexpr int kUnsavedRole = Qt::UserRole + 2;

/// Shows `text` in an editable list and selects the entry with this text, if there is one. The Up
/// and Down keys then start from that entry, and leaving the list does not count as a choice.
void ShowText(QComboBox* box, const QString& text) {
  box->setCurrentIndex(box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
  box->setEditText(text);
}

Error InstrumentGone() {
  return {ErrorKind::Index,
          "The chosen instrument is not in the calibration data any more. Choose it again."};
}

/// The row of a data file that was picked from a filtered list. A list without a filter may end
/// before it; then it is added.
int RowOfPicked(const CalFileInfo& picked, std::vector<CalFileInfo>& files) {
  const auto found = std::ranges::find(files, picked.FilePath, &CalFileInfo::FilePath);
  const auto row = found - files.begin();
  if (found == files.end()) {
    files.push_back(picked);
  }
  return static_cast<int>(row);
}

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
  txtData_ = {ui_->txtData_0,  ui_->txtData_2,  ui_->txtData_3, ui_->txtData_4,
              ui_->txtData_5,  ui_->txtData_6,  ui_->txtData_8, ui_->txtData_9,
              ui_->txtData_10, ui_->txtData_11, ui_->txtData_12};
  SetUpFields();
  SetUpSerialList(ui_->LstInstrment);
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          &frmStationModelList::RefreshInstrumentList);
  OnChoice(ui_->LstInstrment, [this] { LstInstrment_Click(); });
  OnEntry(ui_->LstInstrment,
          {.open = [this] { OpenByKey(); }, .remove = [this] { DeleteByKey(); }});
  connect(ui_->cmbSerial, &QComboBox::activated, this, &frmStationModelList::cmbSerial_Click);
  // Typing a serial number changes only that field. Without this, leaving the box would count as a
  // choice and replace the other fields as well.
  disconnect(ui_->cmbSerial->lineEdit(), &QLineEdit::editingFinished, ui_->cmbSerial, nullptr);
  OfferHandbook(this, chapter::kInstruments);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmStationModelList::btnAdd_Click);
  connect(ui_->btnDelete, &QPushButton::clicked, this, &frmStationModelList::btnDelete_Click);
  connect(ui_->btnClear, &QPushButton::clicked, this, &frmStationModelList::btnClear_Click);
  connect(ui_->btnSave, &QPushButton::clicked, this, &frmStationModelList::btnSave_Click);
  connect(ui_->btnReturn, &QPushButton::clicked, this, &frmStationModelList::btnReturn_Click);
}

frmStationModelList::~frmStationModelList() = default;

void frmStationModelList::SetUpFields() {
  ui_->cmbCalMonth->addItem("");
  AddMonths(ui_->cmbCalMonth);
  ui_->cmbAddressType->addItems({"GP-IB", "GPIO", "SERIAL", kNoAddressType});
  SetUpDayBox(ui_->txtData_8, ui_->UpDown1);
  SetUpYearBox(ui_->txtData_6, ui_->UpDown3);
  ui_->dueDate->insertWidget(ui_->dueDate->indexOf(ui_->UpDown3) + 1,
                             new CalendarButton({ui_->txtData_8, ui_->cmbCalMonth, ui_->txtData_6},
                                                tr("CAL DUE DATE"), ui_->record));
  LabelDropDownLists(this);
  // No letter of its caption is free.
  GiveAltKey(ui_->txtData_12, Qt::Key_F);
  for (QLineEdit* box : txtData_) {
    FileTextValidator::Attach(box);
    connect(box, &QLineEdit::textChanged, this, &frmStationModelList::Field_Change);
  }
  boxes_ = {{&StationInstrument::ModelNumber, ui_->txtData_0},
            {&StationInstrument::SerialNumber, ui_->cmbSerial->lineEdit()},
            {&StationInstrument::AddressType, ui_->cmbAddressType->lineEdit()},
            {&StationInstrument::Address, ui_->txtData_2},
            {&StationInstrument::Station, ui_->txtData_3},
            {&StationInstrument::Options, ui_->txtData_4},
            {&StationInstrument::Availability, ui_->txtData_5},
            {&StationInstrument::DueDay, ui_->txtData_8},
            {&StationInstrument::DueMonth, ui_->cmbCalMonth->lineEdit()},
            {&StationInstrument::DueYear, ui_->txtData_6},
            {&StationInstrument::Asset, ui_->txtData_9},
            {&StationInstrument::Trace, ui_->txtData_10},
            {&StationInstrument::Comment, ui_->txtData_11}};
  for (QComboBox* box : {ui_->cmbSerial, ui_->cmbAddressType, ui_->cmbCalMonth}) {
    FileTextValidator::Attach(box->lineEdit());
    // Without completion, typed text stays as it was typed.
    box->setCompleter(nullptr);
    ChangeOnlyDeliberately(box);
    connect(box, &QComboBox::editTextChanged, this, &frmStationModelList::Field_Change);
  }
}

void frmStationModelList::ShowModally() {
  setWindowTitle(ToQt(StationName) + " - Station Data Edit - " + ToQt(kApplicationTitle));
  ui_->lbStation->setText("StationName :  " + ToQt(StationName));
  stationFolder_ = Joined(gStationDir, StationName);
  EmptyFields();
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
  std::vector<std::string> names = instruments;
  std::vector<std::pair<int, int>> unsavedRows;
  for (const auto& [number, unsaved] : unsaved_) {
    const auto listed = std::ranges::find(names, unsaved.name);
    unsavedRows.emplace_back(static_cast<int>(listed - names.begin()), number);
    if (listed == names.end()) {
      names.push_back(unsaved.name);
    }
  }
  ShowNames(ui_->LstInstrment, names, kPlaceholder);
  for (const auto& [row, number] : unsavedRows) {
    MarkUnsaved(ui_->LstInstrment->item(row), number);
  }
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
    if (!IsUnsaved(entry)) {
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

std::vector<CalFileInfo> frmStationModelList::ReadCalFiles(const std::string& model) {
  std::vector<CalFileInfo> files;
  if (!model.empty()) {
    Guarded(this, [&] {
      const BusyPointer busy;
      ReadCalFileHeaders(Joined(gCalibrationDir, model),
                         [&](const CalFileInfo& file) { files.push_back(file); });
    });
  }
  return files;
}

void frmStationModelList::FillSerialList(std::vector<CalFileInfo> files) {
  const QSignalBlocker blocker(ui_->cmbSerial);
  ui_->cmbSerial->clear();
  for (const CalFileInfo& file : files) {
    ui_->cmbSerial->addItem(ToQt(file.SerialNumber));
  }
  serialFiles_ = std::move(files);
  ui_->cmbSerial->setCurrentIndex(-1);
  ui_->cmbSerial->clearEditText();
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
  if (entry != nullptr && !(entry == shownEntry_ && IsUnsaved(entry))) {
    ui_->lblNotice->Report(kEntryNotice, "");
    Guarded(this, [&] { LoadInstrument(entry); });
  }
  SelectShownEntry();
  noticesAreDue_.start();
}

void frmStationModelList::LoadInstrument(QListWidgetItem* entry) {
  const std::string name = NameOfEntry(entry);
  KeepUnsaved();
  if (IsUnsaved(entry)) {
    ShowUnsaved(entry);
    return;
  }
  StationInstrument instrument = Shown();
  bool isEmpty = false;
  {
    const BusyPointer busy;
    isEmpty = !LoadInstrumentFile(Joined(stationFolder_, name), instrument, file_);
  }
  editsEnableSave_ = false;
  if (isEmpty) {
    ui_->lblNotice->Report(kEntryNotice,
                           "The file \"" + ToQt(name) + "\" is empty: nothing was read from it.");
  } else {
    FillSerialList(ReadCalFiles(instrument.ModelNumber));
    Show(instrument);
    ui_->btnSave->setEnabled(false);
    shownEntry_ = entry;
  }
  editsEnableSave_ = true;
}

bool frmStationModelList::IsUnsaved(const QListWidgetItem* entry) const {
  return entry != nullptr && unsaved_.contains(entry->data(kUnsavedRole).toInt());
}

void frmStationModelList::MarkUnsaved(QListWidgetItem* entry, int number) {
  entry->setData(kUnsavedRole, number);
  UnmarkDueDate(entry);
  SetEntryIcon(entry, QStyle::SP_MessageBoxWarning);
  entry->setToolTip("Added and not saved. Press \"Save Instrment Data\".");
  entry->setData(Qt::AccessibleTextRole, entry->text() + ", not saved");
}

void frmStationModelList::SetSaved(QListWidgetItem* entry) {
  unsaved_.erase(entry->data(kUnsavedRole).toInt());
  for (const int role :
       {kUnsavedRole, int{Qt::DecorationRole}, int{Qt::ToolTipRole}, int{Qt::AccessibleTextRole}}) {
    entry->setData(role, QVariant());
  }
}

void frmStationModelList::KeepUnsaved() {
  if (IsUnsaved(shownEntry_)) {
    unsaved_.at(shownEntry_->data(kUnsavedRole).toInt()).instrument = Shown();
  }
}

void frmStationModelList::ShowUnsaved(QListWidgetItem* entry) {
  const Unsaved& unsaved = unsaved_.at(entry->data(kUnsavedRole).toInt());
  FillSerialList(ReadCalFiles(unsaved.name));
  Show(unsaved.instrument);
  file_ = StoredFile();
  shownEntry_ = entry;
  editsEnableSave_ = true;
  ui_->btnSave->setEnabled(true);
}

QString frmStationModelList::OthersUnsaved() const {
  QStringList names;
  for (int row = 0; row < ui_->LstInstrment->count(); ++row) {
    const QListWidgetItem* entry = ui_->LstInstrment->item(row);
    if (entry != shownEntry_ && IsUnsaved(entry)) {
      names << entry->text();
    }
  }
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

void frmStationModelList::ReportNotices() {
  const StationInstrument shown = Shown();
  const std::vector<ReadBackNotice> notices = ReadBackNotices(shown);
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    const auto& [field, box] = boxes_[i];
    const auto found = std::ranges::find(notices, field, &ReadBackNotice::field);
    const QString text = found == notices.end() ? QString() : ToQt(found->text);
    MarkBox(box, text);
    ui_->lblNotice->Report(QString::number(i), text);
  }
  const std::string entry = shownEntry_ == nullptr ? std::string() : NameOfEntry(shownEntry_);
  const bool isOther =
      !entry.empty() && !shown.ModelNumber.empty() && !EqualsIgnoringCase(entry, shown.ModelNumber);
  const QString file = "\"" + ToQt(shown.ModelNumber) + "\"";
  ui_->lblNotice->Report(
      "file", isOther ? "The fields belong to the file " + file + ", not \"" + ToQt(entry) +
                            "\", which the list marks: Save and Delete act on " + file + "."
                      : QString());
}

void frmStationModelList::cmbSerial_Click() {
  const int index = ui_->cmbSerial->currentIndex();
  if (ui_->cmbSerial->currentText().isEmpty() || index < 0) {
    return;
  }
  ShowCalFile(serialFiles_.at(static_cast<std::size_t>(index)));
  Field_Change();
}

void frmStationModelList::ShowCalFile(const CalFileInfo& file) {
  ui_->txtData_0->setText(ToQt(file.ModelNumber));
  ui_->txtData_11->setText(ToQt(file.Comment));
  ui_->txtData_4->setText(ToQt(file.Option));
  const bool hasDate = file.DueYear != 0 && file.DueMonth != 0 && file.DueDay != 0;
  ui_->txtData_6->setText(hasDate ? QString::number(file.DueYear) : "2000");
  ShowText(ui_->cmbCalMonth, hasDate ? ToQt(NumberToMonth(file.DueMonth)) : "JAN");
  ui_->txtData_8->setText(hasDate ? QString::number(file.DueDay) : "1");
}

void frmStationModelList::btnAdd_Click() {
  Guarded(this, [this] { AddInstrument(); });
}

std::vector<std::string> frmStationModelList::ModelsToPickFrom() {
  std::vector<std::string> models;
  // When there are too many models, the user can choose among those that were read.
  const bool areListed = Guarded(this, [&] {
    const BusyPointer busy;
    ListModelFolders(gCalibrationDir, models);
  });
  models = ModelsWithData(std::move(models));
  if (models.empty() && areListed) {
    CurrentQuestions().Ask(this, {.text = "There is no equipment calibration data.\r\n"
                                          "It's not possible to add it.",
                                  .title = "No data is availval."});
  }
  return models;
}

void frmStationModelList::AddInstrument() {
  const std::vector<std::string> models = ModelsToPickFrom();
  if (models.empty()) {
    return;
  }
  frmStationGetInstr picker(this);
  picker.ShowModally(models);
  if (picker.Result == frmStationGetInstr::kCancelled) {
    return;
  }
  if (!picker.PickedFile()) {
    throw InstrumentGone();
  }
  CalFileInfo picked = *picker.PickedFile();
  if (HasName(ui_->LstInstrment, picked.ModelNumber)) {
    Tell(this, "This instrment is already exist.");
    return;
  }
  picked.ModelNumber = StationModelOf(picked.ModelNumber);
  if (HasName(ui_->LstInstrment, picked.ModelNumber)) {
    Tell(this, "This instrment is already exist.");
    return;
  }
  std::vector<CalFileInfo> files = ReadCalFiles(picked.ModelNumber);
  int row = picker.Result;
  if (picker.WasFiltered()) {
    row = RowOfPicked(*picker.PickedFile(), files);
  } else if (static_cast<std::size_t>(row) >= files.size()) {
    throw InstrumentGone();
  }
  ShowAdded(picked, std::move(files), row);
}

void frmStationModelList::ShowAdded(const CalFileInfo& picked, std::vector<CalFileInfo> files,
                                    int row) {
  KeepUnsaved();
  if (!ui_->LstInstrment->isEnabled()) {
    ui_->LstInstrment->clear();
    ui_->LstInstrment->setEnabled(true);
  }
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    // What was added must be seen.
    head_->ClearFilter();
    AddName(ui_->LstInstrment, picked.ModelNumber);
    ui_->LstInstrment->setCurrentRow(ui_->LstInstrment->count() - 1);
    head_->Apply();
  }
  ui_->txtData_0->setText(ToQt(picked.ModelNumber));
  ui_->txtData_4->setText(ToQt(picked.Option));
  ui_->txtData_6->setText(QString::number(picked.DueYear));
  ShowText(ui_->cmbCalMonth, ToQt(NumberToMonth(picked.DueMonth)));
  ui_->txtData_8->setText(QString::number(picked.DueDay));
  ui_->txtData_11->setText(ToQt(picked.Comment));
  FillSerialList(std::move(files));
  ui_->cmbSerial->setCurrentIndex(row);
  cmbSerial_Click();
  file_ = StoredFile();
  editsEnableSave_ = true;
  ui_->btnSave->setEnabled(true);
  shownEntry_ = SelectedEntry();
  const int number = ++lastUnsaved_;
  unsaved_[number] = {picked.ModelNumber, Shown()};
  MarkUnsaved(shownEntry_, number);
  ui_->lblNotice->Report(kEntryNotice, "");
}

void frmStationModelList::btnSave_Click() {
  Save();
}

frmStationModelList::SaveResult frmStationModelList::Save() {
  const StationInstrument instrument = Shown();
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
        const bool mayReplace = UserLetsReplace(
            this, [&] { return InstrumentWouldReplace(stationFolder_, instrument, file_); });
        if (!mayReplace) {
          return;
        }
        const bool isSaved = ChangedWithHistory(this, "save", [&](Earlier earlier) {
          SaveInstrumentFile(stationFolder_, instrument, file_, earlier);
        });
        if (!isSaved) {
          return;
        }
        index_.WasListed({instrument.ModelNumber});
        ui_->btnSave->setEnabled(false);
        if (IsUnsaved(shownEntry_) && NameOfEntry(shownEntry_) == instrument.ModelNumber) {
          SetSaved(shownEntry_);
        }
        QListWidgetItem* saved = EntryOf(ui_->LstInstrment, instrument.ModelNumber);
        if (saved != nullptr && !IsUnsaved(saved)) {
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
  const auto answer =
      CurrentQuestions().Ask(this, {.text = "Are you sure to want to delete " + model + "?",
                                    .icon = QMessageBox::Warning,
                                    .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                                    .defaultButton = QMessageBox::Cancel});
  if (answer != QMessageBox::Ok) {
    return;
  }
  const std::string name = FromQt(model);
  KeepUnsaved();
  // If an instrument that was added here and not saved has a file, another user has saved it: that
  // file is not deleted.
  if (!IsUnsaved(shownEntry_) || NameOfEntry(shownEntry_) != name) {
    const bool isDeleted = ChangedWithHistory(this, "delete", [&](Earlier earlier) {
      DeleteInstrumentFile(stationFolder_, name, earlier);
    });
    if (!isDeleted) {
      return;
    }
    index_.WasListed({name});
  }
  std::erase_if(unsaved_, [&](const auto& each) { return each.second.name == name; });
  shownEntry_ = nullptr;
  ui_->lblNotice->Clear();
  RefreshInstrumentList();
  EmptyFields();
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
    unsaved_.clear();
    shownEntry_ = nullptr;
    ui_->lblNotice->Clear();
  }
  RefreshInstrumentList();
  if (!deleted) {
    return;
  }
  for (QLineEdit* box : txtData_) {
    box->clear();
  }
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
      // The user can leave even if INDEX cannot be written.
      Guarded(this, [this] { WriteStationInstrumentIndex(); });
      accept();
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

StationInstrument frmStationModelList::Shown() const {
  const auto text = [](const QLineEdit* box) { return FromQt(box->text()); };
  return {.ModelNumber = text(ui_->txtData_0),
          .SerialNumber = FromQt(ui_->cmbSerial->currentText()),
          .AddressType = FromQt(ui_->cmbAddressType->currentText()),
          .Address = text(ui_->txtData_2),
          .Station = text(ui_->txtData_3),
          .Options = text(ui_->txtData_4),
          .Availability = text(ui_->txtData_5),
          .DueDay = text(ui_->txtData_8),
          .DueMonth = FromQt(ui_->cmbCalMonth->currentText()),
          .DueYear = text(ui_->txtData_6),
          .Asset = text(ui_->txtData_9),
          .Trace = text(ui_->txtData_10),
          .Comment = text(ui_->txtData_11),
          .CalData = text(ui_->txtData_12)};
}

void frmStationModelList::Show(const StationInstrument& instrument) {
  ui_->txtData_0->setText(ToQt(instrument.ModelNumber));
  ShowText(ui_->cmbSerial, ToQt(instrument.SerialNumber));
  ShowText(ui_->cmbAddressType, ToQt(instrument.AddressType));
  ui_->txtData_2->setText(ToQt(instrument.Address));
  ui_->txtData_3->setText(ToQt(instrument.Station));
  ui_->txtData_4->setText(ToQt(instrument.Options));
  ui_->txtData_5->setText(ToQt(instrument.Availability));
  ui_->txtData_8->setText(ToQt(instrument.DueDay));
  ShowText(ui_->cmbCalMonth, ToQt(instrument.DueMonth));
  ui_->txtData_6->setText(ToQt(instrument.DueYear));
  ui_->txtData_9->setText(ToQt(instrument.Asset));
  ui_->txtData_10->setText(ToQt(instrument.Trace));
  ui_->txtData_11->setText(ToQt(instrument.Comment));
  ui_->txtData_12->setText(ToQt(instrument.CalData));
}

void frmStationModelList::EmptyFields() {
  for (QLineEdit* box : txtData_) {
    box->clear();
  }
  ShowText(ui_->cmbAddressType, kNoAddressType);
  ui_->cmbSerial->setCurrentIndex(-1);
  ui_->cmbSerial->clearEditText();
  ShowText(ui_->cmbCalMonth, "JAN");
}

}  // namespace tarvell
