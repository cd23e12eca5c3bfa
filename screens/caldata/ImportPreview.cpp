// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ImportPreview.h"

#include "ui_ImportPreview.h"

#include <QTabBar>

#include <algorithm>
#include <utility>

#include "core/curves/SlipLimits.h"
#include "core/session/Tarvell_MainModule.h"
#include "exchange/ModelColumns.h"
#include "exchange/ReadCertificate.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/caldata/ImportNotes.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/LongTexts.h"
#include "screens/widgets/OutlinedBoxes.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

namespace {

constexpr const char* kSizes = "certificates/sizes";

/// Fills a list with the two readings of a question, after a first entry that chooses none.
void ShowQuestion(QComboBox* box, const ReadingQuestion& question) {
  const int chosen = std::max(box->currentIndex(), 0);
  const QString written = ToQt(question.written);
  box->clear();
  box->addItems({ImportPreview::tr("How is %1 meant?").arg(written),
                 ImportPreview::tr("%1 is %2").arg(written, ToQt(question.first)),
                 ImportPreview::tr("%1 is %2").arg(written, ToQt(question.second))});
  box->setCurrentIndex(chosen);
}

}  // namespace

ImportPreview::ImportPreview(const ImportTarget& target, const EarlierChoice& earlier,
                             std::string bytes, Certificate certificate, QString fileName,
                             QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::ImportPreview>()),
      target_(target),
      earlier_(earlier),
      limit_(LoadSlipLimits(gCalibrationDir).Of(target.model)),
      bytes_(std::move(bytes)),
      certificate_(std::move(certificate)),
      fileName_(std::move(fileName)),
      columns_(target),
      page_(target.now.shownPage) {
  ui_->setupUi(this);
  tableBox_ = TableBox(ui_->cmbTable);
  columnBoxes_ = ColumnBoxes({{ui_->lblColumn0, ui_->cmbColumn0},
                              {ui_->lblColumn1, ui_->cmbColumn1},
                              {ui_->lblColumn2, ui_->cmbColumn2},
                              {ui_->lblColumn3, ui_->cmbColumn3},
                              {ui_->lblColumn4, ui_->cmbColumn4}});
  for (QComboBox* box : ui_->choices->findChildren<QComboBox*>()) {
    ShowLongTexts(box);
    ChangeOnlyDeliberately(box);
  }
  for (QLabel* label : ui_->choices->findChildren<QLabel*>()) {
    // The toolkit measures a text without the gap that its underlined letter makes.
    label->setMinimumWidth(label->sizeHint().width() + label->fontMetrics().averageCharWidth());
  }
  OutlineCheckBoxes(this);
  Propose();
  ShowQuestions();
  ShowItems();
  ShowPages();
  ShowTables();
  ConnectControls();
  FitToDisplay(this);
  OfferHandbook(this, chapter::kImporting);
  MakeScrollable(ui_->choices);
  GiveKeys();
  ShareRoom();
  EnterPressesFocusedButton(this);
  Plan();
  if (ui_->btnOk->isEnabled()) {
    ui_->btnOk->setFocus();
  }
}

ImportPreview::~ImportPreview() = default;

void ImportPreview::GiveKeys() {
  QTabBar* tabs = ui_->tabs->tabBar();
  tabs->setAccessibleName(tr("What is shown"));
  tabs->setAccessibleDescription(tr("Chooses the values or the header."));
  // As a proxy, the tabs would have two places in the order of Tab, and never lead on.
  ui_->tabs->setFocusProxy(nullptr);
  ui_->tabs->setFocusPolicy(Qt::NoFocus);
  tabs->setFocusPolicy(Qt::TabFocus);
  setTabOrder(ui_->cmbColumn4, tabs);
  setTabOrder(tabs, ui_->tblRows);
  GiveAltKey(tabs, Qt::Key_W);
  GiveAltKey(ui_->tblRows, Qt::Key_T);
  GiveAltKey(ui_->tblHeader, Qt::Key_E);
  GiveAltKey(ui_->txtNotes, Qt::Key_O);
  int digit = Qt::Key_1;
  for (const ColumnBoxes::Box& box : columnBoxes_.All()) {
    GiveAltKey(box.second, static_cast<Qt::Key>(digit++));
  }
}

