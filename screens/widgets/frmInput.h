// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_FRMINPUT_H
#define TARVELL_SCREENS_WIDGETS_FRMINPUT_H

#include <QDialog>
#include <QString>

#include <memory>

namespace tarvell {

namespace Ui {
class frmInput;
}

/// A dialog with one input line and a list of units ("GHz", "MHz", "KHz"). Closing it by its frame
/// or with Escape empties the line.
class frmInput final : public QDialog {
  Q_OBJECT

 public:
  explicit frmInput(QWidget* parent);
  frmInput(const frmInput&) = delete;
  frmInput& operator=(const frmInput&) = delete;
  ~frmInput() override;

  void SetCaption(const QString& caption);
  void SetUnit(const QString& unit);
  void HideUnit();

  [[nodiscard]] QString Text() const;
  [[nodiscard]] QString Unit() const;

  void reject() override;

 private:
  void btnOk_Click();

  std::unique_ptr<Ui::frmInput> ui_;
};

}  // namespace tarvell

#endif
