// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/Handbook.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

constexpr QSize kWindowSize(760, 620);

/// The property of a screen that holds its chapter.
constexpr const char* kChapter = "chapter";

QUrl PageUrl(const QString& chapter) {
  const std::filesystem::path page =
      CurrentPlatform().ProgramFolder() / "handbook" / "handbook.html";
  const QString path = PathForQt(page);
  if (!QFileInfo(path).isFile()) {
    throw Error(ErrorKind::NotFound,
                "The handbook is not installed. Have the program installed again.", PathText(page));
  }
  QUrl url = QUrl::fromLocalFile(path);
  url.setFragment(chapter);
  return url;
}

/// The chapter of the screen, or of the nearest one below it that has a chapter.
QString ChapterOf(const QWidget* screen) {
  QString chapter;
  for (; screen != nullptr && chapter.isEmpty(); screen = screen->parentWidget()) {
    chapter = screen->property(kChapter).toString();
  }
  return chapter;
}

}  // namespace

void OfferHandbook(QWidget* screen, const QString& chapter) {
  screen->setProperty(kChapter, chapter);
  auto* shortcut = new QShortcut(QKeySequence::HelpContents, screen);  // the screen owns it
  QObject::connect(shortcut, &QShortcut::activated, screen, [screen] {
    Guarded(screen, [screen] { ShowHandbook(screen, ChapterOf(screen)); });
  });
}

void ShowHandbook(QWidget* screen, const QString& chapter) {
  static QPointer<HandbookWindow> window;
  const QUrl place = PageUrl(chapter);
  if (window == nullptr) {
    window = new HandbookWindow(screen);  // the screen owns it
  } else if (window->parentWidget() != screen) {
    // A modal screen lets only windows above it be used.
    window->setParent(screen, window->windowFlags());
  }
  window->GoTo(place);
}

HandbookWindow::HandbookWindow(QWidget* parent)
    : QDialog(parent, Qt::Window), pages_(new QTextBrowser(this)) {
  setObjectName("Handbook");
  setWindowTitle(tr("Handbook"));
  pages_->setObjectName("pages");
  pages_->setAccessibleName(tr("Handbook"));
  pages_->setAccessibleDescription(
      tr("Tab goes from link to link, Enter follows it, Alt+Left goes back."));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages_);
  auto* buttons = new QDialogButtonBox(this);
  auto* back = buttons->addButton(tr("&Back"), QDialogButtonBox::ActionRole);
  back->setObjectName("btnBack");
  back->setAccessibleDescription(tr("Goes back to the place before the last link."));
  back->setEnabled(false);
  auto* close = buttons->addButton(tr("&Close"), QDialogButtonBox::RejectRole);
  close->setObjectName("btnClose");
  close->setAccessibleDescription(tr("Closes the handbook."));
  layout->addWidget(buttons);
  connect(pages_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
  connect(back, &QPushButton::clicked, pages_, &QTextBrowser::backward);
  connect(close, &QPushButton::clicked, this, &HandbookWindow::close);
  EnterPressesFocusedButton(this);
  resize(kWindowSize);
  FitToDisplay(this);
}

void HandbookWindow::GoTo(const QUrl& place) {
  show();
  raise();
  activateWindow();
  pages_->setFocus();
  // The place of a chapter is known only when the page has its width.
  pages_->setSource(place);
}

}  // namespace tarvell
