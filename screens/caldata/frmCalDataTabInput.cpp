// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmCalDataTabInput.h"

#include "ui_frmCalDataTabInput.h"

#include <QKeySequence>
#include <QScopeGuard>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/caldata/CellNotices.h"
#include "core/caldata/EditedCell.h"
#include "core/caldata/SetPages.h"
#include "core/platform/Error.h"
#include "screens/caldata/CellEditor.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

/// The width of the grid divided by the width of each column.
constexpr std::array<float, 5> kColumnShares = {5, 5, 6, 5, 6};

}  // namespace

frmCalDataTabInput::frmCalDataTabInput(QWidget* parent)
    : CalEditor(parent), ui_(std::make_unique<Ui::frmCalDataTabInput>()) {
  ui_->setupUi(this);
  FitToDisplay(this);
  MakeScrollable(ui_->header);
  ui_->tTab->setElideMode(Qt::ElideNone);
  ui_->tTab->setExpanding(false);
  ui_->tTab->setDrawBase(false);
  // The keys change the page in the tab bar itself; its arrow buttons are only for the mouse.
  for (QToolButton* scroller : ui_->tTab->findChildren<QToolButton*>()) {
    scroller->setFocusPolicy(Qt::NoFocus);
  }
  FileTextValidator::Attach(ui_->txtTabSerial);
  auto cellEditor = std::make_unique<CellEditor>(ui_->grid);
  cellEditor->SetRules(
      {.toEdit =
           [this](Cell cell, const std::string& text) {
             return EditedCellOf(Data(), currentPage_, cell, text);
           },
       .toStore =
           [this](Cell cell, const std::string& text, const std::string& unit) {
             // The selected tab may be another one already: the edit is stored before the page
             // changes.
             return Data().SetCalibrationDataFormat(currentPage_, cell.column, cell.row.number,
                                                    text, unit);
           },
       .affixes =
           [this](Cell cell, const std::string& unit) {
             return Data().AffixesOf(currentPage_, cell, unit);
           },
       .units = [this](std::int16_t column) { return UnitsOf(Data(), currentPage_, column); }});
  SetUp({.header = ui_->header,
         .grid = ui_->grid,
         .tabs = ui_->tTab,
         .notices = ui_->notices,
         .ok = ui_->btnOk,
         .file = ui_->btnFile,
         .draft = ui_->draft},
        std::move(cellEditor));
  SetUpKeys();
  ui_->txtTabSerial->installEventFilter(this);
  ui_->chkCheck->installEventFilter(this);
  connect(ui_->txtTabSerial, &QLineEdit::textChanged, this, &frmCalDataTabInput::ReportMember);
  connect(ui_->txtTabSerial, &QLineEdit::textEdited, this, &frmCalDataTabInput::MemberSerialTyped);
  connect(ui_->tTab, &QTabBar::currentChanged, this, &frmCalDataTabInput::tTab_Click);
  connect(ui_->chkCheck, &QCheckBox::clicked, this, &frmCalDataTabInput::chkCheck_Click);
  connect(ui_->btnOk, &QPushButton::clicked, this, &frmCalDataTabInput::btnOk_Click);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &frmCalDataTabInput::btnCancel_Click);
}

frmCalDataTabInput::~frmCalDataTabInput() = default;

void frmCalDataTabInput::SetUpKeys() {
  OfferHandbook(this, chapter::kSets);
  GiveAltKey(ui_->grid, Qt::Key_T);
  GiveAltKey(ui_->tTab, Qt::Key_P);
  ui_->tTab->installEventFilter(this);
  const auto turn = [this](const QList<QKeySequence>& keys, int pages) {
    for (const QKeySequence& key : keys) {
      auto* shortcut = new QShortcut(key, this);  // the screen owns it
      connect(shortcut, &QShortcut::activated, this, [this, pages] { TurnPages(pages); });
    }
  };
  turn({Qt::CTRL | Qt::Key_Tab, Qt::CTRL | Qt::Key_PageDown}, 1);
  turn({Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, Qt::CTRL | Qt::Key_PageUp}, -1);
}

void frmCalDataTabInput::TurnPages(int pages) {
  const int count = ui_->tTab->count();
  ui_->tTab->setCurrentIndex((ui_->tTab->currentIndex() + pages + count) % count);
}

