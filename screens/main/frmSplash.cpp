// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/main/frmSplash.h"

#include "ui_frmSplash.h"

#include <QCloseEvent>
#include <QIcon>

#include "core/session/Tarvell_MainModule.h"
#include "core/session/Version.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

frmSplash::frmSplash()
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      ui_(std::make_unique<Ui::frmSplash>()) {
  ui_->setupUi(this);
  const std::string revision = RevisionText(kMajorVersion, kMinorVersion);
  setWindowTitle(ToQt(kApplicationTitle) + " - " + ToQt(revision));
  ui_->lblRevision->setText("Rev." + ToQt(revision));
  ui_->Picture1->setPixmap(
      QIcon(":/images/tarvell.svg").pixmap(ui_->Picture1->minimumSize(), devicePixelRatioF()));
}

frmSplash::~frmSplash() = default;

void frmSplash::reject() {}

void frmSplash::closeEvent(QCloseEvent* event) {
  event->ignore();
}

}  // namespace tarvell
