// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/KitFile.h"

#include <cstdint>
#include <filesystem>

#include "core/caldata/TestKit.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr std::int32_t kHideReadOnly = 4;
constexpr int kDesktopFolder = 0;

}  // namespace

void CopyFileOfTestKit(QWidget* owner, const std::string& model, const std::string& folder) {
  cFileDialog dialog;
  dialog.SetOwnerWnd(owner);
  dialog.SetFilter("Calibration Data(*.dat)|*.dat|All files(*.*)|*.*");
  dialog.SetFlags(kHideReadOnly);
  dialog.SetCaption("Choice " + ToQt(model) + " Calibration Data File from Folder");
  dialog.SetInitialDirToSpecialFolder(kDesktopFolder);
  if (!dialog.ShowOpen()) {
    return;
  }
  const std::filesystem::path source = SystemPath(dialog.FileName());
  static_cast<void>(SavedWithHistory(
      owner, [&] { return TestKitWouldReplace(source, folder); },
      [&](Earlier earlier) { CopyTestKitFile(source, folder, earlier); }));
}

}  // namespace tarvell
