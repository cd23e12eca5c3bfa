// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMINPUTPX60H_H
#define TARVELL_SCREENS_CALDATA_FRMINPUTPX60H_H

#include <QDialog>
#include <QString>

#include <memory>

namespace tarvell {

namespace Ui {
class frmInputPX60H;
}

/// Asks for the setting and the frequency of a new step attenuator point, chosen from a list or
/// typed. When it is closed, `DialogResult` is "OK" or "CANCEL".
class frmInputPX60H final : public QDialog {
  Q_OBJECT

 public:
  explicit frmInputPX60H(QWidget* parent);
  frmInputPX60H(const frmInputPX60H&) = delete;
  frmInputPX60H& operator=(const frmInputPX60H&) = delete;
  ~frmInputPX60H() override;

  void SetCaption(const QString& caption);
  void SetPoint(const QString& setting, const QString& frequency);

  [[nodiscard]] QString Setting() const;
  [[nodiscard]] QString Frequency() const;

  void reject() override;

 private:
  void btnOk_Click();
  void btnCancel_Click();

  std::unique_ptr<Ui::frmInputPX60H> ui_;
};

}  // namespace tarvell

#endif
