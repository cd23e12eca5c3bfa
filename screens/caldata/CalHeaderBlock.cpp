// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CalHeaderBlock.h"

#include "ui_CalHeaderBlock.h"

#include <cstdint>
#include <string>

#include "core/caldata/CellNotices.h"
#include "core/dates/DueDate.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "core/session/CommonStringModule.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/CalendarButton.h"
#include "screens/widgets/DateBoxes.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenReaders.h"

namespace tarvell {

namespace {

// Subjects of notices about a day that was lowered.
constexpr const char* kCalDay = "calibration day";
constexpr const char* kDueDay = "due day";

/// The property of a box that holds the subject of its notice.
constexpr const char* kSubject = "subject";

constexpr int kCalStartYear = 2000;
constexpr int kDueStartYear = 2001;

void Lock(QLineEdit* box, bool locked) {
  box->setReadOnly(locked);
  QPalette palette = box->window()->palette();
  if (locked) {
    palette.setColor(QPalette::Base, palette.color(QPalette::Button));
  }
  box->setPalette(palette);
}

void SetUpDate(QLineEdit* yearBox, UpDown* yearSpinner, QComboBox* monthBox, QLineEdit* dayBox,
               UpDown* daySpinner) {
  SetUpYearBox(yearBox, yearSpinner);
  ChangeOnlyDeliberately(monthBox);
  AddMonths(monthBox);
  SetUpDayBox(dayBox, daySpinner);
}

/// Sets the spinners to their first values and ranges.
void ResetDate(UpDown* yearSpinner, int year, UpDown* daySpinner) {
  yearSpinner->SetValue(year);
  daySpinner->SetMaximum(kMaxDay);
  daySpinner->SetValue(1);
}

void ShowDate(std::int16_t year, const std::string& month, std::int16_t day, QLineEdit* yearBox,
              QComboBox* monthBox, QLineEdit* dayBox) {
  yearBox->setText(QString::number(year));
  // -1 selects no month, for a name that is not a month.
  monthBox->setCurrentIndex(monthBox->findText(ToQt(month)));
  dayBox->setText(QString::number(day));
}

/// Keeps the day within the chosen month. Returns a notice when the day was lowered: the user may
/// only have passed a short month with the arrow keys.
QString FollowMonth(const QString& year, const QString& month, const QLineEdit* dayBox,
                    UpDown* dayUpDown) {
  const std::int16_t days = DaysInMonth(NumericInt16(FromQt(year)), MonthToNumber(FromQt(month)));
  if (days < 1) {
    return {};
  }
  dayUpDown->SetMaximum(days);
  const QString typed = dayBox->text();
  if (NumericValue(FromQt(typed)) <= days) {
    return {};
  }
  dayUpDown->SetValue(days);
  return CalHeaderBlock::tr("The day %1 was lowered to %2, the last day of %3.")
      .arg(typed, dayBox->text(), month);
}

}  // namespace

FileDate CalDateOf(const DraftHeader& boxes) {
  return {ToQt(boxes.calYear).toShort(), MonthToNumber(boxes.calMonth),
          ToQt(boxes.calDay).toShort()};
}

CalHeaderBlock::CalHeaderBlock(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::CalHeaderBlock>()) {
  ui_->setupUi(this);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  SetUpDate(ui_->txtCalYear, ui_->udCalYear, ui_->cmbCalMonth, ui_->txtCalDay, ui_->udCalDay);
  SetUpDate(ui_->txtDueYear, ui_->udDueYear, ui_->cmbDueMonth, ui_->txtDueDay, ui_->udDueDay);
  ui_->calDate->insertWidget(ui_->calDate->indexOf(ui_->udCalYear) + 1,
                             new CalendarButton({ui_->txtCalDay, ui_->cmbCalMonth, ui_->txtCalYear},
                                                tr("the calibration date"), this));
  ui_->dueDate->insertWidget(ui_->dueDate->indexOf(ui_->udDueYear) + 1,
                             new CalendarButton({ui_->txtDueDay, ui_->cmbDueMonth, ui_->txtDueYear},
                                                tr("the due date"), this));
  calDate_ = new DefaultDate({ui_->txtCalDay, ui_->cmbCalMonth, ui_->txtCalYear}, this);
  dueDate_ = new DefaultDate({ui_->txtDueDay, ui_->cmbDueMonth, ui_->txtDueYear}, this);
  for (const DefaultDate* date : {calDate_, dueDate_}) {
    connect(date, &DefaultDate::Entered, this, &CalHeaderBlock::DateEntered);
  }
  LabelDropDownLists(this);
  connect(ui_->txtCalYear, &QLineEdit::textChanged, this, &CalHeaderBlock::CalDateChanged);
  connect(ui_->cmbCalMonth, &QComboBox::currentIndexChanged, this, &CalHeaderBlock::CalDateChanged);
  connect(ui_->txtCalDay, &QLineEdit::textChanged, this, &CalHeaderBlock::CalDateChanged);
  FileTextValidator::Attach(ui_->txtSerial);
  FileTextValidator::Attach(ui_->txtCalNo);
  FileTextValidator::Attach(ui_->txtComment);
  connect(ui_->cmbCalMonth, &QComboBox::activated, this, &CalHeaderBlock::cmbCalMonth_Click);
  connect(ui_->cmbDueMonth, &QComboBox::activated, this, &CalHeaderBlock::cmbDueMonth_Click);
  connect(ui_->txtSerial, &QLineEdit::textChanged, this, &CalHeaderBlock::SerialChanged);
  for (QLineEdit* box : findChildren<QLineEdit*>()) {
    box->installEventFilter(this);
    connect(box, &QLineEdit::textChanged, this, &CalHeaderBlock::ReportNotices);
  }
  connect(ui_->txtCalDay, &QLineEdit::textEdited, this, [this] { emit Noticed(kCalDay, {}); });
  connect(ui_->txtDueDay, &QLineEdit::textEdited, this, [this] { emit Noticed(kDueDay, {}); });
  for (QComboBox* box : {ui_->cmbCalMonth, ui_->cmbDueMonth}) {
    box->installEventFilter(this);
    connect(box, &QComboBox::currentIndexChanged, this, &CalHeaderBlock::ReportNotices);
  }
}

CalHeaderBlock::~CalHeaderBlock() = default;

bool CalHeaderBlock::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && IsPlainEnter(*static_cast<QKeyEvent*>(event))) {
    focusNextChild();
    return true;
  }
  if (event->type() == QEvent::FocusIn) {
    emit Entered(watched->property(kSubject).toString());
  }
  return QWidget::eventFilter(watched, event);
}