std::int16_t frmCalDataTabInput::SelectedPage() const {
  return static_cast<std::int16_t>(ui_->tTab->currentIndex());
}

void frmCalDataTabInput::ShowTables() {
  const bool storesSerials = CurrentModel().family == ModelFamily::CapacitorSet;
  ui_->txtTabSerial->setToolTip(
      storesSerials ? QString()
                    : QString("The file of this set has no place for the serial numbers of its "
                              "members: what is entered here is not saved."));
  ui_->chkCheck->setVisible(CurrentModel().hasOption);
  {
    const QSignalBlocker blocker(ui_->tTab);
    while (ui_->tTab->count() > 0) {
      ui_->tTab->removeTab(0);
    }
    for (std::int16_t page = 0; page < Data().GetCalPageCount(); ++page) {
      AddTab(page);
    }
    ui_->tTab->setCurrentIndex(0);
  }
  WidenForTabs();
  ui_->chkCheck->setChecked(CurrentModel().hasOption &&
                            Data().GetCalPageCount() == kOptionPage + 1);
  ui_->grid->Model().SetFirstEditableColumn(1);
  ShowPage(0);
}

void frmCalDataTabInput::WidenForTabs() {
  // A tab bar that is not on the screen does not report to its layout that it has grown.
  ui_->tTab->updateGeometry();
  const QMargins margins = layout()->contentsMargins();
  const int wanted = ui_->tTab->sizeHint().width() + margins.left() + margins.right();
  const int available = screen()->availableGeometry().width() - frameGeometry().width() + width();
  resize(std::max(width(), std::min(wanted, available)), height());
}

void frmCalDataTabInput::AddTab(std::int16_t page) {
  // A single "&" would mark a shortcut key.
  ui_->tTab->insertTab(page, ToQt(Data().GetCalPageName(page)).replace("&", "&&"));
}

void frmCalDataTabInput::ShowPage(std::int16_t page) {
  ui_->grid->Fill([&](MemoryGrid& grid) {
    grid.Clear(static_cast<std::int16_t>(kColumnShares.size()));
    for (std::size_t column = 0; column < kColumnShares.size(); ++column) {
      grid.SetColumnWidth(
          static_cast<std::int16_t>(column),
          static_cast<std::int32_t>(std::lround(grid.Width() / kColumnShares.at(column))));
    }
    Data().GetCalData(page, grid);
  });
  currentPage_ = page;
  ShowMemberSerial(ToQt(Data().GetCalPageSerial(page)));
  ShowCellMarks();
  ReportMember();
}

void frmCalDataTabInput::ShowMemberSerial(const QString& serial) {
  memberSerial_ = serial;
  ++serialRun_;
  if (ui_->txtTabSerial->text() != serial) {
    ui_->txtTabSerial->setText(serial);
  }
}

void frmCalDataTabInput::MemberSerialTyped() {
  const QString name = ToQt(Data().GetCalPageName(currentPage_));
  Change(
      tr("serial number of %1").arg(name), [this] { memberSerial_ = ui_->txtTabSerial->text(); },
      serialRun_);
}

bool frmCalDataTabInput::HasOption() const {
  return ui_->tTab->count() > kOptionPage;
}

void frmCalDataTabInput::GoTo(std::int16_t page, bool hasOption) {
  if (hasOption != HasOption()) {
    ShowOption(hasOption);
    ui_->chkCheck->setChecked(hasOption);
  }
  if (page != currentPage_) {
    const QSignalBlocker blocker(ui_->tTab);
    ui_->tTab->setCurrentIndex(page);
    ChangePage();
  }
}

void frmCalDataTabInput::StorePage() {
  const std::string serial = FromQt(ui_->txtTabSerial->text());
  const bool isToken = serial == kOptionOff || serial == kOptionOn;
  if (isToken && CurrentModel().hasOption && currentPage_ == kOptionPage) {
    throw Error(ErrorKind::Name, "\"" + serial +
                                     "\" cannot be the serial number of a member. Enter the "
                                     "number on its certificate, or leave it empty.");
  }
  Data().SetCalData(currentPage_, ui_->grid->Data());
  Data().SetCalPageSerial(currentPage_, serial);
  KeepCellMarks();
}

