// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/PastePreview.h"

#include "ui_PastePreview.h"

#include <QHeaderView>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "screens/caldata/ChangedCell.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/OutlinedBoxes.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

using Change = PastedRow::Change;

QString Points(std::size_t count) {
  return count == 1 ? PastePreview::tr("1 point") : PastePreview::tr("%1 points").arg(count);
}

}  // namespace

PastePreview::PastePreview(PastedTable table, const QStringList& captions, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::PastePreview>()), table_(std::move(table)) {
  ui_->setupUi(this);
  ui_->lblSummary->setText(Summary() + RatioWarning(captions.last()));
  const std::size_t missing = table_.Count(Change::Missing);
  ui_->chkRemove->setText(
      tr("&Remove the %1 that the clipboard does not have").arg(Points(missing)));
  ui_->chkRemove->setVisible(missing > 0);
  ShowCaptions(captions);
  chkRemove_Toggled();
  connect(ui_->chkRemove, &QCheckBox::toggled, this, &PastePreview::chkRemove_Toggled);
  connect(ui_->btnOk, &QPushButton::clicked, this, &PastePreview::accept);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &PastePreview::reject);
  OutlineCheckBoxes(this);
  FitToDisplay(this);
  OfferHandbook(this, chapter::kPastedTables);
  GiveAltKey(ui_->tblPreview, Qt::Key_T);
  EnterPressesFocusedButton(this);
  if (ui_->btnOk->isEnabled()) {
    ui_->btnOk->setFocus();
  } else {
    ui_->chkRemove->setFocus();
  }
}

PastePreview::~PastePreview() = default;

void PastePreview::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // Before it is shown, the table does not know its height.
  const auto changed = std::ranges::find_if(table_.rows, [](const PastedRow& row) {
    return row.change == Change::Updated || row.change == Change::Added;
  });
  if (changed != table_.rows.end()) {
    ui_->tblPreview->scrollToItem(
        ui_->tblPreview->item(static_cast<int>(changed - table_.rows.begin()), 0),
        QAbstractItemView::PositionAtCenter);
  }
}

bool PastePreview::RemovesMissing() const {
  return ui_->chkRemove->isChecked();
}

QString PastePreview::Summary() const {
  const std::size_t missing = table_.Count(Change::Missing);
  const QString counts = tr("The clipboard has %1: %2 updated, %3 added, %4 unchanged.")
                             .arg(Points(table_.rows.size() - missing))
                             .arg(table_.Count(Change::Updated))
                             .arg(table_.Count(Change::Added))
                             .arg(table_.Count(Change::Unchanged));
  const QString lacks =
      missing == 0 ? QString() : tr(" It does not have %1 of this table.").arg(Points(missing));
  return counts + lacks + "\n" + UnitSentence() +
         (table_.sign == DecimalSign::Point ? tr("numbers with a decimal point.")
                                            : tr("numbers with a decimal comma."));
}

QString PastePreview::RatioWarning(const QString& caption) const {
  static constexpr double kLargestRatio = 2;
  const bool areLarge = std::ranges::any_of(table_.rows, [](const PastedRow& row) {
    const std::optional<double> value = ParseNumber(row.after.back());
    return row.change != Change::Missing && (!value || std::abs(*value) > kLargestRatio);
  });
  return areLarge || !caption.contains('%')
             ? QString()
             : "\n" +
                   tr("All values are 2 % or less. If they are ratios, press Cancel, and multiply "
                      "them by 100 in the spreadsheet.");
}

/// The beginning of the sentence about how the clipboard is read.
QString PastePreview::UnitSentence() const {
  if (table_.ownUnits == PastedTable::OwnUnits::All) {
    return tr("Frequencies are read with the units in their cells, ");
  }
  const QString which = table_.ownUnits == PastedTable::OwnUnits::Some
                            ? tr("Frequencies without a unit are read in %1, %2, ")
                            : tr("Frequencies are read in %1, %2, ");
  return which.arg(ToQt(table_.frequencyUnit),
                   table_.isUnitNamed ? tr("as the caption says") : tr("the unit of this table"));
}

void PastePreview::ShowCaptions(const QStringList& captions) {
  QStringList shown = captions.mid(0, captions.size() - 1);
  shown << captions.last() + "\n" + tr("before") << captions.last() + "\n" + tr("after")
        << tr("Change");
  ui_->tblPreview->setColumnCount(static_cast<int>(shown.size()));
  ui_->tblPreview->setHorizontalHeaderLabels(shown);
  ui_->tblPreview->setRowCount(static_cast<int>(table_.rows.size()));
  ui_->tblPreview->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui_->tblPreview->horizontalHeader()->setStretchLastSection(true);
}

void PastePreview::ShowRows() {
  int row = 0;
  for (const PastedRow& pasted : table_.rows) {
    ShowRow(row++, pasted);
  }
}

void PastePreview::ShowRow(int row, const PastedRow& pasted) {
  const bool isRemoved = pasted.change == Change::Missing && RemovesMissing();
  const QString words = pasted.change == Change::Unchanged ? tr("unchanged")
                        : pasted.change == Change::Updated ? tr("updated")
                        : pasted.change == Change::Added   ? tr("added")
                        : isRemoved                        ? tr("missing, is removed")
                                                           : tr("missing, is kept");
  QStringList texts;
  for (const std::string& cell : pasted.after) {
    texts << ToQt(cell);
  }
  const QString after = isRemoved ? QString() : texts.last();
  texts.last() = pasted.before.empty() ? QString() : ToQt(pasted.before.back());
  texts << after << words;
  const int columns = static_cast<int>(texts.size());
  for (int column = 0; column < columns; ++column) {
    const bool isPoint = column < columns - 3;
    const bool isAfter = column == columns - 2;
    const bool isChanged = (isAfter && pasted.change != Change::Unchanged &&
                            (pasted.change != Change::Missing || isRemoved)) ||
                           (isPoint && pasted.change == Change::Added);
    QTableWidgetItem* cell = ChangedCell(texts[column], ui_->tblPreview, isChanged);
    cell->setTextAlignment((column == columns - 1 ? Qt::AlignLeft : Qt::AlignRight) |
                           Qt::AlignVCenter);
    const bool isBefore = column == columns - 3;
    QFont font = cell->font();
    font.setStrikeOut(isRemoved && (isPoint || isBefore));
    // As in the table itself.
    const bool isKept = isAfter && pasted.change == Change::Missing && !isRemoved;
    font.setItalic(pasted.isToEnter && (isBefore || isKept));
    cell->setFont(font);
    if (font.italic()) {
      cell->setData(Qt::AccessibleTextRole, tr("%1 (not entered)").arg(cell->text()));
    }
    ui_->tblPreview->setItem(row, column, cell);
  }
}

void PastePreview::chkRemove_Toggled() {
  const bool hasPlace = table_.HasPlace(RemovesMissing());
  ui_->btnOk->setEnabled(hasPlace);
  ui_->lblFull->setText(hasPlace ? QString()
                                 : tr("A table has room for %1 points. Remove those that "
                                      "the clipboard does not have, or copy fewer.")
                                       .arg(kTableRows));
  ShowRows();
}

}  // namespace tarvell
