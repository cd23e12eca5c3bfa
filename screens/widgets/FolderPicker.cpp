// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/FolderPicker.h"

#include <filesystem>
#include <string>

#include "core/files/FileIOCommonModule.h"
#include "core/files/Paths.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

QString BrowseForFolder(QWidget* ownerWindow, const QString& initialText, const QString& title) {
  const std::string initial = FromQt(initialText);
  const std::filesystem::path start = NativePath(FolderExists(initial) ? initial : "c:\\");
  const QString picked = CurrentQuestions().PickFolder(ownerWindow, title, PathForQt(start));
  return picked.isEmpty() ? QString() : ToQt(PathText(SystemPath(picked)));
}

}  // namespace tarvell
