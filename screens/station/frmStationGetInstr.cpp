// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/frmStationGetInstr.h"

#include "ui_frmStationGetInstr.h"

#include <QScopeGuard>
#include <QShortcut>
#include <QSignalBlocker>

#include <cstddef>
#include <utility>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

frmStationGetInstr::frmStationGetInstr(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStationGetInstr>()) {
  ui_->setupUi(this);
  modelHead_ = new ListHead(ui_->LstInstrment, {Qt::Key_T, Qt::Key_F});
  serialHead_ =
      new ListHead(ui_->lstSerialNumber, {Qt::Key_S, Qt::Key_I}, ListHead::Orders::ByNameOrDueDate);
  serialHead_->ReadByFilter([this] { ListSerials(true); });
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          [this] { Guarded(this, [this] { RefreshLists(); }); });
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  OnChoice(ui_->LstInstrment, [this] { LstInstrment_Click(); });
  OnEntry(ui_->LstInstrment, {.open = [this] { ui_->lstSerialNumber->setFocus(); }});
  SetUpSerialList(ui_->lstSerialNumber);
  OnEntry(ui_->lstSerialNumber, {.open = [this] { btnAdd_Click(); }});
  GiveAltKey(ui_->LstInstrment, Qt::Key_M);
  GiveAltKey(ui_->lstSerialNumber, Qt::Key_N);
  OfferHandbook(this, chapter::kInstruments);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmStationGetInstr::btnAdd_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmStationGetInstr::btnCancel_Click);
}

frmStationGetInstr::~frmStationGetInstr() = default;

void frmStationGetInstr::ShowModally(const std::vector<std::string>& models) {
  ShowModels(models);
  ui_->LstInstrment->setFocus();
  exec();
}

void frmStationGetInstr::ShowModels(const std::vector<std::string>& models) {
  const QSignalBlocker blocker(ui_->LstInstrment);
  ui_->LstInstrment->clear();
  for (const std::string& model : models) {
    AddName(ui_->LstInstrment, model);
  }
  modelHead_->Apply();
}

void frmStationGetInstr::RefreshLists() {
  const std::string model = SelectedName(ui_->LstInstrment);
  const std::string serial = SelectedName(ui_->lstSerialNumber);
  std::vector<std::string> models;
  // When there are too many models, those that were read are listed.
  Guarded(this, [&] { ListModelFolders(gCalibrationDir, models); });
  ShowModels(ModelsWithData(std::move(models)));
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectIfShown(ui_->LstInstrment, model);
  }
  const auto selected = qScopeGuard([&] { SelectIfShown(ui_->lstSerialNumber, serial); });
  ListSerials(false);
}

bool frmStationGetInstr::WasFiltered() const {
  return !serialHead_->Filter().empty();
}

void frmStationGetInstr::ListSerials(bool isTyping) {
  ListDataSets(ui_->lstSerialNumber, SelectedName(ui_->LstInstrment), *serialHead_, *ui_->notices,
               isTyping);
}

void frmStationGetInstr::LstInstrment_Click() {
  Guarded(this, [this] { ListSerials(false); });
}

void frmStationGetInstr::btnAdd_Click() {
  if (SelectedName(ui_->LstInstrment).empty() || SelectedName(ui_->lstSerialNumber).empty()) {
    Tell(this, "Model number or serial number is no selected.");
    return;
  }
  Result = SelectedDataSet(ui_->lstSerialNumber);
  const auto row = static_cast<std::size_t>(Result);
  if (row < gCalFiles.size()) {
    pickedFile_ = gCalFiles.at(row);
  }
  accept();
}

void frmStationGetInstr::btnCancel_Click() {
  reject();
}

void frmStationGetInstr::reject() {
  Result = kCancelled;
  QDialog::reject();
}

}  // namespace tarvell
