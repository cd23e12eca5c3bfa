// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/frmOverview.h"

#include "ui_frmOverview.h"

#include <QMenu>
#include <QShortcut>
#include <QTimer>

#include <chrono>
#include <utility>
#include <vector>

#include "core/platform/ProgramPath.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/survey/GoneFiles.h"
#include "core/text/FileCharacters.h"
#include "screens/overview/OpenedRow.h"
#include "screens/overview/OverviewFiles.h"
#include "screens/overview/OverviewFilter.h"
#include "screens/overview/UpdateStations.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

constexpr const char* kDueSoonDaysSetting = "overview/due-soon-days";
constexpr int kPercent = 100;
constexpr std::chrono::seconds kLookAtTheDay(30);

constexpr const char* kToDo = "to do";  // the subject of a notice

/// Keeps the place of a control in its layout while it is hidden.
void KeepPlace(QWidget* control) {
  QSizePolicy policy = control->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  control->setSizePolicy(policy);
}

}  // namespace

frmOverview::frmOverview(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmOverview>()) {
  ui_->setupUi(this);
  setWindowTitle(tr("Overview") + " - " + ToQt(kApplicationTitle));
  filter_ = new OverviewFilter(
      {.text = ui_->txtFilter, .state = ui_->cmbState, .station = ui_->cmbStation}, this);
  ChangeOnlyDeliberately(ui_->cmbState);
  ChangeOnlyDeliberately(ui_->cmbStation);
  const std::vector<int> days = RememberedNumbers(kDueSoonDaysSetting);
  ui_->spnDueSoon->setValue(days.size() == 1 ? days[0] : kDueSoonDays);
  KeepPlace(ui_->prgSurvey);
  KeepPlace(ui_->btnCancel);
  SetUpFiles();
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  OfferHandbook(this, chapter::kOverview);
  GiveAltKey(ui_->tblRows, Qt::Key_T);
  const auto find = [this] {
    ui_->txtFilter->setFocus();
    ui_->txtFilter->selectAll();
  };
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, find);
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          [this] { Guarded(this, [this] { StartSurvey(); }); });
  connect(filter_, &OverviewFilter::Changed, this, [this] {
    ui_->tblRows->KeepingTheRow([this] { ui_->tblRows->Model().SetFilter(filter_->Filter()); });
    ShowCounts();
  });
  connect(filter_, &OverviewFilter::Left, this, [this] { ui_->tblRows->setFocus(); });
  connect(ui_->tblRows, &OverviewTable::OpenWanted, this, &frmOverview::btnOpen_Click);
  connect(ui_->tblRows, &OverviewTable::CurrentChanged, this, &frmOverview::ShowToDo);
  connect(ui_->spnDueSoon, &QSpinBox::valueChanged, this, &frmOverview::spnDueSoon_Change);
  connect(ui_->btnOpen, &QPushButton::clicked, this, &frmOverview::btnOpen_Click);
  connect(ui_->btnUpdate, &QPushButton::clicked, this, &frmOverview::btnUpdate_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmOverview::btnCancel_Click);
  connect(ui_->btnReturn, &QPushButton::clicked, this, &frmOverview::reject);
}

frmOverview::~frmOverview() = default;

void frmOverview::SetUpFiles() {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuFile");
  files_ = new OverviewFiles(
      {.screen = this,
       .menu = menu,
       .notices = ui_->notices,
       .rows = [this]() -> const ShownRows& { return ui_->tblRows->Model().Rows(); },
       .isWhole = [this] { return read_ == Read::Whole && couldLook_; },
       .takeOutGoneFiles = [this] { return TakeOutGoneFiles(); },
       .today = [this] { return order_.today; }});
  connect(ui_->btnFile, &QPushButton::clicked, this, [this, menu] {
    menu->popup(ui_->btnFile->mapToGlobal(ui_->btnFile->rect().bottomLeft()));
  });
}

void frmOverview::ShowModally(std::function<FileDate()> today) {
  today_ = std::move(today);
  order_ = {.calibrationDir = gCalibrationDir, .stationDir = gStationDir, .today = today_()};
  ui_->tblRows->Model().SetFilter(filter_->Filter());
  StartSurvey();
  ui_->tblRows->setFocus();
  QTimer days;
  connect(&days, &QTimer::timeout, this, &frmOverview::LookAtTheDay);
  days.start(kLookAtTheDay);
  exec();
  survey_.reset();
  ui_->tblRows->RememberColumns();
  filter_->RememberChoices();
  Remember(kDueSoonDaysSetting, std::vector<int>{ui_->spnDueSoon->value()});
}

void frmOverview::StartSurvey() {
  survey_.reset();
  read_ = Read::Partly;
  folders_.clear();
  order_.today = today_();
  order_.dueSoonDays = ui_->spnDueSoon->value();
  ui_->notices->Clear();
  ChangeRows([](std::vector<SurveyRow>& rows) { rows.clear(); });
  ShowProgress(true);
  survey_ = std::make_unique<SurveyThread>(
      order_, SurveyThread::Reports{
                  .found = [this](std::vector<SurveyRow> rows,
                                  double done) { TakeRows(std::move(rows), done); },
                  .finished = [this](SurveyResult result) { Finish(std::move(result)); },
                  .failed = [this](const std::exception_ptr& failure) { Fail(failure); }});
}

void frmOverview::ShowProgress(bool isReading) {
  if (!isReading && ui_->btnCancel->hasFocus()) {
    ui_->tblRows->setFocus();
  }
  ui_->prgSurvey->setValue(0);
  ui_->prgSurvey->setVisible(isReading);
  ui_->btnCancel->setVisible(isReading);
}

