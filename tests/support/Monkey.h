// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEY_H
#define TARVELL_TESTS_SUPPORT_MONKEY_H

#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "screens/main/frmMain.h"
#include "support/RandomHands.h"

namespace tarvell::test {

/// Valid inputs, without which random actions would hardly get past the main menu.
struct MonkeyPlaces {
  QString calibrationDir;
  QString stationDir;
  std::vector<std::string> files;    ///< native, for the file dialog
  std::vector<std::string> folders;  ///< native; their "calfactors" and "stations" are picked
  std::string exports = {};          ///< native; the folder for what is exported
};

/// Uses the whole program at random: keys, clicks, wheel, clipboard, closing and resizing windows,
/// and what MonkeyFeatures.h seeks. The same seed gives the same actions. When the program ends, it
/// is started again, until all actions are done. A program that hangs is ended by SIGALRM.
class Monkey {
 public:
  Monkey(unsigned seed, int actions, MonkeyPlaces places)
      : hands_(seed), wanted_(actions), places_(std::move(places)) {}

  /// Returns the messages that are not known (see KnownMessages.h), each with the actions that led
  /// to it.
  [[nodiscard]] std::vector<std::string> Run();

  /// What was used in the run; see RandomHands.
  [[nodiscard]] const std::set<std::string>& Used() const { return hands_.Used(); }

 private:
  void Tick();
  [[nodiscard]] QWidget* Top() const;
  void Act(QWidget& top);
  void Leave(QWidget& top);
  void LookAt(QMessageBox& box);
  void UsePopup(QWidget& popup);
  void UseBox(QMessageBox& box);
  void UseFileDialog(QWidget& dialog);
  [[nodiscard]] std::string FileToChoose(const QFileDialog& dialog);
  [[nodiscard]] std::string NewExport();
  void UseMainMenu(QWidget& menu);
  void UseAnyScreen(QWidget& top);
  void PressButton(QWidget& top);
  void FillAnyBox(QWidget& top);
  void ClickAnyCell(QWidget& top);
  void ChooseTab(QWidget& top);
  void ChooseEntry(QWidget& top);
  void PutOnClipboard();
  void Resize(QWidget& top);

  RandomHands hands_;
  int wanted_;
  MonkeyPlaces places_;
  frmMain* menu_ = nullptr;
  bool running_ = false;
  QPointer<QMessageBox> looked_;  ///< the box whose text was checked
  std::vector<std::string> unknown_;
  QObject context_;
};

}  // namespace tarvell::test

#endif
