// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/OneLineValidator.h"

namespace tarvell {

void OneLineValidator::DropPastedLineEnd(QString& text, int& position) {
  for (const QChar end : {u'\n', u'\r'}) {
    if (position > 0 && position <= text.size() && text.at(position - 1) == end) {
      text.remove(--position, 1);
    }
  }
}

QValidator::State OneLineValidator::validate(QString& text, int& position) const {
  DropPastedLineEnd(text, position);
  return text.contains(u'\n') || text.contains(u'\r') ? Invalid : Acceptable;
}

}  // namespace tarvell
