// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QString>

#include <array>
#include <string_view>

#include "screens/curve/CurvePlot.h"
#include "screens/paper/PrinterDialog.h"
#include "screens/widgets/ProgramLibrary.h"

/// In place of ProgramLibrary.cpp, where the toolkit is a part of the program: a library in a file
/// of its own would bring a second copy of it.
namespace tarvell {

extern "C" CurvePlot* TarvellNewCurvePlot(QWidget* parent);
extern "C" void TarvellPickPrinter(QWidget* owner, const PrinterRequest& request,
                                   PickedPrinter& picked);

namespace {

struct BuiltIn {
  std::string_view name;
  QFunctionPointer function;
};

bool& AreElsewhere() {
  static bool elsewhere = false;
  return elsewhere;
}

}  // namespace

LibraryFunction FunctionOf(const QString& library, const char* name) {
  const std::array<BuiltIn, 2> functions = {
      {{kNewCurvePlot, reinterpret_cast<QFunctionPointer>(&TarvellNewCurvePlot)},
       {kPickPrinter, reinterpret_cast<QFunctionPointer>(&TarvellPickPrinter)}}};
  for (const BuiltIn& function : functions) {
    if (function.name == name && !AreElsewhere()) {
      return {function.function, {}};
    }
  }
  return {nullptr, library};
}

void TakeLibrariesFrom(const QString& folder) {
  AreElsewhere() = !folder.isEmpty();
}

}  // namespace tarvell
