// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALHEADERBLOCK_H
#define TARVELL_SCREENS_CALDATA_CALHEADERBLOCK_H

#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

#include "core/caldata/EditorState.h"
#include "core/caldata/cifCaldata.h"
#include "core/dates/FileDate.h"
#include "screens/widgets/DefaultDate.h"

namespace tarvell {

namespace Ui {
class CalHeaderBlock;
}

/// The calibration date in the boxes of a header; a box without a number counts as 0.
[[nodiscard]] FileDate CalDateOf(const DraftHeader& boxes);

/// The header of a data set, in both editors: model, serial and calibration number, calibration and
/// due date, comment.
class CalHeaderBlock final : public QWidget {
  Q_OBJECT

 public:
  explicit CalHeaderBlock(QWidget* parent = nullptr);
  CalHeaderBlock(const CalHeaderBlock&) = delete;
  CalHeaderBlock& operator=(const CalHeaderBlock&) = delete;
  ~CalHeaderBlock() override;

  /// Shows the header of `calData` with the serial number `serial`, and sets the ranges of the
  /// spinners. The box of the model code is always locked.
  void Show(const QString& modelCode, const QString& serial, const cifCaldata& calData);
  /// Marks the dates as values that nobody has entered, or as entered.
  void MarkDates(bool isCalDateDefault, bool isDueDateDefault);
  [[nodiscard]] bool IsCalDateDefault() const { return calDate_->IsDefault(); }
  [[nodiscard]] bool IsDueDateDefault() const { return dueDate_->IsDefault(); }
  /// Locks or unlocks the serial number. The serial number of a file must not change: it names the
  /// file.
  void LockSerial(bool locked);
  [[nodiscard]] bool IsSerialLocked() const;

  /// Stores the boxes in `calData`. Throws a Type error that names a date box without a number, and
  /// stores nothing then.
  void Store(cifCaldata& calData) const;

  /// The calibration date in the boxes; nothing while they hold none.
  [[nodiscard]] std::optional<FileDate> CalDate() const;

  /// The boxes as they are, even if they could not be stored.
  [[nodiscard]] DraftHeader Boxes() const;
  /// Shows these texts. A locked serial number stays.
  void ShowBoxes(const DraftHeader& boxes);

  [[nodiscard]] QString Serial() const;
  void FocusSerial();
  void FocusCalNo();

  /// Reports all notices about the boxes again.
  void ReportNotices();

 signals:
  void SerialChanged(const QString& serial);
  /// A date that was a default has been entered.
  void DateEntered();
  /// The calibration date is now another one.
  void CalDateChanged();
  /// The notice about a field is now `text`; "" for none.
  void Noticed(const QString& field, const QString& text);
  /// This field has got the focus.
  void Entered(const QString& field);

 protected:
  /// Enter in a field goes to the next one.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmbCalMonth_Click();
  void cmbDueMonth_Click();
  /// Marks the dates of `boxes` that are still those of the template.
  void MarkDefaultDates(const DraftHeader& boxes);

  std::unique_ptr<Ui::CalHeaderBlock> ui_;
  DefaultDate* calDate_;
  DefaultDate* dueDate_;
  std::optional<DraftHeader> calDefaults_;  ///< with the calibration date of the template, if any
  std::optional<DraftHeader> dueDefaults_;  ///< the same for the due date
};

}  // namespace tarvell

#endif
