// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/NoticeLine.h"

#include <QAccessible>
#include <QAction>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace tarvell {

namespace {

/// The line always has the height of two lines of text, so that no control moves.
constexpr int kLines = 2;

constexpr const char* kMarkName = "notice";
constexpr const char* kOwnDescription = "ownDescription";

QAction* MarkActionOf(const QLineEdit* box) {
  return box->findChild<QAction*>(kMarkName, Qt::FindDirectChildrenOnly);
}

}  // namespace

NoticeLine::NoticeLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Maximum);
}

void NoticeLine::Report(const QString& subject, const QString& text) {
  if (About(subject) == text) {
    return;
  }
  std::erase_if(notices_, [&](const auto& notice) { return notice.first == subject; });
  if (!text.isEmpty()) {
    notices_.emplace_back(subject, text);
  }
  ShowNotices();
}

void NoticeLine::SetRemark(const QString& remark) {
  if (remark != remark_) {
    remark_ = remark;
    ShowNotices();
  }
}

void NoticeLine::ShowAbout(const QString& subject) {
  const auto found = std::ranges::find(notices_, subject, [](const auto& n) { return n.first; });
  if (found != notices_.end() && found + 1 != notices_.end()) {
    std::rotate(found, found + 1, notices_.end());
    ShowNotices();
  }
}

void NoticeLine::Clear() {
  notices_.clear();
  remark_.clear();
  ShowNotices();
}

QString NoticeLine::About(const QString& subject) const {
  const auto found = std::ranges::find(notices_, subject, [](const auto& n) { return n.first; });
  return found == notices_.end() ? QString() : found->second;
}

QStringList NoticeLine::Notices() const {
  QStringList texts;
  std::for_each(notices_.rbegin(), notices_.rend(),
                [&](const auto& notice) { texts << notice.second; });
  return texts;
}

QSize NoticeLine::sizeHint() const {
  return {0, fontMetrics().lineSpacing() * kLines + 2 * margin()};
}

QSize NoticeLine::minimumSizeHint() const {
  // A small display may have room for one line only.
  return {0, fontMetrics().lineSpacing() + 2 * margin()};
}

QStringList NoticeLine::ShownLines() const {
  const QString whole = text().simplified();
  const int room = std::max(1, height() / fontMetrics().lineSpacing());
  QTextLayout layout(whole, font());
  layout.beginLayout();
  QStringList lines;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width());
    const bool isLast = lines.size() + 1 == room;
    lines << (isLast
                  ? fontMetrics().elidedText(whole.mid(line.textStart()), Qt::ElideRight, width())
                  : whole.mid(line.textStart(), line.textLength()));
    if (isLast) {
      break;
    }
  }
  layout.endLayout();
  return lines;
}

void NoticeLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  int top = 0;
  for (const QString& line : ShownLines()) {
    style()->drawItemText(&painter, {0, top, width(), fontMetrics().height()}, Qt::AlignLeft,
                          palette(), isEnabled(), line, foregroundRole());
    top += fontMetrics().lineSpacing();
  }
}

void NoticeLine::ShowNotices() {
  const QStringList texts = Notices();
  QString shown = texts.value(0);
  if (texts.size() > 1) {
    // At the front, where it can be seen even if the text is too long.
    shown.prepend(tr("1 of %1 notices (point here to read all): ").arg(texts.size()));
  }
  // The remark says what is left to be done: no notice may hide it.
  shown = (remark_ + ' ' + shown).trimmed();
  const bool isChanged = shown != text();
  setText(shown);
  const QStringList all = remark_.isEmpty() ? texts : QStringList(remark_) + texts;
  setToolTip(!all.isEmpty() ? Qt::convertFromPlainText(all.join("\n\n"), Qt::WhiteSpaceNormal)
                            : QString());
  setAccessibleDescription(texts.mid(1).join(' '));
  if (isChanged && !shown.isEmpty()) {
    QAccessibleEvent announcement(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
  }
}

void MarkBox(QLineEdit* box, const QString& why) {
  QAction* mark = MarkActionOf(box);
  if (why == MarkOf(box)) {
    return;
  }
  if (mark == nullptr) {
    // At the end of the box away from the text.
    const bool isAtRight = (box->alignment() & Qt::AlignRight) != 0;
    mark = box->addAction(box->style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, box),
                          isAtRight ? QLineEdit::LeadingPosition : QLineEdit::TrailingPosition);
    mark->setParent(box);
    mark->setObjectName(kMarkName);
    box->setProperty(kOwnDescription, box->accessibleDescription());
  }
  const QString own = box->property(kOwnDescription).toString();
  if (why.isEmpty()) {
    box->removeAction(mark);
    delete mark;
    box->setAccessibleDescription(own);
    return;
  }
  mark->setToolTip(why);
  box->setAccessibleDescription(own.isEmpty() ? why : why + " " + own);
}

QString MarkOf(const QLineEdit* box) {
  const QAction* mark = MarkActionOf(box);
  return mark == nullptr ? QString() : mark->toolTip();
}

}  // namespace tarvell
