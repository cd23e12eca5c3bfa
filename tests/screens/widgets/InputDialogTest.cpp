// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "screens/widgets/frmInput.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class InputDialog : public testing::Test {
 protected:
  InputDialog() {
    dialog_.setWindowTitle("A title");
    dialog_.SetCaption("A prompt");
    dialog_.SetUnit("MHz");
  }

  /// Shows the dialog; `act` closes it.
  void Run(const std::function<void(frmInput& dialog)>& act) {
    user_.At<frmInput>(act);
    dialog_.exec();
  }

  User user_;
  frmInput dialog_{nullptr};
};

TEST_F(InputDialog, ShowsPromptLineAndUnits) {
  Run([](frmInput& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "A title");
    EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(), "A prompt");
    EXPECT_EQ(TextOf(dialog, "txtText"), "");
    EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus());
    const auto& units = Find<QComboBox>(dialog, "cmbUnit");
    ASSERT_EQ(units.count(), 3);
    EXPECT_EQ(units.itemText(0), "GHz");
    EXPECT_EQ(units.itemText(1), "MHz");
    EXPECT_EQ(units.itemText(2), "KHz");
    EXPECT_EQ(units.currentText(), "MHz");
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1) << "there is no cancel button";
    EXPECT_EQ(Find<QPushButton>(dialog, "btnOk").text(), "Ok");
    EXPECT_TRUE(Find<QLabel>(dialog, "Label1").text().isEmpty());
    dialog.close();
  });
}

TEST_F(InputDialog, OkHidesItAndTheValuesCanBeRead) {
  Run([](frmInput& dialog) {
    Type(" 2.5 ");
    Choose(dialog, "cmbUnit", "GHz");
    Click(dialog, "btnOk");
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(dialog_.Text(), " 2.5 ");
  EXPECT_EQ(dialog_.Unit(), "GHz");
}

TEST_F(InputDialog, EnterIsOk) {
  Run([](frmInput& dialog) {
    Type("7");
    Press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(dialog_.Text(), "7");
  EXPECT_EQ(dialog_.Unit(), "MHz");
}

TEST_F(InputDialog, EscapeEmptiesTheLine) {
  Run([](frmInput& dialog) {
    Type("7");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(dialog_.Text(), "");
}

TEST_F(InputDialog, ClosingItByItsFrameEmptiesTheLine) {
  Run([](frmInput& dialog) {
    Type("7");
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(dialog_.Text(), "");
}

TEST_F(InputDialog, ThePromptLeadsToTheLineByItsKey) {
  dialog_.SetCaption("&Prompt");
  Run([](frmInput& dialog) {
    EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").buddy(), &Find<QLineEdit>(dialog, "txtText"));
    Find<QComboBox>(dialog, "cmbUnit").setFocus();
    Press(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus());
    dialog.close();
  });
}

TEST_F(InputDialog, TheKeyboardGoesFromLineToUnitToOk) {
  Run([](frmInput& dialog) {
    for (const char* next : {"cmbUnit", "btnOk", "txtText"}) {
      Press(Qt::Key_Tab);
      EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
    }
    dialog.close();
  });
}

TEST_F(InputDialog, AnUnknownUnitLeavesTheChoice) {
  dialog_.SetUnit("Hz");
  EXPECT_EQ(dialog_.Unit(), "MHz");
}

TEST_F(InputDialog, WithoutUnitsTheListIsNotShown) {
  dialog_.HideUnit();
  Run([](frmInput& dialog) {
    EXPECT_FALSE(Find<QComboBox>(dialog, "cmbUnit").isVisible());
    Type("name");
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(dialog_.Text(), "name");
}

}  // namespace
}  // namespace tarvell
