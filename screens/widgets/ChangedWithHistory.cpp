// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ChangedWithHistory.h"

#include <optional>

#include "core/platform/Error.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

bool ChangedWithHistory(QWidget* owner, const QString& act,
                        const std::function<void(Earlier earlier)>& change) {
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
  if (answer != QMessageBox::Yes) {
    return false;
  }
  const BusyPointer busy;
  change(Earlier::LetGo);
  return true;
}

}  // namespace tarvell
