// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/ImportStage.h"
#include "screens/caldata/TabEditorFixture.h"

/// Certificates that are dropped on the table of an editor.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class DroppingOnTheTable : public ImportingASensor {
 protected:
  /// Drops these on the table of an open editor, does `act`, and saves.
  void Drop(const QList<QUrl>& urls, const std::function<void()>& act) {
    ShowFile(file_, [&](frmCalDataInput& editor) {
      QMimeData data;
      data.setUrls(urls);
      QWidget* table = GridOf(editor).viewport();
      const Qt::DropActions both = Qt::CopyAction | Qt::MoveAction;
      QDragEnterEvent enter({5, 5}, both, &data, Qt::LeftButton, Qt::ShiftModifier);
      QApplication::sendEvent(table, &enter);
      EXPECT_TRUE(enter.isAccepted());
      QDropEvent drop({5, 5}, both, &data, Qt::LeftButton, Qt::ShiftModifier);
      EXPECT_EQ(drop.dropAction(), Qt::MoveAction);
      QApplication::sendEvent(table, &drop);
      EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the file stays where it is";
      act();
      ActivateAgain(editor);
      Click(editor, "btnOk");
    });
  }

  void ExpectRefused(const QList<QUrl>& urls, const std::vector<std::string>& parts) {
    questions_.ExpectError(parts);
    const std::size_t before = questions_.details.size();
    Drop(urls,
         [&] { EXPECT_TRUE(QTest::qWaitFor([&] { return questions_.details.size() > before; })); });
    ExpectSaved(file_);
  }

  QUrl certificate_ =
      QUrl::fromLocalFile(QString::fromStdString((tree_.Root() / "c.csv").string()));
};

TEST_F(DroppingOnTheTable, AFileOpensThePreview) {
  WriteNative(tree_.Root() / "c.csv", header_ + "f [MHz];KF [%]\n50;99,5\n");
  Drop({certificate_}, [this] {
    bool isShown = false;
    user_.At<ImportPreview>([&](ImportPreview& preview) {
      isShown = true;
      Click(preview, "btnOk");
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isShown; }));
  });
  file_.rows[0].second = "99.5";
  file_.calNo = "C-0099";
  file_.calDate = "20260807";
  ExpectSaved(file_);
}

TEST_F(DroppingOnTheTable, AnythingElseThanOneFileIsRefusedWithWhatToDo) {
  const QUrl folder = QUrl::fromLocalFile(QString::fromStdString(tree_.Root().string()));
  ExpectRefused({certificate_, certificate_}, {"2 files were dropped", "Drop only that one."});
  ExpectRefused({QUrl("https://example.org/c.xml")},
                {"an address", "Save the certificate from there", "https://example.org/c.xml"});
  ExpectRefused({folder}, {"This is a folder. Choose the file"});
}

}  // namespace
}  // namespace tarvell
