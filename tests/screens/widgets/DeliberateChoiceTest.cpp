// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>
#include <gtest/gtest.h>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/DeliberateChoice.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

void TurnWheelOver(QWidget& box) {
  const QPointF centre = box.rect().center();
  QWheelEvent wheel(centre, box.mapToGlobal(centre), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&box, &wheel);
}

/// A list of three entries, editable or not, and a box that has the focus.
class DeliberateChoice : public testing::TestWithParam<bool> {
 protected:
  DeliberateChoice() {
    auto* layout = new QVBoxLayout(&window_);
    box_.setEditable(GetParam());
    box_.addItems({"one", "two", "three"});
    layout->addWidget(&box_);
    layout->addWidget(&other_);
    ChangeOnlyDeliberately(&box_);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    other_.setFocus();
  }
  QWidget window_;
  QComboBox& box_ = *new QComboBox(&window_);  // the window owns them
  QLineEdit& other_ = *new QLineEdit(&window_);
};

TEST_P(DeliberateChoice, IsMadeByTheWheelWithTheFocusAndByTheLeftButtonInTheOpenList) {
  TurnWheelOver(box_);
  EXPECT_EQ(box_.currentText(), "one");
  box_.setFocus();
  TurnWheelOver(box_);
  EXPECT_EQ(box_.currentText(), "two");
  Press(Qt::Key_Down, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(box_.view()->window()));
  // Immediately after the list opens, a release counts as part of the click that opened it.
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  const QPoint third = box_.view()->visualRect(box_.model()->index(2, 0)).center();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
    QTest::mouseClick(box_.view()->viewport(), button, {}, third);
    EXPECT_EQ(box_.currentText(), "two");
    EXPECT_TRUE(box_.view()->isVisible());
  }
  QTest::mouseClick(box_.view()->viewport(), Qt::LeftButton, {}, third);
  EXPECT_EQ(box_.currentText(), "three");
}

INSTANTIATE_TEST_SUITE_P(Lists, DeliberateChoice, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Editable" : "Fixed"; });

using UnitOfACell = TabEditorFixture;

TEST_F(UnitOfACell, TheWheelOverTheUnitOfAnOpenCellChangesNothing) {
  WriteTemplates();
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("12");
    TurnWheelOver(UnitBoxOf(editor));
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12 ppm");
  });
}

}  // namespace
}  // namespace tarvell
