// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/frmInput.h"

#include "ui_frmInput.h"

#include "screens/widgets/AltKeys.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ScreenReaders.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

frmInput::frmInput(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmInput>()) {
  ui_->setupUi(this);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  FileTextValidator::Attach(ui_->txtText);
  ChangeOnlyDeliberately(ui_->cmbUnit);
  ui_->cmbUnit->addItems({"GHz", "MHz", "KHz"});
  GiveAltKey(ui_->cmbUnit, Qt::Key_U);
  LabelDropDownLists(this);
  OfferHandbook(this);
  connect(ui_->btnOk, &QPushButton::clicked, this, &frmInput::btnOk_Click);
}

frmInput::~frmInput() = default;

void frmInput::SetCaption(const QString& caption) {
  ui_->lblCaption->setText(WithFirstAsKey(caption));
}

void frmInput::SetUnit(const QString& unit) {
  ui_->cmbUnit->setCurrentText(unit);
}

void frmInput::HideUnit() {
  ui_->cmbUnit->hide();
}

QString frmInput::Text() const {
  return ui_->txtText->text();
}

QString frmInput::Unit() const {
  return ui_->cmbUnit->currentText();
}

void frmInput::reject() {
  ui_->txtText->clear();
  QDialog::reject();
}

void frmInput::btnOk_Click() {
  accept();
}

}  // namespace tarvell
