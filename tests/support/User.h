// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_USER_H
#define TARVELL_TESTS_SUPPORT_USER_H

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "screens/widgets/AltKeys.h"

namespace tarvell::test {

/// The control of this name, which must exist.
template <typename Control>
Control& Find(QWidget& screen, const QString& name) {
  auto* control = screen.findChild<Control*>(name);
  if (control == nullptr) {
    ADD_FAILURE() << "no control " << name.toStdString();
    std::abort();
  }
  return *control;
}

// What a user does.

void Click(QWidget& screen, const QString& button);
/// Types into the focused control.
void Type(const QString& text);
void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Focuses a text box and replaces its text by typing.
void Fill(QWidget& screen, const QString& box, const QString& text);
/// Clicks the entry of a model in the Add menu.
void ClickModel(QMenu& add, const QString& model);
/// Chooses an entry of a drop-down list by its keys.
void Choose(QWidget& screen, const QString& combo, const QString& entry);
/// Chooses an entry of a drop-down list by the mouse.
void ChooseByMouse(QComboBox& combo, int index);
/// Replaces the text of an editable drop-down list by typing.
void FillCombo(QWidget& screen, const QString& combo, const QString& text);
/// Clicks or double-clicks the entry of a list with this text.
void ClickEntry(QWidget& screen, const QString& list, const QString& text);
void DoubleClickEntry(QWidget& screen, const QString& list, const QString& text);
/// Clicks or double-clicks a cell; row 1 is the first below the captions.
void ClickCell(QTableView& grid, int row, int column);
void DoubleClickCell(QTableView& grid, int row, int column);

/// Runs the events that a click or key has left pending.
void Settle();

// What a user sees.

[[nodiscard]] std::string TextOf(QWidget& screen, const QString& box);
/// The shown text and the entries of a drop-down list.
[[nodiscard]] std::string ComboText(QWidget& screen, const QString& combo);
[[nodiscard]] std::vector<std::string> ComboEntries(QWidget& screen, const QString& combo);
[[nodiscard]] std::vector<std::string> EntriesOf(QWidget& screen, const QString& list);
/// A cell's text; row 0 is the caption row.
[[nodiscard]] std::string CellOf(QTableView& grid, int row, int column);
[[nodiscard]] std::vector<std::string> ColumnOf(QTableView& grid, int column);

/// A user of screens that open on top of each other. Each step waits for a modal screen or pop-up
/// of its class and then runs in it. Steps that it adds run before the steps added earlier. If its
/// screen does not appear within some seconds, the test fails and all screens are closed.
class User {
 public:
  User();
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  /// Fails the test if a step did not run.
  ~User();

  template <typename Screen>
  void At(std::function<void(Screen& screen)> act) {
    Add({typeid(Screen).name(),
         [](QWidget* widget) { return dynamic_cast<Screen*>(widget) != nullptr; },
         [act = std::move(act)](QWidget* widget) { act(*dynamic_cast<Screen*>(widget)); }});
  }

  /// The same for a dialog, once it is active. Closes it if `act` leaves it open.
  template <typename Dialog>
  void Within(std::function<void(Dialog& dialog)> act) {
    At<Dialog>([act = std::move(act)](Dialog& dialog) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
      // After a fatal failure within, it is still open.
      act(dialog);
      if (dialog.isVisible()) {
        dialog.reject();
      }
    });
  }

  /// Waits for a real message box, checks all its parts and clicks a button.
  void AnswerBox(const QString& text, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
                 QMessageBox::StandardButton defaultButton, QMessageBox::StandardButton answer,
                 const QString& title = "Morrand Tarvell");

 private:
  struct Step {
    std::string name;
    std::function<bool(QWidget*)> matches;
    std::function<void(QWidget*)> act;
  };

  void Add(Step step);
  void Look();
  void LookSoon();

  std::deque<Step> steps_;
  QElapsedTimer waiting_;
  bool acting_ = false;
  std::ptrdiff_t nextInner_ = 0;  ///< the position at which the running step adds steps
  QObject context_;
};

}  // namespace tarvell::test

#endif
