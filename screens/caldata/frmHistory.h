// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMHISTORY_H
#define TARVELL_SCREENS_CALDATA_FRMHISTORY_H

#include <QDialog>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"
#include "screens/widgets/PaperOutput.h"

namespace tarvell {

class VersionCurve;

namespace Ui {
class frmHistory;
}

/// The file whose history is shown.
struct HistorySubject {
  std::string path;              ///< a path of the program
  const Model* model = nullptr;  ///< of a data set; nullptr for other files and unknown models
  /// What a version of another kind of file is shown as; if missing, it is read as a data set.
  std::function<ReadableData(const Calibration& version)> read = {};
  QString whyNotPutBack = {};  ///< why no version can be put back now, "" if one can
};

/// Lists all that a file holds and has held, shows a version or compares two, and puts one back.
class frmHistory final : public QDialog {
  Q_OBJECT

 public:
  /// Throws the error of a history that cannot be read.
  frmHistory(HistorySubject subject, QWidget* parent);
  frmHistory(const frmHistory&) = delete;
  frmHistory& operator=(const frmHistory&) = delete;
  ~frmHistory() override;

  [[nodiscard]] bool HasPutBack() const { return hasPutBack_; }

 private:
  void btnPutBack_Click();
  void MakeFileMenu();
  /// Exports the selected version.
  void Export();
  /// Reads the history and lists it.
  void ShowVersions();
  /// Shows the selected version, or the comparison of the two that are selected.
  void ShowSelected();
  void ShowPage();
  void ShowTable(const QStringList& captions, const std::vector<QStringList>& rows);
  /// Returns the row of `later` that each row of the table shows.
  std::vector<GridRow> ShowComparison(const ReadablePage& earlier, const ReadablePage& later);
  void ShowCurve(std::vector<GridRow> inTable);
  [[nodiscard]] ReadableData Read(const Calibration& version) const;
  /// The printed form of what is selected.
  [[nodiscard]] PaperWork Paper();

  /// The selected rows, in the order of the list: the latest first.
  [[nodiscard]] std::vector<int> Selected() const;
  /// The version in a row of the list, with its header.
  const Calibration& At(int row);

  std::unique_ptr<Ui::frmHistory> ui_;
  HistorySubject subject_;
  VersionCurve* curve_ = nullptr;  ///< only of a model whose data can be drawn
  bool hasPutBack_ = false;
  std::vector<Calibration> calibrations_;  ///< At reads the header of each when it is needed
  std::vector<ReadableData> shown_;  ///< the selected version, or the earlier one and the later
};

}  // namespace tarvell

#endif
