// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "Painted.h"

namespace {

/// The toolkit's controls of the main menu, and nothing that the program does.
void AddMenuControls(QWidget& window) {
  auto* layout = new QVBoxLayout(&window);  // the window owns it, and what it holds
  auto* menuBar = new QMenuBar;
  menuBar->addAction("Exit");
  layout->setMenuBar(menuBar);
  auto* title = new QLabel("Main Menu");
  QFont font = title->font();
  font.setPointSize(16);
  font.setBold(true);
  title->setFont(font);
  layout->addWidget(title);
  for (const char* caption : {"Calibration Data", "Station Data"}) {
    layout->addWidget(new QRadioButton(caption));
    layout->addWidget(new QLabel(caption));
    layout->addWidget(new QLineEdit("c:\\folder"));
    layout->addWidget(new QPushButton("Browse"));
  }
  layout->addWidget(new QPushButton("Start"));
  layout->addWidget(new QPushButton("Exit"));
}

}  // namespace

/// The least program with a window: it ends, without tidying up, as soon as the window is painted.
/// With the argument "splash" it shows another such window first. With the picture of the splash
/// screen as its argument it shows that picture first, and then the controls of the main menu.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QString argument = QApplication::arguments().value(1);
  const bool showsScreens = !argument.isEmpty() && argument != "splash";
  QLabel first("Splash");
  QLabel label("Tarvell");
  if (showsScreens) {
    QApplication::setWindowIcon(QIcon(argument));
    first.setPixmap(QIcon(argument).pixmap(128));
    label.setText(QString());
    AddMenuControls(label);
  }
  const tarvell::bench::Painted painted([&](const QWidget& window) { return &window == &label; },
                                        [](QWidget&) { tarvell::bench::Finish(); });
  const tarvell::bench::Painted firstPainted(
      [&](const QWidget& window) { return &window == &first; },
      [&](QWidget&) {
        first.hide();
        label.show();
      });
  (argument.isEmpty() ? label : first).show();
  return QApplication::exec();
}
