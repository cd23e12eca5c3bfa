// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/frmCalibrationMain.h"

#include "ui_frmCalibrationMain.h"

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QFile>

#include <optional>
#include <utility>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/widgets/AltKeys.h"
#include "screens/widgets/AskReplacement.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/EnterKey.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/SerialList.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr std::int32_t kHideReadOnly = 4;
constexpr int kDesktopFolder = 0;

/// A file name of the toolkit in the encoding of the system.
std::string FileNameOf(const QString& name) {
  return QFile::encodeName(name).toStdString();
}

}  // namespace

frmCalibrationMain::frmCalibrationMain(QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmCalibrationMain>()),
      mnuAdd_(new QMenu("Add", this)) {
  ui_->setupUi(this);
  FitToDisplay(this);
  EnterPressesFocusedButton(this);
  SetUpAddMenu();
  setWindowTitle("Calibration Data Menu - " + ToQt(kApplicationTitle));
  ui_->LstInstrment->installEventFilter(this);
  OnChoice(ui_->LstInstrment, [this] { LstInstrment_Click(); });
  OnEntry(ui_->LstInstrment, {.open = [this] { ui_->lstSerialNumber->setFocus(); }});
  SetUpSerialList(ui_->lstSerialNumber);
  OnEntry(ui_->lstSerialNumber,
          {.open = [this] { btnEdit_Click(); }, .remove = [this] { btnDelete_Click(); }});
  GiveAltKey(ui_->lstSerialNumber, Qt::Key_S);
  OfferHandbook(this, chapter::kCalibrationData);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &frmCalibrationMain::btnAdd_Click);
  connect(ui_->btnEdit, &QPushButton::clicked, this, &frmCalibrationMain::btnEdit_Click);
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

void frmCalibrationMain::ShowModally() {
  RefreshModelList();
  RefreshSerialList();
  ShowEditCaption();
  ui_->LstInstrment->setFocus();
  exec();
}

bool frmCalibrationMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    ShowEditCaption();
  }
  return QDialog::eventFilter(watched, event);
}

void frmCalibrationMain::LstInstrment_Click() {
  Guarded(this, [this] {
    ShowEditCaption();
    RefreshSerialList();
  });
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
}

void frmCalibrationMain::RefreshSerialList() {
  FillSerialList(ui_->lstSerialNumber, SelectedName(ui_->LstInstrment));
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
    CopyFileOfTestKit(code, folder);
  } else {
    OpenEditor(CalEditor::kNewData, model);
  }
  RefreshModelList();
  {
    const QSignalBlocker blocker(ui_->LstInstrment);
    SelectName(ui_->LstInstrment, code);
  }
  ShowEditCaption();
  RefreshSerialList();
}

void frmCalibrationMain::CopyFileOfTestKit(const std::string& code, const std::string& folder) {
  cFileDialog dialog;
  dialog.SetOwnerWnd(this);
  dialog.SetFilter("Calibration Data(*.dat)|*.dat|All files(*.*)|*.*");
  dialog.SetFlags(kHideReadOnly);
  dialog.SetCaption("Choice " + ToQt(code) + " Calibration Data File from Folder");
  dialog.SetInitialDirToSpecialFolder(kDesktopFolder);
  if (!dialog.ShowOpen()) {
    return;
  }
  const std::string source = FileNameOf(dialog.FileName());
  if (UserLetsReplace(this, [&] { return TestKitWouldReplace(source, folder); })) {
    const BusyPointer busy;
    CopyTestKitFile(source, folder);
  }
}

CalEditor& frmCalibrationMain::EditorOf(const Model& model) {
  if (HasPages(model)) {
    if (!calDataTabInput_) {
      calDataTabInput_ = std::make_unique<frmCalDataTabInput>(this);
    }
    return *calDataTabInput_;
  }
  if (!calDataInput_) {
    calDataInput_ = std::make_unique<frmCalDataInput>(this);
  }
  return *calDataInput_;
}

bool frmCalibrationMain::OpenEditor(std::int16_t index, const Model& model) {
  CalEditor& editor = EditorOf(model);
  editor.SetupDat(index, std::string(model.code));
  return editor.result() == QDialog::Accepted;
}

void frmCalibrationMain::ShowSavedData(QListWidgetItem* entry, const std::string& path) {
  const std::optional<CalFileInfo> saved = ReadCalFileHeader(path);
  if (entry != nullptr && saved) {
    ShowCalFile(entry, *saved);
  }
}

bool frmCalibrationMain::GetSelection(std::string& model, std::string& serial) {
  model = SelectedName(ui_->LstInstrment);
  serial = SelectedName(ui_->lstSerialNumber);
  if (!model.empty() && !serial.empty()) {
    return true;
  }
  Tell(this, "No calibration data is selected.");
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
    const std::int16_t row = FindCalFile(serial);
    const std::string path = ListedDataSet(row).FilePath;
    // Row k of `gCalFiles` belongs to entry k of the list.
    QListWidgetItem* entry = ui_->lstSerialNumber->item(row);
    if (OpenEditor(row, *model)) {
      ShowSavedData(entry, path);
    }
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
  const std::string path = ListedDataSet(FindCalFile(serial)).FilePath;
  const bool deleted = Guarded(
      this, [&] { RecycleEntry(std::string(FolderOf(path)), std::string(LastNameOf(path))); },
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
    ui_->LstInstrment->setCurrentRow(0);
  }
  ShowEditCaption();
  RefreshSerialList();
}

void frmCalibrationMain::btnReturn_Click() {
  reject();
}

}  // namespace tarvell
