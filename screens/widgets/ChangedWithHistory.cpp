// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ChangedWithHistory.h"

#include <optional>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "screens/widgets/AskReplacement.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

/// The content of the file at `path`; nothing if it cannot be read.
std::optional<std::string> ContentOf(const std::string& path) {
  std::string bytes;
  return ReadNativeFile(NativePath(path), bytes) ? std::nullopt : std::optional(bytes);
}

}  // namespace

bool ChangedWithHistory(QWidget* owner, const QString& act,
                        const std::function<void(Earlier earlier)>& change,
                        const std::function<bool()>& mayLetGo) {
  std::optional<Error> refused;
  try {
    const BusyPointer busy;
    change(Earlier::Keep);
  } catch (const Error& error) {
    if (error.Kind() != ErrorKind::NotKept) {
      throw;
    }
    refused = error;
  }
  if (!refused) {
    return true;
  }
  const auto answer = CurrentQuestions().Ask(
      owner, {.text = "The earlier data cannot be kept in the history. Do you want to " + act +
                      " without it?",
              .icon = QMessageBox::Warning,
              .buttons = QMessageBox::Yes | QMessageBox::No,
              .defaultButton = QMessageBox::No,
              .detail = ToQt(refused->what()) + "\n\nNo leaves the file as it is."});
  if (answer != QMessageBox::Yes || !mayLetGo()) {
    return false;
  }
  const BusyPointer busy;
  change(Earlier::LetGo);
  return true;
}

bool SavedWithHistory(QWidget* owner, const std::function<Replacement()>& look,
                      const std::function<void(Earlier earlier)>& save) {
  std::optional<std::string> agreed;
  const auto mayReplace = [&] { return UserLetsReplace(owner, look, agreed); };
  return mayReplace() && ChangedWithHistory(owner, "save", save, mayReplace);
}

std::function<bool()> UnlessChanged(QWidget* owner, const std::string& path) {
  return [owner, path, before = ContentOf(path)] {
    const bool isSame = ContentOf(path) == before;
    if (!isSame) {
      Tell(owner, ToQt("The file " + NameWithFolder(path) +
                       " has changed in the meantime. Nothing was done. Look at what it holds now, "
                       "then try again."));
    }
    return isSame;
  };
}

}  // namespace tarvell