void CalHeaderBlock::ReportNotices() {
  const auto nameOf = [](const QLabel* label) { return FromQt(PlainCaption(label->text())); };
  const auto report = [this](QLineEdit* marked, const QLabel* label, const std::string& notice) {
    MarkBox(marked, ToQt(notice));
    marked->setProperty(kSubject, PlainCaption(label->text()));
    emit Noticed(PlainCaption(label->text()), ToQt(notice));
  };
  const auto name = [&](QLineEdit* box, const QLabel* label) {
    report(box, label, NameReadDifferently(nameOf(label), FromQt(box->text())));
  };
  const auto date = [&](QLineEdit* day, const QComboBox* month, const QLineEdit* year,
                        const QLabel* label) {
    report(day, label,
           MissingDay(nameOf(label), FromQt(day->text()), FromQt(month->currentText()),
                      FromQt(year->text())));
  };
  name(ui_->txtSerial, ui_->lblSerial);
  name(ui_->txtCalNo, ui_->lblCalNo);
  date(ui_->txtCalDay, ui_->cmbCalMonth, ui_->txtCalYear, ui_->lblCalDate);
  date(ui_->txtDueDay, ui_->cmbDueMonth, ui_->txtDueYear, ui_->lblDueDate);
  report(ui_->txtComment, ui_->lblComment,
         HeaderReadDifferently(nameOf(ui_->lblComment), FromQt(ui_->txtComment->text())));
}

void CalHeaderBlock::Show(const QString& modelCode, const QString& serial,
                          const cifCaldata& calData) {
  MarkDates(false, false);
  ResetDate(ui_->udCalYear, kCalStartYear, ui_->udCalDay);
  ResetDate(ui_->udDueYear, kDueStartYear, ui_->udDueDay);

  ui_->txtModel->setText(modelCode);
  Lock(ui_->txtModel, true);
  ui_->txtSerial->setText(serial);
  ui_->txtCalNo->setText(ToQt(calData.CalibrationNumber()));
  std::int16_t year = 0;
  std::string month;
  std::int16_t day = 0;
  calData.GetCalDate(year, month, day);
  ShowDate(year, month, day, ui_->txtCalYear, ui_->cmbCalMonth, ui_->txtCalDay);
  calData.GetDueDate(year, month, day);
  ShowDate(year, month, day, ui_->txtDueYear, ui_->cmbDueMonth, ui_->txtDueDay);
  ui_->txtComment->setText(ToQt(calData.Comment()));
}

void CalHeaderBlock::MarkDates(bool isCalDateDefault, bool isDueDateDefault) {
  calDefaults_ = isCalDateDefault ? std::optional(Boxes()) : std::nullopt;
  dueDefaults_ = isDueDateDefault ? std::optional(Boxes()) : std::nullopt;
  calDate_->Mark(isCalDateDefault);
  dueDate_->Mark(isDueDateDefault);
}

void CalHeaderBlock::MarkDefaultDates(const DraftHeader& boxes) {
  const auto mark = [&](DefaultDate* date, const std::optional<DraftHeader>& defaults,
                        auto... texts) {
    date->Mark(defaults && ((boxes.*texts == (*defaults).*texts) && ...));
  };
  mark(calDate_, calDefaults_, &DraftHeader::calYear, &DraftHeader::calMonth, &DraftHeader::calDay);
  mark(dueDate_, dueDefaults_, &DraftHeader::dueYear, &DraftHeader::dueMonth, &DraftHeader::dueDay);
}

