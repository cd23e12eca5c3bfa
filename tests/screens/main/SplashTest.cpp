// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QElapsedTimer>
#include <gtest/gtest.h>

#include "screens/main/frmMain.h"
#include "screens/main/frmSplash.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

TEST(Splash, ShowsNameRevisionAndPictureAndCannotBeClosed) {
  frmSplash splash;
  splash.show();
  EXPECT_EQ(splash.windowTitle(), "Morrand Tarvell - A.02.61");
  EXPECT_EQ(Find<QLabel>(splash, "Label1").text(), "Tar Vell");
  EXPECT_EQ(Find<QLabel>(splash, "lblRevision").text(), "Rev.A.02.61");
  EXPECT_TRUE(Find<QLabel>(splash, "Label2").text().contains("the Tarvell authors"));
  for (const char* name : {"Label1", "lblRevision", "Label2", "Picture1"}) {
    EXPECT_TRUE(Find<QLabel>(splash, name).isVisible()) << name;
  }
  EXPECT_FALSE(Find<QLabel>(splash, "Picture1").pixmap().isNull());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&splash));
  EXPECT_FALSE(splash.close());
  QTest::keyClick(&splash, Qt::Key_Escape);
  QTest::keyClick(&splash, Qt::Key_Return);
  EXPECT_TRUE(splash.isVisible());
}

/// Records when the windows of the program are shown, painted and hidden.
class WindowTimes : public QObject {
 public:
  WindowTimes() {
    clock_.start();
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (dynamic_cast<frmSplash*>(watched) != nullptr) {
      splash_ = watched;
    }
    if (watched == splash_ && event->type() == QEvent::Hide) {
      splashHidden = clock_.elapsed();
    } else if (watched == splash_ && event->type() == QEvent::Paint && splashPainted < 0) {
      splashPainted = clock_.elapsed();
    } else if (dynamic_cast<frmMain*>(watched) != nullptr && event->type() == QEvent::Show) {
      mainShown = clock_.elapsed();
    }
    return false;
  }

  qint64 splashPainted = -1;
  qint64 splashHidden = -1;
  qint64 mainShown = -1;

 private:
  QElapsedTimer clock_;
  const QObject* splash_ = nullptr;  ///< known by its address while it is destroyed
};

TEST(Splash, IsShownForTheGivenTimeBeforeTheMainMenu) {
  const TestTree tree;
  const DesktopTestPlatform platform(tree.ProgramFolder());
  for (const int milliseconds : {300, 1000}) {
    WindowTimes times;
    frmMain menu;
    if (milliseconds == 1000) {
      menu.Form_Load();  // the default
    } else {
      menu.Form_Load(0.3);
    }
    EXPECT_TRUE(menu.isVisible());
    ASSERT_GE(times.splashPainted, 0);
    EXPECT_GE(times.splashHidden - times.splashPainted, milliseconds - 20);
    EXPECT_LT(times.splashHidden - times.splashPainted, milliseconds + 3000);
    EXPECT_GE(times.mainShown, times.splashHidden);
  }
}

}  // namespace
}  // namespace tarvell
