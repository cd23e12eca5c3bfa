// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_STATION_INSTRUMENTHISTORY_H
#define TARVELL_SCREENS_STATION_INSTRUMENTHISTORY_H

#include <QListWidget>
#include <QMenu>
#include <QObject>
#include <QPushButton>

#include <functional>
#include <string>

namespace tarvell {

/// The menu about the history of a station's instruments: of the shown one, and of those that were
/// deleted. A button opens it, and so does the right mouse button or the menu key on the list.
class InstrumentHistory final : public QObject {
  Q_OBJECT

 public:
  struct Screen {
    QWidget* screen;
    QPushButton* button;
    QListWidget* list;
    std::function<std::string()> station;  ///< its name
    std::function<std::string()> shown;    ///< name of the shown instrument's file, "" for none
    std::function<bool()> isChanged;       ///< whether something is shown that is not saved
    std::function<void()> readAgain;       ///< after a version has been put back
  };
  explicit InstrumentHistory(const Screen& screen);

 private:
  void ShowHistory();
  void ShowDeleted();

  Screen screen_;
  QMenu* menu_;
};

}  // namespace tarvell

#endif
