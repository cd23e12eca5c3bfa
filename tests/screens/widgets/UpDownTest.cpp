// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QHBoxLayout>
#include <QToolButton>
#include <gtest/gtest.h>

#include "screens/widgets/UpDown.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// A number's box with its spinner, from 1 to 31.
class Spinner : public testing::Test {
 protected:
  Spinner() {
    box_->setObjectName("txtDay");
    auto* layout = new QHBoxLayout(&screen_);
    layout->addWidget(box_);
    layout->addWidget(spinner_);
    spinner_->SetBuddy(box_);
    spinner_->SetRange(1, 31);
    spinner_->SetValue(5);
    screen_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&screen_));
  }

  void ClickArrow(const QString& name, int times = 1) {
    for (int i = 0; i < times; ++i) {
      Click(*spinner_, name);
    }
  }

  void ExpectBox(const char* text) const { EXPECT_EQ(box_->text(), text); }

  QWidget screen_;
  QLineEdit* box_ = new QLineEdit(&screen_);  // the screen owns them
  UpDown* spinner_ = new UpDown(&screen_);
};

TEST_F(Spinner, ArrowsAndKeysStepByOneWithinTheRange) {
  for (const char* arrow : {"up", "down"}) {
    EXPECT_GT(Find<QToolButton>(*spinner_, arrow).height(), 3);
  }
  ExpectBox("5");
  box_->setFocus();
  ClickArrow("up");
  ExpectBox("6");
  EXPECT_TRUE(box_->hasFocus());
  ClickArrow("down", 10);
  ExpectBox("1");
  ClickArrow("up", 40);
  ExpectBox("31");
  Press(Qt::Key_Up);
  ExpectBox("31");
  Press(Qt::Key_Down);
  ExpectBox("30");
  spinner_->SetValue(40);
  ExpectBox("31");
  spinner_->SetValue(-1);
  ExpectBox("1");
}

TEST_F(Spinner, FollowsTheTypedTextWithoutCorrectingIt) {
  struct Step {
    const char* typed;
    int value;
    const char* afterUp;
  };
  for (const Step& step : {Step{"17", 17, "18"}, Step{" 9 ", 9, "10"}, Step{"45", 31, "31"},
                           Step{"-8", 1, "2"}, Step{"abc", 2, "3"}, Step{"", 3, "4"}}) {
    Fill(screen_, "txtDay", step.typed);
    ExpectBox(step.typed);
    EXPECT_EQ(spinner_->Value(), step.value) << step.typed;
    ClickArrow("up");
    ExpectBox(step.afterUp);
  }
}

TEST_F(Spinner, ANewMaximumLeavesTheBoxAndLimitsTheValue) {
  Fill(screen_, "txtDay", "31");
  spinner_->SetMaximum(28);
  ExpectBox("31");
  EXPECT_EQ(spinner_->Value(), 28);
  ClickArrow("up");
  ExpectBox("28");
  spinner_->SetMaximum(31);
  ClickArrow("up");
  ExpectBox("29");
}

}  // namespace
}  // namespace tarvell
