// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DraftStrip.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLocale>

namespace tarvell {

namespace {

QPushButton* AddButton(DraftStrip* strip, const QString& name, const QString& caption,
                       const QString& description) {
  auto* button = new QPushButton(caption, strip);
  button->setObjectName(name);
  button->setAutoDefault(false);
  button->setToolTip(description);
  button->setAccessibleDescription(description);
  // A click must not end an open edit of a cell.
  button->setFocusPolicy(Qt::TabFocus);
  strip->layout()->addWidget(button);
  return button;
}

}  // namespace

DraftStrip::DraftStrip(QWidget* parent) : QFrame(parent), text_(new QLabel(this)) {
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  auto* row = new QHBoxLayout(this);
  constexpr int kMargin = 4;
  row->setContentsMargins(2 * kMargin, kMargin, kMargin, kMargin);
  text_->setObjectName("lblDraft");
  text_->setForegroundRole(QPalette::ToolTipText);
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  row->addWidget(text_, 1);
  connect(
      AddButton(this, "btnRestore", tr("&Restore"), tr("Puts back what was typed and not saved.")),
      &QPushButton::clicked, this, &DraftStrip::Restore);
  connect(AddButton(this, "btnDiscard", tr("D&iscard"), tr("Moves the draft to the recycle bin.")),
          &QPushButton::clicked, this, &DraftStrip::Discard);
  hide();
}

void DraftStrip::Offer(const OfferedDraft& draft) {
  // The screens are in English, whatever the language of the desktop.
  const QString when = QLocale::c().toString(draft.written, "d MMM yyyy, HH:mm:ss") +
                       (draft.serial.isEmpty() ? QString() : tr(" for %1").arg(draft.serial));
  const QString typed =
      draft.count > 1
          ? tr("Typed and not saved: %1 drafts, the latest of %2.").arg(draft.count).arg(when)
          : tr("Typed and not saved: a draft of %1.").arg(when);
  text_->setText(draft.isOutdated
                     ? typed + tr(" The data have been saved since: Restore puts back only "
                                  "what was typed, and keeps all newer values.")
                     : typed);
  setAccessibleName(text_->text());
  setEnabled(true);
  show();
  QAccessibleEvent announcement(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&announcement);
}

void DraftStrip::Withdraw() {
  hide();
  // A screen reader can press a button that is hidden.
  setEnabled(false);
}

}  // namespace tarvell
