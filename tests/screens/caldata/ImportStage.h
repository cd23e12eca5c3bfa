// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_IMPORTSTAGE_H
#define TARVELL_TESTS_SCREENS_CALDATA_IMPORTSTAGE_H

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "screens/caldata/ImportPreview.h"
#include "support/ClickInMenu.h"
#include "support/SensorStage.h"

namespace tarvell::test {

using ActInPreview = std::function<void(ImportPreview& preview)>;

inline const QStringList kFilters = {"Certificates (*.csv *.tsv *.txt *.xml *.dcc)",
                                     "All files (*)"};

inline void ActivateAgain(QWidget& editor) {
  // As a window manager does when the preview is gone.
  editor.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
}

/// Chooses "Import..." in the File menu and picks a file of this content.
inline void ImportFile(QWidget& editor, ScriptedQuestions& questions,
                       const std::filesystem::path& file, const std::string& bytes) {
  WriteNative(file, bytes);
  questions.ExpectFilePicker("Import a certificate", kFilters,
                             QString::fromStdString(file.string()));
  ClickInMenu(editor, "btnFile", "Import...");
}

inline std::string Hint(ImportPreview& preview) {
  return Find<QLabel>(preview, "lblHint").text().toStdString();
}

inline std::string Notes(ImportPreview& preview) {
  return Find<QPlainTextEdit>(preview, "txtNotes").toPlainText().toStdString();
}

inline bool CanImport(ImportPreview& preview) {
  return Find<QPushButton>(preview, "btnOk").isEnabled();
}

/// The cells of a row of a preview table. A changed one has a star.
inline std::string PreviewRow(ImportPreview& preview, const QString& name, int row) {
  auto& table = Find<QTableWidget>(preview, name);
  std::string line;
  for (int column = 0; column < table.columnCount(); ++column) {
    const QTableWidgetItem& cell = *table.item(row, column);
    line += (column == 0 ? "" : "|") + cell.text().toStdString() + (cell.font().bold() ? "*" : "");
  }
  return line;
}

class ImportingASensor : public SensorStage {
 protected:
  ImportingASensor() {
    file_.rows = {{"50.00", "100.0"}, {"1000.00", "97.0"}, {"2000.00", "96.0"}};
  }

  /// Imports a certificate, does `act` in the preview, then `after` in the editor, and saves.
  void Import(const std::string& certificate, const ActInPreview& act,
              const std::function<void(QWidget& editor)>& after = nullptr) {
    ShowFile(file_, [&](frmCalDataInput& editor) {
      user_.At<ImportPreview>([act](ImportPreview& preview) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
        act(preview);
      });
      ImportFile(editor, questions_, tree_.Root() / "c.csv", certificate);
      ActivateAgain(editor);
      if (after) {
        after(editor);
      }
      Click(editor, "btnOk");
    });
  }

  void ExpectSaved(const SensorFile& file) const {
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file.Bytes());
  }

  SensorFile file_;
  const std::string header_ =
      "Serial number;3318A12345\nCertificate no;C-0099\nCalibration date;7.8.2026\n\n";
};

}  // namespace tarvell::test

#endif
