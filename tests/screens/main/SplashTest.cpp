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

/// The visible window of this class, nullptr when there is none.
template <typename Screen>
QWidget* Visible() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (dynamic_cast<Screen*>(window) != nullptr && window->isVisible()) {
      return window;
    }
  }
  return nullptr;
}

TEST(Splash, IsShownForTheGivenTimeBeforeTheMainMenu) {
  const TestTree tree;
  const DesktopTestPlatform platform(tree.ProgramFolder());
  for (const int milliseconds : {300, 1000}) {
    frmMain menu;
    int looks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      ++looks;
      EXPECT_NE(Visible<frmSplash>(), nullptr);
      EXPECT_FALSE(menu.isVisible());
    });
    timer.start(20);
    QElapsedTimer clock;
    clock.start();
    if (milliseconds == 1000) {
      menu.Form_Load();  // the default
    } else {
      menu.Form_Load(0.3);
    }
    timer.stop();
    EXPECT_GE(clock.elapsed(), milliseconds - 20);
    EXPECT_LT(clock.elapsed(), milliseconds + 3000);
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(Visible<frmSplash>(), nullptr);
  }
}

}  // namespace
}  // namespace tarvell
