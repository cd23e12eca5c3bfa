// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMDELETED_H
#define TARVELL_SCREENS_CALDATA_FRMDELETED_H

#include <QDialog>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/history/KeptVersions.h"
#include "screens/caldata/frmHistory.h"

namespace tarvell {

namespace Ui {
class frmDeleted;
}

/// The lost files of a tree, and how they are shown.
struct DeletedTree {
  std::string root;         ///< a path of the program
  std::string folder = "";  ///< only the files of this folder; "" for those of all
  QString folderName;       ///< what a folder of the tree is: "Model", "Station"
  std::function<HistorySubject(const std::string& path)> subject;
  DamageCheck isDamaged = nullptr;  ///< without it, damaged files are not listed
};

/// Lists files that were deleted or damaged, and shows the history of one, which can put it back.
class frmDeleted final : public QDialog {
  Q_OBJECT

 public:
  /// Throws the error of a history that cannot be read.
  frmDeleted(DeletedTree tree, QWidget* parent);
  frmDeleted(const frmDeleted&) = delete;
  frmDeleted& operator=(const frmDeleted&) = delete;
  ~frmDeleted() override;

  [[nodiscard]] bool HasPutBack() const { return hasPutBack_; }

 private:
  void btnHistory_Click();
  /// Reads the history and lists the files.
  void ShowFiles();

  std::unique_ptr<Ui::frmDeleted> ui_;
  DeletedTree tree_;
  std::vector<LostFile> files_;
  bool hasPutBack_ = false;
};

}  // namespace tarvell

#endif
