// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/User.h"

#include <QAbstractItemView>
#include <QAction>
#include <QPushButton>
#include <QTimer>

#include <utility>

namespace tarvell::test {

namespace {

constexpr int kPatience = 20000;  // ms
constexpr int kLookInterval = 5;  // ms

QWidget* KeyboardTarget() {
  if (QWidget* popup = QApplication::activePopupWidget()) {
    return popup;
  }
  QWidget* focus = QApplication::focusWidget();
  EXPECT_NE(focus, nullptr) << "no control has the focus";
  return focus;
}

/// Activates the window, as a window manager does at a click.
void Activate(QWidget& control) {
  if (!control.isActiveWindow()) {
    control.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(control.window()));
  }
}

/// Whether a screen or pop-up is shown and receives the keys.
bool IsReady(QWidget& screen) {
  if (!screen.isVisible()) {
    return false;
  }
  if (QApplication::activePopupWidget() == nullptr && !screen.isActiveWindow()) {
    // The window manager would do this.
    screen.activateWindow();
    return false;
  }
  return true;
}

void TypeOver(QLineEdit& box, const QString& text) {
  Activate(box);
  QTest::mouseClick(&box, Qt::LeftButton);
  EXPECT_TRUE(box.hasFocus()) << box.objectName().toStdString();
  Press(Qt::Key_A, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  Type(text);
}

QPoint CellCentre(QTableView& grid, int row, int column) {
  const QModelIndex cell = grid.model()->index(row - 1, column);
  EXPECT_TRUE(cell.isValid()) << "no cell " << row << ", " << column;
  Activate(grid);
  grid.scrollTo(cell);
  return grid.visualRect(cell).center();
}

void CloseEverything() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
  }
  if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
    dialog->done(QDialog::Rejected);
  }
}

}  // namespace

void Settle() {
  QCoreApplication::sendPostedEvents();
  QApplication::processEvents();
}

void Click(QWidget& screen, const QString& button) {
  auto& control = Find<QAbstractButton>(screen, button);
  EXPECT_TRUE(control.isVisible() && control.isEnabled())
      << button.toStdString() << " cannot be clicked";
  Activate(control);
  // On the text or mark, which is not at the centre of a wide radio button.
  QTest::mouseClick(&control, Qt::LeftButton, {},
                    QPoint(std::min(10, control.width() / 2), control.height() / 2));
}

void Type(const QString& text) {
  for (const QChar character : text) {
    if (QWidget* target = KeyboardTarget()) {
      QTest::keyClicks(target, QString(character));
    }
  }
}

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  if (QWidget* target = KeyboardTarget()) {
    QTest::keyClick(target, key, modifiers);
  }
}

void Fill(QWidget& screen, const QString& box, const QString& text) {
  TypeOver(Find<QLineEdit>(screen, box), text);
}

void ClickModel(QMenu& add, const QString& model) {
  auto* entry = add.findChild<QAction*>("mnu" + model);
  if (entry == nullptr) {
    ADD_FAILURE() << "no entry " << model.toStdString();
    add.close();
    return;
  }
  EXPECT_EQ(PlainCaption(entry->text()), model);
  EXPECT_TRUE(entry->isEnabled()) << model.toStdString();
  QTest::mouseClick(&add, Qt::LeftButton, {}, add.actionGeometry(entry).center());
}

void Choose(QWidget& screen, const QString& combo, const QString& entry) {
  auto& control = Find<QComboBox>(screen, combo);
  const int index = control.findText(entry);
  ASSERT_GE(index, 0) << "no entry " << entry.toStdString();
  Activate(control);
  control.setFocus();
  while (control.currentIndex() != index) {
    const int before = control.currentIndex();
    Press(before < index ? Qt::Key_Down : Qt::Key_Up);
    ASSERT_NE(control.currentIndex(), before);
  }
}

void ChooseByMouse(QComboBox& combo, int index) {
  QTest::mouseClick(&combo, Qt::LeftButton);
  QAbstractItemView& list = *combo.view();
  ASSERT_TRUE(list.isVisible());
  const QModelIndex entry = list.model()->index(index, 0);
  list.scrollTo(entry);
  const QPoint place(10, list.visualRect(entry).center().y());
  // For a time that it does not publish, a list that opens takes no release, which may be part of
  // the click that opened it.
  QTest::qWait(2 * QApplication::doubleClickInterval());
  QTest::mouseMove(list.viewport(), place);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
}

void FillCombo(QWidget& screen, const QString& combo, const QString& text) {
  QLineEdit* box = Find<QComboBox>(screen, combo).lineEdit();
  ASSERT_NE(box, nullptr) << combo.toStdString();
  TypeOver(*box, text);
}

void ClickEntry(QWidget& screen, const QString& list, const QString& text) {
  auto& control = Find<QListWidget>(screen, list);
  const QList<QListWidgetItem*> found = control.findItems(text, Qt::MatchExactly);
  ASSERT_FALSE(found.isEmpty()) << "no entry " << text.toStdString();
  Activate(control);
  control.scrollToItem(found.first());
  QTest::mouseClick(control.viewport(), Qt::LeftButton, {},
                    control.visualItemRect(found.first()).center());
}

