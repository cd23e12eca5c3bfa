// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmHistory.h"

#include "ui_frmHistory.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/caldata/OpenedDataSet.h"
#include "core/dates/DueDate.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "exchange/Export.h"
#include "screens/caldata/DataSetExport.h"
#include "screens/caldata/DataSetPrinting.h"
#include "screens/caldata/VersionCurve.h"
#include "screens/caldata/VersionTexts.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

// Subjects of notices.
constexpr const char* kJournal = "journal";
constexpr const char* kVersion = "version";

// Columns of the list that only data files have.
constexpr int kCalibrated = 0;
constexpr int kNumber = 1;
constexpr int kDue = 2;

QStringList TextsOf(const TableRow& row) {
  QStringList texts;
  for (const std::string& cell : row) {
    texts << ToQt(cell);
  }
  return texts;
}

QString CellAt(const TableRow& row, std::size_t column) {
  return column < row.size() ? ToQt(row[column]) : QString();
}

void MakeBold(const QTableWidget& table, int row) {
  for (int column = 0; column < table.columnCount(); ++column) {
    QFont font = table.item(row, column)->font();
    font.setBold(true);
    table.item(row, column)->setFont(font);
  }
}

void SetUpTable(QTableWidget* table) {
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table->horizontalHeader()->setResizeContentsPrecision(0);  // only the rows that are seen
  table->horizontalHeader()->setStretchLastSection(true);
}

}  // namespace

frmHistory::frmHistory(HistorySubject subject, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmHistory>()), subject_(std::move(subject)) {
  ui_->setupUi(this);
  setWindowTitle(tr("History of %1").arg(ToQt(subject_.path)));
  SetUpTable(ui_->tblVersions);
  for (const int column : {kCalibrated, kNumber, kDue}) {
    ui_->tblVersions->setColumnHidden(column, subject_.read != nullptr);
  }
  SetUpTable(ui_->tblData);
  GiveAltKey(ui_->tblData, Qt::Key_D);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  OfferHandbook(this, chapter::kHistory);
  MakeFileMenu();
  connect(ui_->tblVersions->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { Guarded(this, [this] { ShowSelected(); }); });
  connect(ui_->tabPages, &QTabBar::currentChanged, this, &frmHistory::ShowPage);
  connect(ui_->btnPutBack, &QPushButton::clicked, this, &frmHistory::btnPutBack_Click);
  connect(ui_->btnClose, &QPushButton::clicked, this, &frmHistory::reject);
  ui_->btnPutBack->setToolTip(
      subject_.whyNotPutBack.isEmpty()
          ? tr("Saves the selected version again. The present file stays in this history.")
          : subject_.whyNotPutBack);
  ui_->btnPutBack->setAccessibleDescription(ui_->btnPutBack->toolTip());
  ShowVersions();
  ui_->tblVersions->setFocus();
}

frmHistory::~frmHistory() = default;

void frmHistory::MakeFileMenu() {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuFile");
  connect(ui_->btnFile, &QPushButton::clicked, this, [this, menu] {
    menu->popup(ui_->btnFile->mapToGlobal(ui_->btnFile->rect().bottomLeft()));
  });
  if (subject_.model != nullptr && subject_.model->create != nullptr) {
    curve_ = new VersionCurve(this, ui_->tblData, menu);
    menu->addAction(tr("&Export..."), this, &frmHistory::Export)->setObjectName("mnuExport");
  }
  AddPaperEntries(menu, this, [this] { return Paper(); });
}

PaperWork frmHistory::Paper() {
  // The earlier calibration is found by the headers.
  std::ranges::for_each(calibrations_, &ReadHeader);
  return WorkOfVersion(subject_.model, subject_.path, calibrations_, Selected());
}

void frmHistory::Export() {
  Guarded(this, [this] {
    const std::vector<int> rows = Selected();
    if (rows.size() != 1) {
      throw Error(ErrorKind::Index, "Nothing was exported. Select one version.");
    }
    const OpenedDataSet version = OpenVersion(*subject_.model, At(rows[0]).header);
    const QString saved = ExportDataSet(this, *subject_.model, *version.data,
                                        StateOf(*subject_.model, *version.data));
    if (saved.isEmpty()) {
      return;
    }
    QStringList notices = {saved};
    for (const std::string& notice : version.notices) {
      notices << ToQt(notice);
    }
    ui_->notices->Report(kVersion, notices.join(' '));
  });
}

const Calibration& frmHistory::At(int row) {
  Calibration& version = calibrations_.at(static_cast<std::size_t>(row));
  ReadHeader(version);
  return version;
}

