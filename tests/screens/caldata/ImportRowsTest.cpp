// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QImage>
#include <QPalette>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "screens/caldata/ImportStage.h"

/// The rows that the preview of an import shows, and those that it removes.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

bool IsSeen(ImportPreview& preview, int row) {
  auto& table = Find<QTableWidget>(preview, "tblRows");
  return table.viewport()->rect().contains(table.visualItemRect(table.item(row, 0)));
}

TEST_F(ImportingASensor, ShowsTheFirstRowThatChangesAndRowsBeforeIt) {
  file_.rows = ManyRows(48);
  file_.reference = "none";
  Import(header_ + "f [MHz];KF [%]\n1;100\n40;99,8\n48;99,5\n", [](ImportPreview& preview) {
    EXPECT_EQ(PreviewRow(preview, "tblRows", 39), "updated|40.00|100.0 \u2192 99.8*");
    EXPECT_TRUE(IsSeen(preview, 39));
    EXPECT_TRUE(IsSeen(preview, 37));
    EXPECT_FALSE(IsSeen(preview, 0));
    Find<QTableWidget>(preview, "tblRows").scrollToTop();
    Press(Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(IsSeen(preview, 0)) << "the user looks at these rows";
    Press(Qt::Key_Escape);
  });
  ExpectSaved(file_);
}

/// The largest difference of lightness between a box without a tick and its screen.
int ContrastOf(const QCheckBox& box) {
  const QImage picture = box.window()->grab().toImage();
  const QPoint corner = box.mapTo(box.window(), QPoint(0, 0));
  const int background = box.window()->palette().color(QPalette::Window).lightness();
  int contrast = 0;
  for (int x = 0; x < box.iconSize().width(); ++x) {
    const QColor pixel = picture.pixelColor(corner + QPoint(x, box.height() / 2));
    contrast = std::max(contrast, std::abs(pixel.lightness() - background));
  }
  return contrast;
}

TEST_F(ImportingASensor, ABoxWithoutATickIsSeenInADarkTheme) {
  const QPalette usual = QApplication::palette();
  QPalette dark(QColor(45, 45, 45), QColor(45, 45, 45));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  QApplication::setPalette(dark);
  Import("Serial number;X1\nf [MHz];KF [%]\n50;99,5\n", [](ImportPreview& preview) {
    constexpr int kSeen = 60;
    EXPECT_GT(ContrastOf(Find<QCheckBox>(preview, "chkConfirm")), kSeen);
    Press(Qt::Key_Escape);
  });
  QApplication::setPalette(usual);
  ExpectSaved(file_);
}

class ImportingNewData : public ImportingASensor {
 protected:
  /// Imports a certificate into new data, does `act` in the preview, and saves.
  void ImportNew(const std::string& certificate, const ActInPreview& act) {
    SensorFile defaults = file_;
    defaults.serial = "";
    ShowNew(defaults, [&](frmCalDataInput& editor) {
      user_.At<ImportPreview>([act](ImportPreview& preview) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
        act(preview);
        Press(Qt::Key_Return);
      });
      ImportFile(editor, questions_, tree_.Root() / "c.csv", certificate);
      ActivateAgain(editor);
      Click(editor, "btnOk");
    });
  }

  const std::string certificate_ = header_ + "f [MHz];KF [%]\n50;99,5\n3000;95\n";
};

TEST_F(ImportingNewData, RemovesThePointsOfTheTemplateUnlessTheUserKeepsThem) {
  ImportNew(certificate_, [](ImportPreview& preview) {
    const auto& box = Find<QCheckBox>(preview, "chkRemove");
    EXPECT_EQ(box.text().toStdString(),
              "&Remove the 2 points of the template that the certificate does not have");
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(PreviewRow(preview, "tblRows", 1), "not in it, is removed|1000.00|97.0");
  });
  file_.calNo = "C-0099";
  file_.calDate = "20260807";
  file_.rows = {{"50.00", "99.5"}, {"3000.00", "95.0"}};
  ExpectSaved(file_);
}

TEST_F(ImportingNewData, KeepsThePointsOfTheTemplateWhereTheUserSaysSo) {
  ImportNew(certificate_, [](ImportPreview&) { Press(Qt::Key_R, Qt::AltModifier); });
  file_.calNo = "C-0099";
  file_.calDate = "20260807";
  file_.rows = {{"50.00", "99.5"}, {"1000.00", "97.0"}, {"2000.00", "96.0"}, {"3000.00", "95.0"}};
  ExpectSaved(file_);
}

}  // namespace
}  // namespace tarvell
