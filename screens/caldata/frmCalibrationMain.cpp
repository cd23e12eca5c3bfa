// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmCalibrationMain.h"

#include "ui_frmCalibrationMain.h"

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QScopeGuard>
#include <QShortcut>

#include <optional>
#include <utility>
#include <vector>

#include "core/caldata/CalFileList.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/caldata/KitFile.h"
#include "screens/caldata/frmDeleted.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

/// A data file, in the folder of its model.
HistorySubject SubjectAt(const std::string& path) {
  return {.path = path, .model = FindModel(ToUpper(LastNameOf(FolderOf(path))))};
}

}  // namespace

frmCalibrationMain::frmCalibrationMain(QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmCalibrationMain>()),
      mnuAdd_(new QMenu("Add", this)),
      mnuMore_(new QMenu(this)),
      editors_(this) {
  ui_->setupUi(this);
  modelHead_ = new ListHead(ui_->LstInstrment, {Qt::Key_T, Qt::Key_F});
  serialHead_ =
      new ListHead(ui_->lstSerialNumber, {Qt::Key_S, Qt::Key_I}, ListHead::Orders::ByNameOrDueDate);
  serialHead_->ReadByFilter([this] { RefreshSerialList(true); });
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  SetUpAddMenu();
  SetUpMoreMenu();
  connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
          [this] { Guarded(this, [this] { RefreshLists(); }); });
  setWindowTitle("Calibration Data Menu - " + ToQt(kApplicationTitle));
  ui_->LstInstrment->installEventFilter(this);
  OnChoice(ui_->LstInstrment, [this] { LstInstrment_Click(); });
  OnEntry(ui_->LstInstrment, {.open = [this] { ui_->lstSerialNumber->setFocus(); }});
  SetUpSerialList(ui_->lstSerialNumber);
  OnEntry(ui_->lstSerialNumber,
          {.open = [this] { btnEdit_Click(); }, .remove = [this] { btnDelete_Click(); }});
  GiveAltKey(ui_->lstSerialNumber, Qt::Key_N);
  OfferHandbook(this, chapter::kCalibrationData);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmCalibrationMain::btnAdd_Click);
  connect(ui_->btnEdit, &QPushButton::clicked, this, &frmCalibrationMain::btnEdit_Click);
  connect(ui_->btnMore, &QPushButton::clicked, this, &frmCalibrationMain::btnMore_Click);
  connect(ui_->btnDelete, &QPushButton::clicked, this, &frmCalibrationMain::btnDelete_Click);
  connect(ui_->btnReturn, &QPushButton::clicked, this, &frmCalibrationMain::btnReturn_Click);
}

frmCalibrationMain::~frmCalibrationMain() = default;

void frmCalibrationMain::SetUpAddMenu() {
  mnuAdd_->setObjectName("mnuAdd");
  QStringList captions;
  for (const Model& model : kModels) {
    captions << ToQt(model.code);
  }
  captions = WithDistinctKeys(captions);
  ModelFamily family = kModels.front().family;
  for (const Model& model : kModels) {
    if (model.family != family) {
      mnuAdd_->addSeparator();
      family = model.family;
    }
    QAction* entry = mnuAdd_->addAction(captions.takeFirst());
    entry->setObjectName("mnu" + ToQt(model.code));
    entry->setEnabled(CanAdd(model));
    connect(entry, &QAction::triggered, this, [this, &model] { mnuAddEntry_Click(model); });
  }
}

void frmCalibrationMain::SetUpMoreMenu() {
  mnuMore_->setObjectName("mnuMore");
  const auto add = [this](const char* name, const QString& caption, CalEditor::Begin begin) {
    QAction* entry = mnuMore_->addAction(caption);
    entry->setObjectName(name);
    connect(entry, &QAction::triggered, this,
            [this, begin] { Guarded(this, [&] { BeginWithData(begin); }); });
  };
  add("mnuNewCalibration", tr("&New calibration"), CalEditor::Begin::NewCalibration);
  add("mnuAddAsCopy", tr("Add as &copy"), CalEditor::Begin::Copy);
  QAction* history = mnuMore_->addAction(tr("&History..."));
  history->setObjectName("mnuHistory");
  connect(history, &QAction::triggered, this, [this] { Guarded(this, [this] { ShowHistory(); }); });
  QAction* deleted = mnuMore_->addAction(tr("&Deleted or damaged data..."));
  deleted->setObjectName("mnuDeleted");
  connect(deleted, &QAction::triggered, this, [this] { Guarded(this, [this] { ShowDeleted(); }); });
  mnuMore_->addSeparator();
  QAction* overview = mnuMore_->addAction(tr("O&verview"));
  overview->setObjectName("mnuOverview");
  overview->setShortcut(Qt::Key_F6);
  // The shortcut of an entry that is only in a menu would not act.
  addAction(overview);
  connect(overview, &QAction::triggered, this, &frmCalibrationMain::OverviewWanted);
  // The same by the right mouse button, or the menu key.
  ui_->lstSerialNumber->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(ui_->lstSerialNumber, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) {
            if (!SelectedName(ui_->lstSerialNumber).empty()) {
              mnuMore_->popup(ui_->lstSerialNumber->viewport()->mapToGlobal(place));
            }
          });
}

