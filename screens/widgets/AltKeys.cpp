// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/AltKeys.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QShortcut>

namespace tarvell {

QString PlainCaption(QString caption) {
  // "&&" is a single "&" of the caption.
  for (qsizetype mark = 0; (mark = caption.indexOf(u'&', mark)) >= 0; ++mark) {
    caption.remove(mark, 1);
  }
  return caption;
}

QString WithFirstAsKey(QString caption) {
  return "&" + caption.replace("&", "&&");
}

QStringList WithDistinctKeys(QStringList captions) {
  QString taken;
  for (QString& caption : captions) {
    for (qsizetype place = caption.size() - 1; place >= 0; --place) {
      const QChar key = caption.at(place).toLower();
      if (key.isLetterOrNumber() && !taken.contains(key)) {
        taken += key;
        caption.insert(place, u'&');
        break;
      }
    }
  }
  return captions;
}

void GiveAltKey(QWidget* control, Qt::Key letter) {
  if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    QString caption = button->text();
    if (const qsizetype place = caption.indexOf(QChar(letter), 0, Qt::CaseInsensitive);
        place >= 0) {
      button->setText(caption.insert(place, u'&'));
    } else {
      button->setShortcut(Qt::ALT | letter);
      // No letter of the caption can show it.
      button->setToolTip(QString("%1 (%2)").arg(
          button->toolTip(), button->shortcut().toString(QKeySequence::NativeText)));
    }
    return;
  }
  auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | letter), control);  // the control owns it
  QObject::connect(shortcut, &QShortcut::activated, control,
                   [control] { control->setFocus(Qt::ShortcutFocusReason); });
  control->setAccessibleDescription(QString("%1 %2 goes here.")
                                        .arg(control->accessibleDescription(),
                                             shortcut->key().toString(QKeySequence::NativeText)));
}

}  // namespace tarvell
