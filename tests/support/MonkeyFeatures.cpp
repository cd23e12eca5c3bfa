// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/MonkeyFeatures.h"

#include <QtWidgets>

#include <algorithm>
#include <array>

#include "screens/caldata/CalEditor.h"
#include "screens/caldata/CalGrid.h"

namespace tarvell::test {

namespace {

/// Whether the user still sees this screen: an act may have opened a box or closed the screen.
bool IsOnTop(const QPointer<QWidget>& screen) {
  return screen != nullptr && screen->isVisible() && QApplication::activePopupWidget() == nullptr &&
         (QApplication::activeModalWidget() == nullptr ||
          QApplication::activeModalWidget() == screen);
}

/// One of the usable controls whose name begins or ends so, nullptr if there is none.
template <typename Control>
Control* AnyNamed(RandomHands& hands, const QWidget& top, const QStringList& names) {
  std::vector<Control*> controls = Usable<Control>(top);
  std::erase_if(controls, [&](const Control* control) {
    return std::ranges::none_of(names, [&](const QString& name) {
      return control->objectName().startsWith(name) || control->objectName().endsWith(name);
    });
  });
  return controls.empty() ? nullptr : hands.AnyOf(controls);
}

/// Menus, orders, calendars, drafts and help.
bool ClickFeature(RandomHands& hands, QWidget& top) {
  if (const auto bars = Usable<QMenuBar>(top); !bars.empty() && hands.Chance(30)) {
    QMenuBar& bar = *bars.front();
    hands.Click(bar, bar.actionGeometry(bar.actions().constLast()).center());
    return true;
  }
  auto* button = AnyNamed<QAbstractButton>(
      hands, top,
      {"btnMore", "btnFile", "btnRestore", "btnDiscard", "btnBack", "calendarOf_", "Sort"});
  if (button != nullptr) {
    hands.Click(*button);
  }
  return button != nullptr;
}

bool NarrowList(RandomHands& hands, QWidget& top) {
  auto* filter = AnyNamed<QLineEdit>(hands, top, {"Filter"});
  if (filter == nullptr) {
    return false;
  }
  static const QStringList kParts = {"3318", "A0", "px", "P", "1", "5", "st", " other ", "0001"};
  const QPointer<QWidget> alive(filter);
  hands.FillBox(*filter, hands.AnyOf(kParts));
  if (alive && hands.Chance(30)) {
    hands.Key(filter, hands.Chance(50) ? Qt::Key_Escape : Qt::Key_Return);
  }
  return true;
}

bool PressFeatureKey(RandomHands& hands, QWidget& top) {
  static const std::array<QKeyCombination, 9> kFeatureKeys = {
      QKeyCombination(Qt::Key_F5),
      QKeyCombination(Qt::Key_F6),
      QKeyCombination(Qt::Key_F1),
      Qt::CTRL | Qt::Key_Z,
      QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z),
      Qt::CTRL | Qt::Key_Y,
      Qt::CTRL | Qt::Key_Tab,
      Qt::CTRL | Qt::Key_PageDown,
      Qt::CTRL | Qt::Key_F};
  const QKeyCombination key = hands.AnyOf(kFeatureKeys);
  QWidget* focus = QApplication::focusWidget();
  hands.NoteUse(QKeySequence(key).toString(QKeySequence::PortableText));
  hands.Key(focus != nullptr ? focus : &top, key.key(), key.keyboardModifiers());
  return true;
}

CalGrid* TableOf(const QWidget& top) {
  const auto grids = Usable<CalGrid>(top);
  return grids.empty() || grids.front()->model()->rowCount() == 0 ? nullptr : grids.front();
}

bool DeletePoints(RandomHands& hands, QWidget& top) {
  CalGrid* grid = TableOf(top);
  if (grid == nullptr) {
    return false;
  }
  const QPointer<QWidget> screen(&top);
  hands.ClickCell(*grid);
  if (IsOnTop(screen)) {
    hands.ClickCell(*grid, false, Qt::ShiftModifier);
  }
  if (IsOnTop(screen)) {
    hands.Key(grid, Qt::Key_Delete);
  }
  return true;
}

bool PasteTable(RandomHands& hands, QWidget& top) {
  CalGrid* grid = TableOf(top);
  if (grid == nullptr) {
    return false;
  }
  QApplication::clipboard()->setText(TableOfPoints(hands));
  const QPointer<QWidget> screen(&top);
  hands.ClickCell(*grid);
  if (IsOnTop(screen)) {
    hands.Key(grid, Qt::Key_V, Qt::ControlModifier);
  }
  return true;
}

/// Undoes or redoes a step in the table: in a field of the header, the keys are for its text.
bool UndoOrRedo(RandomHands& hands, QWidget& top) {
  const QPointer<CalEditor> editor(qobject_cast<CalEditor*>(&top));
  CalGrid* grid = TableOf(top);
  if (!editor || grid == nullptr) {
    return false;
  }
  grid->setFocus();
  const int before = editor->History().index();
  const bool redoes = editor->History().canRedo() && hands.Chance(60);
  hands.Key(grid, Qt::Key_Z,
            redoes ? Qt::ControlModifier | Qt::ShiftModifier
                   : Qt::KeyboardModifiers(Qt::ControlModifier));
  if (editor && editor->History().index() != before) {
    hands.NoteUse(editor->History().index() < before ? "a step undone" : "a step redone");
  }
  return true;
}

/// Opens the dialog that chooses a certificate.
bool ImportCertificate(RandomHands& hands, QWidget& top) {
  auto* entry = top.findChild<QAction*>("mnuImport");
  if (entry == nullptr || qobject_cast<CalEditor*>(&top) == nullptr) {
    return false;
  }
  hands.Note("choose " + entry->objectName().toStdString());
  hands.NoteUse(entry->objectName());
  entry->trigger();
  return true;
}

/// Opens a data set that is listed, often the one that was opened last: it may have a draft.
bool OpenDataSet(RandomHands& hands, QWidget& top) {
  auto* models = top.findChild<QListWidget*>("LstInstrment");
  auto* serials = top.findChild<QListWidget*>("lstSerialNumber");
  auto* open = top.findChild<QAbstractButton*>(hands.Chance(60) ? "btnEdit" : "btnMore");
  if (models == nullptr || serials == nullptr || open == nullptr) {
    return false;
  }
  const QPointer<QWidget> screen(&top);
  for (QListWidget* list : {models, serials}) {
    if (IsOnTop(screen) && (list->selectedItems().isEmpty() || hands.Chance(40))) {
      hands.ClickCell(*list);
    }
  }
  if (IsOnTop(screen)) {
    hands.Click(*open);
  }
  return true;
}

/// Types a value and presses Escape until the editor is closed: a slip that leaves a draft.
bool LeaveDraft(RandomHands& hands, QWidget& top) {
  CalGrid* grid = TableOf(top);
  if (grid == nullptr || qobject_cast<CalEditor*>(&top) == nullptr) {
    return false;
  }
  const QPointer<QWidget> screen(&top);
  grid->setFocus();
  hands.TypeText(*grid, QString::number(90 + hands.Below(20)));
  constexpr int kEscapes = 2;
  for (int pressed = 0; pressed < kEscapes && IsOnTop(screen); ++pressed) {
    const bool isStored = hands.Chance(50) && pressed == 0;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
      // No control has the focus for a moment after a box was closed.
      QWidget* focus = QApplication::focusWidget();
      if ((key == Qt::Key_Escape || isStored) && IsOnTop(screen) && focus != nullptr) {
        hands.Key(focus, key);
      }
    }
  }
  return true;
}

}  // namespace

bool UseFeature(RandomHands& hands, QWidget& top) {
  static constexpr std::array kFeatures = {
      &ClickFeature, &NarrowList, &PressFeatureKey,   &DeletePoints, &PasteTable,
      &OpenDataSet,  &LeaveDraft, &ImportCertificate, &UndoOrRedo,   &ClickFeature};
  bool isUsed = false;
  for (std::size_t tries = 0; !isUsed && tries < kFeatures.size(); ++tries) {
    isUsed = hands.AnyOf(kFeatures)(hands, top);
  }
  return isUsed;
}

QString TableOfPoints(RandomHands& hands) {
  const bool hasSetting = hands.Chance(30);
  QString text = hands.Chance(30) ? (hasSetting ? "dB\tMHz\tdB\n" : "MHz\t%\n") : "";
  int point = 0;
  for (int left = hands.Below(60); left >= 0; --left) {
    // Now and then the same point twice.
    point += hands.Chance(98) ? 1 + hands.Below(9) : 0;
    text += hasSetting ? QString("%1\t%2\t").arg(10 * hands.Below(12)).arg(point)
                       : QString("%1\t").arg(point);
    text += QString::number(hands.Below(2000) / 10.0) + "\n";
  }
  return text;
}

}  // namespace tarvell::test
