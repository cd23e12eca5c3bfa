// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ImportPreview.h"

#include "ui_ImportPreview.h"

#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>
#include <utility>

#include "core/curves/SlipLimits.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "exchange/ModelColumns.h"
#include "exchange/ReadCertificate.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/caldata/ImportNotes.h"
#include "screens/caldata/PlannedTables.h"
#include "screens/widgets/AltKeys.h"
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

using Change = PastedRow::Change;

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

QString Rows(std::size_t count) {
  return count == 1 ? ImportPreview::tr("1 row") : ImportPreview::tr("%1 rows").arg(count);
}

QString ItemName(const CertificateItem& item, const std::string& language) {
  return ToQt(Trim(NameIn(item.name, language) + " " + item.model + " " + item.serialNumber));
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
  columnBoxes_ = ColumnBoxes({{ui_->lblColumn0, ui_->cmbColumn0},
                              {ui_->lblColumn1, ui_->cmbColumn1},
                              {ui_->lblColumn2, ui_->cmbColumn2},
                              {ui_->lblColumn3, ui_->cmbColumn3},
                              {ui_->lblColumn4, ui_->cmbColumn4}});
  for (QComboBox* box : ui_->choices->findChildren<QComboBox*>()) {
    ShowLongTexts(box);
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
  const PageChoice& choice = ShownChoice();
  offered_.clear();
  ui_->cmbTable->clear();
  offersOpen_ = choice.IsOpen();
  if (offersOpen_) {
    Offer({}, tr("(choose a table)"));
  }
  Offer({}, tr("(none: the page stays as it is)"));
  for (const std::vector<std::size_t>& tables : TogetherFor(choice)) {
    Offer(tables, NameTogether(tables));
  }
  for (std::size_t i = 0; i < certificate_.tables.size(); ++i) {
    const CertificateTable& table = certificate_.tables[i];
    Offer({i}, tr("%1 (%2), %3")
                   .arg(ToQt(TitleOf(table, target_.language)), ToQt(table.where),
                        Rows(table.RowCount())));
  }
  ui_->cmbTable->setCurrentIndex(
      static_cast<int>(std::ranges::find(offered_, choice.tables) - offered_.begin()));
  ShowColumns();
}

void ImportPreview::Offer(std::vector<std::size_t> tables, const QString& name) {
  offered_.push_back(std::move(tables));
  ui_->cmbTable->addItem(name);
}

std::vector<std::vector<std::size_t>> ImportPreview::TogetherFor(const PageChoice& choice) {
  std::vector<std::vector<std::size_t>> together;
  std::vector<std::size_t> all;
  for (const std::vector<std::size_t>& tables : choice.alternatives) {
    all.insert(all.end(), tables.begin(), tables.end());
    if (tables.size() > 1) {
      together.push_back(tables);
    }
  }
  if (choice.canJoinAlternatives) {
    together.push_back(all);
  }
  const bool isKnown = std::ranges::find(together, choice.tables) != together.end();
  if (choice.tables.size() > 1 && !isKnown) {
    together.push_back(choice.tables);
  }
  return together;
}

QString ImportPreview::NameTogether(const std::vector<std::size_t>& tables) const {
  std::size_t rows = 0;
  for (const std::size_t table : tables) {
    rows += certificate_.tables.at(table).RowCount();
  }
  const std::string& section = certificate_.tables.at(tables.front()).section;
  const bool isOfSection = !section.empty() && std::ranges::all_of(tables, [&](std::size_t table) {
    return certificate_.tables.at(table).section == section;
  });
  const QString name = tr("%1 tables together, %2").arg(tables.size()).arg(Rows(rows));
  return isOfSection ? tr("%1: %2").arg(ToQt(section), name) : name;
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
  Guarded(this, [this] { certificate_ = ReadCertificate(bytes_, reading_); });
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
  PageChoice choice = ChoiceOf(offered_.at(static_cast<std::size_t>(index)));
  choice.takesNone = choice.tables.empty() && !(index == 0 && offersOpen_);
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

// --- What it would do

void ImportPreview::Plan() {
  error_.clear();
  plan_ = {};
  Guarded(
      this, [this] { plan_ = PlanImport(target_, certificate_, choices_); },
      [this](const Error& error) { error_ = ToQt(error.what()); });
  ForgetAnswers();
  const std::size_t missing = plan_.Count(Change::Missing);
  const QString points = HasOnlyDefaults(target_.now)
                             ? missing == 1 ? tr("point of the template")
                                            : tr("%1 points of the template").arg(missing)
                         : missing == 1 ? tr("point")
                                        : tr("%1 points").arg(missing);
  ui_->chkRemove->setText(tr("&Remove the %1 that the certificate does not have").arg(points));
  ui_->chkRemove->setVisible(!HasPages(target_.model) && missing > 0);
  ui_->chkConfirm->setVisible(!plan_.doubts.empty());
  Judge();
  ShowSummary();
  ShowPlannedHeader(ui_->tblHeader, plan_.fields);
  ShowRows();
  ScrollRows();
  ShowNotes();
  ShowButtons();
}

void ImportPreview::ForgetAnswers() {
  std::vector<std::vector<std::string>> points;
  for (const PagePlan& page : plan_.pages) {
    for (const PlannedRow& planned : page.rows) {
      if (planned.row.change == Change::Missing) {
        points.push_back(planned.row.before);
      }
    }
  }
  const bool areOtherDoubts = std::exchange(askedDoubts_, plan_.doubts) != plan_.doubts;
  const bool areOtherPoints = std::exchange(askedPoints_, points) != points;
  const auto set = [](QCheckBox* box, bool isTicked) {
    const QSignalBlocker noPlanYet(box);
    box->setChecked(isTicked);
  };
  if (areOtherDoubts) {
    set(ui_->chkConfirm, false);
  }
  if (areOtherPoints) {
    set(ui_->chkRemove, HasOnlyDefaults(target_.now));
  }
}

void ImportPreview::Judge() {
  judged_.clear();
  const EditorState after = After();
  const std::unique_ptr<cifCaldata> earlier = earlier_.DataFor(after.header);
  for (const PagePlan& page : plan_.pages) {
    judged_[page.page] = JudgePage({.model = target_.model,
                                    .data = target_.data,
                                    .state = after,
                                    .earlier = earlier.get(),
                                    .limit = limit_},
                                   page.page);
  }
}

void ImportPreview::ShowSummary() {
  QStringList names;
  for (const CertificateItem& item : certificate_.items) {
    names << ItemName(item, target_.language);
  }
  ui_->lblSummary->setText(
      tr("%1 (%2): %3. Rows: %4 updated, %5 added, %6 as before.")
          .arg(fileName_, ToQt(certificate_.kind),
               names.isEmpty() ? tr("no instrument is named") : names.join(", "))
          .arg(plan_.Count(Change::Updated))
          .arg(plan_.Count(Change::Added))
          .arg(plan_.Count(Change::Unchanged)));
}

const PagePlan* ImportPreview::ShownPlan() const {
  const auto found = std::ranges::find(plan_.pages, page_, &PagePlan::page);
  return found == plan_.pages.end() ? nullptr : &*found;
}

void ImportPreview::ShowRows() {
  ShownPage page = {{}, ShownPlan(), {}, RemovesMissing()};
  for (const ModelColumn& column : ShownColumns()) {
    page.captions << ToQt(column.caption);
  }
  if (page.plan != nullptr) {
    page.marks = judged_.at(page_).slips.marks;
  }
  ShowPlannedRows(ui_->tblRows, page);
}

void ImportPreview::ScrollRows() {
  if (const PagePlan* plan = ShownPlan()) {
    ScrollToChange(ui_->tblRows, *plan);
  }
}

void ImportPreview::ShowNotes() {
  std::vector<std::string> slips;
  for (const auto& [page, judged] : judged_) {
    slips.insert(slips.end(), judged.sentences.begin(), judged.sentences.end());
  }
  ui_->txtNotes->setPlainText(
      ImportNotes({error_, OpenQuestions(certificate_, reading_), plan_, std::move(slips)}));
}

bool ImportPreview::HasOpenTables() const {
  return std::ranges::any_of(choices_.pages, &PageChoice::IsOpen);
}

bool ImportPreview::RemovesMissing() const {
  return !HasPages(target_.model) && ui_->chkRemove->isChecked();
}

void ImportPreview::ShowButtons() {
  const bool isConfirmed = plan_.doubts.empty() || ui_->chkConfirm->isChecked();
  const QString hint =
      !error_.isEmpty() ? tr("These values cannot be imported. The reason is above.")
      : !OpenQuestions(certificate_, reading_).empty()
          ? tr("Say how to read what can be read in two ways.")
      : HasOpenTables()     ? tr("Choose the table that is meant.")
      : !plan_.open.empty() ? tr("Choose the columns that can be meant in several ways.")
      : !plan_.HasValues()  ? tr("There is nothing to import into this data set.")
      : !plan_.HasPlace(RemovesMissing()) ? tr("The table has no room for all points. Remove those "
                                               "that are not in the certificate.")
      : !isConfirmed                      ? tr("Check what is said above, then confirm it.")
                                          : QString();
  ui_->lblHint->setText(hint);
  ui_->btnOk->setEnabled(hint.isEmpty());
}

}  // namespace tarvell
