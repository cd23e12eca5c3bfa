// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EarlierChoice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <cstddef>

#include "core/caldata/TableRows.h"
#include "core/dates/DueDate.h"
#include "core/dates/Months.h"
#include "screens/caldata/CalHeaderBlock.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenReaders.h"

namespace tarvell {

namespace {

QString CaptionOf(const Calibration& calibration) {
  const QString number = ToQt(calibration.header.CalibrationNumber);
  return ToQt(DateText(calibration.Calibrated())) + (number.isEmpty() ? "" : ", " + number);
}

/// The names of calibrations; the same name does not stand for two.
QStringList NamesOf(const std::vector<Calibration>& calibrations) {
  QStringList names;
  for (const Calibration& calibration : calibrations) {
    names << CaptionOf(calibration);
  }
  QStringList different = names;
  for (qsizetype index = 0; index < names.size(); ++index) {
    const Calibration& calibration = calibrations.at(static_cast<std::size_t>(index));
    if (names.count(names[index]) > 1 && !calibration.isCurrent) {
      different[index] +=
          EarlierChoice::tr(", replaced %1").arg(ToQt(LocalTimeText(calibration.event.time)));
    }
  }
  return different;
}

}  // namespace

EarlierChoice::EarlierChoice(QWidget* parent) : QWidget(parent), cmbEarlier_(new QComboBox(this)) {
  setObjectName("earlier");
  auto* layout = new QHBoxLayout(this);  // the widget owns it
  layout->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(tr("Compare &with"), this);
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
    isChosenByUser_ = true;
    Load();
    emit Changed();
  });
}

void EarlierChoice::Begin(const Model& model, const cifCaldata& compared, const std::string& path) {
  FileDate date;
  std::string month;
  compared.GetCalDate(date.year, month, date.day);
  date.month = MonthToNumber(month);
  model_ = &model;
  isChosenByUser_ = false;
  problem_.clear();
  calibrations_ = path.empty() ? std::vector<Calibration>() : CalibrationsOf(path, problem_);
  {
    const QSignalBlocker blocker(cmbEarlier_);
    cmbEarlier_->clear();
    cmbEarlier_->addItems(NamesOf(calibrations_));
  }
  ChooseFor(date);
  Load();
}

void EarlierChoice::SetDate(const FileDate& date) {
  const int before = cmbEarlier_->currentIndex();
  if (!isChosenByUser_) {
    ChooseFor(date);
  }
  if (cmbEarlier_->currentIndex() != before) {
    Load();
    emit Changed();
  }
}

void EarlierChoice::ChooseFor(const FileDate& date) {
  const QSignalBlocker blocker(cmbEarlier_);
  const int row = RowFor(date);
  setVisible(row >= 0);
  cmbEarlier_->setCurrentIndex(row);
}

int EarlierChoice::RowFor(const FileDate& date) const {
  const Calibration* earlier = EarlierCalibration(calibrations_, date);
  return earlier == nullptr ? -1 : static_cast<int>(earlier - calibrations_.data());
}

std::unique_ptr<cifCaldata> EarlierChoice::DataFor(const DraftHeader& header) const {
  const int row = isChosenByUser_ ? cmbEarlier_->currentIndex() : RowFor(CalDateOf(header));
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
  const auto index = static_cast<std::size_t>(cmbEarlier_->currentIndex());
  return chosen_ ? ToQt(DateText(calibrations_.at(index).Calibrated())) : QString();
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
