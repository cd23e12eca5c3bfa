// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEY_H
#define TARVELL_TESTS_SUPPORT_MONKEY_H

#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace tarvell::test {

/// Valid inputs, without which random actions would hardly get past the main menu.
struct MonkeyPlaces {
  QString calibrationDir;
  QString stationDir;
  std::vector<std::string> files;    ///< native, for the file dialog
  std::vector<std::string> folders;  ///< native; their "calfactors" and "stations" are picked
};

using IsKnownMessage = std::function<bool(const QString& text)>;

/// Uses the whole program at random: keys, clicks, wheel, clipboard, closing and resizing windows.
/// The same seed gives the same actions. When the program ends, it is started again, until all
/// actions are done. A program that hangs is ended by SIGALRM; with TARVELL_MONKEY_TRACE set, every
/// action of the seed is printed before it is done. Returns the messages that are not known, each
/// with the actions that led to it; it must also have seen more than one screen.
[[nodiscard]] std::vector<std::string> RunMonkey(unsigned seed, int actions,
                                                 const MonkeyPlaces& places,
                                                 const IsKnownMessage& isKnown);

}  // namespace tarvell::test

#endif
