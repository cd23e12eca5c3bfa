// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALHEADERBLOCK_H
#define TARVELL_SCREENS_CALDATA_CALHEADERBLOCK_H

#include <QString>
#include <QWidget>

#include <memory>

#include "core/caldata/cifCaldata.h"

namespace tarvell {

namespace Ui {
class CalHeaderBlock;
}

/// The header of a data set, which both editors show: model, serial and calibration number,
/// calibration and due date, comment.
class CalHeaderBlock final : public QWidget {
  Q_OBJECT

 public:
  explicit CalHeaderBlock(QWidget* parent = nullptr);
  CalHeaderBlock(const CalHeaderBlock&) = delete;
  CalHeaderBlock& operator=(const CalHeaderBlock&) = delete;
  ~CalHeaderBlock() override;

  /// Shows the header of `calData` with the serial number `serial`, and sets the spinners to their
  /// ranges. The box of the model code is always locked.
  void Show(const QString& modelCode, const QString& serial, const cifCaldata& calData);
  /// Whether the serial number, which names the file, must not change.
  void LockSerial(bool locked);

  /// Stores the boxes in `calData`. Throws a Type error that names the box which holds no number;
  /// in `calData` nothing has changed then.
  void Store(cifCaldata& calData) const;

  [[nodiscard]] QString Serial() const;
  void FocusSerial();
  void FocusCalNo();

  /// Reports again what there is to report about the boxes.
  void ReportNotices();

 signals:
  void SerialChanged(const QString& serial);
  /// There is this to report about a field; "" takes it back.
  void Noticed(const QString& field, const QString& text);
  /// The keyboard has come to this field.
  void Entered(const QString& field);

 protected:
  /// Enter in a field goes to the next one.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmbCalMonth_Click();
  void cmbDueMonth_Click();

  std::unique_ptr<Ui::CalHeaderBlock> ui_;
};

}  // namespace tarvell

#endif
