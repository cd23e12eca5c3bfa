// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/frmStationMain.h"

#include "ui_frmStationMain.h"

#include <QShortcut>

#include <vector>

#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "screens/station/frmStationModelList.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/frmInput.h"

namespace tarvell {

namespace {

constexpr const char* kPlaceholder = "No Stations";

}  // namespace

frmStationMain::frmStationMain(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStationMain>()) {
  ui_->setupUi(this);
  head_ = new ListHead(ui_->lstStation, {Qt::Key_S, Qt::Key_F});
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  setWindowTitle("Station Data Edit - " + ToQt(kApplicationTitle));
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          &frmStationMain::RefreshSelecting);
  OnEntry(ui_->lstStation,
          {.open = [this] { btnEdit_Click(); }, .remove = [this] { btnDelete_Click(); }});
  connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, this,
          &frmStationMain::OverviewWanted);
  connect(ui_->btnOverview, &QPushButton::clicked, this, &frmStationMain::OverviewWanted);
  OfferHandbook(this, chapter::kStations);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmStationMain::btnAdd_Click);
  connect(ui_->btnEdit, &QPushButton::clicked, this, &frmStationMain::btnEdit_Click);
  connect(ui_->btnDelete, &QPushButton::clicked, this, &frmStationMain::btnDelete_Click);
  connect(ui_->btnReturn, &QPushButton::clicked, this, &frmStationMain::btnReturn_Click);
}

frmStationMain::~frmStationMain() = default;

void frmStationMain::ShowModally() {
  {
    const BusyPointer busy;
    index_.Begin(gStationDir);
  }
  head_->ClearFilter();
  isChanged_ = false;
  RefreshStationList();
  ui_->lstStation->setFocus();
  exec();
}

void frmStationMain::RefreshStationList() {
  Guarded(this, [this] { ReadStationList(); });
}

void frmStationMain::RefreshSelecting() {
  const std::string selected = SelectedStation();
  RefreshStationList();
  SelectIfShown(ui_->lstStation, selected);
}

void frmStationMain::ReadStationList() {
  isListed_ = false;
  const FocusKeeper keyboard(ui_->lstStation, ui_->btnAdd);
  ShowNames(ui_->lstStation, {}, kPlaceholder);
  const BusyPointer busy;
  const std::vector<std::string> stations = ListStations(gStationDir);
  index_.WasListed(stations);
  ShowNames(ui_->lstStation, stations, kPlaceholder);
  head_->Apply();
  isListed_ = true;
}

void frmStationMain::WriteStationIndex() {
  if (!isListed_) {
    // Without the real list, INDEX would be replaced by an empty one.
    ReadStationList();
  }
  const BusyPointer busy;
  std::vector<std::string> stations =
      index_.Merged(NamesIn(ui_->lstStation), ListStations(gStationDir));
  std::erase(stations, kPlaceholder);
  tarvell::WriteStationIndex(gStationDir, stations);
  isChanged_ = false;
}

std::string frmStationMain::SelectedStation() const {
  const std::string name = SelectedName(ui_->lstStation);
  return name == kPlaceholder ? std::string() : name;
}

void frmStationMain::btnAdd_Click() {
  Guarded(
      this, [this] { AddStation(); },
      [this](const Error& error) {
        CurrentQuestions().Ask(this,
                               {.text = "Can't make a new station", .detail = ToQt(error.what())});
      });
  RefreshStationList();
}

void frmStationMain::AddStation() {
  frmInput input(this);
  input.setWindowTitle("Add Station directory");
  input.SetCaption("Input station name");
  input.HideUnit();
  input.exec();
  const std::string name = FromQt(input.Text());
  if (Trim(name).empty()) {
    Tell(this, "Station name is no input.");
    return;
  }
  if (HasName(ui_->lstStation, name)) {
    Tell(this, "This station name was already exist.");
    return;
  }
  MakeStation(gStationDir, name);
  isChanged_ = true;
  // What was added must be seen.
  head_->ClearFilter();
}

void frmStationMain::btnDelete_Click() {
  Guarded(this, [this] { DeleteStation(); });
}

void frmStationMain::DeleteStation() {
  const std::string station = SelectedStation();
  if (station.empty()) {
    Tell(this, "No stations is selected.");
    return;
  }
  const auto answer = CurrentQuestions().Ask(
      this,
      {.text = "Are you sure you want to delete \"" + ToQt(NameText(station)) + "\" station data?",
       .icon = QMessageBox::Warning,
       .buttons = QMessageBox::Ok | QMessageBox::Cancel,
       .defaultButton = QMessageBox::Cancel});
  if (answer == QMessageBox::Ok) {
    Guarded(this, [&] {
      const bool isDeleted = ChangedWithHistory(this, "delete", [&](Earlier earlier) {
        tarvell::DeleteStation(gStationDir, station, earlier);
      });
      isChanged_ = isChanged_ || isDeleted;
    });
    RefreshStationList();
  }
}

void frmStationMain::btnEdit_Click() {
  Guarded(this, [this] {
    const std::string station = SelectedStation();
    if (station.empty()) {
      Tell(this, "No station is selected.");
      return;
    }
    frmStationModelList instruments(this);
    instruments.StationName = station;
    instruments.ShowModally();
    RefreshStationList();
  });
}

void frmStationMain::reject() {
  if (!isChanged_) {
    QDialog::reject();
    return;
  }
  const auto answer = CurrentQuestions().Ask(
      this, {.text = "Stations were added or deleted, and their list INDEX was not saved. Do you "
                     "want to save it?",
             .icon = QMessageBox::Warning,
             .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
             .defaultButton = QMessageBox::Yes,
             .detail = "Without it, the stations go on reading the earlier list."});
  if (answer == QMessageBox::No) {
    QDialog::reject();
  } else if (answer == QMessageBox::Yes) {
    btnReturn_Click();
  }
}

void frmStationMain::btnReturn_Click() {
  Guarded(this, [this] {
    WriteStationIndex();
    accept();
  });
}

}  // namespace tarvell