void frmCalibrationMain::ShowModally() {
  modelHead_->ClearFilter();
  serialHead_->ClearFilter();
  RefreshModelList();
  // Nothing is selected, but the keyboard is where the user was last.
  GoToName(ui_->LstInstrment, RememberedModel());
  RefreshSerialList();
  ShowEditCaption();
  ui_->LstInstrment->setFocus();
  exec();
  const std::string model = SelectedName(ui_->LstInstrment);
  const std::string serial = SelectedName(ui_->lstSerialNumber);
  if (!model.empty() && !serial.empty()) {
    RememberDataSet(model, serial);
  }
}

bool frmCalibrationMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    ShowEditCaption();
  }
  return QDialog::eventFilter(watched, event);
}

void frmCalibrationMain::LstInstrment_Click() {
  ShowEditCaption();
  ListWithRememberedData();
}

void frmCalibrationMain::ListWithRememberedData() {
  Guarded(this, [this] { RefreshSerialList(); });
  // Also where a message has said that not all data sets are listed.
  Guarded(this, [this] { GoToRememberedData(); });
}

void frmCalibrationMain::GoToRememberedData() {
  const std::string model = RememberedModel();
  const std::string serial = RememberedSerial();
  if (serial.empty() || !EqualsIgnoringCase(SelectedName(ui_->LstInstrment), model) ||
      GoToName(ui_->lstSerialNumber, serial)) {
    return;
  }
  const std::string path = Joined(Joined(gCalibrationDir, model), UncheckedDataFileName(serial));
  if (ReadableCalFileHeader(path)) {
    // The folder holds more data sets than are listed: an outline at another one would mislead.
    serialHead_->SetFilter(serial);
    RefreshSerialList(true);
    GoToName(ui_->lstSerialNumber, serial);
  }
}

void frmCalibrationMain::ShowEditCaption() {
  const Model* model = FindModel(SelectedName(ui_->LstInstrment));
  const bool isKit = model != nullptr && model->family == ModelFamily::TestKit;
  ui_->btnEdit->setText(isKit ? "&Update" : "&Edit");
}

void frmCalibrationMain::RefreshModelList() {
  // The caller selects a model and then lists its serial numbers.
  const QSignalBlocker blocker(ui_->LstInstrment);
  ui_->LstInstrment->clear();
  std::vector<std::string> names;
  Guarded(this, [&] {
    const BusyPointer busy;
    ListModelFolders(gCalibrationDir, names);
  });
  for (const std::string& name : ModelsWithData(std::move(names))) {
    AddName(ui_->LstInstrment, name);
  }
  modelHead_->Apply();
}

void frmCalibrationMain::RefreshSerialList(bool isTyping) {
  ListDataSets(ui_->lstSerialNumber, SelectedName(ui_->LstInstrment), *serialHead_, *ui_->notices,
               isTyping);
}

void frmCalibrationMain::RefreshLists() {
  const std::string model = SelectedName(ui_->LstInstrment);
  const std::string serial = SelectedName(ui_->lstSerialNumber);
  RefreshModelList();
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectIfShown(ui_->LstInstrment, model);
  }
  ShowEditCaption();
  const auto selected = qScopeGuard([&] { SelectIfShown(ui_->lstSerialNumber, serial); });
  RefreshSerialList();
}

void frmCalibrationMain::btnAdd_Click() {
  const QPoint mouse = ui_->btnAdd->mapFromGlobal(QCursor::pos());
  const bool byMouse = ui_->btnAdd->rect().contains(mouse);
  mnuAdd_->popup(ui_->btnAdd->mapToGlobal(byMouse ? mouse : ui_->btnAdd->rect().bottomLeft()));
}

void frmCalibrationMain::mnuAddEntry_Click(const Model& model) {
  Guarded(this, [&] { AddData(model); });
}

void frmCalibrationMain::AddData(const Model& model) {
  const std::string code(model.code);
  const std::string folder = Joined(gCalibrationDir, code);
  if (!FolderExists(folder)) {
    MakeFolder(folder);
    // The selection must stay when the editor reports an error.
    const std::string selected = SelectedName(ui_->LstInstrment);
    RefreshModelList();
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectName(ui_->LstInstrment, selected);
  }
  if (model.family == ModelFamily::TestKit) {
    CopyFileOfTestKit(this, code, folder);
  } else {
    editors_.Open(CalEditor::kNewData, model);
  }
  // What was added must be seen.
  modelHead_->ClearFilter();
  serialHead_->ClearFilter();
  RefreshModelList();
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectName(ui_->LstInstrment, code);
  }
  ShowEditCaption();
  ListWithRememberedData();
}

void frmCalibrationMain::btnMore_Click() {
  mnuMore_->popup(ui_->btnMore->mapToGlobal(ui_->btnMore->rect().bottomLeft()));
}

