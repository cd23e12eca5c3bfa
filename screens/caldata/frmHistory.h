// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMHISTORY_H
#define TARVELL_SCREENS_CALDATA_FRMHISTORY_H

#include <QDialog>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

#include "core/caldata/EarlierCalibration.h"

namespace tarvell {

namespace Ui {
class frmHistory;
}

/// Lists all that the file of a data set holds and has held, shows a version or compares two, and
/// puts one back.
class frmHistory final : public QDialog {
  Q_OBJECT

 public:
  /// Whether a version can be put back: not while an editor shows the data set.
  enum class Use { PutBack, LookOnly };

  /// The history of the file at `path`. `model` is nullptr for an unknown one. Throws the error of
  /// a history that cannot be read.
  frmHistory(const Model* model, std::string path, Use use, QWidget* parent);
  frmHistory(const frmHistory&) = delete;
  frmHistory& operator=(const frmHistory&) = delete;
  ~frmHistory() override;

 private:
  void btnPutBack_Click();
  void MakeFileMenu();
  /// Reads the history and lists it.
  void ShowVersions();
  /// Shows the selected version, or the comparison of the two that are selected.
  void ShowSelected();
  void ShowPage();
  void ShowTable(const QStringList& captions, const std::vector<QStringList>& rows);
  void ShowComparison(const ReadablePage& earlier, const ReadablePage& later);

  /// The selected rows, in the order of the list: the latest first.
  [[nodiscard]] std::vector<int> Selected() const;
  [[nodiscard]] const Calibration& At(int row) const;

  std::unique_ptr<Ui::frmHistory> ui_;
  const Model* model_;
  std::string path_;
  Use use_;
  std::vector<Calibration> calibrations_;
  std::vector<ReadableData> shown_;  ///< the selected version, or the earlier one and the later
};

}  // namespace tarvell

#endif
