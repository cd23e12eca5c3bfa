// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ScreenSize.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace tarvell {

namespace {

/// Height of a line of the font that the forms are drawn for.
constexpr double kDesignHeight = 14;
/// What the window manager commonly adds to a window that is not on the display yet.
constexpr QSize kFrame(16, 48);

/// What is left of a scrolled part on the smallest display, in heights of a line.
constexpr QSize kLeastPart(32, 3);

constexpr int kLeastGap = 3;

class ScrolledPart final : public QScrollArea {
 public:
  explicit ScrolledPart(QWidget* part) : QScrollArea(part->parentWidget()) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    // A part whose boxes like to be wide takes the room that its neighbours leave.
    const bool expands = part->layout()->expandingDirections().testFlag(Qt::Horizontal);
    setSizePolicy(
        expands ? QSizePolicy::Expanding : Shrinking(part->sizePolicy().horizontalPolicy()),
        Shrinking(part->sizePolicy().verticalPolicy()));
    setFocusPolicy(Qt::NoFocus);
    // The toolkit itself does so only for the Tab key, and not when that enters the part.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
      if (now != nullptr && widget() != nullptr && widget()->isAncestorOf(now)) {
        ensureWidgetVisible(now, 0, fontMetrics().height());
      }
    });
  }

  [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
  [[nodiscard]] QSize minimumSizeHint() const override {
    return (widget()->minimumSizeHint() + QSize(BarWidth(), 0))
        .boundedTo(kLeastPart * fontMetrics().height());
  }
  /// What its smallest size lacks to show all of the part.
  [[nodiscard]] QSize Lack() const {
    return (widget()->minimumSizeHint() - minimumSizeHint()).expandedTo(QSize(0, 0));
  }

 private:
  static QSizePolicy::Policy Shrinking(QSizePolicy::Policy policy) {
    return static_cast<QSizePolicy::Policy>(policy | QSizePolicy::ShrinkFlag);
  }

  [[nodiscard]] int BarWidth() const { return verticalScrollBar()->sizeHint().width(); }
};

class WithinDisplay : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && !event->spontaneous()) {
      auto* window = static_cast<QWidget*>(watched);
      const QSize room = window->screen()->availableSize() - kFrame;
      if (window->minimumSizeHint().height() > room.height()) {
        MoveTogether(*window);
      }
      window->resize(WithItsParts(*window).boundedTo(room));
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  /// Leaves hardly a gap between the controls of a window that is too large all the same.
  static void MoveTogether(const QWidget& window) {
    for (QLayout* layout : window.findChildren<QLayout*>()) {
      const QMargins margins = layout->contentsMargins();
      layout->setContentsMargins(
          std::min(margins.left(), kLeastGap), std::min(margins.top(), kLeastGap),
          std::min(margins.right(), kLeastGap), std::min(margins.bottom(), kLeastGap));
      layout->setSpacing(std::min(layout->spacing(), kLeastGap));
    }
  }

  /// The window's size, enlarged to what its scrolled parts need.
  static QSize WithItsParts(const QWidget& window) {
    QSize size = window.size();
    for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
      const auto* part = dynamic_cast<const ScrolledPart*>(area);
      if (part != nullptr && part->window() == &window && window.layout() != nullptr) {
        size = size.expandedTo(window.layout()->totalMinimumSize() + part->Lack());
      }
    }
    return size;
  }
};

}  // namespace

void SuitDisplay(QWidget* window) {
  window->resize(window->size() * std::max(1.0, window->fontMetrics().height() / kDesignHeight));
  window->installEventFilter(new WithinDisplay(window));  // the window owns it
}

void ScrollWhereItCannotFit(QWidget* part) {
  QLayout* layout = part->parentWidget()->layout();
  auto* scrolled = new ScrolledPart(part);  // the layout's widget owns it
  delete layout->replaceWidget(part, scrolled);
  scrolled->setWidget(part);
}

}  // namespace tarvell
