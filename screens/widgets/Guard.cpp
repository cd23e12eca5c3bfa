// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/Guard.h"

#include <exception>
#include <new>
#include <string>

#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

void ShowError(QWidget* owner, const Error& error) {
  CurrentQuestions().Ask(owner, {.text = ToQt(error.what()), .icon = QMessageBox::Warning});
}

bool Guarded(QWidget* owner, const std::function<void()>& action,
             const std::function<void(const Error& error)>& show) {
  const auto report = [&](const Error& error) { show ? show(error) : ShowError(owner, error); };
  try {
    action();
    return true;
  } catch (const Error& error) {
    report(error);
  } catch (const std::bad_alloc&) {
    report(Error(ErrorKind::System,
                 "There is not enough memory to do this. Close other programs, then try again."));
  } catch (const std::exception& failure) {
    report(Error(ErrorKind::System,
                 "The program could not do this (" + std::string(failure.what()) +
                     "). What you typed is still here. Report this message to whoever looks after "
                     "the program, then try again."));
  }
  return false;
}

}  // namespace tarvell