void ImportPreview::ConnectControls() {
  for (QComboBox* box : {ui_->cmbSign, ui_->cmbDates}) {
    connect(box, &QComboBox::activated, this, &ImportPreview::cmbReading_Activated);
  }
  connect(ui_->cmbItem, &QComboBox::activated, this, &ImportPreview::cmbItem_Activated);
  connect(ui_->cmbPage, &QComboBox::activated, this, [this](int index) {
    page_ = static_cast<std::int16_t>(index);
    ShowTables();
    Plan();
  });
  connect(ui_->cmbTable, &QComboBox::activated, this, &ImportPreview::cmbTable_Activated);
  for (const ColumnBoxes::Box& box : columnBoxes_.All()) {
    connect(box.second, &QComboBox::activated, this, &ImportPreview::cmbColumn_Activated);
  }
  connect(ui_->chkRemove, &QCheckBox::toggled, this, [this] {
    // What was checked did not remove these points, or removed them.
    ui_->chkConfirm->setChecked(false);
    Judge();
    ShowRows();
    ShowNotes();
    ShowButtons();
  });
  connect(ui_->chkConfirm, &QCheckBox::toggled, this, &ImportPreview::ShowButtons);
  connect(ui_->btnOk, &QPushButton::clicked, this, [this] {
    // An Alt key holds a box down for a moment before it ticks it; Enter may be pressed at once.
    for (QCheckBox* box : {ui_->chkRemove, ui_->chkConfirm}) {
      if (box->isDown()) {
        box->toggle();
      }
    }
    if (ui_->btnOk->isEnabled()) {
      columns_.Keep();
      accept();
    }
  });
  connect(ui_->btnCancel, &QPushButton::clicked, this, &ImportPreview::reject);
}

EditorState ImportPreview::After() const {
  return AfterImport(target_.now, plan_, RemovesMissing());
}

void ImportPreview::ShareRoom() {
  ui_->splitter->setStretchFactor(1, 1);
  const std::vector<int> remembered = RememberedNumbers(kSizes);
  // The setting may be damaged.
  if (remembered.size() == 2 && remembered[0] > 0 && remembered[1] > 0) {
    ui_->splitter->setSizes({remembered[0], remembered[1]});
  } else {
    // The boxes get the room that their texts need, but the table needs more.
    const int choices = std::max(std::min(ui_->choices->sizeHint().width(), width() * 2 / 5),
                                 ui_->choices->minimumSizeHint().width()) +
                        fontMetrics().height();  // the splitter and the margins take some of it
    ui_->splitter->setSizes({choices, width() - choices});
  }
  connect(ui_->splitter, &QSplitter::splitterMoved, this, [this] {
    const QList<int> sizes = ui_->splitter->sizes();
    movedTo_ = {sizes.begin(), sizes.end()};
  });
  connect(this, &QDialog::finished, this, [this] {
    if (!movedTo_.empty()) {
      Remember(kSizes, movedTo_);
    }
  });
}

void ImportPreview::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // Before it is shown, the table does not know its height.
  ScrollRows();
}

// --- What the user chooses

void ImportPreview::Propose() {
  const RememberedMatch remembered = [this](const CertificateTable& table, std::int16_t page) {
    return columns_.Of(table, page);
  };
  ImportChoices proposed = chosenItem_
                               ? ProposedChoices(target_, certificate_, *chosenItem_, remembered)
                               : ProposedChoices(target_, certificate_, remembered);
  for (const std::int16_t page : chosenPages_) {
    const auto index = static_cast<std::size_t>(page);
    proposed.pages.at(index) = choices_.pages.at(index);
  }
  choices_ = std::move(proposed);
}

PageChoice ImportPreview::ChoiceOf(const std::vector<std::size_t>& tables) const {
  if (tables.empty()) {
    return {};
  }
  const CertificateTable& table = certificate_.tables.at(tables.front());
  ProposedMatch proposed = ChosenOrMatched(columns_.Of(table, page_), table, ShownColumns());
  return {tables, std::move(proposed.match), std::move(proposed.asked), {}};
}

