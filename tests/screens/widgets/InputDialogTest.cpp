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
    dialog_.SetCaption("&Prompt");
    dialog_.SetUnit("MHz");
  }

  /// Shows the dialog, in which the user types 7; `close` closes it.
  void Run(const std::function<void(frmInput& dialog)>& close) {
    user_.At<frmInput>([&](frmInput& dialog) {
      EXPECT_EQ(TextOf(dialog, "txtText"), "");
      EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus());
      Type(" 7 ");
      close(dialog);
      EXPECT_FALSE(dialog.isVisible());
    });
    dialog_.exec();
  }

  User user_;
  frmInput dialog_{nullptr};
};

TEST_F(InputDialog, OkGivesTheLineAndTheUnit) {
  Run([](frmInput& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "A title");
    EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(), "&Prompt");
    EXPECT_EQ(ComboEntries(dialog, "cmbUnit"), (std::vector<std::string>{"GHz", "MHz", "KHz"}));
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1) << "there is no cancel button";
    EXPECT_EQ(Find<QPushButton>(dialog, "btnOk").text(), "Ok");
    EXPECT_EQ(ComboText(dialog, "cmbUnit"), "MHz");
    Choose(dialog, "cmbUnit", "GHz");
    Press(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus()) << "the key of the prompt";
    Click(dialog, "btnOk");
  });
  EXPECT_EQ(dialog_.Text(), " 7 ");
  EXPECT_EQ(dialog_.Unit(), "GHz");
  dialog_.SetUnit("Hz");
  EXPECT_EQ(dialog_.Unit(), "GHz") << "an unknown unit changes nothing";
}

TEST_F(InputDialog, EnterIsOkAndEscapeAndTheFrameEmptyTheLine) {
  dialog_.HideUnit();
  Run([](frmInput& dialog) {
    EXPECT_FALSE(Find<QComboBox>(dialog, "cmbUnit").isVisible());
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(dialog_.Text(), " 7 ");
  Run([](frmInput&) { Press(Qt::Key_Escape); });
  EXPECT_EQ(dialog_.Text(), "");
  Run([](frmInput& dialog) { dialog.close(); });
  EXPECT_EQ(dialog_.Text(), "");
}

}  // namespace
}  // namespace tarvell