void frmCalibrationMain::ShowSavedData(QListWidgetItem* entry, const std::string& path) {
  const std::optional<CalFileInfo> saved = ReadCalFileHeader(path);
  if (entry != nullptr && saved) {
    ShowCalFile(entry, *saved);
    serialHead_->Apply();
  }
}

bool frmCalibrationMain::GetSelection(std::string& model, std::string& serial) {
  model = SelectedName(ui_->LstInstrment);
  serial = SelectedName(ui_->lstSerialNumber);
  if (!model.empty() && !serial.empty()) {
    return true;
  }
  // After Add, or when the list has just been read, the keyboard is at an entry that is only
  // outlined.
  const QListWidgetItem* outlined = ui_->lstSerialNumber->currentItem();
  CurrentQuestions().Ask(
      this, {.text = "No calibration data is selected.",
             .detail = serial.empty() && outlined != nullptr && !outlined->isHidden() &&
                               !outlined->text().isEmpty()
                           ? tr("%1 has an outline, but is not selected. To select it, press the "
                                "space key in the list.")
                                 .arg(outlined->text())
                           : QString()});
  return false;
}

void frmCalibrationMain::btnEdit_Click() {
  Guarded(this, [this] { EditData(); });
}

void frmCalibrationMain::EditData() {
  std::string code;
  std::string serial;
  if (!GetSelection(code, serial)) {
    return;
  }
  const Model* model = FindModel(ToUpper(code));
  if (model == nullptr) {
    return;
  }
  if (model->family == ModelFamily::TestKit) {
    AddData(*model);
  } else if (model->create != nullptr) {
    OpenSelected(*model, CalEditor::Begin::AsSaved);
  }
}

void frmCalibrationMain::OpenSelected(const Model& model, CalEditor::Begin begin) {
  const std::int16_t row = SelectedDataSet(ui_->lstSerialNumber);
  const std::string path = ListedDataSet(row).FilePath;
  if (!editors_.Open(row, model, begin)) {
    return;
  }
  if (begin == CalEditor::Begin::Copy) {
    // What was added must be seen.
    serialHead_->ClearFilter();
    ListWithRememberedData();
  } else {
    ShowSavedData(EntryAdded(ui_->lstSerialNumber, row), path);
  }
}

void frmCalibrationMain::BeginWithData(CalEditor::Begin begin) {
  std::string code;
  std::string serial;
  if (!GetSelection(code, serial)) {
    return;
  }
  const Model* model = FindModel(ToUpper(code));
  if (model == nullptr || model->create == nullptr) {
    Tell(this, tr("The data of %1 cannot be edited. Use Add or Update to copy a finished file.")
                   .arg(ToQt(code)));
    return;
  }
  OpenSelected(*model, begin);
}

void frmCalibrationMain::ShowHistory() {
  std::string code;
  std::string serial;
  if (!GetSelection(code, serial)) {
    return;
  }
  const std::int16_t row = SelectedDataSet(ui_->lstSerialNumber);
  const std::string path = ListedDataSet(row).FilePath;
  frmHistory(SubjectAt(path), this).exec();
  // Another version may have been put back.
  ShowSavedData(EntryAdded(ui_->lstSerialNumber, row), path);
}

void frmCalibrationMain::ShowDeleted() {
  frmDeleted deleted({.root = gCalibrationDir,
                      .folderName = tr("Model"),
                      .subject = SubjectAt,
                      .isDamaged = IsDamagedDataFile},
                     this);
  deleted.exec();
  if (deleted.HasPutBack()) {
    RefreshLists();
  }
}

void frmCalibrationMain::btnDelete_Click() {
  Guarded(this, [this] { DeleteData(); });
}

void frmCalibrationMain::DeleteData() {
  std::string model;
  std::string serial;
  if (!GetSelection(model, serial)) {
    return;
  }
  const auto answer = CurrentQuestions().Ask(
      this, {.text = "Are you sure you want to delete " + ToQt(model) + "(" + ToQt(serial) + ")?",
             .icon = QMessageBox::Warning,
             .buttons = QMessageBox::Yes | QMessageBox::No,
             .defaultButton = QMessageBox::No});
  if (answer != QMessageBox::Yes) {
    return;
  }
  const std::string path = ListedDataSet(SelectedDataSet(ui_->lstSerialNumber)).FilePath;
  const auto mayLetGo = UnlessChanged(this, path);
  bool deleted = false;
  Guarded(
      this,
      [&] {
        deleted = ChangedWithHistory(
            this, "delete",
            [&](Earlier earlier) {
              DeleteWithHistory(FolderOf(path), std::string(LastNameOf(path)), earlier);
            },
            mayLetGo);
      },
      [this](const Error& error) {
        CurrentQuestions().Ask(this,
                               {.text = "Can't delete cal data", .detail = ToQt(error.what())});
      });
  if (!deleted) {
    return;
  }
  RefreshModelList();
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectFirstShown(ui_->LstInstrment);
  }
  ShowEditCaption();
  RefreshSerialList();
}

void frmCalibrationMain::btnReturn_Click() {
  reject();
}

}  // namespace tarvell