void ImportPreview::ShowQuestions() {
  const auto show = [&](ReadingQuestion::About about, QLabel* label, QComboBox* box) {
    const auto found = std::ranges::find(certificate_.questions, about, &ReadingQuestion::about);
    const bool isOpen = found != certificate_.questions.end();
    ShowPair(label, box, isOpen);
    if (isOpen) {
      ShowQuestion(box, *found);
    }
  };
  show(ReadingQuestion::About::DecimalSign, ui_->lblSign, ui_->cmbSign);
  show(ReadingQuestion::About::DateOrder, ui_->lblDates, ui_->cmbDates);
}

void ImportPreview::ShowItems() {
  ShowPair(ui_->lblItem, ui_->cmbItem, certificate_.items.size() > 1);
  for (const CertificateItem& item : certificate_.items) {
    ui_->cmbItem->addItem(ItemName(item, target_.language));
  }
  ui_->cmbItem->setCurrentIndex(static_cast<int>(choices_.item.value_or(0)));
}

void ImportPreview::ShowPages() {
  ShowPair(ui_->lblPage, ui_->cmbPage, choices_.pages.size() > 1);
  for (std::size_t page = 0; page < choices_.pages.size(); ++page) {
    ui_->cmbPage->addItem(ToQt(target_.data.GetCalPageName(static_cast<std::int16_t>(page))));
  }
  // The first page that the certificate changes, unless it changes the one in the editor.
  if (ShownChoice().tables.empty()) {
    const auto found = std::ranges::find_if(choices_.pages, [](const PageChoice& choice) {
      return !choice.tables.empty() || choice.IsOpen();
    });
    if (found != choices_.pages.end()) {
      page_ = static_cast<std::int16_t>(found - choices_.pages.begin());
    }
  }
  ui_->cmbPage->setCurrentIndex(page_);
}

void ImportPreview::ShowTables() {
  tableBox_.Show(certificate_, ShownChoice(), target_.language);
  ShowColumns();
}

void ImportPreview::ShowColumns() {
  columnBoxes_.Show(ShownColumns(), certificate_, ShownChoice(), target_.language);
}

void ImportPreview::cmbReading_Activated() {
  if (ui_->cmbSign->currentIndex() > 0) {
    reading_.sign = ui_->cmbSign->currentIndex() == 1 ? DecimalSign::Point : DecimalSign::Comma;
  }
  if (ui_->cmbDates->currentIndex() > 0) {
    reading_.dateOrder =
        ui_->cmbDates->currentIndex() == 1 ? DateOrder::DayFirst : DateOrder::MonthFirst;
  }
  const std::size_t tables = certificate_.tables.size();
  Guarded(this, [this] { certificate_ = ReadCertificate(bytes_, reading_); });
  if (certificate_.tables.size() != tables) {
    // A text that is a number now does not divide a table any more.
    chosenPages_.clear();
  }
  // Which page a table is meant for depends on its numbers.
  Propose();
  ShowTables();
  Plan();
}

void ImportPreview::cmbItem_Activated(int index) {
  chosenItem_ = static_cast<std::size_t>(index);
  // Another instrument has other results.
  chosenPages_.clear();
  Propose();
  ShowTables();
  Plan();
}

void ImportPreview::cmbTable_Activated(int index) {
  PageChoice& shown = ShownChoice();
  PageChoice choice = ChoiceOf(tableBox_.TablesOf(index));
  choice.takesNone = choice.tables.empty() && !tableBox_.IsOpen(index);
  // The user may choose another one of them.
  choice.alternatives = std::move(shown.alternatives);
  choice.canJoinAlternatives = shown.canJoinAlternatives;
  shown = std::move(choice);
  chosenPages_.insert(page_);
  ShowColumns();
  Plan();
}

void ImportPreview::cmbColumn_Activated() {
  PageChoice& choice = ShownChoice();
  const CertificateTable& table = certificate_.tables.at(choice.tables.front());
  columnBoxes_.Take(table, choice);
  chosenPages_.insert(page_);
  if (choice.asked.empty()) {
    columns_.Choose(table, page_, choice.match);
    // Other pages may have tables with the same captions.
    Propose();
  }
  Plan();
}

PageChoice& ImportPreview::ShownChoice() {
  return choices_.pages.at(static_cast<std::size_t>(page_));
}

std::vector<ModelColumn> ImportPreview::ShownColumns() const {
  return ModelColumns(target_.model, target_.data, page_);
}

}  // namespace tarvell
