// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/UpdatePreview.h"

#include "ui_UpdatePreview.h"

#include <QHeaderView>
#include <QStringList>

#include <algorithm>
#include <set>

#include "screens/caldata/ChangedCell.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

QString Files(std::size_t count) {
  return count == 1 ? UpdatePreview::tr("1 file") : UpdatePreview::tr("%1 files").arg(count);
}

QString Summary(const std::vector<UpdatePreview::Line>& lines) {
  std::set<QString> changed;
  std::set<QString> left;
  for (const UpdatePreview::Line& line : lines) {
    (line.problem.isEmpty() ? changed : left).insert(line.file);
  }
  const QString text = UpdatePreview::tr(
                           "OK takes the due dates and comments of the data sets into %1 of the "
                           "stations.")
                           .arg(Files(changed.size()));
  return left.empty() ? text
                      : text + UpdatePreview::tr(" %1 cannot be updated.").arg(Files(left.size()));
}

}  // namespace

UpdatePreview::UpdatePreview(const std::vector<Line>& lines, bool canUpdate, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::UpdatePreview>()) {
  ui_->setupUi(this);
  ui_->lblSummary->setText(Summary(lines));
  ui_->tblPreview->setRowCount(static_cast<int>(lines.size()));
  int row = 0;
  for (const Line& line : lines) {
    ShowLine(row++, line);
  }
  QHeaderView& columns = *ui_->tblPreview->horizontalHeader();
  columns.setSectionResizeMode(QHeaderView::Stretch);
  columns.setSectionResizeMode(0, QHeaderView::ResizeToContents);
  // A reason may have several sentences: rows are as high as their texts need.
  ui_->tblPreview->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui_->btnOk->setEnabled(canUpdate);
  connect(ui_->btnOk, &QPushButton::clicked, this, &UpdatePreview::accept);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &UpdatePreview::reject);
  FitToDisplay(this);
  OfferHandbook(this);
  GiveAltKey(ui_->tblPreview, Qt::Key_T);
  EnterPressesFocusedButton(this);
  (canUpdate ? ui_->btnOk : ui_->btnCancel)->setFocus();
}

UpdatePreview::~UpdatePreview() = default;

void UpdatePreview::ShowLine(int row, const Line& line) {
  const QString after = !line.problem.isEmpty() ? tr("Not updated: %1").arg(line.problem)
                        : line.after.isEmpty()  ? tr("(the line is removed)")
                                                : line.after;
  int column = 0;
  for (const QString& text : {line.file, line.before, after}) {
    const bool isChanged = column == 2 && line.problem.isEmpty();
    ui_->tblPreview->setItem(row, column++, ChangedCell(text, ui_->tblPreview, isChanged));
  }
}

}  // namespace tarvell
