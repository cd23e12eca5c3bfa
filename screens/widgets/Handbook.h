// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_HANDBOOK_H
#define TARVELL_SCREENS_WIDGETS_HANDBOOK_H

#include <QDialog>
#include <QString>
#include <QTextBrowser>
#include <QWidget>

/// The handbook in a window of the program, so that no browser and no network is needed. Its pages
/// are in the folder "handbook" beside the executable.
namespace tarvell {

/// The chapters that screens open; the names are the anchors of their headings.
namespace chapter {
inline constexpr const char* kFirstStart = "first-start";
inline constexpr const char* kCalibrationData = "calibration-data";
inline constexpr const char* kSingleTables = "sensors-and-attenuators";
inline constexpr const char* kPastedTables = "a-table-from-a-certificate";
inline constexpr const char* kImporting = "importing-a-certificate";
inline constexpr const char* kSets = "capacitor-and-resistor-sets";
inline constexpr const char* kHistory = "history";
inline constexpr const char* kStations = "stations";
inline constexpr const char* kInstruments = "instruments-of-a-station";
inline constexpr const char* kOverview = "the-overview";
inline constexpr const char* kMessages = "messages";
}  // namespace chapter

/// Makes F1 open the handbook at this chapter, "" for the chapter of the screen below it.
void OfferHandbook(QWidget* screen, const QString& chapter = {});

/// Shows the handbook at this chapter, in front of `screen` and usable together with it. Throws a
/// NotFound error when the handbook is not installed.
void ShowHandbook(QWidget* screen, const QString& chapter);

/// The window of the handbook. There is one at a time.
class HandbookWindow final : public QDialog {
  Q_OBJECT

 public:
  explicit HandbookWindow(QWidget* parent);

  void GoTo(const QUrl& place);

 private:
  QTextBrowser* pages_;
};

}  // namespace tarvell

#endif
