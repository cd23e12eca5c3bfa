// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/AskReplacement.h"

#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

bool UserLetsReplace(QWidget* owner, const std::function<Replacement()>& look,
                     std::optional<std::string>& agreed) {
  return MayReplace(
      [&] {
        const BusyPointer busy;
        return look();
      },
      [owner](const Replacement& replacement) {
        const ReplacementQuestion question = QuestionOf(replacement);
        return CurrentQuestions().Ask(owner, {.text = ToQt(question.text),
                                              .icon = QMessageBox::Warning,
                                              .buttons = QMessageBox::Yes | QMessageBox::No,
                                              .defaultButton = QMessageBox::No,
                                              .detail = ToQt(question.detail)}) == QMessageBox::Yes;
      },
      agreed);
}

}  // namespace tarvell
