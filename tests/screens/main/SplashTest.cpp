// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

#include "screens/main/frmMain.h"
#include "screens/main/frmSplash.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

TEST(Splash, ShowsNameRevisionNoticeAndPicture) {
  frmSplash splash;
  splash.show();
  EXPECT_EQ(splash.windowTitle(), "Morrand Tarvell - A.02.61");
  EXPECT_EQ(Find<QLabel>(splash, "Label1").text(), "Tar Vell");
  EXPECT_EQ(Find<QLabel>(splash, "lblRevision").text(), "Rev.A.02.61");
  EXPECT_TRUE(Find<QLabel>(splash, "Label2").text().contains("the Tarvell authors"));
  for (const char* name : {"Label1", "lblRevision", "Label2", "Picture1"}) {
    EXPECT_TRUE(Find<QLabel>(splash, name).isVisible()) << name;
  }
  const QPixmap picture = Find<QLabel>(splash, "Picture1").pixmap();
  ASSERT_FALSE(picture.isNull());
  // A picture, not one plain ground.
  const QImage image = picture.toImage();
  bool plain = true;
  for (int y = 0; y < image.height() && plain; ++y) {
    for (int x = 0; x < image.width() && plain; ++x) {
      plain = image.pixel(x, y) == image.pixel(0, 0);
    }
  }
  EXPECT_FALSE(plain);
}

TEST(Splash, TheUserCannotCloseIt) {
  frmSplash splash;
  splash.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&splash));
  EXPECT_FALSE(splash.close());
  EXPECT_TRUE(splash.isVisible());
  QTest::keyClick(&splash, Qt::Key_Escape);
  EXPECT_TRUE(splash.isVisible());
  QTest::keyClick(&splash, Qt::Key_Return);
  EXPECT_TRUE(splash.isVisible());
}

/// Sees the windows of the program come and go.
class WindowWatcher : public QObject {
 public:
  WindowWatcher() {
    clock_.start();
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (dynamic_cast<frmSplash*>(watched) != nullptr) {
      splash_ = watched;
    }
    if (watched == splash_) {
      if (event->type() == QEvent::Show) {
        splashShown = clock_.elapsed();
      } else if (event->type() == QEvent::Hide) {
        splashHidden = clock_.elapsed();
      } else if (event->type() == QEvent::Paint && splashPainted < 0) {
        splashPainted = clock_.elapsed();
      }
    } else if (dynamic_cast<frmMain*>(watched) != nullptr && event->type() == QEvent::Show) {
      mainShown = clock_.elapsed();
    }
    return false;
  }

  qint64 splashShown = -1;
  qint64 splashPainted = -1;
  qint64 splashHidden = -1;
  qint64 mainShown = -1;

 private:
  QElapsedTimer clock_;
  const QObject* splash_ = nullptr;  ///< also while it ends
};

TEST(Splash, IsShownForTheToldTimeBeforeTheMainMenu) {
  const TestTree tree;
  const DesktopTestPlatform platform(tree.ProgramFolder());
  for (const double seconds : {0.3, 1.0}) {
    WindowWatcher watcher;
    frmMain menu;
    if (seconds == 1.0) {
      menu.Form_Load();  // a second, when nothing else is told
    } else {
      menu.Form_Load(seconds);
    }
    EXPECT_TRUE(menu.isVisible());
    ASSERT_GE(watcher.splashShown, 0);
    EXPECT_GE(watcher.splashPainted, watcher.splashShown) << "it was never seen";
    const auto least = static_cast<qint64>(seconds * 1000) - 20;
    EXPECT_GE(watcher.splashHidden - watcher.splashPainted, least);
    EXPECT_LT(watcher.splashHidden - watcher.splashShown, least + 3000);
    EXPECT_GE(watcher.mainShown, watcher.splashHidden);
  }
}

TEST(Splash, IsGoneWhenTheMainMenuIsThere) {
  const TestTree tree;
  const DesktopTestPlatform platform(tree.ProgramFolder());
  frmMain menu;
  menu.Form_Load(0);
  for (const QWidget* widget : QApplication::topLevelWidgets()) {
    EXPECT_EQ(dynamic_cast<const frmSplash*>(widget), nullptr);
  }
}

}  // namespace
}  // namespace tarvell
