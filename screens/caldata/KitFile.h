// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_KITFILE_H
#define TARVELL_SCREENS_CALDATA_KITFILE_H

#include <QWidget>

#include <string>

namespace tarvell {

/// Lets the user choose a finished file and copies it into the folder of the test kit. Throws the
/// errors of the copy.
void CopyFileOfTestKit(QWidget* owner, const std::string& model, const std::string& folder);

}  // namespace tarvell

#endif