void DoubleClickEntry(QWidget& screen, const QString& list, const QString& text) {
  auto& control = Find<QListWidget>(screen, list);
  ClickEntry(screen, list, text);
  const QList<QListWidgetItem*> found = control.findItems(text, Qt::MatchExactly);
  ASSERT_FALSE(found.isEmpty()) << "the click took the entry away";
  QTest::mouseDClick(control.viewport(), Qt::LeftButton, {},
                     control.visualItemRect(found.first()).center());
}

void ClickCell(QTableView& grid, int row, int column) {
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, CellCentre(grid, row, column));
}

void DoubleClickCell(QTableView& grid, int row, int column) {
  const QPoint centre = CellCentre(grid, row, column);
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, centre);
  QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, centre);
}

std::string TextOf(QWidget& screen, const QString& box) {
  return Find<QLineEdit>(screen, box).text().toStdString();
}

std::string ComboText(QWidget& screen, const QString& combo) {
  return Find<QComboBox>(screen, combo).currentText().toStdString();
}

std::vector<std::string> ComboEntries(QWidget& screen, const QString& combo) {
  const auto& control = Find<QComboBox>(screen, combo);
  std::vector<std::string> entries;
  for (int i = 0; i < control.count(); ++i) {
    entries.push_back(control.itemText(i).toStdString());
  }
  return entries;
}

std::vector<std::string> EntriesOf(QWidget& screen, const QString& list) {
  auto& control = Find<QListWidget>(screen, list);
  std::vector<std::string> entries;
  for (int row = 0; row < control.count(); ++row) {
    entries.push_back(control.item(row)->text().toStdString());
  }
  return entries;
}

std::string CellOf(QTableView& grid, int row, int column) {
  const QVariant text = row == 0 ? grid.model()->headerData(column, Qt::Horizontal)
                                 : grid.model()->index(row - 1, column).data();
  return text.toString().toStdString();
}

std::vector<std::string> ColumnOf(QTableView& grid, int column) {
  std::vector<std::string> cells;
  for (int row = 1; row <= grid.model()->rowCount(); ++row) {
    cells.push_back(CellOf(grid, row, column));
  }
  return cells;
}

User::User() {
  waiting_.start();
}

User::~User() {
  for (const Step& step : steps_) {
    ADD_FAILURE() << "a step did not run: " << step.name;
  }
}

void User::AnswerBox(const QString& text, QMessageBox::Icon icon,
                     QMessageBox::StandardButtons buttons,
                     QMessageBox::StandardButton defaultButton, QMessageBox::StandardButton answer,
                     const QString& title) {
  At<QMessageBox>([=](QMessageBox& box) {
    EXPECT_EQ(box.text().toStdString(), text.toStdString());
    EXPECT_EQ(box.windowTitle().toStdString(), title.toStdString());
    EXPECT_EQ(box.icon(), icon);
    EXPECT_EQ(box.standardButtons(), buttons);
    EXPECT_EQ(box.standardButton(box.defaultButton()), defaultButton);
    QAbstractButton* button = box.button(answer);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
  });
}

void User::Add(Step step) {
  const bool first = steps_.empty();
  steps_.insert(acting_ ? steps_.begin() + nextInner_++ : steps_.end(), std::move(step));
  if (first) {
    waiting_.restart();
    LookSoon();
  }
}

void User::LookSoon() {
  QTimer::singleShot(kLookInterval, &context_, [this] { Look(); });
}

void User::Look() {
  if (steps_.empty()) {
    return;
  }
  QWidget* screen = QApplication::activePopupWidget();
  if (screen == nullptr) {
    screen = QApplication::activeModalWidget();
  }
  if (screen != nullptr && IsReady(*screen) && steps_.front().matches(screen)) {
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    waiting_.restart();
    // The step may open a screen in which the next step runs.
    LookSoon();
    const bool outerActing = std::exchange(acting_, true);
    const std::ptrdiff_t outerNext = std::exchange(nextInner_, 0);
    const auto before = static_cast<std::ptrdiff_t>(steps_.size());
    step.act(screen);
    acting_ = outerActing;
    // The position of the outer step moves back by this step and by those that ran in it.
    const std::ptrdiff_t left = static_cast<std::ptrdiff_t>(steps_.size()) - nextInner_;
    nextInner_ = std::max<std::ptrdiff_t>(outerNext - 1 - (before - left), 0);
    return;
  }
  if (waiting_.elapsed() > kPatience) {
    ADD_FAILURE() << "no screen for the step " << steps_.front().name << "; there is "
                  << (screen != nullptr ? screen->metaObject()->className() : "none") << " "
                  << (screen != nullptr ? screen->windowTitle().toStdString() : "");
    steps_.clear();
  }
  if (steps_.empty()) {
    QTimer::singleShot(0, &context_, &CloseEverything);
    return;
  }
  LookSoon();
}

}  // namespace tarvell::test
