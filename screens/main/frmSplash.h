// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_MAIN_FRMSPLASH_H
#define TARVELL_SCREENS_MAIN_FRMSPLASH_H

#include <QDialog>

#include <memory>

namespace tarvell {

namespace Ui {
class frmSplash;
}

/// Shows name, revision and picture of the program while it starts. The user cannot close it.
class frmSplash final : public QDialog {
  Q_OBJECT

 public:
  frmSplash();
  frmSplash(const frmSplash&) = delete;
  frmSplash& operator=(const frmSplash&) = delete;
  ~frmSplash() override;

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  std::unique_ptr<Ui::frmSplash> ui_;
};

}  // namespace tarvell

#endif