void frmCalDataTabInput::ChangePage() {
  // If the page cannot be stored, its tab stays selected.
  const auto selected = qScopeGuard([this] {
    const QSignalBlocker blocker(ui_->tTab);
    ui_->tTab->setCurrentIndex(currentPage_);
  });
  Cells().Commit();
  StorePage();
  ShowPage(SelectedPage());
}

void frmCalDataTabInput::tTab_Click() {
  Guarded(this, [this] { ChangePage(); });
}

void frmCalDataTabInput::chkCheck_Click() {
  const bool on = ui_->chkCheck->isChecked();
  const bool switched = Guarded(this, [&] { SwitchOption(on); });
  if (!switched) {
    ui_->chkCheck->setChecked(!on);
  }
}

void frmCalDataTabInput::SwitchOption(bool on) {
  Cells().Commit();
  Change(tr("option"), [&] { ShowOption(on); });
}

void frmCalDataTabInput::ShowOption(bool on) {
  if (on) {
    Data().SetCalPageSerial(kOptionPage, std::string(kOptionOn));
    if (!HasOption()) {
      const QSignalBlocker blocker(ui_->tTab);
      AddTab(kOptionPage);
    }
    ReportMember();
    ReportCells();
    return;
  }
  if (HasOption()) {
    // If this fails, the tab stays.
    StorePage();
    const QSignalBlocker blocker(ui_->tTab);
    ui_->tTab->removeTab(kOptionPage);
    ShowPage(SelectedPage());
  }
  Data().SetCalPageSerial(kOptionPage, std::string(kOptionOff));
  Notices().Report(MemberSubject(kOptionPage), {});
  ReportMember();
  ReportCells();
}

void frmCalDataTabInput::btnOk_Click() {
  Guarded(this, [this] { SaveAndClose(); });
}

void frmCalDataTabInput::StoreTables() {
  StorePage();
}

QString frmCalDataTabInput::WhyFixed() const {
  return tr("It comes from the file or the template.");
}

QString frmCalDataTabInput::MemberSubject(std::int16_t page) const {
  return "member " + ToQt(Data().GetCalPageName(page));
}

void frmCalDataTabInput::ReportMember() {
  // The file of the resistor set has no place for the serial numbers.
  const bool isStored = CurrentModel().family == ModelFamily::CapacitorSet;
  const std::string shown = FromQt(ui_->txtTabSerial->text());
  const QString name = ToQt(Data().GetCalPageName(currentPage_));
  const QString readBack =
      isStored ? ToQt(NameReadDifferently(FromQt(tr("Serial number of %1").arg(name)), shown))
               : QString();
  MarkBox(ui_->txtTabSerial, readBack);
  Notices().Report(MemberSubject(currentPage_), readBack);
  QStringList missing;
  for (std::int16_t page = 0; isStored && page < Data().GetCalPageCount(); ++page) {
    if (page == currentPage_ ? shown.empty() : Data().GetCalPageSerial(page).empty()) {
      missing << ToQt(Data().GetCalPageName(page));
    }
  }
  Notices().Report("members",
                   missing.isEmpty()
                       ? QString()
                       : tr("No serial number is entered for %1.").arg(missing.join(", ")));
}

bool frmCalDataTabInput::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->tTab) {
    // A click leaves the keyboard in the table, unless the edit of a cell could not be stored.
    if (event->type() == QEvent::MouseButtonRelease && !Cells().IsOpen()) {
      ui_->grid->setFocus();
    }
    return false;
  }
  if (event->type() == QEvent::KeyPress && IsPlainEnter(*static_cast<QKeyEvent*>(event))) {
    focusNextChild();
    return true;
  }
  if (event->type() == QEvent::FocusIn && watched == ui_->txtTabSerial) {
    ++serialRun_;
    Notices().ShowAbout(MemberSubject(currentPage_));
  }
  if (event->type() == QEvent::ShortcutOverride && watched == ui_->txtTabSerial) {
    // The box must not take the keys for Undo and Redo: the history has what is typed in it.
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
      return true;
    }
  }
  return CalEditor::eventFilter(watched, event);
}

void frmCalDataTabInput::btnCancel_Click() {
  reject();
}

}  // namespace tarvell
