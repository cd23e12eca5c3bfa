// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/InstrumentFields.h"

#include "ui_frmStationModelList.h"

#include <QSignalBlocker>

#include <algorithm>
#include <cstddef>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/CalendarButton.h"
#include "screens/widgets/DateBoxes.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenReaders.h"

namespace tarvell {

namespace {

constexpr const char* kNoAddressType = "NONE";

/// Shows `text` in an editable list and selects the entry with this text, if there is one. The Up
/// and Down keys then start from that entry, and leaving the list does not count as a choice.
void ShowText(QComboBox* box, const QString& text) {
  box->setCurrentIndex(box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
  box->setEditText(text);
}

}  // namespace

InstrumentFields::InstrumentFields(const Ui::frmStationModelList& ui, QWidget* screen)
    : QObject(screen), ui_(ui), txtData_{ui.txtData_0,  ui.txtData_2,  ui.txtData_3, ui.txtData_4,
                                         ui.txtData_5,  ui.txtData_6,  ui.txtData_8, ui.txtData_9,
                                         ui.txtData_10, ui.txtData_11, ui.txtData_12} {
  ui.cmbCalMonth->addItem("");
  AddMonths(ui.cmbCalMonth);
  ui.cmbAddressType->addItems({"GP-IB", "GPIO", "SERIAL", kNoAddressType});
  SetUpDayBox(ui.txtData_8, ui.UpDown1);
  SetUpYearBox(ui.txtData_6, ui.UpDown3);
  ui.dueDate->insertWidget(ui.dueDate->indexOf(ui.UpDown3) + 1,
                           new CalendarButton({ui.txtData_8, ui.cmbCalMonth, ui.txtData_6},
                                              tr("CAL DUE DATE"), ui.record));
  LabelDropDownLists(screen);
  // No letter of its caption is free.
  GiveAltKey(ui.txtData_12, Qt::Key_F);
  SetUpBoxes();
  connect(ui.cmbSerial, &QComboBox::activated, this, &InstrumentFields::cmbSerial_Click);
  // Typing a serial number changes only that field. Without this, leaving the box would count as a
  // choice and replace the other fields as well.
  disconnect(ui.cmbSerial->lineEdit(), &QLineEdit::editingFinished, ui.cmbSerial, nullptr);
}

void InstrumentFields::SetUpBoxes() {
  for (QLineEdit* box : txtData_) {
    FileTextValidator::Attach(box);
    connect(box, &QLineEdit::textChanged, this, &InstrumentFields::Changed);
  }
  boxes_ = {{&StationInstrument::ModelNumber, ui_.txtData_0},
            {&StationInstrument::SerialNumber, ui_.cmbSerial->lineEdit()},
            {&StationInstrument::AddressType, ui_.cmbAddressType->lineEdit()},
            {&StationInstrument::Address, ui_.txtData_2},
            {&StationInstrument::Station, ui_.txtData_3},
            {&StationInstrument::Options, ui_.txtData_4},
            {&StationInstrument::Availability, ui_.txtData_5},
            {&StationInstrument::DueDay, ui_.txtData_8},
            {&StationInstrument::DueMonth, ui_.cmbCalMonth->lineEdit()},
            {&StationInstrument::DueYear, ui_.txtData_6},
            {&StationInstrument::Asset, ui_.txtData_9},
            {&StationInstrument::Trace, ui_.txtData_10},
            {&StationInstrument::Comment, ui_.txtData_11}};
  for (QComboBox* box : {ui_.cmbSerial, ui_.cmbAddressType, ui_.cmbCalMonth}) {
    FileTextValidator::Attach(box->lineEdit());
    // Without completion, typed text stays as it was typed.
    box->setCompleter(nullptr);
    ChangeOnlyDeliberately(box);
    connect(box, &QComboBox::editTextChanged, this, &InstrumentFields::Changed);
  }
}

StationInstrument InstrumentFields::Values() const {
  const auto text = [](const QLineEdit* box) { return FromQt(box->text()); };
  return {.ModelNumber = text(ui_.txtData_0),
          .SerialNumber = FromQt(ui_.cmbSerial->currentText()),
          .AddressType = FromQt(ui_.cmbAddressType->currentText()),
          .Address = text(ui_.txtData_2),
          .Station = text(ui_.txtData_3),
          .Options = text(ui_.txtData_4),
          .Availability = text(ui_.txtData_5),
          .DueDay = text(ui_.txtData_8),
          .DueMonth = FromQt(ui_.cmbCalMonth->currentText()),
          .DueYear = text(ui_.txtData_6),
          .Asset = text(ui_.txtData_9),
          .Trace = text(ui_.txtData_10),
          .Comment = text(ui_.txtData_11),
          .CalData = text(ui_.txtData_12)};
}

void InstrumentFields::Show(const StationInstrument& instrument) {
  ui_.txtData_0->setText(ToQt(instrument.ModelNumber));
  ShowText(ui_.cmbSerial, ToQt(instrument.SerialNumber));
  ShowText(ui_.cmbAddressType, ToQt(instrument.AddressType));
  ui_.txtData_2->setText(ToQt(instrument.Address));
  ui_.txtData_3->setText(ToQt(instrument.Station));
  ui_.txtData_4->setText(ToQt(instrument.Options));
  ui_.txtData_5->setText(ToQt(instrument.Availability));
  ui_.txtData_8->setText(ToQt(instrument.DueDay));
  ShowText(ui_.cmbCalMonth, ToQt(instrument.DueMonth));
  ui_.txtData_6->setText(ToQt(instrument.DueYear));
  ui_.txtData_9->setText(ToQt(instrument.Asset));
  ui_.txtData_10->setText(ToQt(instrument.Trace));
  ui_.txtData_11->setText(ToQt(instrument.Comment));
  ui_.txtData_12->setText(ToQt(instrument.CalData));
}

void InstrumentFields::ShowCalFile(const CalFileInfo& file) {
  ui_.txtData_0->setText(ToQt(file.ModelNumber));
  ui_.txtData_11->setText(ToQt(file.Comment));
  ui_.txtData_4->setText(ToQt(file.Option));
  const bool hasDate = file.DueYear != 0 && file.DueMonth != 0 && file.DueDay != 0;
  ui_.txtData_6->setText(hasDate ? QString::number(file.DueYear) : "2000");
  ShowText(ui_.cmbCalMonth, hasDate ? ToQt(NumberToMonth(file.DueMonth)) : "JAN");
  ui_.txtData_8->setText(hasDate ? QString::number(file.DueDay) : "1");
}

void InstrumentFields::ShowPicked(PickedInstrument picked) {
  const CalFileInfo& file = picked.file;
  ui_.txtData_0->setText(ToQt(file.ModelNumber));
  ui_.txtData_4->setText(ToQt(file.Option));
  ui_.txtData_6->setText(QString::number(file.DueYear));
  ShowText(ui_.cmbCalMonth, ToQt(NumberToMonth(file.DueMonth)));
  ui_.txtData_8->setText(QString::number(file.DueDay));
  ui_.txtData_11->setText(ToQt(file.Comment));
  OfferSerials(std::move(picked.files));
  ui_.cmbSerial->setCurrentIndex(picked.row);
  cmbSerial_Click();
}

void InstrumentFields::OfferSerials(std::vector<CalFileInfo> files) {
  const QSignalBlocker blocker(ui_.cmbSerial);
  ui_.cmbSerial->clear();
  for (const CalFileInfo& file : files) {
    ui_.cmbSerial->addItem(ToQt(file.SerialNumber));
  }
  serialFiles_ = std::move(files);
  ui_.cmbSerial->setCurrentIndex(-1);
  ui_.cmbSerial->clearEditText();
}

void InstrumentFields::ClearTexts() {
  for (QLineEdit* box : txtData_) {
    box->clear();
  }
}

void InstrumentFields::Empty() {
  ClearTexts();
  ShowText(ui_.cmbAddressType, kNoAddressType);
  ui_.cmbSerial->setCurrentIndex(-1);
  ui_.cmbSerial->clearEditText();
  ShowText(ui_.cmbCalMonth, "JAN");
}

void InstrumentFields::ReportNotices(NoticeLine& notices) const {
  const std::vector<ReadBackNotice> found = ReadBackNotices(Values());
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    const auto& [field, box] = boxes_[i];
    const auto own = std::ranges::find(found, field, &ReadBackNotice::field);
    const QString text = own == found.end() ? QString() : ToQt(own->text);
    MarkBox(box, text);
    notices.Report(QString::number(i), text);
  }
}

void InstrumentFields::cmbSerial_Click() {
  const int index = ui_.cmbSerial->currentIndex();
  if (ui_.cmbSerial->currentText().isEmpty() || index < 0) {
    return;
  }
  ShowCalFile(serialFiles_.at(static_cast<std::size_t>(index)));
  emit Changed();
}

}  // namespace tarvell
