// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmInputPX60H.h"

#include "ui_frmInputPX60H.h"

#include <QLineEdit>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ScreenReaders.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

/// Selects the entry `text`, or shows `text` as if it were typed.
void Preset(QComboBox* combo, const QString& text) {
  combo->setCurrentIndex(combo->findText(text));
  combo->setEditText(text);
}

}  // namespace

frmInputPX60H::frmInputPX60H(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmInputPX60H>()) {
  ui_->setupUi(this);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  ui_->cmbSetting->addItems(
      {"0", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100", "110", "120"});
  // Only the last frequency needs more than two decimals.
  ui_->cmbFreq->addItems({"1.00E05", "3.00E05", "1.00E06", "1.00E07", "5.00E07", "1.00E08",
                          "1.00E09", "3.00E09", "6.9925E09"});
  for (QComboBox* combo : {ui_->cmbSetting, ui_->cmbFreq}) {
    combo->setInsertPolicy(QComboBox::NoInsert);
    // A typed 5 must not be completed to 50.
    combo->setCompleter(nullptr);
    ChangeOnlyDeliberately(combo);
  }
  LabelDropDownLists(this);
  OfferHandbook(this);
  connect(ui_->btnOk, &QPushButton::clicked, this, &frmInputPX60H::btnOk_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmInputPX60H::btnCancel_Click);
}

frmInputPX60H::~frmInputPX60H() = default;

void frmInputPX60H::SetCaption(const QString& caption) {
  ui_->lblCaption->setText(WithFirstAsKey(caption));
}

void frmInputPX60H::SetPoint(const QString& setting, const QString& frequency) {
  Preset(ui_->cmbSetting, setting);
  Preset(ui_->cmbFreq, frequency);
  // Typing replaces the preset.
  ui_->cmbSetting->lineEdit()->selectAll();
}

QString frmInputPX60H::Setting() const {
  return ui_->cmbSetting->currentText();
}

QString frmInputPX60H::Frequency() const {
  return ui_->cmbFreq->currentText();
}

void frmInputPX60H::reject() {
  DialogResult = "CANCEL";
  QDialog::reject();
}

void frmInputPX60H::btnOk_Click() {
  DialogResult = "OK";
  accept();
}

void frmInputPX60H::btnCancel_Click() {
  reject();
}

}  // namespace tarvell
