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
    box_ = new QLineEdit(&screen_);
    box_->setObjectName("txtDay");
    spinner_ = new UpDown(&screen_);
    auto* layout = new QHBoxLayout(&screen_);
    layout->addWidget(box_);
    layout->addWidget(spinner_);
    spinner_->SetBuddy(box_);
    spinner_->SetRange(1, 31);
    spinner_->SetValue(5);
    screen_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&screen_));
  }

  void TypeOver(const QString& text) { Fill(screen_, "txtDay", text); }

  void ClickArrow(const QString& name, int times = 1) {
    for (int i = 0; i < times; ++i) {
      Click(*spinner_, name);
    }
  }

  void ExpectBox(const char* text) const { EXPECT_EQ(box_->text(), text); }

  QWidget screen_;
  QLineEdit* box_;
  UpDown* spinner_;
};

TEST_F(Spinner, WritesItsValueIntoTheBox) {
  ExpectBox("5");
  spinner_->SetValue(12);
  ExpectBox("12");
  EXPECT_EQ(spinner_->Value(), 12);
}

TEST_F(Spinner, TheArrowsStepByOneAndKeepTheRange) {
  ClickArrow("up");
  ExpectBox("6");
  ClickArrow("down", 2);
  ExpectBox("4");
  ClickArrow("down", 10);
  ExpectBox("1");
  ClickArrow("up", 40);
  ExpectBox("31");
  EXPECT_EQ(spinner_->Value(), 31);
}

TEST_F(Spinner, TheKeysInTheBoxStepToo) {
  box_->setFocus();
  Press(Qt::Key_Up);
  Press(Qt::Key_Up);
  ExpectBox("7");
  Press(Qt::Key_Down);
  ExpectBox("6");
  TypeOver("31");
  Press(Qt::Key_Up);
  ExpectBox("31");
  TypeOver("1");
  Press(Qt::Key_Down);
  ExpectBox("1");
}

TEST_F(Spinner, TheArrowsLeaveTheKeyboardWhereItIs) {
  box_->setFocus();
  ClickArrow("up");
  EXPECT_TRUE(box_->hasFocus());
}

TEST_F(Spinner, FollowsATypedNumber) {
  TypeOver("17");
  EXPECT_EQ(spinner_->Value(), 17);
  ClickArrow("up");
  ExpectBox("18");
  TypeOver(" 9 ");
  ClickArrow("down");
  ExpectBox("8");
}

TEST_F(Spinner, LeavesATypedNumberOutsideTheRangeAndGoesOnFromItsEnd) {
  TypeOver("45");
  ExpectBox("45");
  EXPECT_EQ(spinner_->Value(), 31);
  ClickArrow("down");
  ExpectBox("30");
  TypeOver("-8");
  ExpectBox("-8");
  EXPECT_EQ(spinner_->Value(), 1);
  ClickArrow("up");
  ExpectBox("2");
}

TEST_F(Spinner, LeavesATextThatIsNoNumberAndGoesOnFromTheNumberBefore) {
  TypeOver("abc");
  ExpectBox("abc");
  EXPECT_EQ(spinner_->Value(), 5);
  ClickArrow("up");
  ExpectBox("6");
  TypeOver("");
  ExpectBox("");
  ClickArrow("up");
  ExpectBox("7");
}

TEST_F(Spinner, ANewMaximumLeavesTheBoxAndHoldsTheValue) {
  TypeOver("31");
  spinner_->SetMaximum(28);
  ExpectBox("31");
  EXPECT_EQ(spinner_->Value(), 28);
  ClickArrow("up");
  ExpectBox("28");
  spinner_->SetMaximum(31);
  ClickArrow("up");
  ExpectBox("29");
}

TEST_F(Spinner, HoldsAValueThatIsSetWithinTheRange) {
  spinner_->SetValue(40);
  ExpectBox("31");
  spinner_->SetValue(-1);
  ExpectBox("1");
  EXPECT_EQ(spinner_->Minimum(), 1);
  EXPECT_EQ(spinner_->Maximum(), 31);
}

TEST_F(Spinner, IsAsHighAsItsBox) {
  EXPECT_LE(spinner_->height(), screen_.height());
  const auto& up = Find<QToolButton>(*spinner_, "up");
  const auto& down = Find<QToolButton>(*spinner_, "down");
  EXPECT_LE(up.geometry().bottom(), down.geometry().top());
  EXPECT_GT(up.height(), 3);
  EXPECT_GT(down.height(), 3);
}

}  // namespace
}  // namespace tarvell
