// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/frmSplash.h"

#include "ui_frmSplash.h"

#include <QCloseEvent>
#include <QIcon>

#include "app/Tarvell_MainModule.h"
#include "app/Version.h"
#include "common/QtText.h"

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