void CalHeaderBlock::LockSerial(bool locked) {
  Lock(ui_->txtSerial, locked);
  const QString lock =
      locked ? tr("The serial number is locked: its last five characters name the data file.\n"
                  "For another serial number, add new data.")
             : tr("The last five characters of the serial number name the data file.\n"
                  "After the data have been saved, it cannot be changed.");
  ui_->txtSerial->setToolTip(lock + "\n" + ui_->txtCalNo->toolTip());
  ui_->txtSerial->setAccessibleDescription(ui_->txtSerial->toolTip().replace('\n', ' '));
}

bool CalHeaderBlock::IsSerialLocked() const {
  return ui_->txtSerial->isReadOnly();
}

void CalHeaderBlock::Store(cifCaldata& calData) const {
  const auto integer = [](const QLineEdit* box) {
    return IntegerValue(FromQt(box->text()), FromQt(box->accessibleName()));
  };
  const std::int16_t calYear = integer(ui_->txtCalYear);
  const std::int16_t calDay = integer(ui_->txtCalDay);
  const std::int16_t dueYear = integer(ui_->txtDueYear);
  const std::int16_t dueDay = integer(ui_->txtDueDay);

  calData.SetModelNumber(FromQt(ui_->txtModel->text()));
  calData.SetSerialNumber(FromQt(ui_->txtSerial->text()));
  calData.SetCalibrationNumber(FromQt(ui_->txtCalNo->text()));
  calData.SetComment(FromQt(ui_->txtComment->text()));
  calData.SetCalDate(calYear, FromQt(ui_->cmbCalMonth->currentText()), calDay);
  calData.SetDueDate(dueYear, FromQt(ui_->cmbDueMonth->currentText()), dueDay);
}

std::optional<FileDate> CalHeaderBlock::CalDate() const {
  const FileDate date = CalDateOf(Boxes());
  return DueStateOf(date, date) == DueState::NoDate ? std::nullopt : std::optional(date);
}

DraftHeader CalHeaderBlock::Boxes() const {
  return {.serialNumber = FromQt(ui_->txtSerial->text()),
          .calibrationNumber = FromQt(ui_->txtCalNo->text()),
          .calYear = FromQt(ui_->txtCalYear->text()),
          .calMonth = FromQt(ui_->cmbCalMonth->currentText()),
          .calDay = FromQt(ui_->txtCalDay->text()),
          .dueYear = FromQt(ui_->txtDueYear->text()),
          .dueMonth = FromQt(ui_->cmbDueMonth->currentText()),
          .dueDay = FromQt(ui_->txtDueDay->text()),
          .comment = FromQt(ui_->txtComment->text())};
}

void CalHeaderBlock::ShowBoxes(const DraftHeader& boxes) {
  if (!ui_->txtSerial->isReadOnly()) {
    ui_->txtSerial->setText(ToQt(boxes.serialNumber));
  }
  ui_->txtCalNo->setText(ToQt(boxes.calibrationNumber));
  ui_->txtCalYear->setText(ToQt(boxes.calYear));
  ui_->cmbCalMonth->setCurrentIndex(ui_->cmbCalMonth->findText(ToQt(boxes.calMonth)));
  ui_->txtCalDay->setText(ToQt(boxes.calDay));
  ui_->txtDueYear->setText(ToQt(boxes.dueYear));
  ui_->cmbDueMonth->setCurrentIndex(ui_->cmbDueMonth->findText(ToQt(boxes.dueMonth)));
  ui_->txtDueDay->setText(ToQt(boxes.dueDay));
  ui_->txtComment->setText(ToQt(boxes.comment));
  MarkDefaultDates(boxes);
}

QString CalHeaderBlock::Serial() const {
  return ui_->txtSerial->text();
}

void CalHeaderBlock::FocusSerial() {
  ui_->txtSerial->setFocus();
}

void CalHeaderBlock::FocusCalNo() {
  ui_->txtCalNo->setFocus();
}

void CalHeaderBlock::cmbCalMonth_Click() {
  Guarded(window(), [this] {
    const QString lowered = FollowMonth(ui_->txtCalYear->text(), ui_->cmbCalMonth->currentText(),
                                        ui_->txtCalDay, ui_->udCalDay);
    if (!lowered.isEmpty()) {
      emit Noticed(kCalDay, lowered);
    }
  });
}

void CalHeaderBlock::cmbDueMonth_Click() {
  Guarded(window(), [this] {
    const QString lowered = FollowMonth(ui_->txtDueYear->text(), ui_->cmbDueMonth->currentText(),
                                        ui_->txtDueDay, ui_->udDueDay);
    if (!lowered.isEmpty()) {
      emit Noticed(kDueDay, lowered);
    }
  });
}

}  // namespace tarvell
