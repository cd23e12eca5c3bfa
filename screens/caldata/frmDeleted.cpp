// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmDeleted.h"

#include "ui_frmDeleted.h"

#include <QHeaderView>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/dates/DueDate.h"
#include "core/history/Replacement.h"
#include "core/platform/Error.h"
#include "core/platform/ProgramPath.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

QStringList Cells(const LostFile& file) {
  // The history says what is wrong with a version that cannot be read.
  const CalFileInfo header = ReadableCalFileHeader(file.newest).value_or(CalFileInfo());
  const FileDate calibrated = {header.CalYear, header.CalMonth, header.CalDay};
  const bool isKnown = file.last.done == kDeleted;
  return {ToQt(std::string(LastNameOf(FolderOf(file.path)))),
          ToQt(std::string(LastNameOf(file.path))),
          ToQt(header.SerialNumber),
          calibrated.year == 0 ? QString() : ToQt(DateText(calibrated)),
          file.isDamaged ? frmDeleted::tr("no, but damaged")
          : isKnown      ? ToQt(LocalTimeText(file.last.time))
                         : frmDeleted::tr("not by this program"),
          isKnown && !file.isDamaged ? ToQt(file.last.user) : QString()};
}

}  // namespace

frmDeleted::frmDeleted(DeletedTree tree, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmDeleted>()), tree_(std::move(tree)) {
  ui_->setupUi(this);
  const std::string place = tree_.folder.empty() ? tree_.root : Joined(tree_.root, tree_.folder);
  setWindowTitle(tr("Deleted from %1").arg(ToQt(place)));
  ui_->tblDeleted->horizontalHeaderItem(0)->setText(tree_.folderName);
  ui_->tblDeleted->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui_->tblDeleted->horizontalHeader()->setStretchLastSection(true);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  OfferHandbook(this, chapter::kHistory);
  connect(ui_->tblDeleted, &QTableWidget::itemActivated, this, &frmDeleted::btnHistory_Click);
  connect(ui_->btnHistory, &QPushButton::clicked, this, &frmDeleted::btnHistory_Click);
  connect(ui_->btnClose, &QPushButton::clicked, this, &frmDeleted::reject);
  ShowFiles();
  ui_->tblDeleted->setFocus();
}

frmDeleted::~frmDeleted() = default;

void frmDeleted::ShowFiles() {
  const BusyPointer busy;
  files_ = LostFiles(tree_.root, tree_.folder, tree_.isDamaged);
  ui_->tblDeleted->setRowCount(static_cast<int>(files_.size()));
  int row = 0;
  for (const LostFile& file : files_) {
    int column = 0;
    for (const QString& text : Cells(file)) {
      ui_->tblDeleted->setItem(row, column++, new QTableWidgetItem(text));
    }
    ++row;
  }
  ui_->tblDeleted->selectRow(0);
  ui_->btnHistory->setEnabled(!files_.empty());
  ui_->notices->SetRemark(files_.empty() ? tree_.isDamaged
                                               ? tr("No deleted or damaged file is known.")
                                               : tr("No deleted file is known.")
                                         : tr("The history of a file puts it back."));
}

void frmDeleted::btnHistory_Click() {
  Guarded(this, [this] {
    const auto row = static_cast<std::size_t>(std::max(ui_->tblDeleted->currentRow(), 0));
    frmHistory history(tree_.subject(files_.at(row).path), this);
    history.exec();
    if (history.HasPutBack()) {
      hasPutBack_ = true;
      ShowFiles();
    }
  });
}

}  // namespace tarvell
