// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DataSetExport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <string>

#include "exchange/Export.h"
#include "screens/widgets/ExportedFile.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr const char* kFolder = "certificates/export-folder";

QString Tr(const char* text) {
  return QCoreApplication::translate("DataSetExport", text);
}

}  // namespace

QString ExportDataSet(QWidget* owner, const Model& model, const cifCaldata& data,
                      const EditorState& state) {
  cFileDialog dialog;
  dialog.SetCaption(Tr("Export the calibration data"));
  dialog.SetFilter(Tr("CSV for spreadsheets|*.csv|JSON for programs|*.json"));
  dialog.SetInitialDir(RememberedText(kFolder));
  dialog.SetFileName(ToQt(model.code) + " " + ToQt(state.header.serialNumber) + ".csv");
  dialog.SetOwnerWnd(owner);
  if (!dialog.ShowSave()) {
    return {};
  }
  const QString file = dialog.FileName();
  Remember(kFolder, QFileInfo(file).path());
  const bool isJson = file.endsWith(".json", Qt::CaseInsensitive);
  const std::string bytes = isJson ? JsonOf(model, data, state) : CsvOf(model, data, state);
  SaveExportedFile(file, bytes);
  return Tr("Saved as %1.").arg(QDir::toNativeSeparators(file));
}

}  // namespace tarvell