void frmHistory::ShowVersions() {
  const BusyPointer busy;
  FileHistory history = HistoryOf(subject_.path);
  const std::size_t damaged = history.damagedLines;
  const bool hasVersions = !history.versions.empty();
  {
    const QSignalBlocker blocker(ui_->tblVersions->selectionModel());
    ui_->tblVersions->setRowCount(0);  // no cell may ask for a version that is gone
    calibrations_ = CalibrationsIn(std::move(history), subject_.path);
    ui_->tblVersions->setRowCount(static_cast<int>(calibrations_.size()));
    for (int row = 0; row < ui_->tblVersions->rowCount(); ++row) {
      int column = 0;
      for (QTableWidgetItem* cell :
           CellsOf([this, row]() -> const Calibration& { return At(row); })) {
        ui_->tblVersions->setItem(row, column++, cell);
      }
    }
    ui_->tblVersions->clearSelection();
  }
  ui_->notices->Report(
      kJournal, damaged == 0 ? QString()
                : damaged == 1
                    ? tr("1 line of the journal cannot be read: it was cut off or changed.")
                    : tr("%1 lines of the journal cannot be read: they were cut off or changed.")
                          .arg(damaged));
  ui_->notices->SetRemark(hasVersions ? tr("Select two versions (with Ctrl) to compare them.")
                                      : tr("No earlier version is known of this file."));
  ui_->tblVersions->selectRow(0);
  ShowSelected();
}

std::vector<int> frmHistory::Selected() const {
  std::vector<int> rows;
  for (const QModelIndex& index : ui_->tblVersions->selectionModel()->selectedRows()) {
    rows.push_back(index.row());
  }
  std::ranges::sort(rows);
  return rows;
}

void frmHistory::ShowSelected() {
  const std::vector<int> rows = Selected();
  const bool canPutBack = subject_.whyNotPutBack.isEmpty() && rows.size() == 1 &&
                          !At(rows[0]).isCurrent && At(rows[0]).State() != VersionState::Missing;
  ui_->btnPutBack->setEnabled(canPutBack);
  ui_->notices->Report(kVersion, {});
  shown_.clear();
  QStringList headers;
  if (rows.size() == 1 || rows.size() == 2) {
    const std::vector<int> earlierFirst(rows.rbegin(), rows.rend());
    for (const int row : earlierFirst) {
      headers << HeaderText(At(row));
      shown_.push_back(Read(At(row)));
      if (!shown_.back().notice.empty()) {
        ui_->notices->Report(kVersion, ToQt(shown_.back().notice));
      }
    }
  }
  if (headers.size() == 2) {
    headers = {tr("Earlier: ") + headers[0], tr("Later: ") + headers[1]};
  }
  ui_->lblHeader->setText(headers.isEmpty() ? tr("Select one version, or two to compare them.")
                                            : headers.join('\n'));
  {
    const QSignalBlocker blocker(ui_->tabPages);
    while (ui_->tabPages->count() > 0) {
      ui_->tabPages->removeTab(0);
    }
    // One of two versions may have a page more, that of the option.
    const auto most = std::ranges::max_element(
        shown_, {}, [](const ReadableData& version) { return version.pages.size(); });
    for (std::size_t page = 0; most != shown_.end() && page < most->pages.size(); ++page) {
      ui_->tabPages->addTab(ToQt(most->pages[page].name));
    }
    ui_->tabPages->setVisible(ui_->tabPages->count() > 1);
  }
  ShowPage();
}

void frmHistory::ShowPage() {
  const auto page = static_cast<std::size_t>(std::max(ui_->tabPages->currentIndex(), 0));
  const auto pageOf = [page](const ReadableData& version) {
    return page < version.pages.size() ? version.pages[page] : ReadablePage();
  };
  if (shown_.size() == 2) {
    ShowCurve(ShowComparison(pageOf(shown_.front()), pageOf(shown_.back())));
    return;
  }
  const ReadablePage later = shown_.empty() ? ReadablePage() : pageOf(shown_.back());
  if (later.rows.empty()) {
    ShowTable({}, {});
    ShowCurve({});
    return;
  }
  std::vector<QStringList> rows;
  std::vector<GridRow> inTable;
  for (std::size_t row = 1; row < later.rows.size(); ++row) {
    rows.push_back(TextsOf(later.rows[row]));
    inTable.push_back({static_cast<std::int16_t>(row)});
  }
  ShowTable(TextsOf(later.rows.front()), rows);
  ShowCurve(std::move(inTable));
}

