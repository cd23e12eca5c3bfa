// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EarlierChoice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <cstddef>

#include "core/caldata/TableRows.h"
#include "core/dates/Months.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenReaders.h"

namespace tarvell {

namespace {

QString DateText(const FileDate& date) {
  return QString("%1 %2 %3").arg(date.day).arg(ToQt(NumberToMonth(date.month))).arg(date.year);
}

QString NameOf(const Calibration& calibration) {
  const QString number = ToQt(calibration.header.CalibrationNumber);
  return DateText(calibration.Calibrated()) + (number.isEmpty() ? "" : ", " + number);
}

/// The calibration date of a header; a box without a number counts as 0.
FileDate DateOf(const DraftHeader& header) {
  return {ToQt(header.calYear).toShort(), MonthToNumber(header.calMonth),
          ToQt(header.calDay).toShort()};
}

}  // namespace

EarlierChoice::EarlierChoice(QWidget* parent) : QWidget(parent), cmbEarlier_(new QComboBox(this)) {
  setObjectName("earlier");
  auto* layout = new QHBoxLayout(this);  // the widget owns it
  layout->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(tr("Earl&ier calibration"), this);
  label->setObjectName("lblEarlier");
  label->setBuddy(cmbEarlier_);
  cmbEarlier_->setObjectName("cmbEarlier");
  cmbEarlier_->setAccessibleDescription(
      tr("The calibration that the values are compared with, in the table and on the curve."));
  cmbEarlier_->setToolTip(cmbEarlier_->accessibleDescription());
  ChangeOnlyDeliberately(cmbEarlier_);
  // As the curve: Tab leads from the table to the buttons, and the Alt key here.
  cmbEarlier_->setFocusPolicy(Qt::ClickFocus);
  layout->addWidget(label);
  layout->addWidget(cmbEarlier_);
  layout->addStretch(1);
  hide();
  setFocusProxy(cmbEarlier_);
  connect(cmbEarlier_, &QComboBox::currentIndexChanged, this, [this] {
    isChosen_ = true;
    Load();
    emit Changed();
  });
}

void EarlierChoice::Begin(const Model& model, const cifCaldata& compared, const std::string& path) {
  const QSignalBlocker blocker(cmbEarlier_);
  FileDate date;
  std::string month;
  compared.GetCalDate(date.year, month, date.day);
  date.month = MonthToNumber(month);
  model_ = &model;
  cmbEarlier_->clear();
  calibrations_ = path.empty() ? std::vector<Calibration>() : CalibrationsOf(path);
  for (const Calibration& calibration : calibrations_) {
    cmbEarlier_->addItem(NameOf(calibration));
  }
  isChosen_ = false;
  ShowRow(RowFor(date));
}

int EarlierChoice::RowFor(const FileDate& date) const {
  const Calibration* earlier = EarlierCalibration(calibrations_, date);
  return earlier == nullptr ? -1 : static_cast<int>(earlier - calibrations_.data());
}

void EarlierChoice::ShowRow(int row) {
  const QSignalBlocker blocker(cmbEarlier_);
  setVisible(row >= 0);
  cmbEarlier_->setCurrentIndex(row);
  Load();
}

void EarlierChoice::HeaderChanged(const DraftHeader& header) {
  const int row = RowFor(DateOf(header));
  if (!isChosen_ && row != cmbEarlier_->currentIndex()) {
    ShowRow(row);
    emit Changed();
  }
}

std::unique_ptr<cifCaldata> EarlierChoice::DataFor(const DraftHeader& header) const {
  const int row = isChosen_ ? cmbEarlier_->currentIndex() : RowFor(DateOf(header));
  return row < 0 ? nullptr
                 : LoadCalibration(*model_, calibrations_.at(static_cast<std::size_t>(row)));
}

void EarlierChoice::End() {
  chosen_.reset();
  calibrations_.clear();
}

void EarlierChoice::Load() {
  const int index = cmbEarlier_->currentIndex();
  chosen_.reset();
  if (index >= 0) {
    chosen_ = LoadCalibration(*model_, calibrations_.at(static_cast<std::size_t>(index)));
  }
}

QString EarlierChoice::Name() const {
  return chosen_ ? DateText(calibrations_.at(static_cast<std::size_t>(cmbEarlier_->currentIndex()))
                                .Calibrated())
                 : QString();
}

bool EarlierChoice::Fill(std::int16_t page, MemoryGrid& grid) const {
  if (!chosen_ || page >= chosen_->GetCalPageCount()) {
    return false;
  }
  grid.Clear(kTableColumns);
  chosen_->GetCalData(page, grid);
  return true;
}

}  // namespace tarvell