void frmOverview::TakeRows(std::vector<SurveyRow> rows, double done) {
  filter_->AddStations(rows);
  ui_->tblRows->Model().Append(std::move(rows));
  if (ui_->tblRows->Current() == nullptr && ui_->tblRows->Model().rowCount() > 0) {
    ui_->tblRows->selectRow(0);
  }
  ui_->prgSurvey->setValue(static_cast<int>(done * kPercent));
  ShowCounts();
}

void frmOverview::Finish(SurveyResult result) {
  read_ = Read::Whole;
  couldLook_ = result.couldLook;
  trees_ = std::move(result.trees);
  // The day or the number of days may have changed meanwhile.
  order_.dueSoonDays = ui_->spnDueSoon->value();
  CheckDueDates(order_, result.rows);
  ShowProgress(false);
  ChangeRows([&](std::vector<SurveyRow>& rows) { rows = std::move(result.rows); });
  LookAgain(std::exchange(folders_, {}));
}

void frmOverview::Fail(const std::exception_ptr& failure) {
  EndEarly();
  Guarded(this, [&] { std::rethrow_exception(failure); });
}

void frmOverview::btnCancel_Click() {
  survey_.reset();
  EndEarly();
  // The remark comes first: what to do about a row may be so long that it hides what follows.
  ui_->notices->SetRemark(
      tr("Not all files were read, and what follows from several files is not "
         "shown, such as the stations of a data set. F5 reads them again."));
}

void frmOverview::EndEarly() {
  read_ = Read::Ended;
  ShowProgress(false);
  LookAgain(std::exchange(folders_, {}));
  JudgeDueDates();
}

void frmOverview::spnDueSoon_Change() {
  if (read_ != Read::Partly) {
    JudgeDueDates();
  }
}

void frmOverview::LookAtTheDay() {
  const FileDate today = today_();
  if (today != order_.today) {
    order_.today = today;
    spnDueSoon_Change();
  }
}

void frmOverview::JudgeDueDates() {
  order_.dueSoonDays = ui_->spnDueSoon->value();
  const Compared compared = read_ == Read::Whole ? Compared::Yes : Compared::No;
  ChangeRows([&](std::vector<SurveyRow>& rows) { CheckDueDates(order_, rows, compared); });
}

void frmOverview::btnOpen_Click() {
  if (ui_->tblRows->Current() == nullptr) {
    Tell(this, tr("No row is selected."));
    return;
  }
  // The table may change meanwhile.
  const SurveyRow row = *ui_->tblRows->Current();
  const std::set<std::string> folder = {std::string(FolderOf(row.path))};
  Guarded(this, [&] {
    if (!FoldersWithGoneFiles({&row, 1}).empty()) {
      LookAgain(folder);
      Tell(this, tr("%1 is not there any more: somebody has deleted or renamed it. Its folder was "
                    "read again.")
                     .arg(ToQt(NameText(ShownPath(row.path)))));
      return;
    }
    const bool mayHaveChanged = OpenRow(this, row);
    hasChangedFiles_ = hasChangedFiles_ || mayHaveChanged;
    // The editor has read a data set, which others may have changed since the overview did.
    if (mayHaveChanged || row.kind == SurveyRow::Kind::DataSet) {
      LookAgain(folder);
    }
  });
}

void frmOverview::btnUpdate_Click() {
  if (read_ != Read::Whole) {
    Tell(this, tr("Wait until all files have been read, or press F5 to read them again."));
    return;
  }
  Guarded(this, [this] {
    const StationsUpdated updated =
        UpdateStations(this, ui_->tblRows->Selected(), ui_->tblRows->Model().Rows().All());
    hasChangedFiles_ = hasChangedFiles_ || updated.isAnySaved;
    LookAgain(updated.foldersToReadAgain);
  });
}

void frmOverview::LookAgain(const std::set<std::string>& folders) {
  if (read_ == Read::Partly) {
    folders_.insert(folders.begin(), folders.end());
    return;
  }
  if (folders.empty()) {
    return;
  }
  const BusyPointer busy;
  ChangeRows([&](std::vector<SurveyRow>& rows) {
    if (read_ == Read::Whole) {
      SurveyAgain(order_, folders, trees_, rows);
    } else {
      ReadAgain(order_, folders, rows);
    }
  });
}

bool frmOverview::TakeOutGoneFiles() {
  const std::set<std::string> folders = FoldersWithGoneFiles(ui_->tblRows->Model().Rows().All());
  LookAgain(folders);
  return !folders.empty();
}

void frmOverview::ChangeRows(const std::function<void(std::vector<SurveyRow>& rows)>& change) {
  ui_->tblRows->KeepingTheRow([&] { ui_->tblRows->Model().Change(change); });
  if (read_ == Read::Whole) {
    filter_->ShowSurveyed(ui_->tblRows->Model().Rows().All());
  }
  ShowCounts();
}

void frmOverview::ShowCounts() {
  const ShownRows& rows = ui_->tblRows->Model().Rows();
  ui_->lblCount->setText(tr("%1 of %2 rows, %3 with something to do")
                             .arg(rows.Count())
                             .arg(rows.All().size())
                             .arg(rows.FaultCount()));
}

void frmOverview::ShowToDo() {
  const SurveyRow* row = ui_->tblRows->Current();
  ui_->notices->Report(kToDo, row == nullptr ? QString() : ToDoText(*row));
  if (read_ == Read::Whole) {
    // It said what was saved.
    ui_->notices->SetRemark("");
  }
}

}  // namespace tarvell
