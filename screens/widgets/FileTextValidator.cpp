// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/FileTextValidator.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/text/FileCharacters.h"
#include "screens/widgets/OneLineValidator.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

constexpr char32_t kFirstPrintable = 0x20;
constexpr char32_t kDelete = 0x7F;

bool IsControl(char32_t character) {
  return character < kFirstPrintable || character == kDelete;
}

QString Describe(char32_t character) {
  if (character == U'\n' || character == U'\r') {
    return FileTextValidator::tr("A line end");
  }
  if (IsControl(character)) {
    return FileTextValidator::tr("The control character number %1")
        .arg(static_cast<unsigned>(character));
  }
  return FileTextValidator::tr("The character \"%1\"").arg(QString::fromUcs4(&character, 1));
}

/// Why this character was refused in a text that was typed or pasted.
QString RefusalOf(char32_t character, const QString& text) {
  if (character == U'\t') {
    const auto lines = text.trimmed().count(u'\n') + 1;
    return FileTextValidator::tr(
               "A table of %1 cannot be pasted into a field. The text was left as it was; to paste "
               "points or values, click a cell of their table, then press Ctrl+V.")
        .arg(lines == 1 ? FileTextValidator::tr("1 line")
                        : FileTextValidator::tr("%1 lines").arg(lines));
  }
  return FileTextValidator::tr(
             "%1 cannot be stored in a data file. The text was left as it was; "
             "use another character.")
      .arg(Describe(character));
}

}  // namespace

FileTextValidator::FileTextValidator(QLineEdit* box) : QValidator(box), box_(box) {
  // When the box calls validate, it already holds the new text; textChanged reports only accepted
  // text.
  connect(box, &QLineEdit::textChanged, this,
          [this](const QString& text) { shown_ = text.toUcs4(); });
}

void FileTextValidator::Attach(QLineEdit* box) {
  auto* validator = new FileTextValidator(box);  // the box owns it
  box->setValidator(validator);
  // The default limit would cut off a long text from a file, and the rest would be lost in the next
  // save.
  box->setMaxLength(std::numeric_limits<int>::max());
  // Queued, so that the message comes after the box has handled the key or the paste.
  connect(box, &QLineEdit::inputRejected, validator, &FileTextValidator::ShowRefusal,
          Qt::QueuedConnection);
}

QValidator::State FileTextValidator::validate(QString& text, int& position) const {
  if (!shown_.contains(u'\n') && !shown_.contains(u'\r')) {
    OneLineValidator::DropPastedLineEnd(text, position);
  }
  const QList<uint> characters = text.toUcs4();
  // Characters from a file may stay while the rest is edited; saving reports them.
  const auto refused = std::find_if(characters.begin(), characters.end(), [&](uint character) {
    return (IsControl(character) || !IsFileCharacter(character)) && !shown_.contains(character);
  });
  if (refused == characters.end()) {
    return Acceptable;
  }
  refusal_ = RefusalOf(*refused, text);
  return Invalid;
}

void FileTextValidator::ShowRefusal() {
  if (!refusal_.isEmpty()) {
    const QString text = std::exchange(refusal_, {});
    CurrentQuestions().Ask(box_->window(), {.text = text, .icon = QMessageBox::Warning});
  }
}

}  // namespace tarvell