std::vector<GridRow> frmHistory::ShowComparison(const ReadablePage& earlier,
                                                const ReadablePage& later) {
  const ReadablePage& named = later.rows.empty() ? earlier : later;
  const TableRow names = named.rows.empty() ? TableRow() : named.rows.front();
  const std::size_t keys = std::min(named.keys, names.size());
  QStringList captions =
      TextsOf({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(keys)});
  for (std::size_t column = keys; column < names.size(); ++column) {
    const QString name = ToQt(names[column]);
    captions << name + '\n' + tr("earlier") << name + '\n' + tr("later") << tr("Difference");
  }
  captions << tr("Row");
  std::vector<QStringList> rows;
  std::vector<GridRow> inTable;
  std::vector<int> differing;
  GridRow next = kFirstDataRow;
  for (const auto& [old, now] : ComparedRows(earlier.rows, later.rows, keys)) {
    QStringList cells;
    bool isEqual = true;
    for (std::size_t column = 0; column < names.size(); ++column) {
      const QString before = CellAt(old, column);
      const QString after = CellAt(now, column);
      isEqual = isEqual && before == after;
      if (column < keys) {
        cells << (now.empty() ? before : after);
      } else {
        cells << before << after << ToQt(CellDifference(FromQt(before), FromQt(after)));
      }
    }
    cells << (old.empty()   ? tr("only later")
              : now.empty() ? tr("only earlier")
              : isEqual     ? tr("equal")
                            : tr("different"));
    if (!isEqual) {
      differing.push_back(static_cast<int>(rows.size()));
    }
    rows.push_back(cells);
    inTable.push_back(now.empty() ? kCaptionRow : next);
    next = now.empty() ? next : next + 1;
  }
  ShowTable(captions, rows);
  for (const int row : differing) {
    MakeBold(*ui_->tblData, row);
  }
  return inTable;
}

ReadableData frmHistory::Read(const Calibration& version) const {
  return subject_.read ? subject_.read(version) : Readable(subject_.model, version);
}

void frmHistory::ShowCurve(std::vector<GridRow> inTable) {
  if (curve_ == nullptr) {
    return;
  }
  const auto page = static_cast<std::size_t>(std::max(ui_->tabPages->currentIndex(), 0));
  const auto pageOf = [page](const ReadableData& version) {
    // Lines have no curve.
    return !version.isLines && page < version.pages.size() ? &version.pages[page] : nullptr;
  };
  VersionCurve::Page shown;
  const ReadablePage* later = shown_.empty() ? nullptr : pageOf(shown_.back());
  if (later != nullptr) {
    shown.model = subject_.model;
    shown.page = static_cast<std::int16_t>(page);
    shown.rows = later->rows;
    shown.isCompared = shown_.size() == 2;
    shown.keys = later->keys;
    shown.inTable = std::move(inTable);
    const ReadablePage* earlier = shown.isCompared ? pageOf(shown_.front()) : nullptr;
    if (earlier != nullptr) {
      shown.earlierRows = earlier->rows;
      shown.earlierName = DateText(At(Selected().back()).Calibrated());
    }
  }
  curve_->Show(std::move(shown));
}

void frmHistory::ShowTable(const QStringList& captions, const std::vector<QStringList>& rows) {
  ui_->tblData->clear();
  ui_->tblData->setColumnCount(static_cast<int>(captions.size()));
  ui_->tblData->setHorizontalHeaderLabels(captions);
  ui_->tblData->setRowCount(static_cast<int>(rows.size()));
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
    const QStringList& cells = rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < static_cast<int>(cells.size()); ++column) {
      ui_->tblData->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
  }
}

void frmHistory::btnPutBack_Click() {
  Guarded(this, [this] {
    const Calibration version = At(Selected().at(0));
    const QString notice = ToQt(shown_.at(0).notice);
    const std::string name(LastNameOf(subject_.path));
    const auto mayLetGo = UnlessChanged(this, subject_.path);
    const auto answer = CurrentQuestions().Ask(
        this,
        {.text = tr("Do you want to put back this version of %1?").arg(ToQt(name)),
         .icon = QMessageBox::Warning,
         .buttons = QMessageBox::Yes | QMessageBox::No,
         .defaultButton = QMessageBox::No,
         .detail = HeaderText(version) + '\n' + StateText(version) +
                   (notice.isEmpty() ? "" : '\n' + notice) + "\n\n" +
                   (At(0).isCurrent ? tr("Yes saves it again. What the file holds now stays in the "
                                         "history.")
                                    : tr("The file was deleted. Yes saves it again."))});
    const bool isSaved =
        answer == QMessageBox::Yes &&
        ChangedWithHistory(
            this, tr("save"),
            [&](Earlier earlier) { PutBack(version.header.FilePath, subject_.path, earlier); },
            mayLetGo);
    if (isSaved) {
      hasPutBack_ = true;
      ShowVersions();
    }
  });
}

}  // namespace tarvell
