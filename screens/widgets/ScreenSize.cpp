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

#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

/// Line height, in pixels, of the font that the forms were designed with.
constexpr double kDesignHeight = 14;
/// The usual size of a window's frame, which is unknown until the window is shown.
constexpr QSize kFrame(16, 48);

/// Minimum size of a scrolled part, in line heights.
constexpr QSize kMinPart(32, 3);

constexpr int kSmallGap = 3;  // pixels

class ScrolledPart final : public QScrollArea {
 public:
  explicit ScrolledPart(QWidget* part) : QScrollArea(part->parentWidget()) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    // A part with boxes that can grow takes all the width that is left.
    const bool expands = part->layout()->expandingDirections().testFlag(Qt::Horizontal);
    setSizePolicy(
        expands ? QSizePolicy::Expanding : Shrinking(part->sizePolicy().horizontalPolicy()),
        Shrinking(part->sizePolicy().verticalPolicy()));
    setFocusPolicy(Qt::NoFocus);
    // The toolkit itself scrolls to the focused control only for Tab, and not when Tab enters the
    // part from outside.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
      if (now != nullptr && widget() != nullptr && widget()->isAncestorOf(now)) {
        ShowWhole(*now);
      }
    });
  }

  [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
  [[nodiscard]] QSize minimumSizeHint() const override {
    return (widget()->minimumSizeHint() + QSize(BarWidth(), 0))
        .boundedTo(kMinPart * fontMetrics().height());
  }
  /// How much larger its minimum size would have to be to show the whole part.
  [[nodiscard]] QSize MissingRoom() const {
    return (widget()->minimumSizeHint() - minimumSizeHint()).expandedTo(QSize(0, 0));
  }

 private:
  static QSizePolicy::Policy Shrinking(QSizePolicy::Policy policy) {
    return static_cast<QSizePolicy::Policy>(policy | QSizePolicy::ShrinkFlag);
  }

  /// Scrolls to a control. The toolkit itself is content when the text cursor of a field is seen.
  void ShowWhole(const QWidget& control) {
    const QRect place(control.mapTo(widget(), QPoint(0, 0)), control.size());
    const QSize gap(0, fontMetrics().height());
    // A control that is larger than the part shows its middle.
    const QSize margin = (place.size() / 2 + QSize(1, 1) + gap).boundedTo(viewport()->size() / 2);
    ensureVisible(place.center().x(), place.center().y(), margin.width(), margin.height());
  }

  [[nodiscard]] int BarWidth() const { return verticalScrollBar()->sizeHint().width(); }
};

class DisplayFitter : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* window = static_cast<QWidget*>(watched);
    const QString key = "windows/" + window->objectName();
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
      Remember(key, window->saveGeometry());
    }
    if (event->type() == QEvent::Show && !event->spontaneous()) {
      // The toolkit takes nothing of a damaged setting, and no place on a display that is gone.
      window->restoreGeometry(RememberedBytes(key));
      const QSize room = window->screen()->availableSize() - kFrame;
      if (window->minimumSizeHint().height() > room.height()) {
        TightenLayouts(*window);
      }
      if (!window->isMaximized()) {
        window->resize(SizeWithParts(*window).boundedTo(room));
      }
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  /// Reduces the gaps between the controls of a window that is too large even when it scrolls.
  static void TightenLayouts(const QWidget& window) {
    for (QLayout* layout : window.findChildren<QLayout*>()) {
      const QMargins margins = layout->contentsMargins();
      layout->setContentsMargins(
          std::min(margins.left(), kSmallGap), std::min(margins.top(), kSmallGap),
          std::min(margins.right(), kSmallGap), std::min(margins.bottom(), kSmallGap));
      layout->setSpacing(std::min(layout->spacing(), kSmallGap));
    }
  }

  /// The size of the window, enlarged so that its scrolled parts fit.
  static QSize SizeWithParts(const QWidget& window) {
    QSize size = window.size();
    for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
      const auto* part = dynamic_cast<const ScrolledPart*>(area);
      if (part != nullptr && part->window() == &window && window.layout() != nullptr) {
        size = size.expandedTo(window.layout()->totalMinimumSize() + part->MissingRoom());
      }
    }
    return size;
  }
};

}  // namespace

void FitToDisplay(QWidget* window) {
  window->resize(window->size() * std::max(1.0, window->fontMetrics().height() / kDesignHeight));
  window->installEventFilter(new DisplayFitter(window));  // the window owns it
}

void MakeScrollable(QWidget* part) {
  QLayout* layout = part->parentWidget()->layout();
  auto* scrolled = new ScrolledPart(part);  // the layout's widget owns it
  delete layout->replaceWidget(part, scrolled);
  scrolled->setWidget(part);
}

}  // namespace tarvell
